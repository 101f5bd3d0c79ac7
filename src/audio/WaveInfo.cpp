#include "audio/WaveInfo.h"

#include "base/Bytes.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace morlik
{

namespace
{

constexpr std::uint32_t kLowestRate = 1'000;
constexpr std::uint32_t kHighestRate = 192'000;
constexpr std::uint16_t kMostChannels = 2;

std::string TakeName(ByteReader& reader)
{
    const auto bytes = reader.Read<std::array<char, 4>>();
    return {bytes.begin(), bytes.end()};
}

void ReadFormat(ByteReader reader, WaveInfo& info)
{
    reader.Section("format of a WAV file");
    const auto coding = reader.Read<std::uint16_t>();
    info.Coding = static_cast<WaveCoding>(coding);
    info.Channels = reader.Read<std::uint16_t>();
    info.Rate = reader.Read<std::uint32_t>();
    reader.Skip(sizeof(std::uint32_t)); // bytes a second, which some tools write wrongly
    info.BlockBytes = reader.Read<std::uint16_t>();
    info.Bits = reader.Read<std::uint16_t>();
    const bool isPCM = info.Coding == WaveCoding::PCM && (info.Bits == 8 || info.Bits == 16);
    const bool isADPCM = info.Coding == WaveCoding::ADPCM && info.Bits == 4;
    if (!isPCM && !isADPCM)
        reader.Fail("coding " + std::to_string(coding) + " with " + std::to_string(info.Bits) +
                    " bits is not played");
    if (info.Channels < 1 || info.Channels > kMostChannels)
        reader.Fail(std::to_string(info.Channels) + " channels are not played");
    if (info.Rate < kLowestRate || info.Rate > kHighestRate)
        reader.Fail("a rate of " + std::to_string(info.Rate) + " Hz is not played");
    if (isADPCM) {
        reader.Skip(sizeof(std::uint16_t));
        info.BlockFrames = reader.Read<std::uint16_t>();
        info.Predictors.resize(reader.Read<std::uint16_t>());
        for (auto& pair : info.Predictors)
            pair = reader.Read<std::array<std::int16_t, 2>>();
    }
    if (info.BlockBytes == 0)
        reader.Fail("its blocks have no bytes");
}

/// Frames in the sound data. Decoders can't be trusted to look at the numbers of predictors.
std::size_t CountFrames(ByteReader reader, const WaveInfo& info)
{
    reader.Section("sound of a WAV file");
    const std::size_t blocks = info.BlockBytes == 0 ? 0 : reader.Left() / info.BlockBytes;
    for (std::size_t i = 0; info.Coding == WaveCoding::ADPCM && i < blocks; ++i) {
        reader.Seek(i * info.BlockBytes);
        for (std::uint16_t channel = 0; channel < info.Channels; ++channel)
            if (reader.Read<std::uint8_t>() >= info.Predictors.size())
                reader.Fail("its block " + std::to_string(i) + " is damaged");
    }
    if (blocks * info.BlockFrames == 0)
        reader.Fail("there is none");
    return blocks * info.BlockFrames;
}

} // namespace

WaveInfo ReadWaveInfo(std::span<const std::byte> file)
{
    ByteReader reader(file);
    reader.Section("head of a WAV file");
    const bool isRiff = TakeName(reader) == "RIFF";
    reader.Skip(sizeof(std::uint32_t));
    if (!isRiff || TakeName(reader) != "WAVE")
        reader.Fail("it is no WAV file");
    WaveInfo info;
    for (auto name = TakeName(reader);; name = TakeName(reader)) {
        const std::size_t size = reader.Read<std::uint32_t>();
        const auto chunk = file.subspan(reader.Position(), std::min(size, reader.Left()));
        if (name == "data") {
            info.Data = chunk;
            info.Frames = CountFrames(ByteReader(chunk), info);
            return info;
        }
        if (name == "fmt ") {
            ReadFormat(ByteReader(chunk), info);
            info.Format = chunk;
        }
        reader.SeekUpTo(reader.Position() + size + size % 2);
    }
}

std::string Describe(const WaveInfo& info)
{
    std::array<char, 32> seconds{};
    const auto end =
        std::to_chars(seconds.begin(), seconds.end(), info.Seconds(), std::chars_format::fixed, 2);
    return std::to_string(info.Rate) + " Hz, " + std::to_string(info.Bits) + " bits" +
           (info.Coding == WaveCoding::ADPCM ? " (ADPCM), " : ", ") +
           (info.Channels == 1 ? "mono, " : "stereo, ") + std::string(seconds.data(), end.ptr) +
           " s";
}

} // namespace morlik
