#include "base/Narrow.h"
#include "samples/MainSfx.h"
#include "samples/Models.h"
#include "samples/Textures.h"

#include <algorithm>

namespace morlik::samples
{

LevelContent EmptyLevel(VersionCode game)
{
    LevelContent level;
    level.Game = game;
    level.FirstWord = IsFirstGame(game) ? 0x20 : game == kTR2 ? 0x2d : 0xff180038;
    if (!IsOlderGame(game))
        level.FirstWord = 0x00345254; // "TR4": the two are told apart by the file name
    level.SoundMap.fill(-1);
    return level;
}

LevelContent MakeTinyLevel(VersionCode game, int rows)
{
    LevelContent level = EmptyLevel(game);
    SetPalette(level);
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(rows) * kTileSide);
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
    level.Meshes = {square};
    // It stands still, with a way out of its animation into itself, and ends its own life.
    AddMoveable(level, {.Meshes = {0},
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

void MakeExtended(LevelContent& level, std::uint16_t numSlots, bool outside)
{
    constexpr std::array<std::size_t, 2> kFurtherSounds{401, 510};
    ExtensionContent extension{.NumSlots = numSlots, .SoundMap = {}, .Places = {}};
    extension.SoundMap.assign(numSlots == 0 ? kSoundMapSlotsTR2 : numSlots, -1);
    std::copy_n(level.SoundMap.begin(), std::min(extension.SoundMap.size(), kSoundMapSlotsTR2),
                extension.SoundMap.begin());
    for (const std::size_t sound : kFurtherSounds)
        if (sound < extension.SoundMap.size())
            extension.SoundMap[sound] = 0;
    std::size_t start = 0; // the samples begin their main.sfx
    for (const auto& sample : level.Samples) {
        if (outside)
            extension.Places.push_back(
                {narrow<std::uint32_t>(start), narrow<std::uint32_t>(sample.size())});
        start += sample.size();
    }
    level.Extension = std::move(extension);
}

} // namespace morlik::samples
