#pragma once

#include "convert/TextureTiles.h"
#include "level/LevelData.h"
#include "set/ObjectSet.h"

namespace morlik
{

/// The tiles that the sprites of a Tomb Raider I to III level lie on, and those between them.
TileRange SpriteTiles(const LevelData& level);

/// The level's own sprites, on `tiles`.
SpriteTables ConvertSprites(const LevelData& level, const TileRange& tiles);

} // namespace morlik
