#include "base/Narrow.h"
#include "samples/MainSfx.h"
#include "samples/RichParts.h"
#include "samples/TinyLevel.h"

namespace morlik::samples
{

namespace
{

RichTextures AddTextures(LevelContent& level)
{
    RichTextures textures;
    // The whole first tile is a texture that nothing uses.
    AddRectangleTexture(level, {.Tile = 0, .Width = kTileSide, .Height = kTileSide});
    for (std::size_t art = 0; art < textures.Rectangles.size(); ++art)
        textures.Rectangles.at(art) = AddRectangleTexture(level, BoxOf(Art(art)));
    textures.MirroredDoor = AddRectangleTexture(level, BoxOf(Art::Door), true);
    textures.MirroredArrow = AddRectangleTexture(level, BoxOf(Art::ArrowBoard), true);
    textures.CrateSideAgain = AddRectangleTexture(level, BoxOf(Art::CrateSide));
    textures.PillarLid = AddTriangleTexture(level, BoxOf(Art::PillarLid), 0);
    textures.Roof = AddTriangleTexture(level, BoxOf(Art::MillRoof), 0);
    textures.Rock = AddTriangleTexture(level, BoxOf(Art::Rock), 0);
    textures.RockMirrored = AddTriangleTexture(level, BoxOf(Art::Rock), 0xa000);
    for (std::size_t sail = 0; sail < textures.Sails.size(); ++sail) {
        const std::uint16_t code = kCornerCodes.at(sail);
        textures.Sails.at(sail) = AddTriangleTexture(level, SailBox(code), code);
    }
    return textures;
}

void AddTiles(LevelContent& level)
{
    SetPalette(level);
    if (IsOlderGame(level.Game)) {
        SetTiles(level, DrawTiles(kArtTiles));
        return;
    }
    SetTiles(level, DrawTiles(kArtTiles + kBumpTiles));
    level.NumRoomTiles = 1;
    level.NumObjectTiles = kArtTiles - 1;
    level.NumBumpTiles = kBumpTiles;
}

/// How `SampleIndices` name a sample: by its offset in the sample data (I), its place in
/// `main.sfx` (II and III) or its number (IV and V).
std::vector<std::int32_t> IndexSamples(VersionCode game,
                                       const std::vector<std::vector<std::byte>>& samples,
                                       std::size_t count)
{
    constexpr std::size_t kStride = 5; // not the order of the file
    std::vector<std::int32_t> indices;
    std::size_t offset = 0;
    for (std::size_t s = 0; s < count; ++s) {
        if (IsFirstGame(game))
            indices.push_back(narrow<std::int32_t>(offset));
        else if (game == kTR2 || game == kTR3)
            indices.push_back(narrow<std::int32_t>((s * kStride + 1) % samples.size()));
        else
            indices.push_back(narrow<std::int32_t>(s));
        offset += samples.at(s).size();
    }
    return indices;
}

} // namespace

void AddSounds(LevelContent& level)
{
    const auto detail = [](std::int16_t first, int samples, std::int16_t mode = 0) {
        constexpr std::int16_t kLoudness = 0x6000;
        constexpr std::int16_t kAlways = 0;
        return SoundDetail{.Sample = first,
                           .Raw = {kLoudness, kAlways},
                           .Characteristics = Word(samples << 2 | mode)};
    };
    constexpr std::int16_t kLooped = 3;
    level.SoundDetails = {detail(0, 4), detail(4, 1), detail(5, 1), detail(6, 2, kLooped),
                          detail(8, 1), detail(9, 2), detail(0, 0)};
    level.SoundMap[kStepSound] = 0;
    level.SoundMap[kDoorOpenSound] = 1;
    level.SoundMap[kDoorCloseSound] = 1;
    level.SoundMap[kSwitchSound] = 2;
    level.SoundMap[kMillSound] = 3;
    level.SoundMap[kPendulumSound] = 4; // no slot names detail 5
    level.SoundMap[kSilentSound] = 6;

    constexpr std::size_t kUsedSamples = 11;
    auto samples = SampleSounds();
    level.SampleIndices = IndexSamples(level.Game, samples, kUsedSamples);
    if (level.Game == kTR2 || level.Game == kTR3)
        return;
    samples.resize(kUsedSamples);
    level.Samples = std::move(samples);
}

LevelContent MakeRichLevel(VersionCode game, const RichOptions& options)
{
    LevelContent level = EmptyLevel(game);
    level.LaraType = game == kTR5 ? 3 : 0;
    level.WeatherType = game == kTR5 ? 1 : 0;
    AddTiles(level);
    const RichTextures textures = AddTextures(level);
    AddLara(level, textures);
    AddObjects(level, textures);
    AddStaticMeshes(level, textures, options.ManyStatics);
    AddScene(level, textures);
    AddSounds(level);
    return level;
}

} // namespace morlik::samples
