// Reads the files of object sets and checks them. The first byte chooses: the WAD file of a set of
// game 1 to 5, the sprites, the sound tables.

#include "check/ObjectSetCheck.h"

#include <cstdint>
#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace morlik::check;
    if (size == 0)
        return 0;
    const auto bytes = std::as_bytes(std::span(data, size).subspan(1));
    const std::vector<std::byte> file(bytes.begin(), bytes.end());
    constexpr int kGames = 5;
    const int kind = data[0] % (kGames + 2);
    try {
        if (kind < kGames)
            CheckWad(ReadWad(file), kind + 1);
        else if (kind == kGames)
            CheckSwd(ReadSwd(file));
        else
            ReadSfx(file);
    } catch (const std::runtime_error&) {
        return 0; // told as a complaint
    }
    return 0;
}
