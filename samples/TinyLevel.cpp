#include "samples/TinyLevel.h"

#include "samples/Models.h"
#include "samples/Picture.h"
#include "samples/Textures.h"
#include "samples/Wav.h"

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

/// One square facing the viewer.
MeshContent SquareMesh(std::int16_t texture)
{
    MeshContent mesh;
    mesh.Radius = 182;
    mesh.Vertices = {{-128, -256, 0}, {128, -256, 0}, {128, 0, 0}, {-128, 0, 0}};
    mesh.Normals.assign(mesh.Vertices.size(), {0, 0, -16384});
    mesh.Rectangles = {{{0, 1, 2, 3}, texture}};
    return mesh;
}

/// A moveable of one mesh that stands still, with a way out of its animation into itself.
MoveableContent StillObject(std::size_t mesh)
{
    MoveableContent object;
    object.Meshes = {mesh};
    AnimationContent animation;
    animation.Frames = {{.Box = {-128, 128, -256, 0, -16, 16}, .Rotations = {{0, 0, 0}}}};
    animation.Transitions = {{.ToState = 1}};
    animation.Commands = {4}; // ends the object's life
    animation.NumCommands = 1;
    object.Animations = {animation};
    return object;
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
    Picture picture(1);
    for (int y = 0; y < kTileSide; ++y) {
        for (int x = 0; x < kTileSide; ++x)
            picture.Set(0, x, y, Shaded(Ink(y / kShades % kInks), y % kShades));
    }
    SetPalette(level);
    SetTiles(level, picture);
    level.NumObjectTiles = 1;
    level.Rooms.resize(1);

    const std::int16_t texture = AddRectangleTexture(level, {.Width = 64, .Height = 64});
    AddMoveable(level, StillObject(AddMesh(level, SquareMesh(texture))));
    level.MeshTrees = {0, 0, 0, 0}; // not used by a single mesh, but no reader takes an empty table

    level.SoundMap[0] = 0;
    level.SoundDetails = {{.Sample = 0, .Characteristics = 1 << 2}};
    level.SampleIndices = {0};
    if (game != kTR2 && game != kTR3)
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
