#include "level/SharedBoxes.h"

#include "base/Narrow.h"

namespace morlik
{

namespace
{

/// Box and tile as one number.
std::uint64_t KeyOf(const TextInfo& info)
{
    const auto word = [](auto value, unsigned shift) {
        return static_cast<std::uint64_t>(value) << shift;
    };
    return word(info.Tile, 32) | word(info.X, 24) | word(info.Y, 16) | word(info.Width, 8) |
           word(info.Height, 0);
}

} // namespace

SharedBoxes::SharedBoxes(const LevelData& level, Reporter& report)
    : tileBytes_(level.TileBytes), report_(report)
{
    firstOfBox_.reserve(static_cast<std::size_t>(level.NumTextInfo));
}

std::int32_t SharedBoxes::FirstWith(const TextInfo& info, std::int32_t number)
{
    Check(info, number);
    return firstOfBox_.try_emplace(KeyOf(info), number).first->second;
}

void SharedBoxes::Check(const TextInfo& info, std::int32_t number) const
{
    if (info.X + info.Width > 255 || info.Y + info.Height > 255)
        report_.Stop("ConvertTR5TextInfo -> ObjectTexture" + std::to_string(number) + " invalid");
    if (std::int64_t{info.Tile} * kTileBytes > tileBytes_)
        report_.Stop("Invalid objecttexture - Tile wrong", kAppTitle,
                     "object textures: texture " + std::to_string(number) + " lies on tile " +
                         std::to_string(info.Tile) + " of " +
                         std::to_string(tileBytes_ / kTileBytes));
    const auto row = narrow<std::int16_t>(info.Y + kTileSide * std::int32_t{info.Tile});
    const auto rows = tileBytes_ / (kTileBytes / kTileSide);
    if (row >= rows)
        throw ReadFailure("object textures: row " + std::to_string(row) + " of " +
                          std::to_string(rows));
}

} // namespace morlik
