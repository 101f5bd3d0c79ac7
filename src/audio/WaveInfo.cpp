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

/// A number of frames of the sound, and the bytes that hold them.
struct Block
{
    std::size_t Bytes = 0;
    std::size_t Frames = 1;
    std::size_t Predictors =
        0; ///< of ADPCM: a block begins with the number of one for each channel
};

Block ReadFormat(ByteReader reader, WaveInfo& info)
{
    reader.Section("format of a WAV file");
    const auto coding = reader.Read<std::uint16_t>();
    info.Coding = static_cast<WaveCoding>(coding);
    info.Channels = reader.Read<std::uint16_t>();
    info.Rate = reader.Read<std::uint32_t>();
    reader.Skip(sizeof(std::uint32_t)); // bytes a second, which some tools write wrongly
    Block block{reader.Read<std::uint16_t>()};
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
        block.Frames = reader.Read<std::uint16_t>();
        block.Predictors = reader.Read<std::uint16_t>();
    }
    if (block.Bytes == 0)
        reader.Fail("its blocks have no bytes");
    return block;
}

/// Frames in the sound data. Decoders can't be trusted to look at the numbers of predictors.
std::size_t CountFrames(ByteReader reader, const Block& block, const WaveInfo& info)
{
    reader.Section("sound of a WAV file");
    const std::size_t blocks = block.Bytes == 0 ? 0 : reader.Left() / block.Bytes;
    for (std::size_t i = 0; info.Coding == WaveCoding::ADPCM && i < blocks; ++i) {
        reader.Seek(i * block.Bytes);
        for (std::uint16_t channel = 0; channel < info.Channels; ++channel)
            if (reader.Read<std::uint8_t>() >= block.Predictors)
                reader.Fail("its block " + std::to_string(i) + " is damaged");
    }
    if (blocks * block.Frames == 0)
        reader.Fail("there is none");
    return blocks * block.Frames;
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
    Block block;
    for (auto name = TakeName(reader);; name = TakeName(reader)) {
        const std::size_t size = reader.Read<std::uint32_t>();
        const auto chunk = file.subspan(reader.Position(), std::min(size, reader.Left()));
        if (name == "data") {
            info.Frames = CountFrames(ByteReader(chunk), block, info);
            info.Data = chunk;
            return info;
        }
        if (name == "fmt ") {
            block = ReadFormat(ByteReader(chunk), info);
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
