#pragma once

#include "cli/OpenSet.h"
#include "convert/ChooseObjects.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace morlik::cli
{

/// A list of objects that can't be followed: it is badly formed, or names what there is not.
class ListFault : public std::runtime_error
{
public:
    explicit ListFault(const std::string& why) : std::runtime_error(why) {}
};

/// Items of a list: numbers, ranges ("10-30") and names, in which `*` and `?` stand for any letters
/// and for one. Behind "static:" they are static meshes, else moveables. Items are parted by
/// commas;
/// "@FILE" is a file with an item in each line. `ListFault` for a file that can't be read.
using ObjectItems = std::vector<std::string>;
ObjectItems ReadItems(const std::string& list);

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
std::string MoveableText(const LevelData& level, const ObjectNames& names, std::size_t index);
std::string StaticText(const LevelData& level, const ObjectNames& names, std::size_t index);

} // namespace morlik::cli
