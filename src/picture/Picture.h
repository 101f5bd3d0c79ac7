#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace morlik
{

/// A colour: R in the lowest byte, then G, B and A.
using Colour = std::uint32_t;

constexpr Colour kOpaque = 0xff000000;

constexpr Colour Opaque(std::uint32_t red, std::uint32_t green, std::uint32_t blue)
{
    return kOpaque | (blue << 16U) | (green << 8U) | red;
}

/// Pictures are 1 to this many pixels wide and high.
constexpr std::int32_t kMostPictureSide = 8192;

/// Rows of pixels from the top. In memory a pixel is R, G, B, A; alpha is straight, that is,
/// colours are not multiplied by it, as PNG files want it.
struct Picture
{
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::vector<Colour> Pixels;

    std::size_t At(std::int32_t x, std::int32_t y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(Width) +
               static_cast<std::size_t>(x);
    }
};

} // namespace morlik
