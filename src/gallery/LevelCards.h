#pragma once

#include "gallery/Store.h"
#include "set/ObjectSet.h"
#include "shell/Session.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace morlik::gallery
{

enum class CardKind : std::uint8_t
{
    Moveable,
    StaticMesh,
    Sprites,
};

/// An animation of a moveable.
struct AnimationCard
{
    std::size_t Frames = 1; ///< 30 to a second
    std::string Moving;     ///< its picture, empty where it has none
};

/// A tile that textures of an object lie on.
struct TileCard
{
    std::string Picture;
    std::vector<TextInfo> Boxes;
};

/// What a page knows of an object. Texts are UTF-8, files are names of the store, and empty where
/// there is none.
struct ObjectCard
{
    CardKind Kind = CardKind::Moveable;
    std::int32_t ID = 0;
    std::string Name{};                 ///< in the game of the level
    std::string EditorName{};           ///< in Tomb Raider IV
    std::int64_t Meshes = 0;            ///< of sprites, how many there are
    std::size_t Textures = 0;           ///< boxes
    std::vector<std::int32_t> Sounds{}; ///< slots
    std::vector<AnimationCard> Animations{};
    std::vector<TileCard> Tiles{};
    std::string Still{};
    std::string Turning{};
    std::string Model{};
    std::vector<std::string> SetFiles{}; ///< below the level's own folder
    std::string Fault{};                 ///< why it isn't shown, or not wholly
};

/// A sample of a sound.
struct SampleCard
{
    std::string File;
    std::string Facts; ///< or why there is no file
};

struct SoundCard
{
    std::int32_t Slot = 0;
    std::vector<SampleCard> Samples;
};

/// What the page of a level shows.
struct LevelCards
{
    std::string Title; ///< the name of its file
    VersionCode Game = kNoLevel;
    std::int64_t Rooms = 0;
    std::int64_t Textures = 0;
    std::vector<ObjectCard> Objects;
    std::vector<SoundCard> Sounds;
    std::string Strip; ///< a picture of some objects side by side
};

struct CardOptions
{
    bool HasModels = true;
    std::size_t Animations = 2; ///< of each object that get a picture, from its first on
};

/// Makes the cards of the session's level, with the files that they show. Objects that are damaged
/// tell so. `FileFailure` where a file can't be written, `Interrupted` where the user stops it.
LevelCards MakeCards(Session& session, const CardOptions& options, Store& store);

} // namespace morlik::gallery
