#include "convert/Pixels.h"

#include <cmath>
#include <cstring>

namespace morlik
{

namespace
{

/// Red 255, green 0, blue 255, the same in both byte orders.
constexpr std::uint32_t kMagenta = 0xff00ff;

constexpr std::uint32_t Pack(std::uint32_t first, std::uint32_t second, std::uint32_t third)
{
    return first | (second << 8U) | (third << 16U);
}

/// A palette value of 0 to 63 on the scale of 0 to 255.
std::uint32_t Scale6(std::uint8_t value)
{
    return static_cast<std::uint8_t>(std::lround(value / 63.0 * 255.0));
}

/// Writes a row from its source pixels; eight pixels fill three words of 64 bits.
template <class Pixel, class Convert>
void WriteRow(const Pixel* source, std::byte* out, Convert convert)
{
    constexpr std::size_t kPixels = 8;
    for (std::size_t x = 0; x < kTileSide; x += kPixels, source += kPixels) {
        std::array<std::uint64_t, kPixels> p{};
        for (std::size_t i = 0; i < kPixels; ++i)
            p[i] = convert(source[i]);
        const auto store = [&out](std::uint64_t word) {
            std::memcpy(out, &word, sizeof word);
            out += sizeof word;
        };
        store(p[0] | (p[1] << 24U) | (p[2] << 48U));
        store((p[2] >> 16U) | (p[3] << 8U) | (p[4] << 32U) | (p[5] << 56U));
        store((p[5] >> 8U) | (p[6] << 16U) | (p[7] << 40U));
    }
}

template <PixelOrder Order>
constexpr std::uint32_t Ordered(std::uint32_t r, std::uint32_t g, std::uint32_t b)
{
    return Order == PixelOrder::Rgb ? Pack(r, g, b) : Pack(b, g, r);
}

/// 5 bits each of red, green and blue; the top bit plays no part in the colour.
template <PixelOrder Order>
struct From16
{
    std::uint32_t operator()(std::uint16_t word) const
    {
        const auto colour =
            Ordered<Order>((word & 0x7c00U) >> 7U, (word & 0x3e0U) >> 2U, (word & 0x1fU) << 3U);
        return word == 0 ? kMagenta : colour;
    }
};

/// The bytes B, G, R, A.
template <PixelOrder Order>
struct From32
{
    std::uint32_t operator()(std::uint32_t bgra) const
    {
        const auto colour =
            Ordered<Order>((bgra >> 16U) & 0xffU, (bgra >> 8U) & 0xffU, bgra & 0xffU);
        return bgra >> 24U == 0xff ? colour : kMagenta;
    }
};

} // namespace

PixelConverter::PixelConverter(const LevelData& level, PixelOrder order)
    : tiles8_(level.Tiles8),
      tiles16_(level.Tiles16),
      tiles32_(level.Tiles32),
      owners_{level.File, level.InflatedTiles},
      order_(order)
{
    for (std::size_t i = 1; i < paletteColours_.size(); ++i) {
        const Colour6& c = level.Palette[i];
        const auto r = Scale6(c.R);
        const auto g = Scale6(c.G);
        const auto b = Scale6(c.B);
        paletteColours_[i] = order == PixelOrder::Rgb ? Ordered<PixelOrder::Rgb>(r, g, b)
                                                      : Ordered<PixelOrder::Bgr>(r, g, b);
    }
    paletteColours_[0] = kMagenta;
}

std::int64_t PixelConverter::NumRows() const
{
    const auto pixels = tiles8_.size() + tiles16_.size() + tiles32_.size();
    return static_cast<std::int64_t>(pixels) / kTileSide;
}

void PixelConverter::ConvertRow(std::int64_t row, std::byte* out) const
{
    if (row < 0 || row >= NumRows()) {
        const std::array<std::uint8_t, kTileSide> nothing{};
        WriteRow(nothing.data(), out, [](std::uint8_t) { return kMagenta; });
        return;
    }
    const auto first = static_cast<std::size_t>(row * kTileSide);
    const bool rgb = order_ == PixelOrder::Rgb;
    if (!tiles8_.empty())
        WriteRow(&tiles8_[first], out, [this](std::uint8_t v) { return paletteColours_[v]; });
    else if (!tiles16_.empty() && rgb)
        WriteRow(&tiles16_[first], out, From16<PixelOrder::Rgb>{});
    else if (!tiles16_.empty())
        WriteRow(&tiles16_[first], out, From16<PixelOrder::Bgr>{});
    else if (rgb)
        WriteRow(&tiles32_[first], out, From32<PixelOrder::Rgb>{});
    else
        WriteRow(&tiles32_[first], out, From32<PixelOrder::Bgr>{});
}

} // namespace morlik
