#include "output/SWD_Main.h"

#include <algorithm>

namespace morlik
{

namespace
{

constexpr std::int32_t kSwdVersion = 129;

} // namespace

TileRange SpriteTiles(const LevelData& level)
{
    if (level.SpriteTextures.empty())
        return {};
    TileRange tiles{255, 0};
    for (const SpriteTexture& sprite : level.SpriteTextures) {
        tiles.Last = std::max<std::int32_t>(tiles.Last, sprite.Tile);
        tiles.First = std::min<std::int32_t>(tiles.First, sprite.Tile);
    }
    return tiles;
}

void WriteSWD(const std::string& fileName, LevelData& level, const TrMainState& state,
              const TileRange& tiles, Reporter& report)
{
    OutputFile file(fileName, &report.Times);
    file.Put(kSwdVersion);
    file.Put(level.NumSpriteTextures);
    for (SpriteTexture sprite : level.SpriteTextures) {
        sprite.Tile = static_cast<std::int16_t>(sprite.Tile - tiles.First);
        file.Put(sprite);
    }
    ConvertTextureTiles(level, state, file, tiles, report);
    file.PutCounted(level.NumSpriteSequences, level.SpriteSequences);
    file.Close();
}

} // namespace morlik
