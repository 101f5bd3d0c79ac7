// Reads the files of object sets and checks them. The first byte chooses: the WAD file of a set of
// game 1 to 5, the sprites, the sound tables with a list behind them, a list of objects.

#include "check/ObjectSetCheck.h"
#include "set/Sounds.h"
#include "set/Swd.h"
#include "set/Wad.h"
#include "set/Was.h"

#include <cstdint>
#include <stdexcept>

namespace
{

using namespace morlik;
using namespace morlik::check;

constexpr int kGames = 5;

/// The sound tables and the list are parted by the first "TR1 " of the input.
void CheckSounds(std::span<const std::byte> file)
{
    const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
    const std::size_t end = std::min(text.find("TR1 "), file.size());
    ObjectSet set;
    ReadSfx(file.first(end), set);
    CheckSfx(*set.Sounds);
    CheckSam(ReadLines(file.subspan(end)), *set.Sounds, kTR1);
}

void CheckFile(int kind, std::span<const std::byte> file)
{
    ObjectSet set;
    set.Game = GameOf(kind + 1);
    if (kind < kGames) {
        ReadWad(file, nullptr, set);
        CheckWad(set);
    } else if (kind == kGames) {
        ReadSwd(file, nullptr, set);
        CheckSwd(*set.Sprites);
    } else if (kind == kGames + 1) {
        CheckSounds(file);
    } else {
        CheckWas(ReadLines(file), nullptr, kTR4);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const auto bytes = std::as_bytes(std::span(data, size).subspan(1));
    const std::vector<std::byte> file(bytes.begin(), bytes.end());
    try {
        CheckFile(data[0] % (kGames + 3), file);
    } catch (const std::runtime_error&) {
        return 0; // told as a complaint
    }
    return 0;
}
