#pragma once

#include "set/ObjectSet.h"

#include <memory>
#include <span>

namespace morlik
{

/// The SWD file of an object set, its sprites. Little-endian, without a gap, all counts 32-bit:
///
///   version, 129
///   sprite textures: count, records of 16 bytes, tiles counted from the first one of the file
///   tiles: byte count, rows of 256 pixels of 3 bytes, R, G, B
///   sprite sequences: count, records of 8 bytes
///
/// `set` has sprites.
void WriteSwd(ByteSink& out, const ObjectSet& set, TileProgress& progress);

/// As `ReadWad`, for the sprites.
void ReadSwd(std::span<const std::byte> bytes, std::shared_ptr<const void> owner, ObjectSet& set);

} // namespace morlik
