#pragma once

#include "fuzz/LevelInput.h"

#include <cstddef>
#include <cstdint>

namespace morlik::fuzz
{

/// Changes a level in place, knowing where its counts and records stand: counts get the values that
/// readers stumble over, tables grow and shrink with their counts, single fields of records change.
/// Gives the new size; `most` is how much there is room for.
std::size_t MutateTables(std::uint8_t* data, std::size_t size, std::size_t most, VersionCode game,
                         unsigned seed);

/// The same for the input of a fuzzer of levels (`LevelInput.h`). The streams of Tomb Raider IV and
/// V are inflated, changed and deflated again, or most changes would die in zlib.
std::size_t MutateLevel(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed);

} // namespace morlik::fuzz
