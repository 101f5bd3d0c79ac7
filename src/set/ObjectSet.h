#pragma once

#include "base/Records.h"
#include "base/VersionCode.h"
#include "set/Tiles.h"
#include "set/WadMesh.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace morlik
{

/// Squares of the palette tile, the last one of a Tomb Raider I to III set: 256 colours, then black
/// and magenta. Faces of plain colours are faces with one of them as their texture.
constexpr std::size_t kNumPaletteTextures = 258;

/// Names of an object: in the editor's game, Tomb Raider IV, and in the game of its level.
struct ListedObject
{
    std::string EditorName;
    std::string GameName;

    bool operator==(const ListedObject&) const = default;
};

/// The sound tables: a sound number leads through the map to a detail, that to a run of sample
/// indices. In Tomb Raider II and III these are places in `main.sfx`.
struct SoundTables
{
    std::array<std::int16_t, 370> SoundMap{};
    std::vector<SoundDetail> SoundDetails;
    std::vector<std::int32_t> SampleIndices;

    bool operator==(const SoundTables&) const = default;
};

/// A sample of the list, and its WAV file where the set has one.
struct SetSample
{
    std::string Name; ///< of the file
    std::optional<std::span<const std::byte>> Wave;
};

struct SpriteTables
{
    std::vector<SpriteTexture> SpriteTextures;
    SetTiles Tiles;
    std::vector<SpriteSequence> SpriteSequences;
};

/// All that an object set holds, whether it was made from a level or read back from its files.
/// Pixels and samples are views, which the set keeps alive.
struct ObjectSet
{
    VersionCode Game = kNoLevel; ///< Tomb Raider I to V

    // Textures: those that faces use, by their numbers, then, in a set of an older game, the
    // palette squares. Their tiles count from the first one of the set.
    std::vector<TextInfo> Textures;
    SetTiles Tiles;

    WadMeshSet Meshes;

    // Animations. Those of a moveable run up to the first of the next moveable that has any.
    std::vector<Animation> Animations;
    std::vector<StateChange> StateChanges;
    std::vector<AnimDispatch> AnimDispatches;
    std::vector<std::int16_t> AnimCommands;
    std::vector<std::int32_t> MeshTrees;
    std::vector<std::int16_t> Frames;

    std::vector<Moveable> Moveables;
    std::vector<StaticMesh> StaticMeshes;

    // The list.
    std::string SourceTitle;          ///< file name of the level, in capitals
    std::vector<ListedObject> Listed; ///< the moveables, then the static meshes

    // Sounds and sprites. Without them, the default files stand in the set.
    std::optional<SoundTables> Sounds;
    std::vector<SetSample> Samples; ///< one for each sample of each sound detail, in their order
    std::size_t MissingSamples = 0; ///< of these, how many the level or `main.sfx` doesn't have
    std::optional<SpriteTables> Sprites;

    std::vector<std::string> Info; ///< what was done to the horizon, line by line

    /// Counts in front of empty tables. Some levels have one below 0 there, which goes on to the
    /// set as it was read.
    struct CountsOfEmpty
    {
        std::int32_t StateChanges = 0;
        std::int32_t AnimDispatches = 0;
        std::int32_t AnimCommands = 0;
        std::int32_t StaticMeshes = 0;
        std::int32_t SoundDetails = 0;
        std::int32_t SampleIndices = 0;
        std::int32_t SpriteTextures = 0;
        std::int32_t SpriteSequences = 0;
    } EmptyCounts;

    /// What the views look into.
    std::vector<std::shared_ptr<const void>> Owners;

    /// Number of the first palette square, and of used textures before it.
    std::size_t ColourBase() const
    {
        const bool hasSquares = IsOlderGame(Game) && Textures.size() >= kNumPaletteTextures;
        return Textures.size() - (hasSquares ? kNumPaletteTextures : 0);
    }
};

} // namespace morlik
