#pragma once

#include "level/LevelData.h"
#include "set/ObjectSet.h"
#include "side/MainSFX_Mod.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace morlik
{

/// Where a sound of an animation is heard, by the top two bits of its command.
enum class SoundPlace : std::uint8_t
{
    Everywhere,
    OnLand,
    InWater,
};

/// A sound that an animation makes.
struct SoundAt
{
    int Frame = 0; ///< number of the frame, from the animation's `FrameStart` to its `FrameEnd`
    std::int32_t Sound = 0; ///< number of the sound
    SoundPlace Place = SoundPlace::Everywhere;
    /// Its WAV files, of which the games take one by chance. At least one; views into what the
    /// level, set or `main.sfx` keeps alive.
    std::vector<std::span<const std::byte>> Samples;
};

/// The WAV file of a sample of a level, whose number the sound details tell; nothing where it isn't
/// there. Those of Tomb Raider II and III, and some of extended levels of IV, are in `main.sfx`.
std::optional<std::span<const std::byte>>
WaveOfSample(const LevelData& level, const MainSFXState& mainSFX, std::int32_t sample);

/// The WAV files of a sound of a level by its number, as far as they are there.
std::vector<std::span<const std::byte>>
SamplesOfSound(const LevelData& level, const MainSFXState& mainSFX, std::int32_t sound);

/// The sounds of an animation by its number in the level, in the order of its commands. Sounds that
/// the level doesn't have, or whose samples are in a `main.sfx` that lacks them, are left out, and
/// damaged commands end the list.
std::vector<SoundAt> SoundsOfAnimation(const LevelData& level, const MainSFXState& mainSFX,
                                       std::size_t animation);

/// The same for a set. Sets of Tomb Raider IV and V have no sounds of their own.
std::vector<SoundAt> SoundsOfAnimation(const ObjectSet& set, std::size_t animation);

} // namespace morlik
