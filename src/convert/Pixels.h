#pragma once

#include "level/LevelData.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace morlik
{

/// Order of the three bytes of an output pixel.
enum class PixelOrder : std::uint8_t
{
    Rgb,
    Bgr,
};

/// Turns rows of the level's tiles into rows of 256 pixels of 3 bytes. Transparent pixels become
/// magenta: palette index 0, the 16-bit word 0, or an alpha below 255. Keeps the pixels alive.
class PixelConverter
{
public:
    PixelConverter(const LevelData& level, PixelOrder order);

    /// Number of rows in the level's tiles.
    std::int64_t NumRows() const;

    /// Writes row `row` of the level as `kRowBytes` bytes; a row outside the level is all magenta.
    void ConvertRow(std::int64_t row, std::byte* out) const;

private:
    std::span<const std::uint8_t> tiles8_;
    std::span<const std::uint16_t> tiles16_;
    std::span<const std::uint32_t> tiles32_;
    std::array<std::shared_ptr<const void>, 2> owners_;
    PixelOrder order_;
    /// Tomb Raider I: pixel by palette index, its three bytes in the low 24 bits.
    std::array<std::uint32_t, 256> paletteColours_{};
};

} // namespace morlik
