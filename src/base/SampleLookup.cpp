#include "base/SampleLookup.h"

#include <numeric>

namespace morlik
{

namespace
{

constexpr std::int32_t kNoSlot = -1;

std::vector<std::int32_t> SlotsOfDetails(std::span<const std::int16_t> soundMap,
                                         std::size_t numDetails, SlotRule rule)
{
    std::vector<std::int32_t> slots(numDetails, rule == SlotRule::FirstOrNone ? kNoSlot : 0);
    std::vector<bool> isNamed(numDetails);
    for (std::size_t slot = 0; slot < soundMap.size(); ++slot) {
        const auto detail = static_cast<std::size_t>(soundMap[slot]);
        if (soundMap[slot] < 0 || detail >= numDetails)
            continue;
        if (rule == SlotRule::LastOr0 || !isNamed[detail])
            slots[detail] = static_cast<std::int32_t>(slot);
        isNamed[detail] = true;
    }
    return slots;
}

} // namespace

std::vector<SampleUse> ListSamples(std::span<const std::int16_t> soundMap,
                                   std::span<const SoundDetail> details, SlotRule rule)
{
    std::vector<SampleUse> uses;
    const auto slots = SlotsOfDetails(soundMap, details.size(), rule);
    if (rule != SlotRule::FirstOrNone) // the others leave out the most part of a damaged list
        uses.reserve(CountSamples(details));
    for (std::size_t d = 0; d < details.size(); ++d)
        for (std::int32_t k = 0; slots[d] != kNoSlot && k < details[d].NumSamples(); ++k)
            uses.push_back({slots[d], k, details[d].Sample + k});
    return uses;
}

std::string SampleNameStart(VersionCode game)
{
    return "TR" + DigitsOf(game) + " Sound ";
}

std::string NameOf(VersionCode game, const SampleUse& use)
{
    return SampleNameStart(game) + std::to_string(use.Slot) + "-" + std::to_string(use.Index);
}

std::size_t CountSamples(std::span<const SoundDetail> details)
{
    return std::accumulate(details.begin(), details.end(), std::size_t{0},
                           [](std::size_t sum, const SoundDetail& detail) {
                               return sum + static_cast<std::size_t>(detail.NumSamples());
                           });
}

} // namespace morlik
