#pragma once

#include "check/ObjectSet.h"
#include "check/ObjectSetCheck.h"

namespace morlik::check
{

/// The check of one WAD file while it goes on.
struct WadCheck : Gatherer
{
    WadCheck(const WadFile& wad, int game) : Wad(wad), Game(game) {}

    const WadFile& Wad;
    int Game;
    /// Textures that stand before the palette squares; so the number of the first square.
    std::size_t ColourBase = Wad.Textures.size();

    bool Paletted() const { return Game <= 3; }
};

/// Whether `count` elements from `first` on lie in a table of `size`. None lie anywhere.
inline bool Inside(std::int64_t first, std::int64_t count, std::size_t size)
{
    if (count <= 0)
        return count == 0;
    return first >= 0 && first + count <= static_cast<std::int64_t>(size);
}

/// Animations with their state changes, dispatches, commands and frames.
void CheckAnimations(WadCheck& check);

} // namespace morlik::check
