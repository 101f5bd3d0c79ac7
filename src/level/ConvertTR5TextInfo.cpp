#include "level/ConvertTR5TextInfo.h"

#include "base/Narrow.h"

#include <algorithm>
#include <unordered_map>

namespace morlik
{

namespace
{

constexpr std::int32_t kMirrored = 0x8000;

bool IsEven(std::uint8_t value)
{
    return value % 2 == 0;
}

bool IsTriangle(const ObjectTextureTR45& texture)
{
    return texture.Tile < 0;
}

TextInfo BoxOf(const ObjectTextureTR45& texture)
{
    const auto& c = texture.Corners;
    TextInfo info;
    info.X = std::min({c[0].XPixel, c[1].XPixel, c[2].XPixel});
    info.Y = std::min({c[0].YPixel, c[1].YPixel, c[2].YPixel});
    info.FlipX = 0xff;
    info.FlipY = 0xff;
    info.Width = narrow<std::uint8_t>(texture.Width);
    info.Height = narrow<std::uint8_t>(texture.Height);
    info.Tile = static_cast<std::int16_t>(texture.Tile & 0x7fff);
    return info;
}

/// A triangle starts from one of the corners of its box; the second corner tells whether it runs
/// on in the plain or in the mirrored direction.
std::int32_t TriangleCode(const ObjectTextureTR45& texture)
{
    const TextureCorner& c1 = texture.Corners[0];
    const TextureCorner& c2 = texture.Corners[1];
    const auto runs = [&](std::int32_t right, std::int32_t down) {
        return c2.XPixel == c1.XPixel + right && c2.YPixel == c1.YPixel + down;
    };
    const bool left = IsEven(c1.XPixel);
    const bool top = IsEven(c1.YPixel);
    if (left && top)
        return runs(texture.Width, 0) ? 0 : kMirrored + 0x2000;
    if (left)
        return runs(0, -texture.Height) ? 0x6000 : kMirrored + 0x4000;
    if (top)
        return runs(0, texture.Height) ? 0x2000 : kMirrored;
    return runs(-texture.Width, 0) ? 0x4000 : kMirrored + 0x6000;
}

/// Box and tile as one number.
std::uint64_t KeyOf(const TextInfo& info)
{
    const auto word = [](auto value, unsigned shift) {
        return static_cast<std::uint64_t>(value) << shift;
    };
    return word(info.Tile, 32) | word(info.X, 24) | word(info.Y, 16) | word(info.Width, 8) |
           word(info.Height, 0);
}

/// The row of the box's top must be a row of the tiles, counted in 16 bits.
void CheckRow(const TextInfo& info, std::int32_t numRows)
{
    const auto row = narrow<std::int16_t>(info.Y + kTileSide * std::int32_t{info.Tile});
    if (row >= numRows)
        throw ReadFailure("object textures: row " + std::to_string(row) + " of " +
                          std::to_string(numRows));
}

} // namespace

void ConvertTR5TextInfo(LevelData& level, TrMainState& state, Reporter& report)
{
    const auto count = static_cast<std::size_t>(level.NumTextInfo);
    level.TextInfos.assign(count, {});
    state.TextureFlip.assign(count, 0);
    state.TextureRemap.assign(count, 0);
    std::unordered_map<std::uint64_t, std::int32_t> firstOfBox;
    firstOfBox.reserve(count);

    for (std::size_t i = 0; i < count; ++i) {
        const ObjectTextureTR45& texture = state.ObjectTexturesTR45[i];
        const TextInfo info = BoxOf(texture);
        if (info.X + info.Width > 255 || info.Y + info.Height > 255)
            report.Stop("ConvertTR5TextInfo -> ObjectTexture" + std::to_string(i) + " invalid");
        if (std::int64_t{info.Tile} * kTileBytes > level.TileBytes)
            report.Stop("Invalid objecttexture - Tile wrong");
        if (IsTriangle(texture))
            state.TextureFlip[i] = TriangleCode(texture);
        else
            state.TextureFlip[i] = IsEven(texture.Corners[0].XPixel) ? 1 : -1;
        CheckRow(info, level.TileBytes / (kTileBytes / kTileSide));
        level.TextInfos[i] = info;
        const auto number = static_cast<std::int32_t>(i);
        state.TextureRemap[i] = firstOfBox.try_emplace(KeyOf(info), number).first->second;
    }
}

} // namespace morlik
