#pragma once

#include "samples/MarkedWriter.h"

namespace morlik::samples
{

/// A short tone that fades out, as a WAV file: 44-byte header, then mono 16-bit PCM at 11025 Hz.
std::vector<std::byte> MakeWav(double hertz, double seconds);

/// The sounds of the sample levels: WAV files of different tones and lengths.
std::vector<std::vector<std::byte>> SampleSounds();

/// A `main.sfx`: the WAV files one after the other. The size of the sound data in each header is
/// marked as a count, "Sample 0" and so on.
LevelFile WriteMainSfx(const std::vector<std::vector<std::byte>>& sounds);

} // namespace morlik::samples
