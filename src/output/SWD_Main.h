#pragma once

#include "level/LevelData.h"
#include "level/TR_Main.h"
#include "output/TextureTiles.h"

#include <string>

namespace morlik
{

/// Tiles that the sprites of a Tomb Raider I to III level lie on, and those between them.
TileRange SpriteTiles(const LevelData& level);

/// Writes the sprites of a Tomb Raider I to III level as a SWD file, little-endian and without a
/// gap, all counts 32-bit:
///
///   version, 129
///   sprite textures: count, records of 16 bytes, tiles counted from the first one of the file
///   tiles: byte count, rows of 256 pixels of 3 bytes, R, G, B
///   sprite sequences: count, records of 8 bytes
void WriteSWD(const std::string& fileName, LevelData& level, const TrMainState& state,
              const TileRange& tiles, Reporter& report);

} // namespace morlik
