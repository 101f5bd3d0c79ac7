#include "samples/Picture.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <unordered_map>

namespace morlik::samples
{

namespace
{

/// Full colours of the inks, 0 to 63 like all palette entries.
constexpr std::array<Colour6, kInks> kFullColours{{{48, 32, 16},
                                                   {32, 20, 10},
                                                   {44, 43, 40},
                                                   {48, 18, 12},
                                                   {60, 50, 32},
                                                   {30, 48, 16},
                                                   {12, 44, 14},
                                                   {36, 50, 62},
                                                   {8, 32, 52},
                                                   {46, 50, 56},
                                                   {63, 48, 8},
                                                   {60, 42, 32},
                                                   {8, 44, 44},
                                                   {60, 6, 0},
                                                   {63, 63, 63}}};

std::uint32_t Key(Colour colour)
{
    return static_cast<std::uint32_t>((colour.R << 16) | (colour.G << 8) | colour.B);
}

/// Entry of the palette next to the colour; 0 means transparent and is never chosen.
std::uint8_t NearestEntry(const std::array<Colour6, 256>& palette, Colour colour)
{
    std::size_t best = 1;
    int bestDistance = std::numeric_limits<int>::max();
    for (std::size_t i = 1; i < palette.size(); ++i) {
        const int distance = std::abs(palette[i].R * 4 - colour.R) +
                             std::abs(palette[i].G * 4 - colour.G) +
                             std::abs(palette[i].B * 4 - colour.B);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = i;
        }
    }
    return static_cast<std::uint8_t>(best);
}

std::vector<std::uint8_t> ToTiles8(const std::vector<Colour>& pixels,
                                   const std::array<Colour6, 256>& palette)
{
    std::unordered_map<std::uint32_t, std::uint8_t> known;
    std::vector<std::uint8_t> tiles;
    tiles.reserve(pixels.size());
    for (const Colour colour : pixels) {
        if (colour.A == 0) {
            tiles.push_back(0);
            continue;
        }
        const auto [entry, isNew] = known.try_emplace(Key(colour));
        if (isNew)
            entry->second = NearestEntry(palette, colour);
        tiles.push_back(entry->second);
    }
    return tiles;
}

/// 5 bits each of red, green, blue; the top bit keeps opaque black apart from transparent.
std::uint16_t ToPixel16(Colour colour)
{
    if (colour.A == 0)
        return 0;
    return static_cast<std::uint16_t>(0x8000 | ((colour.R >> 3) << 10) | ((colour.G >> 3) << 5) |
                                      (colour.B >> 3));
}

std::uint32_t ToPixel32(Colour colour)
{
    return (std::uint32_t{colour.A} << 24U) | Key(colour);
}

template <class Pixel>
std::vector<Pixel> ToTiles(const std::vector<Colour>& pixels, Pixel (*convert)(Colour))
{
    std::vector<Pixel> tiles(pixels.size());
    std::transform(pixels.begin(), pixels.end(), tiles.begin(), convert);
    return tiles;
}

} // namespace

Colour Shaded(Ink ink, int shade)
{
    const Colour6 full = kFullColours.at(static_cast<std::size_t>(ink));
    const int kept = std::clamp(shade, 0, kFullShade);
    const auto part = [kept](std::uint8_t value) {
        return static_cast<std::uint8_t>(value * kept / kFullShade * 4);
    };
    return {part(full.R), part(full.G), part(full.B)};
}

std::uint8_t PaletteIndex(Ink ink, int shade)
{
    return static_cast<std::uint8_t>(1 + static_cast<int>(ink) * kShades +
                                     std::clamp(shade, 0, kFullShade));
}

void SetPalette(LevelContent& level)
{
    for (int ink = 0; ink < kInks; ++ink) {
        for (int shade = 0; shade < kShades; ++shade) {
            const Colour colour = Shaded(Ink(ink), shade);
            const std::uint8_t index = PaletteIndex(Ink(ink), shade);
            level.Palette.at(index) = {static_cast<std::uint8_t>(colour.R / 4),
                                       static_cast<std::uint8_t>(colour.G / 4),
                                       static_cast<std::uint8_t>(colour.B / 4)};
            level.Palette16.at(index) = {colour.R, colour.G, colour.B};
        }
    }
}

void SetTiles(LevelContent& level, const Picture& picture)
{
    const auto& pixels = picture.Pixels();
    if (IsOlderGame(level.Game))
        level.Tiles8 = ToTiles8(pixels, level.Palette);
    else
        level.Tiles32 = ToTiles(pixels, ToPixel32);
    if (!IsFirstGame(level.Game))
        level.Tiles16 = ToTiles(pixels, ToPixel16);
}

} // namespace morlik::samples
