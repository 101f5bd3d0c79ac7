#include "convert/ConvertLevel.h"

#include "convert/ConvertFrames.h"
#include "convert/ConvertMeshes.h"
#include "convert/FixAnimDispatches.h"
#include "convert/Objects.h"
#include "convert/Sprites.h"
#include "convert/UsedTextures.h"
#include "set/Sounds.h"

#include <algorithm>
#include <cstring>

namespace morlik
{

namespace
{

/// What goes to the set as it was read, or is read there by later steps.
ObjectSet TablesOf(const LevelData& level)
{
    ObjectSet set;
    set.Game = level.Version;
    set.Animations = level.Animations;
    set.StateChanges = level.StateChanges;
    set.AnimDispatches = level.AnimDispatches;
    set.AnimCommands = level.AnimCommands;
    set.MeshTrees = level.MeshTrees;
    set.Frames.resize(level.Frames.size() / sizeof(std::int16_t));
    if (!set.Frames.empty())
        std::memcpy(set.Frames.data(), level.Frames.data(), level.Frames.size());
    set.Moveables = level.Moveables;
    set.StaticMeshes = level.StaticMeshes;
    set.EmptyCounts = {.StateChanges = level.NumStateChanges,
                       .AnimDispatches = level.NumAnimDispatches,
                       .AnimCommands = level.NumAnimCommands,
                       .StaticMeshes = level.NumStaticMeshes,
                       .SoundDetails = level.NumSoundDetails,
                       .SampleIndices = level.NumSampleIndices,
                       .SpriteTextures = level.NumSpriteTextures,
                       .SpriteSequences = level.NumSpriteSequences};
    set.Owners = {level.File};
    return set;
}

/// The sounds of Tomb Raider I to III.
void ConvertSounds(const LevelData& level, ObjectSet& set, Reporter& report)
{
    set.Sounds = SoundTablesOf(level);
    const auto waveOf = [&level](std::int32_t sample) -> std::optional<std::span<const std::byte>> {
        const Sample* found = FindIn(level.Samples, sample);
        return found != nullptr ? std::optional(found->Data) : std::nullopt;
    };
    try {
        ListSetSamples(set, waveOf);
    } catch (const SoundsDamaged& failure) {
        report.Stop(kSoundsDamaged, kAppTitle, failure.what());
    }
}

/// `places` of the objects where not all of a level are there.
std::optional<ObjectSet> ConvertObjectsOf(const LevelData& level, const ObjectPlaces* places,
                                          const ObjectNames& names, const std::string& levelTitle,
                                          const ConvertChoices& choices, Reporter& report,
                                          const std::function<void(ConvertStage)>& onStage)
{
    const auto begin = [&onStage](ConvertStage stage) {
        if (onStage)
            onStage(stage);
    };
    const bool isOlderGame = IsOlderGame(level.Version);
    ObjectSet set = TablesOf(level);

    begin(ConvertStage::Meshes);
    report.LogLine("Converting Meshes");
    const auto textures = NumberTextures(
        level, places != nullptr ? FirstTexture::PlainOrSpare : FirstTextureOf(level), report);
    if (!textures)
        return std::nullopt;
    LimitTextures(textures->InOrder.size(), report);
    set.Meshes = ConvertMeshes(level, *textures, choices.UpdateHorizon, set.Info, report);

    begin(ConvertStage::Tiles);
    const TileRange tiles = TilesOf(level, *textures);
    begin(ConvertStage::Palette);
    if (isOlderGame)
        report.LogLine("Building palette");

    begin(ConvertStage::Frames);
    ConvertFrames(set, names, report);
    begin(ConvertStage::Dispatches);
    FixAnimDispatches(set, report);

    begin(ConvertStage::Textures);
    auto records = TextureRecords(level, *textures, tiles, report);
    if (!records)
        return std::nullopt;
    set.Textures = std::move(*records);
    set.Tiles = ConvertTextureTiles(level, tiles);
    if (places != nullptr)
        DropUnusedTiles(set);

    begin(ConvertStage::Objects);
    ConvertObjects(set, names, levelTitle, places);
    if (isOlderGame)
        ConvertSounds(level, set, report);
    if (isOlderGame && choices.ExportSprites) {
        const TileRange spriteTiles = SpriteTiles(level);
        if (!spriteTiles.Fits(level)) {
            report.Message(kBadTexture, kAppTitle, spriteTiles.TextFor(level));
            return std::nullopt;
        }
        set.Sprites = ConvertSprites(level, spriteTiles);
    }
    return set;
}

} // namespace

SoundTables SoundTablesOf(const LevelData& level)
{
    SoundTables tables;
    std::copy_n(level.SoundMap.begin(), tables.SoundMap.size(), tables.SoundMap.begin());
    tables.SoundDetails = level.SoundDetails;
    tables.SampleIndices = level.SampleIndices;
    return tables;
}

std::optional<ObjectSet> ConvertLevel(const LevelData& level, const ObjectNames& names,
                                      const std::string& levelTitle, const ConvertChoices& choices,
                                      Reporter& report,
                                      const std::function<void(ConvertStage)>& onStage)
{
    const auto chosen = ChooseObjects(level, choices.Objects);
    return ConvertObjectsOf(chosen ? chosen->Level : level, chosen ? &chosen->Places : nullptr,
                            names, levelTitle, choices, report, onStage);
}

} // namespace morlik
