#pragma once

#include "level/Sections.h"

#include <cstddef>
#include <span>

namespace morlik
{

/// Levels of the extended engine of Tomb Raider IV, which most custom levels are made for. They
/// are Tomb Raider IV levels but for
///
///   end of the file   "NG", data of the engine, "NGLE", u32 size from "NG" to the end
///   demo data count   u16, the number of slots of the sound map, 0 for 370; there is no demo
///                     data, and the map has as many slots
///   samples           in some levels, where they stand in a `main.sfx`: s32 count, then a u32
///                     start and a u32 size of each, right before "NG"
bool IsExtended(std::span<const std::byte> file);

/// The number of slots and the sound map. The first 370 go into the level, those that are missing
/// there are free. Sounds of the further ones have no place in an object set, which is told.
void ReadExtendedSoundMap(LevelReading& reading);

/// Whether it is the places of `count` samples that come next, not the samples. Moves nothing.
bool HasSamplePlaces(const ByteReader& reader, std::int32_t count);

} // namespace morlik
