#pragma once

#include "base/FileGroup.h"
#include "base/Reporter.h"

#include <filesystem>
#include <string>
#include <vector>

namespace morlik
{

/// The files beside the program that a save reads.
std::vector<std::string> DataFiles(const std::filesystem::path& programFolder);

/// Copies a file that stands beside the program to `target`, byte for byte, as a file of the group.
/// Where there is none the user is told, and it gives false.
bool CopyDataFile(const std::string& name, FileGroup& group, const std::string& target,
                  Reporter& report);

} // namespace morlik
