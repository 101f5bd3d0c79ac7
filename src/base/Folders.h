#pragma once

#include <filesystem>

namespace morlik
{

/// Makes a folder and what is missing above it. One that is there is good; a `FileFailure` with the
/// system's reason where it can't be made. An empty path is the current folder.
void MakeFolder(const std::filesystem::path& folder);

} // namespace morlik
