#include "level/ConvertTextInfo.h"

#include "level/TextureCorners.h"

#include <algorithm>

namespace morlik
{

namespace
{

constexpr std::uint8_t kFarSide = 0xff; ///< side byte of a right or bottom corner

/// The code tells which corner a triangle starts from, and whether it runs on mirrored.
std::int32_t TriangleCode(const TextureCorner& c1, const TextureCorner& c2)
{
    const bool right = c1.XCoord == kFarSide;
    const bool bottom = c1.YCoord == kFarSide;
    const bool nextRight = c2.XCoord == kFarSide;
    const bool nextBottom = c2.YCoord == kFarSide;
    if (right && bottom)
        return nextRight ? 0xe000 : 0x4000;
    if (right)
        return nextBottom ? 0x2000 : 0x8000;
    if (bottom)
        return nextBottom ? 0xc000 : 0x6000;
    return nextRight ? 0 : 0xa000;
}

void ConvertTriangle(const ObjectTexture& texture, TextInfo& info, std::int32_t& code)
{
    const auto& c = texture.Corners;
    code = TriangleCode(c[0], c[1]);
    const auto [left, right] = std::minmax({c[0].XPixel, c[1].XPixel, c[2].XPixel});
    const auto [top, bottom] = std::minmax({c[0].YPixel, c[1].YPixel, c[2].YPixel});
    info.X = left;
    info.Width = static_cast<std::uint8_t>(right - left);
    info.Y = top;
    info.Height = static_cast<std::uint8_t>(bottom - top);
}

/// Sets an extent of a rectangle from the pixels of its near and far side. A far side in front of
/// the near one leaves the extent 0 and gives false.
bool SetExtent(std::uint8_t nearPixel, std::uint8_t farPixel, std::uint8_t& start,
               std::uint8_t& extent)
{
    start = nearPixel;
    if (farPixel < nearPixel)
        return false;
    extent = static_cast<std::uint8_t>(farPixel - nearPixel);
    return true;
}

void ConvertRectangle(const ObjectTexture& texture, TextInfo& info, std::int32_t& code,
                      std::int32_t number, Reporter& report)
{
    const auto message = [number] {
        return "ConvertTextInfo -> Error reading texture" + std::to_string(number);
    };
    const TextureCorner& c1 = texture.Corners[0];
    const TextureCorner& c2 = texture.Corners[1];
    const TextureCorner& c4 = texture.Corners[3];
    bool good = true;

    info.FlipX = TextInfo::kFlipMark;
    if (c1.XCoord == kFarSide) {
        if (!SetExtent(c2.XPixel, c1.XPixel, info.X, info.Width))
            report.Stop(message());
        code = -1;
    } else {
        good = SetExtent(c1.XPixel, c2.XPixel, info.X, info.Width);
        code = 1;
        if (!good)
            report.Message(message());
    }

    // A fault of the width is told once more here: the user counts on two boxes for it.
    info.FlipY = TextInfo::kFlipMark;
    const bool bottomFirst = c1.YCoord == kFarSide;
    good &= SetExtent(bottomFirst ? c4.YPixel : c1.YPixel, bottomFirst ? c1.YPixel : c4.YPixel,
                      info.Y, info.Height);
    if (!good)
        report.Message(message());
}

} // namespace

void ConvertTextInfo(LevelData& level, const TrMainState& state, Reporter& report)
{
    level.Textures.reserve(state.ObjectTextures.size());
    for (const ObjectTexture& texture : state.ObjectTextures) {
        const auto number = static_cast<std::int32_t>(level.Textures.size());
        LevelTexture& made = level.Textures.emplace_back();
        made.Attribute = texture.Attribute;
        made.TextureRemap = number;
        if (IsTriangle(texture))
            ConvertTriangle(texture, made.Info, made.TextureFlip);
        else
            ConvertRectangle(texture, made.Info, made.TextureFlip, number, report);
        made.Info.Tile = texture.Tile;
    }
}

} // namespace morlik
