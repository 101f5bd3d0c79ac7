#include "shell/Sounds.h"

#include "base/OutputFile.h"
#include "set/Sounds.h"

#include <map>
#include <utility>

namespace morlik
{

namespace
{

/// The samples of a level that exist, by slot and number; of those with one name the last one.
using NumberedSamples = std::map<std::pair<std::int32_t, std::int32_t>, const Sample*>;

NumberedSamples SamplesToWrite(const LevelData& level, std::size_t& missing)
{
    const auto map = std::span(level.SoundMap).first<kSoundMapSlotsTR2>();
    NumberedSamples samples;
    for (const SampleUse& use : ListSamples(map, level.SoundDetails, SlotRule::FirstOr0)) {
        if (const Sample* sample = FindIn(level.Samples, use.Sample))
            samples[{use.Slot, use.Index}] = sample;
        else
            ++missing;
    }
    return samples;
}

std::string FileOf(const std::string& base, const NumberedSamples::key_type& number)
{
    return base + " " + std::to_string(number.first) + "-" + std::to_string(number.second) + ".wav";
}

std::string FileOf(const std::string& base, std::size_t number)
{
    return base + std::to_string(number) + ".wav";
}

/// Gives whether all were written: the user may have stopped it.
bool WriteWaveFiles(const WaveFiles& files, Reporter& report)
{
    std::size_t bytes = 0;
    for (const auto& [name, wave] : files)
        bytes += wave.size();
    LimitWaveBytes(bytes);
    std::size_t written = 0;
    for (const auto& [name, wave] : files) {
        report.TheHost().GiveTurn();
        if (report.TheHost().StopRequested()) {
            report.LogLine("Stopped: " + std::to_string(written) + " of " +
                           std::to_string(files.size()) + " WAV files are written");
            return false;
        }
        WriteWholeFile(name, wave);
        ++written;
    }
    return true;
}

/// Writes sounds with `write`; more of them than any file has give a message.
template <class Write>
bool Limited(Reporter& report, const Write& write)
{
    try {
        return write();
    } catch (const SoundsDamaged& failure) {
        report.Message(kSoundsDamaged, kAppTitle, failure.what());
        return false;
    }
}

} // namespace

std::span<const std::int16_t> SlotsInUse(const LevelData& level)
{
    const std::span map = level.SoundMap;
    switch (level.Version) {
    case kTR1:
    case kTR1Gold:
        return map.first(kSoundMapSlotsTR1);
    case kTR2:
    case kTR3:
    case kTR4:
        return map.first(kSoundMapSlotsTR2);
    case kTR5:
    case kTR5Demo:
    case kNoLevel:
    case kMainSFXVersion:
        break;
    }
    return map;
}

std::vector<SoundEntry> LevelSounds(const LevelData& level)
{
    std::vector<SoundEntry> entries;
    for (const SampleUse& use :
         ListSamples(SlotsInUse(level), level.SoundDetails, SlotRule::FirstOrNone)) {
        const Sample* sample = FindIn(level.Samples, use.Sample);
        const std::size_t size = sample != nullptr ? sample->Size() : 0;
        const auto name = NameOf(level.Version, use);
        entries.push_back({name, name + " (" + std::to_string(size) + " bytes)", use.Sample, size});
    }
    return entries;
}

std::vector<SoundEntry> MainSFXSounds(const MainSFXState& mainSFX)
{
    std::vector<SoundEntry> entries;
    std::int32_t number = 0;
    for (const auto& sample : mainSFX.MainSFXSamples) {
        const auto name = "TR3 Sound " + std::to_string(number);
        entries.push_back(
            {name, name + " - " + std::to_string(sample.size()) + " bytes", number, sample.size()});
        ++number;
    }
    return entries;
}

std::vector<std::string> PathsOf(const WaveFiles& files)
{
    std::vector<std::string> paths;
    for (const WaveFile& file : files)
        paths.push_back(file.Path);
    return paths;
}

WaveFiles LevelSoundFiles(const std::string& base, const LevelData& level)
{
    WaveFiles files;
    std::size_t missing = 0;
    if (CountSamples(level.SoundDetails) <= kMostSampleLines)
        for (const auto& [number, sample] : SamplesToWrite(level, missing))
            files.push_back({FileOf(base, number), sample->Data});
    return files;
}

WaveFiles MainSFXSoundFiles(const std::string& base, const MainSFXState& mainSFX)
{
    WaveFiles files;
    for (std::size_t i = 0; i < mainSFX.MainSFXSamples.size(); ++i)
        files.push_back({FileOf(base, i), mainSFX.MainSFXSamples[i]});
    return files;
}

bool WriteLevelSounds(const std::string& base, const LevelData& level, Reporter& report)
{
    return Limited(report, [&] {
        LimitSamples(CountSamples(level.SoundDetails));
        std::size_t missing = 0;
        SamplesToWrite(level, missing);
        if (missing != 0)
            report.LogLine("No WAV file for " + std::to_string(missing) +
                           " samples that do not exist");
        return WriteWaveFiles(LevelSoundFiles(base, level), report);
    });
}

bool WriteMainSFXSounds(const std::string& base, const MainSFXState& mainSFX, Reporter& report)
{
    return Limited(report, [&] {
        LimitSamples(mainSFX.MainSFXSamples.size());
        return WriteWaveFiles(MainSFXSoundFiles(base, mainSFX), report);
    });
}

} // namespace morlik
