#pragma once

#include <cstddef>
#include <vector>

namespace morlik::samples
{

/// A short tone that fades out, as a WAV file: 44-byte header, then mono 16-bit PCM at 11025 Hz.
std::vector<std::byte> MakeWav(double hertz, double seconds);

} // namespace morlik::samples
