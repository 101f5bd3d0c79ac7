#include "base/Narrow.h"
#include "samples/MainSfx.h"
#include "samples/Models.h"
#include "samples/Textures.h"

namespace morlik::samples
{

namespace
{

std::uint32_t FirstWordOf(VersionCode game)
{
    if (!IsOlderGame(game))
        return 0x00345254; // "TR4": the two are told apart by the file name
    if (IsFirstGame(game))
        return 0x20;
    return game == kTR2 ? 0x2d : 0xff180038;
}

} // namespace

LevelContent EmptyLevel(VersionCode game)
{
    LevelContent level;
    level.Game = game;
    level.FirstWord = FirstWordOf(game);
    level.SoundMap.fill(-1);
    return level;
}

LevelContent MakeTinyLevel(VersionCode game)
{
    LevelContent level = EmptyLevel(game);
    SetPalette(level);
    std::vector<std::uint8_t> pixels(kTilePixels);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = Shaded(Ink::Wood, static_cast<int>(i / kTileSide % kShades));
    AddTiles(level, pixels);
    level.NumObjectTiles = 1;
    level.Rooms.resize(1);

    MeshContent square; // facing the viewer
    square.Radius = 182;
    square.Vertices = {{-128, -256, 0}, {128, -256, 0}, {128, 0, 0}, {-128, 0, 0}};
    square.Normals.assign(square.Vertices.size(), {0, 0, -16384});
    square.Rectangles = {{{0, 1, 2, 3}, AddTexture(level, {.Width = 64, .Height = 64})}};
    // It stands still, with a way out of its animation into itself, and ends its own life.
    AddMoveable(level, {.Meshes = {AddMesh(level, square)},
                        .Animations = {
                            {.Record = {.FrameRate = 1, .NumAnimCommands = 1},
                             .Frames = {{.Box = {-128, 128, -256, 0, -16, 16}, .Rotations = {{}}}},
                             .Ways = {{std::int16_t{1}, {}}},
                             .Commands = {4}}}});
    level.MeshTrees = {0, 0, 0, 0}; // not used by a single mesh, but no reader takes an empty table

    level.SoundMap[0] = 0;
    level.SoundDetails = {{.Sample = 0, .Characteristics = 1 << 2}};
    level.SampleIndices = {0};
    if (!HasMainSFX(game))
        level.Samples = {MakeWav(440, 0.01)};
    return level;
}

LevelContent MakeSmallestLevel(VersionCode game)
{
    LevelContent level = MakeTinyLevel(game);
    if (!IsOlderGame(game)) {
        level.Tiles32.resize(kTileSide);
        level.Tiles16.resize(kTileSide);
    }
    return level;
}

} // namespace morlik::samples
