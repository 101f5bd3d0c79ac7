#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace morlik
{

/// The largest WAV file that is expanded; its sound takes at most four times as much.
constexpr std::size_t kMostExpandedBytes = std::size_t{16} << 20U;

/// A WAV file as every browser plays it: one of ADPCM with its sound expanded to 16-bit values, any
/// other as it is. `ReadFailure` where it can't be played.
///
/// A block of ADPCM is a head, then values of 4 bits, the upper ones of a byte first, of the
/// channels in turn:
///
///   u8 number of the predictor; then i16 step; then i16 second frame; then i16 first frame,
///   each for all channels
///
/// A further frame is what the predictor makes of the two before it, each times its coefficient, in
/// 256ths, and the signed value times the step. The value then changes the step.
std::vector<std::byte> PlainWave(std::span<const std::byte> file);

} // namespace morlik
