#pragma once

#include "base/TextLines.h"
#include "set/ObjectSet.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace morlik
{

/// The WAS file, the list of an object set: a line for each moveable, then for each static mesh, in
/// the order of the WAD file:
///
///   <name in Tomb Raider IV>:Z:\TOMB<game>\<file name of the level, in capitals>\<name>
void WriteWas(TextLines& file, const ObjectSet& set);

/// What stands in a line. Names may hold any character but a line's end, so that the first source
/// path of the line counts.
struct WasLine
{
    ListedObject Names;
    std::string SourceTitle;
};

/// Takes a line of a set of that game apart; nothing where it has no source path.
std::optional<WasLine> CutWasLine(const std::string& line, VersionCode game);

/// The game that the first source path of a list names, whatever else may be wrong with the list;
/// `kNoLevel` where there is none.
VersionCode GameOfWas(std::string_view text);

/// Lines of a list without their ends. A list may be of 2^16 lines; `ReadFailure` for more, and
/// unless every line ends in CR LF and neither byte stands anywhere else.
std::vector<std::string> ReadLines(std::span<const std::byte> bytes);

} // namespace morlik
