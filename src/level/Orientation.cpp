#include "level/Orientation.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace morlik
{

namespace
{

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
    const auto codes = corners.size() == 4 ? std::span<const std::int32_t>(kRectangleCodes)
                                           : std::span<const std::int32_t>(kTriangleCodes);
    for (std::size_t turn = 0; turn < corners.size(); ++turn) {
        for (const std::int32_t code : codes) {
            const auto distance = DistanceOf(corners, box, CornersOfCode(code), turn);
            if (distance.Sum < smallest) {
                smallest = distance.Sum;
                best = {code, static_cast<std::int32_t>(turn), distance.Largest > 1};
            }
        }
    }
    return best;
}

} // namespace morlik
