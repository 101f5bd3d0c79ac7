#pragma once

#include "base/Files.h"
#include "base/Reporter.h"
#include "base/SampleLookup.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace morlik
{

/// The samples of `main.sfx`, the file in which Tomb Raider II and III keep the sounds of all
/// their levels: WAV files one behind the other, without an index. Each has a header of 44 bytes
/// with the size of the sound data, a 32-bit value, at offset 40; the data follows. The file begins
/// with "RIFF", as a WAV file does; further headers are not looked at but for their size.
struct MainSFXState
{
    /// Each a whole WAV file. The number of a sample is what `SampleIndices` of a level mean.
    std::vector<std::span<const std::byte>> MainSFXSamples;
    std::vector<std::shared_ptr<const FileBytes>> Files; ///< what the samples are views into
    std::vector<std::string> FileNames;                  ///< of these, in their order

    /// The sample of that number; nothing without a number, or where there is no such sample.
    std::optional<std::span<const std::byte>> WaveOf(const std::int32_t* number) const
    {
        const auto* found = number != nullptr ? FindIn(MainSFXSamples, *number) : nullptr;
        return found != nullptr ? std::optional(*found) : std::nullopt;
    }
    /// What stands at a place in the last file, in bytes; nothing where that is no sample of it.
    std::optional<std::span<const std::byte>> WaveAt(std::uint32_t start, std::uint32_t size) const;
};

/// Whether a file has the name of a `main.sfx`, in any case of letters.
bool IsNamedMainSFX(const std::filesystem::path& name);

/// The `main.sfx` in a folder; of several that in small letters, else the first by name. Empty
/// where there is none.
std::filesystem::path FindMainSFXIn(const std::filesystem::path& folder);

/// Adds the samples of the file to `state`. A sample cut short by the end of the file is dropped,
/// which the log tells. Gives false, after a message and with `state` as it was, for a file that
/// can't be opened or is none: the SFX file of an object set may have the same name.
bool ReadMainSFX(const std::string& fileName, MainSFXState& state, Reporter& report);

} // namespace morlik
