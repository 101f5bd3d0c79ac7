// Reads the files of object sets and checks them. The first byte chooses: the WAD file of a set of
// game 1 to 5, the sprites, the sound tables with a list behind them, a list of objects.

#include "check/ObjectSetCheck.h"

#include <cstdint>
#include <stdexcept>

namespace
{

using namespace morlik::check;

/// The sound tables and the list are parted by the first "TR1 " of the input.
void CheckSounds(std::span<const std::byte> file)
{
    const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
    const std::size_t end = std::min(text.find("TR1 "), file.size());
    const SfxFile sfx = ReadSfx(file.first(end));
    CheckSfx(sfx);
    CheckSam(ReadLines(file.subspan(end)), sfx, 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const auto bytes = std::as_bytes(std::span(data, size).subspan(1));
    const std::vector<std::byte> file(bytes.begin(), bytes.end());
    constexpr int kGames = 5;
    const int kind = data[0] % (kGames + 3);
    try {
        if (kind < kGames)
            CheckWad(ReadWad(file), kind + 1);
        else if (kind == kGames)
            CheckSwd(ReadSwd(file));
        else if (kind == kGames + 1)
            CheckSounds(file);
        else
            CheckWas(ReadLines(file), nullptr, 4);
    } catch (const std::runtime_error&) {
        return 0; // told as a complaint
    }
    return 0;
}
