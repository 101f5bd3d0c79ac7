#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace morlik
{

/// How a WAV file keeps its sound; the numbers are those of the file.
enum class WaveCoding : std::uint16_t
{
    PCM = 1,   ///< 8-bit values from 0 or 16-bit ones with a sign
    ADPCM = 2, ///< that of Microsoft, four bits a value
};

/// What the head of a WAV file tells of its sound. The file is "RIFF", its further size, "WAVE",
/// then chunks: a name of 4 bytes, a 32-bit size, that many bytes and one more where that is odd.
///
///   "fmt "  u16 coding; u16 channels; u32 frames a second; u32 bytes a second; u16 bytes of a
///           block; u16 bits of a value; of ADPCM also u16 bytes that follow; u16 frames of a
///           block; u16 number of predictors, pairs of 16-bit coefficients that follow
///   "data"  the sound, in blocks
///
/// A frame is one value for each channel. In PCM each is a block.
struct WaveInfo
{
    WaveCoding Coding = WaveCoding::PCM;
    std::uint32_t Rate = 0; ///< frames a second, 1,000 to 192,000
    std::uint16_t Bits = 0; ///< of a value: 4, 8 or 16
    std::uint16_t Channels = 0;
    std::size_t Frames = 0; ///< those of whole blocks; the others are not played
    // What the file has of both chunks; views into it.
    std::span<const std::byte> Format{};
    std::span<const std::byte> Data{};
    // How the frames lie in `Data`.
    std::size_t BlockBytes = 0;
    std::size_t BlockFrames = 1;
    std::vector<std::array<std::int16_t, 2>> Predictors{}; ///< of ADPCM: the coefficients

    double Seconds() const { return static_cast<double>(Frames) / Rate; }
};

/// `ReadFailure` for what is no WAV file, of a coding that no level has, of more than two channels,
/// or without frames. Sound that the file's end cuts off counts as far as it goes.
WaveInfo ReadWaveInfo(std::span<const std::byte> file);

/// For people: "22050 Hz, 4 bits (ADPCM), stereo, 0.37 s".
std::string Describe(const WaveInfo& info);

/// Sound in memory: the values of all channels of a frame, then the next frame.
struct DecodedWave
{
    int Rate = 0;
    int Channels = 0;
    std::vector<std::int16_t> Values;

    std::size_t Frames() const { return Values.size() / static_cast<std::size_t>(Channels); }
    double Seconds() const { return static_cast<double>(Frames()) / Rate; }
};

} // namespace morlik
