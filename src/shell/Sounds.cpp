#include "shell/Sounds.h"

#include "base/OutputFile.h"

#include <map>

namespace morlik
{

namespace
{

/// The part of the sound map that a game has.
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

} // namespace

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

void WriteLevelSounds(const std::string& base, const LevelData& level, Reporter& report)
{
    const auto map = std::span(level.SoundMap).first<kSoundMapSlotsTR2>();
    std::map<std::string, const Sample*> files; // of those with one name the last one stays
    std::size_t missing = 0;
    for (const SampleUse& use : ListSamples(map, level.SoundDetails, SlotRule::FirstOr0)) {
        if (const Sample* sample = FindIn(level.Samples, use.Sample))
            files[base + " " + std::to_string(use.Slot) + "-" + std::to_string(use.Index) +
                  ".wav"] = sample;
        else
            ++missing;
    }
    for (const auto& [name, sample] : files)
        WriteWholeFile(name, sample->Data);
    if (missing != 0)
        report.LogLine("No WAV file for " + std::to_string(missing) + " samples that do not exist");
}

void WriteMainSFXSounds(const std::string& base, const MainSFXState& mainSFX)
{
    for (std::size_t i = 0; i < mainSFX.MainSFXSamples.size(); ++i)
        WriteWholeFile(base + std::to_string(i) + ".wav", mainSFX.MainSFXSamples[i]);
}

} // namespace morlik
