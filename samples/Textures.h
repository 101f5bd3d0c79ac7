#pragma once

#include "samples/LevelContent.h"

namespace morlik::samples
{

/// A piece of a tile that is used as a texture. For Tomb Raider IV and V the box begins at even
/// pixels and has even sizes: the corners' places are told by odd and even pixels there.
struct TextureBox
{
    std::int16_t Tile = 0;
    int X = 0;
    int Y = 0;
    int Width = 32; ///< pixels
    int Height = 32;
    std::int16_t Attribute = 0; ///< 0 solid, 1 with transparent pixels, 2 blending
};

/// The corner codes of triangles: the right-angled corner that c1 is, and whether c2 follows it
/// clockwise or, from `kMirroredFrom` on, counter-clockwise.
constexpr std::array<std::uint16_t, 8> kCornerCodes{0,      0x2000, 0x4000, 0x6000,
                                                    0x8000, 0xa000, 0xc000, 0xe000};

/// Places of the corners of a box: bit 0 right, bit 1 bottom.
enum BoxCorner : std::uint8_t
{
    kTopLeft = 0,
    kTopRight = 1,
    kBottomLeft = 2,
    kBottomRight = 3
};

/// The three corners c1, c2, c3 of a triangle with that code.
std::array<BoxCorner, 3> CornersOf(std::uint16_t cornerCode);

/// Corners c1 to c4 from the top left clockwise; mirrored from the top right counter-clockwise.
ObjectTexture RectangleTexture(const TextureBox& box, bool mirrored = false);
ObjectTexture TriangleTexture(const TextureBox& box, std::uint16_t cornerCode);
ObjectTextureTR45 RectangleTextureTR45(const TextureBox& box, bool mirrored = false);
ObjectTextureTR45 TriangleTextureTR45(const TextureBox& box, std::uint16_t cornerCode);

/// Add the texture in the form of the level's game and give its number.
std::int16_t AddRectangleTexture(LevelContent& level, const TextureBox& box, bool mirrored = false);
std::int16_t AddTriangleTexture(LevelContent& level, const TextureBox& box,
                                std::uint16_t cornerCode);

/// Brings all textures to the form of newer level compilers: corners lie at half pixels, sizes of
/// Tomb Raider IV and V are floats, and each texture begins at another of its corners.
void MakeFractional(LevelContent& level);

} // namespace morlik::samples
