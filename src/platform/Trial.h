#pragma once

#include <chrono>
#include <functional>

namespace morlik
{

/// Work that may end the whole process, tried in a child first. The child keeps what the work has
/// opened until the end of this object: a server that would start anew when its last client leaves
/// is still there for the next one. To be made while the process has one thread.
class Trial
{
public:
    /// Waits until `work` has told in the child whether all is well, has ended it, or `limit` is
    /// over. What it prints is lost.
    Trial(const std::function<bool()>& work, std::chrono::milliseconds limit);
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;
    ~Trial(); // NOLINT(performance-trivially-destructible): only Windows has no work for it

    bool IsGood() const { return isGood_; }

private:
    bool isGood_ = false;
    [[maybe_unused]] int child_ = -1;
    [[maybe_unused]] int wire_ = -1; ///< the child ends when it is closed
};

} // namespace morlik
