#include "base/Narrow.h"
#include "samples/LevelContent.h"

#include <algorithm>

namespace morlik::samples
{

void MakeExtended(LevelContent& level, std::uint16_t numSlots, bool outside)
{
    constexpr std::array<std::size_t, 2> kFurtherSounds{401, 510};
    ExtensionContent extension{.NumSlots = numSlots, .SoundMap = {}, .Places = {}};
    extension.SoundMap.assign(numSlots == 0 ? kSoundMapSlotsTR2 : numSlots, -1);
    std::copy_n(level.SoundMap.begin(), std::min(extension.SoundMap.size(), kSoundMapSlotsTR2),
                extension.SoundMap.begin());
    for (const std::size_t sound : kFurtherSounds)
        if (sound < extension.SoundMap.size())
            extension.SoundMap[sound] = 0;
    std::size_t start = 0; // the samples begin their main.sfx
    for (const auto& sample : level.Samples) {
        if (outside)
            extension.Places.push_back(
                {narrow<std::uint32_t>(start), narrow<std::uint32_t>(sample.size())});
        start += sample.size();
    }
    level.Extension = std::move(extension);
}

} // namespace morlik::samples
