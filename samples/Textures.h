#pragma once

#include "samples/LevelContent.h"

#include <span>

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

/// Corner codes of rectangles: c1 to c4 run from the top left clockwise, or mirrored from the top
/// right counter-clockwise.
constexpr std::int32_t kPlain = 1;
constexpr std::int32_t kMirrored = -1;

/// Adds a texture in the form of the level's game and gives its number. The codes of triangles are
/// 0x2000 apart.
std::int16_t AddTexture(LevelContent& level, const TextureBox& box,
                        std::int32_t cornerCode = kPlain);

/// Brings all textures to the form of newer level compilers: corners lie at half pixels, sizes of
/// Tomb Raider IV and V are floats, and each texture begins at another of its corners.
void MakeFractional(LevelContent& level);

/// The colours that the tiles are drawn in, each from black to full in `kShades` steps. Together
/// they fill the palette, so that all games show the tiles alike.
enum class Ink : std::uint8_t
{
    Wood,
    Stone,
    Grass,
    Sky,
    Gold,
    Skin,
    Red,
    White
};
constexpr int kInks = 8;
constexpr int kShades = 31;
constexpr int kFullShade = kShades - 1;

/// Palette index of an ink at a shade of 0 to `kFullShade`. Index 0 is none of them: transparent.
std::uint8_t Shaded(Ink ink, int shade);

/// Fills both palettes with the inks.
void SetPalette(LevelContent& level);

/// Adds tiles of palette indices in the forms of the level's game, which has its palette.
void AddTiles(LevelContent& level, std::span<const std::uint8_t> pixels);

/// The object textures of a rich level.
enum class Art : std::uint8_t
{
    Unused, // tile 0: rooms
    Wall,
    Floor,
    Crate, // tile 1: objects
    CrateAgain,
    Arrow,
    MirroredArrow,
    Steel,
    Face, // tile 2: Lara and others
    Shirt,
    Skin,
    Boot,
    Leaf, // with transparent pixels
    Glow, // to be blended
    Rock,
    RockTop,         // a triangle
    RockTopMirrored, // the same box, the other way round
    Flame,           // tile 3: sprites
    Sail             // the first of eight triangles, one for each corner code
};

constexpr int kArtTiles = 4;

/// Tiles with all drawings. A sail has red at its c1, green at c2 and white at c3: all eight look
/// the same on a mesh if their codes are right.
std::vector<std::uint8_t> DrawTiles();

/// Adds the textures; tile 0 of the drawings is tile `firstTile` of the level.
void AddArtTextures(LevelContent& level, std::size_t firstTile);

TextureBox BoxOf(Art art);

/// The textures that were added last to a rich level.
struct ArtTextures
{
    std::size_t First = 0; ///< number of `Art::Unused`

    std::int16_t Of(Art art) const
    {
        return static_cast<std::int16_t>(First + static_cast<std::size_t>(art));
    }
};

} // namespace morlik::samples
