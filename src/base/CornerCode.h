#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace morlik
{

/// Corner of a box: whether it is at the right, and whether at the bottom.
struct BoxCorner
{
    bool Right;
    bool Bottom;

    bool operator==(const BoxCorner&) const = default;
};

/// Corner codes of rectangles and triangles.
constexpr std::array<std::int32_t, 2> kRectangleCodes{1, -1};
constexpr std::array<std::int32_t, 8> kTriangleCodes{0x0000, 0x2000, 0x4000, 0x6000,
                                                     0x8000, 0xa000, 0xc000, 0xe000};

/// The corners of the box that the vertices of a face lie at by its corner code: for a rectangle
/// all four, for a triangle, whose right angle is at the first, the first three.
constexpr std::array<BoxCorner, 4> CornersOfCode(std::int32_t code)
{
    constexpr BoxCorner kTopLeft{false, false};
    constexpr BoxCorner kTopRight{true, false};
    constexpr BoxCorner kBottomRight{true, true};
    constexpr BoxCorner kBottomLeft{false, true};
    constexpr std::array<std::array<BoxCorner, 4>, 2> kRectangles{{
        {kTopLeft, kTopRight, kBottomRight, kBottomLeft},
        {kTopRight, kTopLeft, kBottomLeft, kBottomRight},
    }};
    // The right angle, and on which way the triangle goes from there. The last corner is not used.
    constexpr std::array<std::array<BoxCorner, 4>, 8> kTriangles{{
        {kTopLeft, kTopRight, kBottomLeft, kTopLeft},
        {kTopRight, kBottomRight, kTopLeft, kTopLeft},
        {kBottomRight, kBottomLeft, kTopRight, kTopLeft},
        {kBottomLeft, kTopLeft, kBottomRight, kTopLeft},
        {kTopRight, kTopLeft, kBottomRight, kTopLeft},
        {kTopLeft, kBottomLeft, kTopRight, kTopLeft},
        {kBottomLeft, kBottomRight, kTopLeft, kTopLeft},
        {kBottomRight, kTopRight, kBottomLeft, kTopLeft},
    }};
    if (code == 1 || code == -1)
        return kRectangles[code == 1 ? 0 : 1];
    return kTriangles[static_cast<std::size_t>(code & 0xffff) >> 13U];
}

} // namespace morlik
