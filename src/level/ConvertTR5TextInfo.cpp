#include "level/ConvertTR5TextInfo.h"

#include "base/Narrow.h"
#include "level/SharedBoxes.h"
#include "level/TextureCorners.h"

#include <algorithm>

namespace morlik
{

namespace
{

constexpr std::int32_t kMirrored = 0x8000;

bool IsEven(std::uint8_t value)
{
    return value % 2 == 0;
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
    info.Tile = TileOf(texture);
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

} // namespace

void ConvertTR5TextInfo(LevelData& level, const TrMainState& state, Reporter& report)
{
    SharedBoxes boxes(level, report);
    level.Textures.reserve(state.ObjectTexturesTR45.size());
    for (const ObjectTextureTR45& texture : state.ObjectTexturesTR45) {
        const auto number = static_cast<std::int32_t>(level.Textures.size());
        LevelTexture& made = level.Textures.emplace_back();
        made.Info = BoxOf(texture);
        made.Attribute = texture.Attribute;
        made.TextureRemap = boxes.FirstWith(made.Info, number);
        if (IsTriangle(texture))
            made.TextureFlip = TriangleCode(texture);
        else
            made.TextureFlip = IsEven(texture.Corners[0].XPixel) ? 1 : -1;
    }
}

} // namespace morlik
