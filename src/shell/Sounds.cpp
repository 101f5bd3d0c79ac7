#include "shell/Sounds.h"

#include <map>

namespace morlik
{

namespace
{

constexpr std::int32_t kNoSlot = -1;

/// By sound detail, the first of the map's first `slots` slots that names it.
std::vector<std::int32_t> FirstSlots(const LevelData& level, std::size_t slots)
{
    std::vector<std::int32_t> first(level.SoundDetails.size(), kNoSlot);
    for (std::size_t slot = slots; slot-- > 0;) {
        const auto detail = level.SoundMap[slot];
        if (detail >= 0 && static_cast<std::size_t>(detail) < first.size())
            first[static_cast<std::size_t>(detail)] = static_cast<std::int32_t>(slot);
    }
    return first;
}

std::size_t SlotsInUse(std::int32_t version)
{
    if (version == kTR1)
        return kSoundMapSlotsTR1;
    return version == kTR5 ? kSoundMapSlots : kSoundMapSlotsTR2;
}

const Sample* FindSample(const LevelData& level, std::int32_t number)
{
    const auto index = static_cast<std::size_t>(number);
    return number >= 0 && index < level.Samples.size() ? &level.Samples[index] : nullptr;
}

} // namespace

std::vector<SoundEntry> LevelSounds(const LevelData& level)
{
    std::vector<SoundEntry> entries;
    const auto slots = FirstSlots(level, SlotsInUse(level.Version));
    const auto game = "TR" + std::to_string(level.Version) + " Sound ";
    for (std::size_t d = 0; d < slots.size(); ++d) {
        if (slots[d] == kNoSlot)
            continue;
        const SoundDetail& detail = level.SoundDetails[d];
        for (std::int32_t k = 0; k < detail.NumSamples(); ++k) {
            const std::int32_t number = detail.Sample + k;
            const Sample* sample = FindSample(level, number);
            const std::size_t size = sample != nullptr ? sample->Size() : 0;
            entries.push_back({game + std::to_string(slots[d]) + "-" + std::to_string(k) + " (" +
                                   std::to_string(size) + " bytes)",
                               number});
        }
    }
    return entries;
}

std::vector<SoundEntry> MainSFXSounds(const MainSFXState& mainSFX)
{
    std::vector<SoundEntry> entries;
    std::int32_t number = 0;
    for (const auto& sample : mainSFX.MainSFXSamples) {
        entries.push_back({"TR3 Sound " + std::to_string(number) + " - " +
                               std::to_string(sample.size()) + " bytes",
                           number});
        ++number;
    }
    return entries;
}

void WriteLevelSounds(const std::string& base, const LevelData& level, Reporter& report)
{
    const auto slots = FirstSlots(level, kSoundMapSlotsTR2);
    std::map<std::string, const Sample*> files; // of those with one name the last one stays
    std::size_t missing = 0;
    for (std::size_t d = 0; d < slots.size(); ++d) {
        const SoundDetail& detail = level.SoundDetails[d];
        const auto slot = std::to_string(slots[d] == kNoSlot ? 0 : slots[d]);
        for (std::int32_t k = 0; k < detail.NumSamples(); ++k) {
            if (const Sample* sample = FindSample(level, detail.Sample + k))
                files[base + " " + slot + "-" + std::to_string(k) + ".wav"] = sample;
            else
                ++missing;
        }
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
