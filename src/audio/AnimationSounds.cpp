#include "audio/AnimationSounds.h"

#include "base/AnimCommands.h"
#include "base/SampleLookup.h"

#include <optional>

namespace morlik
{

namespace
{

using Wave = std::optional<std::span<const std::byte>>;

constexpr std::uint16_t kOnLandBit = 0x4000;
constexpr std::uint16_t kInWaterBit = 0x8000;

SoundPlace PlaceOf(std::uint16_t operand)
{
    const bool onLand = (operand & kOnLandBit) != 0;
    const bool inWater = (operand & kInWaterBit) != 0;
    if (onLand == inWater)
        return SoundPlace::Everywhere;
    return onLand ? SoundPlace::OnLand : SoundPlace::InWater;
}

/// The sounds that the commands of an animation name, without their samples.
std::vector<SoundAt> NamedSounds(const Animation& animation, std::span<const std::int16_t> words)
{
    std::vector<SoundAt> sounds;
    if (animation.AnimCommand < 0)
        return sounds;
    auto at = static_cast<std::size_t>(animation.AnimCommand);
    for (int i = 0; i < animation.NumAnimCommands; ++i) {
        const auto length = CommandLength(words, at);
        if (length == 0)
            break;
        if (words[at] == kSoundCommand) {
            const auto operand = static_cast<std::uint16_t>(words[at + 2]);
            sounds.push_back({words[at + 1], operand & kSoundNumberMask, PlaceOf(operand), {}});
        }
        at += length;
    }
    return sounds;
}

/// The samples of a sound. `waveOf` gives the WAV file of a sample of a detail, by the numbers of
/// both.
template <class Tables, class WaveOf>
std::vector<std::span<const std::byte>> SamplesIn(const Tables& tables, std::int32_t sound,
                                                  WaveOf waveOf)
{
    std::vector<std::span<const std::byte>> samples;
    const auto* number = FindIn(tables.SoundMap, sound);
    const auto* detail = number != nullptr ? FindIn(tables.SoundDetails, *number) : nullptr;
    for (std::int32_t k = 0; detail != nullptr && k < detail->NumSamples(); ++k)
        if (const Wave wave = waveOf(*detail, k); wave && !wave->empty())
            samples.push_back(*wave);
    return samples;
}

/// Gives each sound its samples and leaves out those without any.
template <class SamplesOf>
std::vector<SoundAt> WithSamples(std::vector<SoundAt> sounds, SamplesOf samplesOf)
{
    for (SoundAt& sound : sounds)
        sound.Samples = samplesOf(sound.Sound);
    std::erase_if(sounds, [](const SoundAt& sound) { return sound.Samples.empty(); });
    return sounds;
}

} // namespace

Wave WaveOfSample(const LevelData& level, const MainSFXState& mainSFX, std::int32_t sample)
{
    if (const SamplePlace* place = FindIn(level.SamplePlaces, sample))
        return mainSFX.WaveAt(place->Start, place->Size);
    if (HasMainSFX(level))
        return mainSFX.WaveOf(FindIn(level.SampleIndices, sample));
    const Sample* found = FindIn(level.Samples, sample);
    return found != nullptr ? Wave(found->Data) : std::nullopt;
}

std::vector<std::span<const std::byte>>
SamplesOfSound(const LevelData& level, const MainSFXState& mainSFX, std::int32_t sound)
{
    return SamplesIn(level, sound, [&](const SoundDetail& detail, std::int32_t k) {
        return WaveOfSample(level, mainSFX, detail.Sample + k);
    });
}

std::vector<SoundAt> SoundsOfAnimation(const LevelData& level, const MainSFXState& mainSFX,
                                       std::size_t animation)
{
    if (animation >= level.Animations.size())
        return {};
    return WithSamples(NamedSounds(level.Animations[animation], level.AnimCommands),
                       [&](std::int32_t sound) { return SamplesOfSound(level, mainSFX, sound); });
}

std::vector<SoundAt> SoundsOfAnimation(const ObjectSet& set, std::size_t animation)
{
    if (animation >= set.Animations.size() || !set.Sounds)
        return {};
    const auto& details = set.Sounds->SoundDetails;
    std::vector<std::int64_t> firstOf; // the samples of a set stand in the order of the details
    std::int64_t count = 0;
    for (const SoundDetail& detail : details) {
        firstOf.push_back(count);
        count += detail.NumSamples();
    }
    const auto waveOf = [&](const SoundDetail& detail, std::int32_t k) -> Wave {
        const auto number = static_cast<std::size_t>(&detail - details.data());
        const SetSample* found = FindIn(set.Samples, firstOf[number] + k);
        return found != nullptr ? found->Wave : std::nullopt;
    };
    return WithSamples(NamedSounds(set.Animations[animation], set.AnimCommands),
                       [&](std::int32_t sound) { return SamplesIn(*set.Sounds, sound, waveOf); });
}

} // namespace morlik
