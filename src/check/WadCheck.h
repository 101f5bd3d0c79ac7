#pragma once

#include "base/Narrow.h"
#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "set/ObjectSet.h"

#include <algorithm>
#include <string>

namespace morlik::check
{

/// The check of one WAD file while it goes on.
struct WadCheck : Gatherer
{
    explicit WadCheck(const ObjectSet& set) : Wad(set) {}

    const ObjectSet& Wad;
    Gatherer Notes; ///< what is odd but as it was in the level
    std::size_t ColourBase = Wad.ColourBase();

    bool HasPalette() const { return IsOlderGame(Wad.Game); }
};

/// What a walk may cost beyond the length of its table. Ranges that cover the same records again
/// and again, as in no intact file, would take hours to follow.
struct Budget
{
    std::size_t Left;

    explicit Budget(std::size_t table) : Left(table + (std::size_t{1} << 22U)) {}

    /// Tells whether some is left after these steps.
    bool Spend(std::size_t steps)
    {
        Left -= std::min(Left, steps);
        return Left != 0;
    }
};

/// The beginning of a text of a damaged file, in double quotes.
inline std::string Quoted(std::string text)
{
    constexpr std::size_t kMostShown = 60;
    if (text.size() > kMostShown)
        text.replace(kMostShown, std::string::npos, "...");
    return '"' + Printable(text) + '"';
}

/// Animations with their state changes, dispatches, commands and frames.
void CheckAnimations(WadCheck& check);

} // namespace morlik::check
