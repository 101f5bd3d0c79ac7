#pragma once

#include "level/LevelData.h"
#include "set/ObjectSet.h"

#include <algorithm>
#include <array>
#include <string>

namespace morlik
{

/// Message of a texture or sprite on a tile that no object set can hold.
inline constexpr const char* kBadTexture = "ERROR! Bad texture found!";

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

    /// For a message: what is wanted of `level`.
    std::string TextFor(const LevelData& level) const
    {
        return "the tiles " + std::to_string(First) + " to " + std::to_string(Last) + " of " +
               std::to_string(level.TileBytes / kTileBytes) + " are used";
    }
};

/// Texture records of the colour squares of a Tomb Raider I to III object set. They lie on the
/// palette tile, the one behind `tiles`, 64 squares of 4 by 4 pixels to a row.
std::array<TextInfo, kNumPaletteTextures> PaletteTextures(const TileRange& tiles);

/// The level's `tiles` and, for Tomb Raider I to III, the palette tile behind them. Tiles that the
/// level does not have are magenta.
SetTiles ConvertTextureTiles(const LevelData& level, const TileRange& tiles);

} // namespace morlik
