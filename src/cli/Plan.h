#pragma once

#include "cli/Commands.h"

#include <string>
#include <vector>

namespace morlik::cli
{

/// The conversion of one level.
struct Job
{
    std::string Level;
    std::string Set;     ///< its list
    std::string MainSFX; ///< empty: none
};

/// `FileFailure` where a folder can't be read, or holds no level.
std::vector<Job> Plan(const ConvertOptions& options);

/// What keeps a plan from being carried out; empty for a good one. A plan whose results would
/// replace one of the files that it reads, or one another, is none.
std::string FaultOf(const ConvertOptions& options, const std::vector<Job>& jobs);

} // namespace morlik::cli
