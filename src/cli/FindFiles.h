#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morlik::cli
{

/// A file that a word of a command line means.
struct FoundFile
{
    std::string Path;
    std::string Below; ///< its folder below the one that was named; empty for a file that was
};

/// Which files of a folder a command takes, by their names.
enum class Wanted
{
    Levels,
    Sets,
    LevelsAndSets,
    AllToTell, ///< levels, projects and `main.sfx`
};

/// Whether a file of this name is one of those.
bool IsWanted(std::string_view name, Wanted wanted);

/// The files that words of a command line mean: with `recursive` those below each word that is a
/// folder, in the order of their names, and links to folders not gone into; every other word as it
/// stands. `FileFailure` where a folder can't be read, and where there is no such file in any.
std::vector<FoundFile> FindFiles(const std::vector<std::string>& words, bool recursive,
                                 Wanted wanted);

/// The paths of such files.
std::vector<std::string> FindPaths(const std::vector<std::string>& words, bool recursive,
                                   Wanted wanted);

} // namespace morlik::cli
