#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/TR_Main.h"

#include <algorithm>
#include <array>

namespace morlik
{

/// A run of tiles, `Last` included; empty where `Last` is below `First`.
struct TileRange
{
    std::int32_t First = 0;
    std::int32_t Last = -1;

    std::int32_t Count() const { return Last - First + 1; }

    /// Whether an object set of `level` may hold them. Tiles that the level lacks are magenta, but
    /// a tile number far out would fill memory and disk with them.
    bool Fits(const LevelData& level) const
    {
        constexpr std::int32_t kMostMissingTiles = 512;
        return Count() <= std::max(level.TileBytes / kTileBytes, kMostMissingTiles);
    }
};

/// Squares of the palette tile: 256 colours, then black and magenta.
constexpr std::size_t kNumPaletteTextures = 258;

/// Texture records of the colour squares of a Tomb Raider I to III object set. They lie on the
/// palette tile, the one behind `tiles`, 64 squares of 4 by 4 pixels to a row.
std::array<TextInfo, kNumPaletteTextures> PaletteTextures(const TileRange& tiles);

/// Writes the level's `tiles` and, for Tomb Raider I to III, the palette tile behind them, as their
/// byte count, 32 bits, and rows of 256 pixels of 3 bytes, R, G, B. Tiles that the level does not
/// have are magenta. Raises `TileBytes` of the level by the palette tile. `Prog` runs from 30
/// to 55.
void ConvertTextureTiles(LevelData& level, const TrMainState& state, ByteSink& out,
                         const TileRange& tiles, Reporter& report);

} // namespace morlik
