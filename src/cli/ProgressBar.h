#pragma once

#include "cli/Commands.h"

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace morlik::cli
{

/// A bar in the last line of a terminal, for several works at a time, with how many are done and
/// the one that began last; nothing anywhere else. May be used from several threads.
class ProgressBar
{
public:
    /// `names` are those of the works.
    ProgressBar(const Streams& streams, const std::vector<std::string>& names);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// How far a work has come.
    void Set(std::size_t work, float percent);

    /// Prints with the bar out of the way.
    template <class Print>
    void Around(Print print)
    {
        const std::lock_guard lock(mutex_);
        Wipe();
        print();
        Draw();
    }

private:
    std::string Line() const;
    void Draw();
    void Wipe();

    const Streams& streams_;
    std::mutex mutex_;
    const std::vector<std::string>& names_;
    std::vector<float> percents_;
    std::size_t last_ = 0; ///< the work that began last
    std::string shown_;    ///< what stands in the line; empty while there is none
};

} // namespace morlik::cli
