#pragma once

#include "base/Files.h"
#include "base/Uninitialised.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace morlik
{

/// The one switch between games, as `LevelVersion` and `LevelData::Version` hold it.
enum VersionCode : std::int16_t
{
    kTR1 = 1,
    kTR2 = 2,
    kTR3 = 3,
    kTR4 = 4,
    kTR5 = 5,
    kMainSFXVersion = 12, ///< no level: a `main.sfx` is loaded
    kTR1Gold = 15,        ///< becomes 1 right after the load
    kTR5Demo = 51,        ///< a file named "...del.trc", only while it is read
};

/// Whether the game is Tomb Raider I, II or III: palettes, coloured faces and sprites of its own.
constexpr bool IsClassic(std::int32_t version)
{
    return version >= kTR1 && version <= kTR3;
}

/// Tiles are squares of 256 by 256 pixels, one below the other as rows of 256 pixels: line y of
/// tile t is row 256 t + y.
constexpr std::int32_t kTileSide = 256;
constexpr std::int32_t kTilePixels = kTileSide * kTileSide;
/// Bytes of a tile at 3 bytes a pixel, the unit of `TileBytes`.
constexpr std::int32_t kTileBytes = kTilePixels * 3;

/// A texture as the object set stores it, 8 bytes: a box in a tile.
struct TextInfo
{
    std::uint8_t X = 0;      ///< left pixel column in the tile
    std::uint8_t Y = 0;      ///< top pixel row in the tile
    std::int16_t Tile = 0;   ///< tile number, counted over the whole level
    std::uint8_t FlipX = 0;  ///< 0xff, but 0 for triangles of Tomb Raider I to III
    std::uint8_t Width = 0;  ///< last pixel column less first
    std::uint8_t FlipY = 0;  ///< as `FlipX`
    std::uint8_t Height = 0; ///< last pixel row less first
};
static_assert(sizeof(TextInfo) == 8);

/// Vertex of a room, in room coordinates. Tomb Raider I fills the first four fields.
struct RoomVertex
{
    std::int16_t X = 0;
    std::int16_t Y = 0;
    std::int16_t Z = 0;
    std::int16_t Lighting1 = 0;
    std::int16_t Attributes = 0;
    std::int16_t Lighting2 = 0;
};
static_assert(sizeof(RoomVertex) == 12);

/// Face of a room with `Corners` corners: indices into `Room::Vertices`, then the number of an
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

/// A room of Tomb Raider I to III, as far as its faces need it. Its sprites, portals, sectors,
/// lights, ambient light and static meshes are passed over by the reader: nothing works with them.
struct Room
{
    std::int32_t X = 0; ///< position of the room in the world, in world units
    std::int32_t Z = 0;
    std::int32_t YBottom = 0;
    std::int32_t YTop = 0;
    std::int32_t NumDataWords = 0; ///< the file's size of the geometry in 16-bit words; not used
    std::vector<RoomVertex> Vertices;
    std::vector<RoomRectangle> Rectangles;
    std::vector<RoomTriangle> Triangles;
    std::int16_t AlternateRoom = 0; ///< the room that takes its place when flipped, -1 for none
    std::int16_t Flags = 0;
};

/// One animation; 40 bytes in memory and in the object set, 32 in Tomb Raider I to III levels,
/// which have no lateral fields.
struct Animation
{
    std::int32_t FrameOffset = 0;  ///< byte offset of the first frame in `Frames`
    std::uint8_t FrameRate = 0;    ///< ticks between two frames
    std::uint8_t FrameSize = 0;    ///< size of a frame in 16-bit words
    std::int16_t State = 0;        ///< state of the object while it runs
    std::int32_t Speed = 0;        ///< 16.16 fixed point
    std::int32_t Accel = 0;        ///< 16.16 fixed point
    std::int32_t LateralSpeed = 0; ///< Tomb Raider IV and V; 0 in the others
    std::int32_t LateralAccel = 0; ///< Tomb Raider IV and V; 0 in the others
    std::int16_t FrameStart = 0;   ///< first frame number
    std::int16_t FrameEnd = 0;     ///< last frame number
    std::int16_t NextAnimation = 0;
    std::int16_t NextFrame = 0;
    std::int16_t NumStateChanges = 0;
    std::int16_t StateChange = 0; ///< index of the first of them in `StateChanges`
    std::int16_t NumAnimCommands = 0;
    std::int16_t AnimCommand = 0; ///< index of the first word of them in `AnimCommands`
};
static_assert(sizeof(Animation) == 40);

/// The dispatches that apply when the object wants to change to a state.
struct StateChange
{
    std::int16_t StateID = 0;
    std::int16_t NumAnimDispatches = 0;
    std::int16_t AnimDispatch = 0; ///< index of the first of them in `AnimDispatches`
};
static_assert(sizeof(StateChange) == 6);

/// Between the frames `Low` and `High` go on with `NextFrame` of `NextAnimation`.
struct AnimDispatch
{
    std::int16_t Low = 0;
    std::int16_t High = 0;
    std::int16_t NextAnimation = 0;
    std::int16_t NextFrame = 0;
};
static_assert(sizeof(AnimDispatch) == 8);

/// A moveable object; 18 bytes in every file but Tomb Raider V levels, which add two unused bytes.
struct Moveable
{
    std::int32_t ObjectID = 0;
    std::int16_t NumMeshes = 0;
    std::int16_t StartingMesh = 0; ///< index of the first of its meshes in `MeshPointers`
    std::int32_t MeshTree = 0;     ///< index of its first word in `MeshTrees`
    std::int32_t FrameOffset = 0;  ///< byte offset of its first frame in `Frames`
    std::int16_t Animation = 0;    ///< index of its first animation, -1 for none
};

/// A static mesh.
struct StaticMesh
{
    std::int32_t ObjectID = 0;
    std::int16_t Mesh = 0; ///< index in `MeshPointers`
    std::array<std::int16_t, 6> VisibilityBox{};
    std::array<std::int16_t, 6> CollisionBox{};
    std::int16_t Flags = 0;
};
static_assert(sizeof(StaticMesh) == 32);

/// A sprite's place in the tiles; only the tile number is looked at.
struct SpriteTexture
{
    std::int16_t Tile = 0;
    std::array<std::byte, 14> Rest{};
};
static_assert(sizeof(SpriteTexture) == 16);

/// A run of sprite textures, carried as it stands.
struct SpriteSequence
{
    std::array<std::byte, 8> Raw{};
};
static_assert(sizeof(SpriteSequence) == 8);

/// A sound: a run of samples with its playing parameters.
struct SoundDetail
{
    /// First sample: a position in `Samples` for Tomb Raider I, in `SampleIndices` for II and III.
    std::int16_t Sample = 0;
    std::array<std::int16_t, 2> Raw{};
    std::int16_t Characteristics = 0; ///< bits 2 to 6: number of samples

    /// Number of samples, 0 to 31.
    std::int32_t NumSamples() const { return (Characteristics & 0x7c) / 4; }
};
static_assert(sizeof(SoundDetail) == 8);

/// One sound sample, the bytes as they stand in the file: a whole RIFF file but in Tomb Raider IV.
struct Sample
{
    std::span<const std::byte> Data;

    /// Size in bytes; 0 where the file's sample list ended early.
    std::size_t Size() const { return Data.size(); }
};

/// Slots of the longest sound map, that of Tomb Raider V.
constexpr std::size_t kSoundMapSlots = 450;
constexpr std::size_t kSoundMapSlotsTR1 = 256;
constexpr std::size_t kSoundMapSlotsTR2 = 370; ///< Tomb Raider II, III and IV

/// A loaded level of any of the five games. Each reader fills what its game has and what the
/// program later needs; everything else stays 0 or empty. A count is kept beside its array because
/// some sections may carry a count of 0 or less, which goes on to the output as it was read.
struct LevelData
{
    std::int32_t Version = 0; ///< `LevelVersion` after the load, 1 to 5; written by the loader

    // Textures.
    std::int16_t NumRoomTiles = 0;          ///< tiles that belong to rooms
    std::int16_t NumObjectTiles = 0;        ///< tiles that belong to objects; Tomb Raider IV and V
    std::int16_t NumBumpTiles = 0;          ///< bump map tiles; Tomb Raider IV and V
    std::int32_t NumTextInfo = 0;           ///< number of object textures
    std::vector<TextInfo> TextInfos;        ///< the object textures in the editor's form
    std::int32_t TileBytes = 0;             ///< size of all tiles at 3 bytes a pixel
    std::span<const std::uint8_t> Tiles8;   ///< Tomb Raider I: an index into `Palette` a pixel
    std::span<const std::uint16_t> Tiles16; ///< II and III: 5 bits each of red, green, blue a pixel
    UninitialisedVector<std::uint32_t> Tiles32; ///< IV and V: bytes B, G, R, A a pixel

    /// The level's file, which `Tiles8`, `Tiles16` and the samples are views into.
    std::shared_ptr<const FileBytes> File;

    // Tomb Raider V.
    std::int16_t LaraType = 0;
    std::int16_t WeatherType = 0;

    // Rooms of Tomb Raider I to III.
    std::int16_t NumRooms = 0;
    std::vector<Room> Rooms;

    // Meshes.
    std::int32_t NumMeshPointers = 0;       ///< number of meshes
    std::vector<std::int32_t> MeshPointers; ///< byte offset of each mesh in `MeshData`
    std::int32_t NumMeshWords = 0;          ///< size of `MeshData` in 16-bit words
    std::vector<std::byte> MeshData;        ///< the meshes in the game's own form

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
    std::int32_t NumFrames = 0;       ///< in 16-bit words
    std::vector<std::int16_t> Frames; ///< in the game's form until `FramesConverted`
    bool FramesConverted = false;     ///< a save brought `Frames` to the editor's form already

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
    std::int32_t NumSamples = 0;             ///< 0 for II and III, whose samples are in `main.sfx`
    std::vector<Sample> Samples;
};

} // namespace morlik
