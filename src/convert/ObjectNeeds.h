#pragma once

#include "convert/ChooseObjects.h"
#include "level/LevelData.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace morlik
{

/// Numbers of the object textures that the faces of an object use, ascending; of textures with one
/// box the one that stands for them.
using TextureList = std::vector<std::int32_t>;

/// The textures of all objects, each by the object's place. They tell what a choice would take
/// without making the set.
struct ObjectNeeds
{
    std::vector<TextureList> Moveables;
    std::vector<TextureList> StaticMeshes;
};

/// `ReadFailure` for a damaged mesh. Textures and meshes that the level does not have are passed
/// over.
ObjectNeeds NeedsOf(const LevelData& level);

/// What the animations of a moveable are made of.
struct AnimationNeeds
{
    std::int32_t Animations = 0;
    std::int64_t Frames = 0; ///< that are stored
    std::size_t Sounds = 0;  ///< different ones that the commands name
};

/// Of each moveable, by its place. What is damaged counts as far as it goes.
std::vector<AnimationNeeds> AnimationNeedsOf(const LevelData& level);

/// How many textures the chosen objects use together.
std::size_t CountTextures(const ObjectNeeds& needs, const ObjectChoice& choice);

/// How many tiles a set of the chosen objects needs for these: those that the textures lie on, and
/// the palette tile of an older game.
std::size_t CountTiles(const ObjectNeeds& needs, const ObjectChoice& choice,
                       const LevelData& level);

/// An object by its place.
struct ObjectPlace
{
    bool IsStatic = false;
    std::size_t Index = 0;

    bool operator==(const ObjectPlace&) const = default;
};

/// Leaves objects out of a choice, always the one with the most textures that no other chosen
/// object uses, until it has no more than `mostTextures`. Gives what it left out, in that order.
std::vector<ObjectPlace> FitChoice(const ObjectNeeds& needs, ObjectChoice& choice,
                                   std::size_t mostTextures);

} // namespace morlik
