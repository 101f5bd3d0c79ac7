// Reads the heads of WAV files and decodes their sounds.

#include "base/Bytes.h"
#include "playback/Decode.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const auto wave = morlik::Decode(std::as_bytes(std::span(data, size)));
        if (wave.Values.size() > 2 * size) // as ADPCM has them
            std::abort();
    } catch (const morlik::ReadFailure&) { // it can't be played
    }
    return 0;
}
