#include "convert/Sprites.h"

#include <algorithm>

namespace morlik
{

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

SpriteTables ConvertSprites(const LevelData& level, const TileRange& tiles)
{
    SpriteTables sprites{level.SpriteTextures, ConvertTextureTiles(level, tiles),
                         level.SpriteSequences};
    for (SpriteTexture& sprite : sprites.SpriteTextures)
        sprite.Tile = static_cast<std::int16_t>(sprite.Tile - tiles.First);
    return sprites;
}

} // namespace morlik
