#pragma once

#include "audio/WaveInfo.h"

namespace morlik
{

/// The largest WAV file that is decoded; in memory it takes at most four times as much.
constexpr std::size_t kMostPlayedBytes = std::size_t{16} << 20U;

/// The sound of a WAV file as 16-bit values at its own rate: 8-bit ones are moved to about 0 and
/// shifted up by 8 bits, those of ADPCM expanded. `ReadFailure` where it can't be played.
DecodedWave Decode(std::span<const std::byte> file);

} // namespace morlik
