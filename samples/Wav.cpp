#include "samples/Wav.h"

#include "base/Bytes.h"
#include "base/Narrow.h"

#include <cmath>
#include <numbers>
#include <string_view>

namespace morlik::samples
{

namespace
{

constexpr std::uint32_t kRate = 11025;

std::vector<std::int16_t> Tone(double hertz, double seconds)
{
    constexpr double kLoudness = 20000;
    std::vector<std::int16_t> tone(static_cast<std::size_t>(seconds * kRate));
    for (std::size_t i = 0; i < tone.size(); ++i) {
        const double turns = hertz * static_cast<double>(i) / kRate;
        const double fade = 1 - static_cast<double>(i) / static_cast<double>(tone.size());
        tone[i] = static_cast<std::int16_t>(kLoudness * fade * fade *
                                            std::sin(2 * std::numbers::pi * turns));
    }
    return tone;
}

void PutText(ByteWriter& out, std::string_view text)
{
    out.PutBytes(std::as_bytes(std::span(text)));
}

} // namespace

std::vector<std::byte> MakeWav(double hertz, double seconds)
{
    constexpr std::uint32_t kHeaderBehindLength = 36;
    constexpr std::uint32_t kFormatBytes = 16;
    constexpr std::uint16_t kPcm = 1;
    constexpr std::uint16_t kMono = 1;
    constexpr std::uint16_t kSampleBytes = 2;
    const auto tone = Tone(hertz, seconds);
    const auto dataBytes = narrow<std::uint32_t>(tone.size() * kSampleBytes);

    ByteWriter out;
    out.Reserve(kHeaderBehindLength + 8 + dataBytes);
    PutText(out, "RIFF");
    out.Put(dataBytes + kHeaderBehindLength);
    PutText(out, "WAVEfmt ");
    out.Put(kFormatBytes);
    out.Put(kPcm);
    out.Put(kMono);
    out.Put(kRate);
    out.Put(kRate * kSampleBytes);
    out.Put(kSampleBytes);
    out.Put(static_cast<std::uint16_t>(kSampleBytes * 8));
    PutText(out, "data");
    out.Put(dataBytes);
    out.PutTable(tone);
    return out.Bytes();
}

} // namespace morlik::samples
