#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "side/MainSFX_Mod.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace morlik
{

/// The part of the sound map that the game of a level has.
std::span<const std::int16_t> SlotsInUse(const LevelData& level);

/// One line of the sound list.
struct SoundEntry
{
    std::string Name;        ///< such as "TR4 Sound 12-0"
    std::string Text;        ///< what the list shows
    std::int32_t Sample = 0; ///< index in `Samples` of the level, or in `MainSFXSamples`
    std::size_t Size = 0;    ///< in bytes; 0 where there is no such sample
};

/// The samples of a level of Tomb Raider I, IV or V, under the first slot of the sound map that
/// names their sound; sounds without a slot are left out.
/// A line: "TR4 Sound 12-0 (812 bytes)".
std::vector<SoundEntry> LevelSounds(const LevelData& level);

/// The samples of `main.sfx`. A line: "TR3 Sound 5 - 812 bytes".
std::vector<SoundEntry> MainSFXSounds(const MainSFXState& mainSFX);

/// A WAV file that is to be written.
struct WaveFile
{
    std::string Path;
    std::span<const std::byte> Bytes;
};
using WaveFiles = std::vector<WaveFile>;
std::vector<std::string> PathsOf(const WaveFiles& files);

/// The files that the two procedures below write. Of a level that is damaged, with more samples
/// than any has, there are none.
WaveFiles LevelSoundFiles(const std::string& base, const LevelData& level);
WaveFiles MainSFXSoundFiles(const std::string& base, const MainSFXState& mainSFX);

/// Writes every sample of the level's sounds as `base` + " " + slot + "-" + number + ".wav". Here
/// the first 370 slots count in all games, and sounds without a slot go to slot 0.
/// `FileFailure` where a file can't be written; samples that do not exist are told in the log.
/// There is a turn before each file. Gives whether all were written: more sounds than any level
/// has get their message, a stop by the user in a turn gets a line of the log.
bool WriteLevelSounds(const std::string& base, const LevelData& level, Reporter& report);

/// Writes every sample of `main.sfx` as `base` + number + ".wav", in the same way.
bool WriteMainSFXSounds(const std::string& base, const MainSFXState& mainSFX, Reporter& report);

} // namespace morlik
