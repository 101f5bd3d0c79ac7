#include "samples/MainSfx.h"

#include <cmath>
#include <numbers>

namespace morlik::samples
{

std::vector<std::byte> MakeWav(double hertz, double seconds)
{
    constexpr std::uint32_t kRate = 11025;
    constexpr double kLoudness = 20000;
    constexpr std::uint32_t kHeaderBehindLength = 36;
    std::vector<std::int16_t> tone(static_cast<std::size_t>(seconds * kRate));
    for (std::size_t i = 0; i < tone.size(); ++i) {
        const double turns = hertz * static_cast<double>(i) / kRate;
        const double fade = 1 - static_cast<double>(i) / static_cast<double>(tone.size());
        tone[i] = static_cast<std::int16_t>(kLoudness * fade * fade *
                                            std::sin(2 * std::numbers::pi * turns));
    }
    const auto dataBytes = narrow<std::uint32_t>(tone.size() * sizeof tone[0]);
    MarkedWriter out;
    out.PutText("RIFF");
    out.Put(dataBytes + kHeaderBehindLength);
    out.PutText({"WAVEfmt \x10\0\0\0\1\0\1\0", 16}); // 16 bytes of format: PCM, mono
    out.Put(kRate);
    out.Put(kRate * 2);
    out.PutText({"\2\0\x10\0data", 8}); // two bytes, 16 bits
    out.Put(dataBytes);
    out.PutTable(tone);
    return std::move(out).Finish().Bytes;
}

std::vector<std::vector<std::byte>> SampleSounds()
{
    constexpr int kSounds = 12;
    constexpr double kLowest = 220;
    std::vector<std::vector<std::byte>> sounds;
    sounds.reserve(kSounds);
    for (int s = 0; s < kSounds; ++s)
        sounds.push_back(MakeWav(kLowest * (1 + s / 4.0), 0.1 + 0.02 * s));
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
