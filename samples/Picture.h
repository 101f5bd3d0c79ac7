#pragma once

#include "samples/LevelContent.h"

#include <cstdint>
#include <vector>

namespace morlik::samples
{

struct Colour
{
    std::uint8_t R = 0;
    std::uint8_t G = 0;
    std::uint8_t B = 0;
    std::uint8_t A = 255; ///< 0 is transparent
};

/// The colours that the pictures are drawn in, each from black to full in `kShades` steps.
/// Together they fill the palette, so that all games show the pictures alike.
enum class Ink : std::uint8_t
{
    Wood,
    Bark,
    Stone,
    Brick,
    Sand,
    Grass,
    Leaf,
    Sky,
    Water,
    Steel,
    Gold,
    Skin,
    Cloth,
    Red,
    White
};
constexpr int kInks = 15;
constexpr int kShades = 17;
constexpr int kFullShade = kShades - 1;

/// An ink at a shade, which is kept in 0 to `kFullShade`.
Colour Shaded(Ink ink, int shade);

/// Palette index of that colour; index 0 is the transparent one.
std::uint8_t PaletteIndex(Ink ink, int shade);

/// Tiles one below the other, 256 pixels wide; transparent at first.
class Picture
{
public:
    explicit Picture(int tiles)
        : pixels_(static_cast<std::size_t>(tiles) * kTilePixels, Colour{0, 0, 0, 0})
    {
    }

    void Set(int tile, int x, int y, Colour colour)
    {
        const std::size_t row =
            static_cast<std::size_t>(tile) * kTileSide + static_cast<std::size_t>(y);
        pixels_.at(row * kTileSide + static_cast<std::size_t>(x)) = colour;
    }
    const std::vector<Colour>& Pixels() const { return pixels_; }

private:
    std::vector<Colour> pixels_;
};

/// Fills both palettes with the inks.
void SetPalette(LevelContent& level);

/// Fills the level's tiles in the forms of its game; colours that its palette lacks take the
/// nearest entry in the 8-bit tiles.
void SetTiles(LevelContent& level, const Picture& picture);

} // namespace morlik::samples
