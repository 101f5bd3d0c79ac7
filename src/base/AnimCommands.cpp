#include "base/AnimCommands.h"

#include "base/Narrow.h"

#include <array>

namespace morlik
{

std::size_t CommandLength(std::span<const std::int16_t> words, std::size_t at)
{
    constexpr std::array<std::size_t, 7> kLengths{0, 4, 3, 1, 1, 3, 3};
    if (at >= words.size() || !Inside(words[at], 1, kLengths.size()))
        return 0;
    const std::size_t length = kLengths[static_cast<std::size_t>(words[at])];
    return length <= words.size() - at ? length : 0;
}

} // namespace morlik
