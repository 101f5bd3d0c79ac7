#pragma once

#include "cli/Commands.h"

#include <filesystem>
#include <string>
#include <vector>

namespace morlik::cli
{

/// The conversion of one level.
struct Job
{
    std::string Level;
    std::string Set;
    std::string MainSFX; ///< empty: none
};

std::vector<Job> Plan(const ConvertOptions& options);

/// What keeps a plan from being carried out; empty for a good one. A plan whose results would
/// replace one of the files that it reads, or one another, is none.
std::string FaultOf(const ConvertOptions& options, const std::vector<Job>& jobs);

/// Whether both are one file, under whatever names; one that isn't there yet is no other.
bool IsSameFile(const std::string& one, const std::string& other);

/// Makes a folder and what is missing above it. What is wrong with it shows at the first file.
void MakeFolder(const std::filesystem::path& folder);

} // namespace morlik::cli
