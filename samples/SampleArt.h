#pragma once

#include "samples/Picture.h"
#include "samples/Textures.h"

namespace morlik::samples
{

/// The drawings in the tiles of the rich levels.
enum class Art : std::uint8_t
{
    BrickWall, // tile 0: rooms
    Slabs,
    Beams,
    Meadow,
    CrateSide, // tile 1: objects
    CrateTop,
    Pillar,
    PillarLid,
    ArrowBoard,
    Door,
    DoorFrame,
    SwitchPlate,
    Lever,
    Medipack,
    Face, // tile 2: Lara and the mill
    Hair,
    Shirt,
    Shorts,
    Skin,
    Boot,
    MillWall,
    MillRoof,
    Blade,
    Leaf, // with transparent pixels
    Glow, // to be blended
    Rock,
    Cloud,
    Flame1, // tile 3: sprites
    Flame2,
    Coin,
    Count
};

constexpr int kArtTiles = 4;
constexpr int kBumpTiles = 2; ///< behind the others, in Tomb Raider IV and V

/// Where a drawing is.
TextureBox BoxOf(Art art);

/// Where the sail of a corner code is. Red marks its c1, green c2 and white c3, so that all eight
/// sails look the same on a mesh if their codes are right.
TextureBox SailBox(std::uint16_t cornerCode);

/// All drawings, with `tiles` tiles; the bump tiles hold a height map of the bricks.
Picture DrawTiles(int tiles);

} // namespace morlik::samples
