#pragma once

#include "level/LevelData.h"
#include "level/TrMainState.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace morlik::samples
{

constexpr bool IsFirstGame(VersionCode game)
{
    return game == kTR1 || game == kTR1Gold;
}

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
    Vertex Centre;
    std::int32_t Radius = 0;
    std::vector<Vertex> Vertices;
    std::vector<Vertex> Normals;
    std::vector<std::int16_t> Lights;
    std::vector<MeshFace> Rectangles;
    std::vector<MeshFace> Triangles;
    std::vector<MeshFace> ColouredRectangles; ///< Tomb Raider I to III only, like the next
    std::vector<MeshFace> ColouredTriangles;
};

/// A room: its faces, and the numbers of what no reader of objects looks into.
struct RoomContent
{
    std::vector<RoomRectangle> Rectangles;
    std::vector<RoomTriangle> Triangles;
    std::size_t NumVertices = 0;
    std::size_t NumZSectors = 1;
    std::size_t NumXSectors = 1;
    std::size_t NumOthers = 0; ///< sprites; twice as many portals, and so on
};

/// What makes a Tomb Raider IV level one of its extended engine.
struct ExtensionContent
{
    std::uint16_t NumSlots = 0;         ///< as the file tells it; 0 stands for 370
    std::vector<std::int16_t> SoundMap; ///< in place of the level's own
    std::vector<SamplePlace> Places;    ///< of the samples in a `main.sfx`; none: they are here
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

    /// Records of the first list that no reader of objects looks into, the floor data; the next one
    /// has twice as many, and so on.
    std::size_t NumOthers = 0;

    // Sounds.
    std::array<std::int16_t, kSoundMapSlots> SoundMap{}; ///< the game writes the slots that it has
    std::vector<SoundDetail> SoundDetails;
    std::vector<std::int32_t> SampleIndices;
    std::vector<std::vector<std::byte>> Samples; ///< WAV files; not in Tomb Raider II and III

    std::optional<ExtensionContent> Extension; ///< Tomb Raider IV only
    /// Tomb Raider I and Gold: the palette stands where the other of the two has it.
    bool OtherPalettePlace = false;
};

/// A level of the game with nothing in it but its first word, and all slots of the sound map free.
LevelContent EmptyLevel(VersionCode game);

/// The smallest level of a game that every reader takes: one tile, room, texture, mesh, animation
/// with one frame, moveable, sound and sample. The base for a test of one thing. Tomb Raider IV and
/// V can do with fewer rows of the tile, beyond which the textures reach.
LevelContent MakeTinyLevel(VersionCode game, int rows = kTileSide);

/// The same in as few bytes as the format allows.
inline LevelContent MakeSmallestLevel(VersionCode game)
{
    return MakeTinyLevel(game, IsOlderGame(game) ? kTileSide : 1);
}

/// Makes a Tomb Raider IV level one of the extended engine with as many slots in its sound map,
/// two of them, above 369, used. Its samples go to a `main.sfx` where `outside` tells so.
void MakeExtended(LevelContent& level, std::uint16_t numSlots, bool outside);

struct RichOptions
{
    bool ManyStatics = false; ///< 64 static meshes, more than an object set takes
    /// How often the level has its tiles, rooms, textures and moveables: what a conversion costs
    /// must grow as this does.
    std::size_t Times = 1;
};

/// A level with everything: every list filled, every kind of face, every corner code, objects with
/// and without animations, repeated meshes. It is also the demo, with a row of objects to look at.
LevelContent MakeRichLevel(VersionCode game, const RichOptions& options = {});

} // namespace morlik::samples
