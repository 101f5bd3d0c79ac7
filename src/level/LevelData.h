#pragma once

#include "base/Files.h"
#include "base/Records.h"
#include "base/SampleLookup.h"
#include "base/Uninitialised.h"
#include "base/VersionCode.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace morlik
{

/// Palette entry of Tomb Raider I to III levels: red, green, blue, each 0 to 63.
struct Colour6
{
    std::uint8_t R = 0;
    std::uint8_t G = 0;
    std::uint8_t B = 0;
};
static_assert(sizeof(Colour6) == 3);

/// Entry of the 16-bit palette of Tomb Raider II and III: red, green, blue, each 0 to 255.
struct Colour8
{
    std::uint8_t R = 0;
    std::uint8_t G = 0;
    std::uint8_t B = 0;
    std::uint8_t Unused = 0;
};
static_assert(sizeof(Colour8) == 4);

/// An object texture in the editor's form.
struct LevelTexture
{
    TextInfo Info; ///< its box in its tile
    std::int16_t Attribute = 0;
    /// Corner code: 1 or -1 (mirrored) for a rectangle; for a triangle one of 0, 0x2000, ...
    /// 0xe000, the corner that it starts from and its direction.
    std::int32_t TextureFlip = 0;
    /// By how many places the vertices of a face with the texture are turned before its code holds;
    /// 0 but in levels of newer compilers.
    std::int32_t TextureTurn = 0;
    /// Number of the object texture that stands for it: its own, or the first with the same box.
    std::int32_t TextureRemap = 0;
};

/// Face of a room with `Corners` corners: numbers of the room's vertices, then the number of an
/// object texture (bit 15 is a flag of the game).
template <std::size_t Corners>
struct RoomFace
{
    std::array<std::int16_t, Corners> Vertices{};
    std::int16_t Texture = 0;
};
using RoomRectangle = RoomFace<4>;
using RoomTriangle = RoomFace<3>;
static_assert(sizeof(RoomRectangle) == 10 && sizeof(RoomTriangle) == 8);

/// A room of Tomb Raider I to III: its faces, which tell the tiles of the texture sheet. All else
/// is passed over by the reader: nothing works with it.
struct Room
{
    std::vector<RoomRectangle> Rectangles;
    std::vector<RoomTriangle> Triangles;
};

/// One sample, the bytes as they stand in the file: a whole RIFF file but in Tomb Raider IV.
struct Sample
{
    std::span<const std::byte> Data;

    /// Size in bytes; 0 where the file's sample list ended early.
    std::size_t Size() const { return Data.size(); }
};

/// Where a sample stands in a `main.sfx`, in bytes.
struct SamplePlace
{
    std::uint32_t Start = 0;
    std::uint32_t Size = 0;
};
static_assert(sizeof(SamplePlace) == 8);

/// A loaded level of any of the five games. Each reader fills what its game has and what the
/// program later needs; everything else stays 0 or empty. A count is kept beside its array because
/// some sections may carry a count of 0 or less, which goes on to the output as it was read. What
/// was read is not changed afterwards: a conversion makes an `ObjectSet` of it.
struct LevelData
{
    VersionCode Version = kNoLevel; ///< `LevelVersion` after the load; written by the loader

    // Textures.
    std::int16_t NumRoomTiles = 0;          ///< tiles that belong to rooms; Tomb Raider IV and V
    std::int16_t NumObjectTiles = 0;        ///< tiles that belong to objects; Tomb Raider IV and V
    std::int16_t NumBumpTiles = 0;          ///< bump map tiles; Tomb Raider IV and V
    std::int32_t NumTextInfo = 0;           ///< number of object textures
    std::vector<LevelTexture> Textures;     ///< the object textures
    bool HasFractions = false;              ///< their corners have true fractions of pixels
    std::int32_t TileBytes = 0;             ///< size of all tiles at 3 bytes a pixel
    std::array<Colour6, 256> Palette{};     ///< Tomb Raider I to III
    std::array<Colour8, 256> Palette16{};   ///< Tomb Raider II and III
    std::span<const std::uint8_t> Tiles8;   ///< Tomb Raider I: an index into `Palette` a pixel
    std::span<const std::uint16_t> Tiles16; ///< II and III: 5 bits each of red, green, blue
    std::span<const std::uint32_t> Tiles32; ///< IV and V: bytes B, G, R, A a pixel

    /// What the spans of the level look into: its file, and what was inflated of it.
    std::shared_ptr<const FileBytes> File;
    std::shared_ptr<const UninitialisedVector<std::uint32_t>> InflatedTiles;
    std::shared_ptr<const UninitialisedVector<std::byte>> LevelGeometry;

    // Tomb Raider V.
    std::int16_t LaraType = 0;
    std::int16_t WeatherType = 0;

    // Rooms of Tomb Raider I to III.
    std::vector<Room> Rooms;

    // Meshes.
    std::int32_t NumMeshPointers = 0;       ///< number of meshes
    std::vector<std::int32_t> MeshPointers; ///< byte offset of each mesh in `MeshData`
    std::int32_t NumMeshWords = 0;          ///< size of `MeshData` in 16-bit words
    std::span<const std::byte> MeshData;    ///< the meshes in the game's own form

    // Animations. A moveable's animations run up to the first of the next moveable that has any.
    std::int32_t NumAnimations = 0;
    std::vector<Animation> Animations;
    std::int32_t NumStateChanges = 0;
    std::vector<StateChange> StateChanges;
    std::int32_t NumAnimDispatches = 0;
    std::vector<AnimDispatch> AnimDispatches;
    std::int32_t NumAnimCommands = 0; ///< in 16-bit words
    std::vector<std::int16_t> AnimCommands;
    std::int32_t NumMeshTrees = 0; ///< in 32-bit words
    std::vector<std::int32_t> MeshTrees;
    std::int32_t NumFrames = 0;        ///< in 16-bit words
    std::span<const std::byte> Frames; ///< the words in the game's own form, at any place

    // Objects.
    std::int32_t NumMoveables = 0;
    std::vector<Moveable> Moveables;
    std::int32_t NumStaticMeshes = 0;
    std::vector<StaticMesh> StaticMeshes;

    // Sprites of Tomb Raider I to III.
    std::int32_t NumSpriteTextures = 0;
    std::vector<SpriteTexture> SpriteTextures;
    std::int32_t NumSpriteSequences = 0;
    std::vector<SpriteSequence> SpriteSequences;

    // Sounds.
    std::array<std::int16_t, kSoundMapSlots> SoundMap{}; ///< sound number to `SoundDetails` index
    std::int32_t NumSoundDetails = 0;
    std::vector<SoundDetail> SoundDetails;
    std::int32_t NumSampleIndices = 0;
    std::vector<std::int32_t> SampleIndices; ///< II and III: position in `main.sfx`
    std::int32_t NumSamples = 0;             ///< 0 where the samples are in `main.sfx`
    std::vector<Sample> Samples;
    std::vector<SamplePlace> SamplePlaces; ///< extended levels of IV with samples in `main.sfx`
};

/// Whether the samples of a level stand in a `main.sfx`: those of Tomb Raider II and III by their
/// numbers, those of some levels of the extended engine of IV by their places.
inline bool HasMainSFX(const LevelData& level)
{
    return HasMainSFX(level.Version) || !level.SamplePlaces.empty();
}

} // namespace morlik
