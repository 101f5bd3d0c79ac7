#pragma once

#include "convert/Objects.h"
#include "level/LevelData.h"
#include "set/ObjectSet.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace morlik
{

/// Which objects of a level a set is made of, by their places in its tables.
struct ObjectChoice
{
    std::vector<bool> Moveables;
    std::vector<bool> StaticMeshes;
    bool AllSounds = false; ///< also sounds that no animation of a chosen object names

    /// Whether no object is left out. That is no choice, so all sounds come along.
    bool IsAll() const;
    std::size_t Count() const;
};

/// All objects of a level.
ObjectChoice ChooseAll(const LevelData& level);

/// A level of chosen objects, with all that they need and nothing else: their meshes, trees,
/// animations, the state changes, dispatches, commands and frames of these, and the sounds that the
/// commands name, through the map. What stays keeps its order in its table, and all that counts in
/// the table is brought after it. Textures stay under their numbers, with their tiles.
struct ChosenLevel
{
    LevelData Level; ///< looks into `Frames`, and into what the whole level looks into
    std::vector<std::byte> Frames;
    ObjectPlaces Places; ///< where the objects stood in the whole level
};

/// An animation of a chosen object that is followed by one of an object that is not chosen is
/// followed by the first of its own. Nothing comes back where there is no choice, which is one of
/// the level, or no object is left out.
std::optional<ChosenLevel> ChooseObjects(const LevelData& level,
                                         const std::optional<ObjectChoice>& choice);

/// Takes the tiles out of a set that no texture lies on.
void DropUnusedTiles(ObjectSet& set);

} // namespace morlik
