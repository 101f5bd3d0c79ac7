#pragma once

#include "level/LevelData.h"
#include "level/TrMainState.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace morlik::samples
{

constexpr bool IsFirstGame(VersionCode game)
{
    return game == kTR1 || game == kTR1Gold;
}

/// A record that no one looks into, as its bytes.
template <std::size_t Size>
using Raw = std::array<std::byte, Size>;

struct Vector3
{
    std::int16_t X = 0;
    std::int16_t Y = 0; ///< grows downward
    std::int16_t Z = 0;
};
static_assert(sizeof(Vector3) == 6);

/// A face of a mesh; a triangle uses the first three vertices.
struct MeshFace
{
    std::array<std::int16_t, 4> Vertices{};
    std::int16_t Texture = 0;   ///< number of an object texture, or a colour word
    std::int16_t Attribute = 0; ///< Tomb Raider IV and V only
};

/// A mesh of any game. One of `Normals` and `Lights` has an entry for each vertex; with both filled
/// the lights win.
struct MeshContent
{
    Vector3 Centre;
    std::int32_t Radius = 0;
    std::vector<Vector3> Vertices;
    std::vector<Vector3> Normals;
    std::vector<std::int16_t> Lights;
    std::vector<MeshFace> Rectangles;
    std::vector<MeshFace> Triangles;
    std::vector<MeshFace> ColouredRectangles; ///< Tomb Raider I to III only, like the next
    std::vector<MeshFace> ColouredTriangles;
};

/// Vertex of a room, in room coordinates. Tomb Raider I has the first four fields.
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

struct RoomSprite
{
    std::int16_t Vertex = 0;
    std::int16_t Texture = 0;
};

struct RoomPortal
{
    std::int16_t AdjoiningRoom = 0;
    Vector3 Normal;
    std::array<Vector3, 4> Vertices{};
};
static_assert(sizeof(RoomPortal) == 32);

struct RoomSector
{
    std::uint16_t FloorIndex = 0;
    std::int16_t Box = -1;
    std::uint8_t RoomBelow = 0xff;
    std::int8_t Floor = 0; ///< in units of 256
    std::uint8_t RoomAbove = 0xff;
    std::int8_t Ceiling = 0;
};
static_assert(sizeof(RoomSector) == 8);

/// A light as Tomb Raider II and III store it; I has no second intensity and fade.
struct RoomLight
{
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Z = 0;
    std::int16_t Intensity1 = 0;
    std::int16_t Intensity2 = 0;
    std::int32_t Fade1 = 0;
    std::int32_t Fade2 = 0;
};
static_assert(sizeof(RoomLight) == 24);

/// A static mesh in a room; Tomb Raider I has no second intensity.
struct RoomStatic
{
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Z = 0;
    std::uint16_t Rotation = 0;
    std::int16_t Intensity1 = 0;
    std::int16_t Intensity2 = 0;
    std::int16_t ObjectID = 0;
};
static_assert(sizeof(RoomStatic) == 20);

/// A room with all its lists, in the widest form.
struct RoomContent
{
    std::int32_t X = 0;
    std::int32_t Z = 0;
    std::int32_t YBottom = 0;
    std::int32_t YTop = 0;
    std::vector<RoomVertex> Vertices;
    std::vector<RoomRectangle> Rectangles;
    std::vector<RoomTriangle> Triangles;
    std::vector<RoomSprite> Sprites;
    std::vector<RoomPortal> Portals;
    std::int16_t NumZSectors = 1;
    std::int16_t NumXSectors = 1;
    std::vector<RoomSector> Sectors{1}; ///< as many as the two counts multiply to
    std::int16_t AmbientIntensity1 = 0x1000;
    std::int16_t AmbientIntensity2 = 0x1000;
    std::int16_t LightMode = 0;
    std::vector<RoomLight> Lights;
    std::vector<RoomStatic> Statics;
    std::int16_t AlternateRoom = -1;
    std::int16_t Flags = 0;
    std::array<std::uint8_t, 3> Extra{}; ///< water scheme and the like; Tomb Raider III
};

/// Everything that a level file holds, so that a test can take a whole level, change what matters
/// to it and have it written. The writers work out every count and offset; nothing is checked, so
/// that a level can be wrong on purpose.
struct LevelContent
{
    VersionCode Game = kTR1;
    std::uint32_t FirstWord = 0; ///< what tells the game, the first four bytes

    // Textures. A tile is `kTilePixels` pixels; the older games have as many as their tile array
    // holds.
    std::array<Colour6, 256> Palette{};
    std::array<Colour8, 256> Palette16{};
    std::vector<std::uint8_t> Tiles8;   ///< Tomb Raider I to III
    std::vector<std::uint16_t> Tiles16; ///< Tomb Raider II to V
    std::vector<std::uint32_t> Tiles32; ///< Tomb Raider IV and V: bytes B, G, R, A a pixel
    std::int16_t NumRoomTiles = 0;      ///< these three Tomb Raider IV and V
    std::int16_t NumObjectTiles = 0;
    std::int16_t NumBumpTiles = 0;
    std::vector<ObjectTexture> ObjectTextures;         ///< Tomb Raider I to III
    std::vector<ObjectTextureTR45> ObjectTexturesTR45; ///< Tomb Raider IV and V

    // Tomb Raider V.
    std::int16_t LaraType = 0;
    std::int16_t WeatherType = 0;

    std::vector<RoomContent> Rooms;
    std::vector<std::uint16_t> FloorData{0};

    // Models.
    std::vector<MeshContent> Meshes;    ///< each stands once in the file
    std::vector<std::size_t> MeshTable; ///< the pointer table, as indices into `Meshes`
    std::vector<Animation> Animations;
    std::vector<StateChange> StateChanges;
    std::vector<AnimDispatch> AnimDispatches;
    std::vector<std::int16_t> AnimCommands;
    std::vector<std::int32_t> MeshTrees;
    std::vector<std::int16_t> Frames;
    std::vector<Moveable> Moveables;
    std::vector<StaticMesh> StaticMeshes;

    std::vector<SpriteTexture> SpriteTextures;
    std::vector<SpriteSequence> SpriteSequences;

    // What a reader of objects passes over. Boxes (with their zones) and items are filler; their
    // records differ from game to game.
    std::vector<Raw<16>> Cameras;
    std::vector<Raw<40>> FlybyCameras; ///< Tomb Raider IV and V
    std::vector<Raw<16>> SoundSources;
    std::size_t NumBoxes = 0;
    std::vector<std::uint16_t> Overlaps;
    std::vector<std::int16_t> AnimatedTextures;
    std::size_t NumItems = 0;
    std::vector<Raw<24>> AIObjects;       ///< Tomb Raider IV and V
    std::vector<Raw<16>> CinematicFrames; ///< Tomb Raider I to III
    std::vector<std::byte> DemoData;

    // Sounds.
    std::array<std::int16_t, kSoundMapSlots> SoundMap{}; ///< the game writes the slots that it has
    std::vector<SoundDetail> SoundDetails;
    std::vector<std::int32_t> SampleIndices;
    std::vector<std::vector<std::byte>> Samples; ///< WAV files; not in Tomb Raider II and III
};

/// The smallest level of a game that every reader takes: one tile, room, texture, mesh, animation
/// with one frame, moveable, sound and sample. The base for a test of one thing.
LevelContent MakeTinyLevel(VersionCode game);

/// The same in as few bytes as the format allows: a single row of tile pixels in Tomb Raider IV and
/// V. The textures reach beyond it.
LevelContent MakeSmallestLevel(VersionCode game);

struct RichOptions
{
    bool ManyStatics = false; ///< 64 static meshes, more than an object set takes
};

/// A level with everything: every list filled, every kind of face, every corner code, objects with
/// and without animations, repeated meshes. It is also the demo, with a row of objects to look at.
LevelContent MakeRichLevel(VersionCode game, const RichOptions& options = {});

} // namespace morlik::samples
