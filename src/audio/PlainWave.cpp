#include "audio/PlainWave.h"

#include "audio/WaveInfo.h"
#include "base/Bytes.h"

#include <algorithm>
#include <array>
#include <limits>

namespace morlik
{

namespace
{

/// How a value changes the step, in 256ths.
constexpr std::array<std::int32_t, 16> kStepChanges{230, 230, 230, 230, 307, 409, 512, 614,
                                                    768, 614, 512, 409, 307, 230, 230, 230};
constexpr std::int32_t kLeastStep = 16;
constexpr std::int32_t kParts = 256;
constexpr std::int32_t kMostStep = std::numeric_limits<std::int32_t>::max() / 768;

/// What the next frame of a channel follows from.
struct Channel
{
    std::array<std::int16_t, 2> Predictor{};
    std::int32_t Step = 0;
    std::int16_t Last = 0;
    std::int16_t BeforeLast = 0;

    std::int16_t Next(unsigned int value)
    {
        const std::int32_t change =
            value < 8 ? static_cast<std::int32_t>(value) : static_cast<std::int32_t>(value) - 16;
        const std::int64_t predicted =
            (std::int64_t{Last} * Predictor[0] + std::int64_t{BeforeLast} * Predictor[1]) / kParts;
        const std::int64_t frame = std::clamp<std::int64_t>(
            predicted + std::int64_t{change} * Step, std::numeric_limits<std::int16_t>::min(),
            std::numeric_limits<std::int16_t>::max());
        BeforeLast = Last;
        Last = static_cast<std::int16_t>(frame);
        Step = std::clamp(kStepChanges[value] * Step / kParts, kLeastStep, kMostStep);
        return Last;
    }
};

/// Expands a block, which is whole.
void ExpandBlock(std::span<const std::byte> bytes, const WaveInfo& info,
                 std::vector<std::int16_t>& values)
{
    ByteReader reader(bytes);
    reader.Section("block of a WAV file");
    std::vector<Channel> channels(info.Channels);
    for (Channel& channel : channels)
        channel.Predictor = info.Predictors.at(reader.Read<std::uint8_t>());
    for (Channel& channel : channels)
        channel.Step = reader.Read<std::int16_t>();
    for (Channel& channel : channels)
        channel.Last = reader.Read<std::int16_t>();
    for (Channel& channel : channels)
        channel.BeforeLast = reader.Read<std::int16_t>();
    const std::size_t end = values.size() + info.BlockFrames * info.Channels;
    for (const Channel& channel : channels)
        values.push_back(channel.BeforeLast);
    for (const Channel& channel : channels)
        values.push_back(channel.Last);
    std::size_t next = 0; // channel
    while (values.size() < end && reader.Left() > 0) {
        const unsigned int byte = reader.Read<std::uint8_t>();
        for (const unsigned int value : {byte >> 4U, byte & 15U}) {
            values.push_back(channels[next].Next(value));
            next = (next + 1) % channels.size();
        }
    }
    values.resize(end); // the rest of a block that has fewer values than its head says is silent
}

std::vector<std::byte> WaveOf(const WaveInfo& info, std::span<const std::int16_t> values)
{
    ByteWriter wave;
    const auto bytes = static_cast<std::uint32_t>(values.size_bytes());
    const auto frame = static_cast<std::uint16_t>(info.Channels * sizeof(std::int16_t));
    constexpr std::uint32_t kHeadBytes = 36;
    constexpr std::uint32_t kFormatBytes = 16;
    constexpr std::uint16_t kValueBits = 16;
    wave.Put(std::array{'R', 'I', 'F', 'F'});
    wave.Put(kHeadBytes + bytes);
    wave.Put(std::array{'W', 'A', 'V', 'E', 'f', 'm', 't', ' '});
    wave.Put(kFormatBytes);
    wave.Put(WaveCoding::PCM);
    wave.Put(info.Channels);
    wave.Put(info.Rate);
    wave.Put(info.Rate * frame);
    wave.Put(frame);
    wave.Put(kValueBits);
    wave.Put(std::array{'d', 'a', 't', 'a'});
    wave.Put(bytes);
    wave.PutBytes(std::as_bytes(values));
    return wave.Bytes();
}

} // namespace

std::vector<std::byte> PlainWave(std::span<const std::byte> file)
{
    const WaveInfo info = ReadWaveInfo(file);
    if (info.Coding == WaveCoding::PCM)
        return {file.begin(), file.end()};
    if (file.size() > kMostExpandedBytes)
        throw ReadFailure("a WAV file of " + std::to_string(file.size()) + " bytes is not played");
    if (info.BlockFrames > 2 * info.BlockBytes)
        throw ReadFailure("the blocks of a WAV file can't hold their frames");
    std::vector<std::int16_t> values;
    for (auto rest = info.Data; rest.size() >= info.BlockBytes;
         rest = rest.subspan(info.BlockBytes))
        ExpandBlock(rest.first(info.BlockBytes), info, values);
    return WaveOf(info, values);
}

} // namespace morlik
