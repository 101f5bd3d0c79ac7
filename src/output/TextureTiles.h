#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/TR_Main.h"

#include <array>
#include <vector>

namespace morlik {

/// A run of tiles, `Last` included; empty where `Last` is below `First`.
struct TileRange
{
    std::int32_t First = 0;
    std::int32_t Last = -1;

    std::int32_t Count() const { return Last - First + 1; }
};

/// Squares of the palette tile: 256 colours, then black and magenta.
constexpr std::size_t kNumPaletteTextures = 258;

/// Texture records of the colour squares of a Tomb Raider I to III object set. They lie on the
/// palette tile, the one behind `tiles`, 64 squares of 4 by 4 pixels to a row.
std::array<TextInfo, kNumPaletteTextures> PaletteTextures(const TileRange& tiles);

/// Rows of 256 pixels of 3 bytes, R, G, B, without a gap.
using PixelRows = std::vector<std::byte>;

/// Fills `pixels` with the level's `tiles` and, for Tomb Raider I to III, the palette tile behind
/// them, and gives the number of bytes. Tiles that the level does not have are magenta. Raises
/// `TileBytes` of the level by the palette tile. `Prog` runs from 30 to 55.
std::int32_t ConvertTextureTiles(LevelData& level, const TrMainState& state, PixelRows& pixels,
                                 const TileRange& tiles, Reporter& report);

} // namespace morlik
