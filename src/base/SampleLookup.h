#pragma once

#include "base/Records.h"
#include "base/VersionCode.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace morlik
{

/// The way from a sound number to its samples: the sound map has a slot for each sound number, with
/// the index of a sound detail, and the detail tells the first of its samples and their number.

/// Slots of the sound map by game; that of Tomb Raider V is the longest.
constexpr std::size_t kSoundMapSlots = 450;
constexpr std::size_t kSoundMapSlotsTR1 = 256;
constexpr std::size_t kSoundMapSlotsTR2 = 370; ///< Tomb Raider II, III and IV, and the SFX file

/// Which slot gives its number to a detail that several slots name, or none.
enum class SlotRule : std::uint8_t
{
    LastOr0,     ///< the list of an object set
    FirstOr0,    ///< files of exported sounds
    FirstOrNone, ///< the list of the window: sounds that nothing can call are left out
};

/// One sample of a sound.
struct SampleUse
{
    std::int32_t Slot;   ///< number of the sound
    std::int32_t Index;  ///< number of the sample in its sound, from 0
    std::int32_t Sample; ///< what the detail says: a place in the samples or their indices
};

/// The samples of all details, in the order of the details.
std::vector<SampleUse> ListSamples(std::span<const std::int16_t> soundMap,
                                   std::span<const SoundDetail> details, SlotRule rule);

/// What the names of a game's samples begin with: "TR<game> Sound ".
std::string SampleNameStart(VersionCode game);
/// The name of a sample, without an ending: "TR<game> Sound <slot>-<index>".
std::string NameOf(VersionCode game, const SampleUse& use);

/// How many samples `ListSamples` would list at the most.
std::size_t CountSamples(std::span<const SoundDetail> details);

/// Element `index` of a list; null where the list has none of that number.
template <class List>
auto* FindIn(const List& list, std::int64_t index)
{
    const bool inside = index >= 0 && index < static_cast<std::int64_t>(list.size());
    return inside ? &list[static_cast<std::size_t>(index)] : nullptr;
}

} // namespace morlik
