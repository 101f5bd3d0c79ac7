#include "level/Orientation.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace morlik
{

namespace
{

constexpr BoxCorner kTopLeft{false, false};
constexpr BoxCorner kTopRight{true, false};
constexpr BoxCorner kBottomRight{true, true};
constexpr BoxCorner kBottomLeft{false, true};

struct CodeCorners
{
    std::int32_t Code;
    std::array<BoxCorner, 4> Corners;
};

constexpr std::array<CodeCorners, 2> kRectangleCodes{{
    {1, {kTopLeft, kTopRight, kBottomRight, kBottomLeft}},
    {-1, {kTopRight, kTopLeft, kBottomLeft, kBottomRight}},
}};

/// The right angle, and on which way the triangle goes from there. The last corner is not used.
constexpr std::array<CodeCorners, 8> kTriangleCodes{{
    {0x0000, {kTopLeft, kTopRight, kBottomLeft, kTopLeft}},
    {0x2000, {kTopRight, kBottomRight, kTopLeft, kTopLeft}},
    {0x4000, {kBottomRight, kBottomLeft, kTopRight, kTopLeft}},
    {0x6000, {kBottomLeft, kTopLeft, kBottomRight, kTopLeft}},
    {0x8000, {kTopRight, kTopLeft, kBottomRight, kTopLeft}},
    {0xa000, {kTopLeft, kBottomLeft, kTopRight, kTopLeft}},
    {0xc000, {kBottomLeft, kBottomRight, kTopLeft, kTopLeft}},
    {0xe000, {kBottomRight, kTopRight, kBottomLeft, kTopLeft}},
}};

struct Distance
{
    std::int32_t Sum = 0;
    std::int32_t Largest = 0;
};

Distance DistanceOf(std::span<const TextureCorner> corners, const PixelBox& box,
                    const std::array<BoxCorner, 4>& places, std::size_t turn)
{
    Distance distance;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const TextureCorner& c = corners[(i + turn) % corners.size()];
        const auto x = std::abs(c.XPixel - (places[i].Right ? box.Right : box.Left));
        const auto y = std::abs(c.YPixel - (places[i].Bottom ? box.Bottom : box.Top));
        distance.Sum += x + y;
        distance.Largest = std::max({distance.Largest, x, y});
    }
    return distance;
}

} // namespace

std::array<BoxCorner, 4> CornersOfCode(std::int32_t code)
{
    if (code == 1 || code == -1)
        return kRectangleCodes[code == 1 ? 0 : 1].Corners;
    return kTriangleCodes[static_cast<std::size_t>(code & 0xffff) >> 13U].Corners;
}

PixelBox BoxOf(std::span<const TextureCorner> corners)
{
    PixelBox box{255, 255, 0, 0};
    for (const TextureCorner& c : corners) {
        box.Left = std::min(box.Left, c.XPixel);
        box.Top = std::min(box.Top, c.YPixel);
        box.Right = std::max(box.Right, c.XPixel);
        box.Bottom = std::max(box.Bottom, c.YPixel);
    }
    return box;
}

Orientation OrientationOf(std::span<const TextureCorner> corners, const PixelBox& box)
{
    Orientation best;
    auto smallest = std::numeric_limits<std::int32_t>::max();
    const auto codes = corners.size() == 4 ? std::span<const CodeCorners>(kRectangleCodes)
                                           : std::span<const CodeCorners>(kTriangleCodes);
    for (std::size_t turn = 0; turn < corners.size(); ++turn) {
        for (const CodeCorners& code : codes) {
            const auto distance = DistanceOf(corners, box, code.Corners, turn);
            if (distance.Sum < smallest) {
                smallest = distance.Sum;
                best = {code.Code, static_cast<std::int32_t>(turn), distance.Largest > 1};
            }
        }
    }
    return best;
}

} // namespace morlik
