#pragma once

#include "level/LevelData.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace morlik::fuzz
{

/// A count in a file and the records behind it.
struct CountedTable
{
    std::size_t CountAt = 0; ///< offset of the count
    std::size_t CountBytes = 0;
    std::size_t RecordBytes = 0;
    std::size_t Records = 0; ///< as many as the count tells
    /// Offset of the first record; not always right behind the count.
    std::size_t FirstAt = 0;
};

/// The counts of a level, as far as its sections are in step. `bytes` is the file from its version
/// word on; older games without the bytes of their tiles, Tomb Raider IV the inflated level block.
std::vector<CountedTable> FindTables(std::span<const std::uint8_t> bytes, VersionCode game);

/// The streams of a Tomb Raider IV or V file: three of tiles, and in IV the level block. Count and
/// records are compressed size and stream; the inflated size stands in front.
std::vector<CountedTable> FindStreams(std::span<const std::uint8_t> bytes, VersionCode game);

} // namespace morlik::fuzz
