#include "samples/MainSfx.h"

#include "samples/Wav.h"

namespace morlik::samples
{

std::vector<std::vector<std::byte>> SampleSounds()
{
    constexpr int kSounds = 12;
    constexpr double kLowest = 220;
    constexpr double kShortest = 0.1;
    std::vector<std::vector<std::byte>> sounds;
    sounds.reserve(kSounds);
    for (int s = 0; s < kSounds; ++s)
        sounds.push_back(MakeWav(kLowest * (1 + s / 4.0), kShortest + 0.02 * s));
    return sounds;
}

LevelFile WriteMainSfx(const std::vector<std::vector<std::byte>>& sounds)
{
    constexpr std::size_t kSizeOffset = 40;
    MarkedWriter out;
    for (std::size_t s = 0; s < sounds.size(); ++s) {
        const std::string name = "Sample " + std::to_string(s);
        const std::span<const std::byte> sound(sounds[s]);
        const auto behindSize = sound.subspan(kSizeOffset + sizeof(std::uint32_t));
        out.Section(name);
        out.PutBytes(sound.first(kSizeOffset));
        out.Count<std::uint32_t>(name, behindSize.size());
        out.PutBytes(behindSize);
    }
    return std::move(out).Finish();
}

} // namespace morlik::samples
