#pragma once

#include "samples/MarkedWriter.h"

#include <cstdint>
#include <vector>

namespace morlik::test
{

/// A WAV file by its parts, which need not fit each other.
struct WaveFile
{
    std::uint16_t Coding = 1;
    std::uint16_t Channels = 1;
    std::uint32_t Rate = 22050;
    std::uint16_t BlockBytes = 2;
    std::uint16_t Bits = 16;
    std::uint16_t BlockFrames = 0; ///< of ADPCM
    std::vector<std::uint8_t> Data{};
    std::uint32_t FurtherBytes = 0; ///< that its chunk tells of, but the file lacks

    std::vector<std::byte> Bytes() const
    {
        samples::MarkedWriter out;
        out.PutText({"RIFF\0\1\0\0WAVEodd \1\0\0\0x\0fmt ", 26}); // a chunk of an odd size first
        out.Put(std::uint32_t{Coding == 2 ? 50U : 16U});
        out.Put(Coding);
        out.Put(Channels);
        out.Put(Rate);
        out.Put(Rate * BlockBytes);
        out.Put(BlockBytes);
        out.Put(Bits);
        if (Coding == 2) { // with the seven pairs of coefficients that all files have
            out.Put(std::uint16_t{32});
            out.Put(BlockFrames);
            out.PutTable(std::vector<std::int16_t>{7, 256, 0, 512, -256, 0, 0, 192, 64, 240, 0, 460,
                                                   -208, 392, -232});
        }
        out.PutText("data");
        out.Put(narrow<std::uint32_t>(Data.size()) + FurtherBytes);
        out.PutTable(Data);
        return std::move(out).Finish().Bytes;
    }
};

/// One block of ADPCM: first coefficients, step 16, the two values before, four values of 4 bits.
/// They are 1, -1, 4 and -8 steps away from the one before; 4 widens the step to 19.
inline WaveFile MakeADPCM()
{
    WaveFile wave{.Coding = 2, .BlockBytes = 9, .Bits = 4, .BlockFrames = 6};
    wave.Data = {0, 16, 0, 100, 0, 50, 0, 0x1f, 0x48};
    return wave;
}
const std::vector<std::int16_t> kADPCMValues{50, 100, 116, 100, 164, 12};

} // namespace morlik::test
