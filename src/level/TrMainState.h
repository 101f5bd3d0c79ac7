#pragma once

#include "base/VersionCode.h"
#include "level/LevelData.h"

#include <array>
#include <cstdint>
#include <vector>

namespace morlik
{

/// One corner of an object texture. The pixel bytes are its place in the tile; the coordinate
/// bytes tell its side: 0xff for right or bottom, 1 for left or top.
struct TextureCorner
{
    std::uint8_t XCoord = 0;
    std::uint8_t XPixel = 0;
    std::uint8_t YCoord = 0;
    std::uint8_t YPixel = 0;
};
static_assert(sizeof(TextureCorner) == 4);

/// Object texture of Tomb Raider I to III as it stands in the file.
struct ObjectTexture
{
    std::int16_t Attribute = 0; ///< 2: faces with it blend with what lies behind
    std::int16_t Tile = 0;
    std::array<TextureCorner, 4> Corners{}; ///< the fourth is all zero for a triangle
};
static_assert(sizeof(ObjectTexture) == 20);

/// Object texture of Tomb Raider IV and V: 38 and 40 bytes in the file.
struct ObjectTextureTR45
{
    std::int16_t Attribute = 0;
    std::int16_t Tile = 0;     ///< bit 15 marks a triangle
    std::int16_t NewFlags = 0; ///< read and not used
    std::array<TextureCorner, 4> Corners{};
    std::int32_t Width = 0;  ///< last pixel column less first
    std::int32_t Height = 0; ///< last pixel row less first
};
/// What stands before the unused bytes of such a record, and behind them.
using TextureHeadFields = FieldList<&ObjectTextureTR45::Attribute, &ObjectTextureTR45::Tile,
                                    &ObjectTextureTR45::NewFlags, &ObjectTextureTR45::Corners>;
using TextureSizeFields = FieldList<&ObjectTextureTR45::Width, &ObjectTextureTR45::Height>;
static_assert(TextureHeadFields::kBytes == 22 && TextureSizeFields::kBytes == 8);

/// What the level readers leave beside the level itself.
struct TrMainState
{
    std::int16_t LevelIsLoaded = 0;      ///< -1 from the start of `ReadTR`, 0 after a project load
    VersionCode LevelVersion = kNoLevel; ///< what was opened last
    std::int32_t NumTiles = 0;           ///< Tomb Raider I to III: tiles in the file
    std::int16_t RoomCount = 0;          ///< number of rooms, all games
    std::vector<ObjectTexture> ObjectTextures;
    std::vector<ObjectTextureTR45> ObjectTexturesTR45;
};

} // namespace morlik
