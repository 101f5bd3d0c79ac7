#include "convert/UsedTextures.h"

#include "base/Text.h"
#include "convert/Faces.h"

#include <algorithm>

namespace morlik
{

namespace
{

constexpr std::int32_t kUnused = -1;

[[noreturn]] void StopAtTexture(std::int32_t index, const char* axis, Reporter& report)
{
    report.Stop("Wrong TextInfo found - TextInfo" + std::to_string(index) + " -> " + axis +
                " invalid");
}

void KeepSignOfFirst(std::vector<std::int32_t>& used, const std::vector<LevelTexture>& textures,
                     FirstTexture first)
{
    std::vector<bool> mirrored(textures.size());
    for (const LevelTexture& texture : textures)
        if (texture.TextureFlip == -1)
            mirrored[static_cast<std::size_t>(texture.TextureRemap)] = true;
    const auto plain = std::find_if(used.begin(), used.end(), [&](std::int32_t index) {
        return !mirrored[static_cast<std::size_t>(index)];
    });
    if (plain != used.end())
        std::rotate(used.begin(), plain, plain + 1);
    else if (first == FirstTexture::PlainOrSpare && !used.empty())
        used.insert(used.begin(), used.front());
}

} // namespace

FirstTexture FirstTextureOf(const LevelData& level)
{
    return level.HasFractions ? FirstTexture::PlainIfAny : FirstTexture::AsItComes;
}

std::optional<UsedTextures> NumberTextures(const LevelData& level, FirstTexture first,
                                           Reporter& report)
{
    auto used = CountTextInfos(level, report);
    if (!used)
        return std::nullopt;
    if (first != FirstTexture::AsItComes)
        KeepSignOfFirst(*used, level.Textures, first);
    UsedTextures textures;
    textures.TextureNumbers.assign(level.Textures.size(), kUnused);
    std::int32_t number = 0;
    for (const auto index : *used)
        textures.TextureNumbers[static_cast<std::size_t>(index)] = number++;
    textures.InOrder = std::move(*used);
    return textures;
}

void LimitTextures(std::size_t count, Reporter& report)
{
    const auto number = std::to_string(count);
    if (count > kMostTextures) {
        report.Hint(Grouped(count) + " textures used, the editor takes " + Grouped(kMostTextures) +
                    ": leave out objects with --without, --fit or Choose Objects of the window");
        // "To many" is what the users know the message by.
        report.Stop("To many object textures in level - can't continue!", kAppTitle,
                    "ERROR! To many textures used (" + number + ")");
    }
    report.LogLine(number + " TextInfos found");
}

TileRange TilesOf(const LevelData& level, const UsedTextures& textures)
{
    if (textures.InOrder.empty())
        return {};
    TileRange tiles{level.TileBytes / kTileBytes, 0};
    for (const auto index : textures.InOrder) {
        const std::int32_t tile = level.Textures[static_cast<std::size_t>(index)].Info.Tile;
        tiles.First = std::min(tiles.First, tile);
        tiles.Last = std::max(tiles.Last, tile);
    }
    return tiles;
}

std::optional<std::vector<TextInfo>> TextureRecords(const LevelData& level,
                                                    const UsedTextures& textures,
                                                    const TileRange& tiles, Reporter& report)
{
    std::vector<TextInfo> records;
    records.reserve(textures.InOrder.size() + kNumPaletteTextures);
    for (const auto index : textures.InOrder) {
        TextInfo record = level.Textures[static_cast<std::size_t>(index)].Info;
        const std::int32_t tile = record.Tile - tiles.First;
        if (tile < 0 || tile >= tiles.Count() || !tiles.Fits(level)) {
            report.Message(kBadTexture, kAppTitle, tiles.TextFor(level));
            return std::nullopt;
        }
        if (record.X + record.Width > 255)
            StopAtTexture(index, "X", report);
        if (record.Y + record.Height > 255)
            StopAtTexture(index, "Y", report);
        record.Tile = static_cast<std::int16_t>(tile);
        records.push_back(record);
    }
    if (IsOlderGame(level.Version)) {
        const auto squares = PaletteTextures(tiles);
        records.insert(records.end(), squares.begin(), squares.end());
    }
    return records;
}

} // namespace morlik
