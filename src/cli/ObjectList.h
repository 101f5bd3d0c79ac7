#pragma once

#include "cli/ObjectPattern.h"
#include "cli/OpenSet.h"
#include "convert/ChooseObjects.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"

#include <string>
#include <vector>

namespace morlik::cli
{

/// Items of a list, each an `ObjectPattern`, parted by commas; "@FILE" is a file with an item in
/// each line. `ListFault` for a file that can't be read.
using ObjectItems = std::vector<std::string>;
ObjectItems ReadItems(const std::string& list);

/// The files with items that such lists name.
std::vector<std::string> FilesOfLists(const std::vector<std::string>& lists);

/// The objects of a level that `objects` names, or all if it is empty, without those that `without`
/// names. Numbers are the IDs of the level; a name is one of the editor's game or of the level's,
/// in letters of either case. An item of `objects` that means no object of the level is a
/// `ListFault`, which tells near names, but for "*"; so is a single number or name of `without`.
ObjectChoice ChooseByItems(const LevelData& level, const ObjectNames& names,
                           const ObjectItems& objects, const ObjectItems& without);

/// The same of a set that was opened, by the numbers and names that its objects have there.
ObjectChoice ChooseByItems(const OpenedSet& opened, const ObjectItems& objects,
                           const ObjectItems& without);

/// Number and name of an object, for a message.
std::string NumberAndName(std::int32_t number, const std::string& name);
std::string MoveableText(const LevelData& level, const ObjectNames& names, std::size_t index);
std::string StaticText(const LevelData& level, const ObjectNames& names, std::size_t index);

} // namespace morlik::cli
