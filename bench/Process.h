#pragma once

#include <string>
#include <vector>

namespace morlik::bench
{

/// What one run of a program took.
struct Usage
{
    double CpuMilliseconds = 0; ///< user and system time
    double WallMilliseconds = 0;
    double PeakMiB = 0; ///< largest resident size
    bool Good = false;  ///< exit status 0
};

/// Runs a program to its end, its words thrown away.
Usage RunProcess(const std::vector<std::string>& command);

} // namespace morlik::bench
