#pragma once

#include "base/FileGroup.h"
#include "base/Reporter.h"

#include <string>

namespace morlik
{

/// Copies a file that stands beside the program to `target`, byte for byte, as a file of the group.
/// Where there is none the user is told, and it gives false.
bool CopyDataFile(const std::string& name, FileGroup& group, const std::string& target,
                  Reporter& report);

} // namespace morlik
