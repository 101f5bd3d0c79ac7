#pragma once

#include "base/Reporter.h"

#include <string>

namespace morlik
{

/// Copies a file that stands beside the program to `target`, byte for byte. Where there is none
/// the user is told, and it gives false.
bool CopyDataFile(const std::string& name, const std::string& target, Reporter& report);

} // namespace morlik
