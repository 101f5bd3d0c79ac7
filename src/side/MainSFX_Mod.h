#pragma once

#include "base/Files.h"
#include "base/Reporter.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace morlik
{

/// The samples of `main.sfx`, the file in which Tomb Raider II and III keep the sounds of all
/// their levels: WAV files one behind the other, without an index. Each has a header of 44 bytes
/// with the size of the sound data, a 32-bit value, at offset 40; the data follows.
struct MainSFXState
{
    /// Each a whole WAV file. The number of a sample is what `SampleIndices` of a level mean.
    std::vector<std::span<const std::byte>> MainSFXSamples;
    std::vector<FileBytes> Files; ///< what the samples are views into
};

/// Adds the samples of the file to `state`. A sample cut short by the end of the file is dropped,
/// which the log tells. Gives whether the file could be opened; if not, after a message.
bool ReadMainSFX(const std::string& fileName, MainSFXState& state, Reporter& report);

} // namespace morlik
