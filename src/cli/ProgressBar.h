#pragma once

#include "cli/Commands.h"

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace morlik::cli
{

/// A bar in the last line of a terminal, for several works at a time; nothing anywhere else.
/// May be used from several threads.
class ProgressBar
{
public:
    ProgressBar(const Streams& streams, std::size_t works);
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
    void Draw();
    void Wipe();

    const Streams& streams_;
    std::mutex mutex_;
    std::vector<float> percents_;
    int shown_ = -1; ///< percent in the bar; -1 while there is none
};

} // namespace morlik::cli
