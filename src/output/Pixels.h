#pragma once

#include "level/LevelData.h"
#include "level/TR_Main.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace morlik
{

/// Order of the three bytes of an output pixel.
enum class PixelOrder : std::uint8_t
{
    Rgb,
    Bgr,
};

constexpr std::size_t kPixelBytes = 3;
constexpr std::size_t kRowBytes = kTileSide * kPixelBytes;

/// Turns rows of the level's tiles into rows of 256 pixels of 3 bytes. Transparent pixels become
/// magenta: palette index 0, the 16-bit word 0, or an alpha below 255.
class PixelConverter
{
public:
    PixelConverter(const LevelData& level, const TrMainState& state, PixelOrder order);

    /// Number of rows in the level's tiles.
    std::int64_t NumRows() const;

    /// Writes row `row` of the level as `kRowBytes` bytes; a row outside the level is all magenta.
    void ConvertRow(std::int64_t row, std::byte* out) const;

private:
    const LevelData& level_;
    PixelOrder order_;
    /// Tomb Raider I: pixel by palette index, its three bytes in the low 24 bits.
    std::array<std::uint32_t, 256> paletteColours_{};
};

} // namespace morlik
