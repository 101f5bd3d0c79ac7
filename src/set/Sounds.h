#pragma once

#include "base/FileGroup.h"
#include "base/TextLines.h"
#include "set/ObjectSet.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace morlik
{

/// A sample list that no level has, and that would fill memory or disk.
class SoundsDamaged : public std::runtime_error
{
public:
    explicit SoundsDamaged(const std::string& why) : std::runtime_error(why) {}
};

/// Its message.
inline constexpr const char* kSoundsDamaged = "The sounds are damaged - can't continue!";

/// Samples of all sounds together, which are the lines of a SAM file, and bytes of all their WAV
/// files that are taken.
constexpr std::size_t kMostSampleLines = std::size_t{1} << 20U;
constexpr std::size_t kMostWaveBytes = std::size_t{256} << 20U;
/// More of them are `SoundsDamaged`.
void LimitSamples(std::size_t count);
void LimitWaveBytes(std::size_t bytes);

/// Lists the samples of a set by its sound tables, or by those of its level, under the names that
/// the SAM file gives them:
///
///   TR<game> Sound <sound number>-<sample of the sound, from 0>.wav
///
/// `waveOf` gives the WAV file by what a detail says of a sample, or nothing where there is none.
/// Of several samples with one name all have the WAV file of the last one that exists.
/// More samples than any level has are `SoundsDamaged`.
using WaveOf = std::function<std::optional<std::span<const std::byte>>(std::int32_t sample)>;
void ListSetSamples(ObjectSet& set, const SoundTables& tables, const WaveOf& waveOf);
inline void ListSetSamples(ObjectSet& set, const WaveOf& waveOf)
{
    ListSetSamples(set, *set.Sounds, waveOf);
}

/// The SAM file of Tomb Raider I to III: a line for each sample, the name of its WAV file.
void WriteSam(TextLines& file, const std::vector<SetSample>& samples);

/// The WAV files, in `folder`, which was added to the group. `FileFailure` where one can't be
/// written, `SoundsDamaged` for more bytes than any level has.
void WriteWaves(FileGroup& group, const std::string& folder, const std::vector<SetSample>& samples);

/// The SFX file of Tomb Raider I to III, the sound tables:
///
///   370 words, the sound map; sound details: count, records of 8 bytes;
///   sample indices: count, 32-bit words
///
/// with 32-bit counts. `set` has sounds.
void WriteSfx(ByteSink& out, const ObjectSet& set);

/// A table that runs past the end, and bytes behind the last one, are `ReadFailure`s.
void ReadSfx(std::span<const std::byte> bytes, ObjectSet& set);

} // namespace morlik
