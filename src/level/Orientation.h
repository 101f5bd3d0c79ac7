#pragma once

#include "base/CornerCode.h"
#include "level/TrMainState.h"

#include <cstdint>
#include <span>

namespace morlik
{

/// How a texture lies on its box: `Code` as in `TextureFlip`, and by how many places the vertices
/// of a face with it are turned before the code holds.
struct Orientation
{
    std::int32_t Code = 0;
    std::int32_t Turn = 0;
    bool Simplified = false; ///< a corner lies more than a pixel from its corner of the box
};

/// The smallest and the largest pixel of some corners.
struct PixelBox
{
    std::uint8_t Left;
    std::uint8_t Top;
    std::uint8_t Right;
    std::uint8_t Bottom;
};
PixelBox BoxOf(std::span<const TextureCorner> corners);

/// The orientation of a texture with three or four corners whose places alone tell it: of all codes
/// and turns the one that has each corner nearest to its corner of the box.
Orientation OrientationOf(std::span<const TextureCorner> corners, const PixelBox& box);

} // namespace morlik
