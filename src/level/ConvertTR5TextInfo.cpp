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

void ConvertTR5TextInfo(LevelData& level, TrMainState& state, Reporter& report)
{
    StartTextures(level, state);
    SharedBoxes boxes(level, report);
    for (std::size_t i = 0; i < level.TextInfos.size(); ++i) {
        const ObjectTextureTR45& texture = state.ObjectTexturesTR45[i];
        level.TextInfos[i] = BoxOf(texture);
        state.TextureRemap[i] = boxes.FirstWith(level.TextInfos[i], static_cast<std::int32_t>(i));
        if (IsTriangle(texture))
            state.TextureFlip[i] = TriangleCode(texture);
        else
            state.TextureFlip[i] = IsEven(texture.Corners[0].XPixel) ? 1 : -1;
    }
}

} // namespace morlik
