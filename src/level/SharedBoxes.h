#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"

#include <cstdint>
#include <unordered_map>

namespace morlik
{

/// Checks the boxes of a Tomb Raider IV or V level's textures and finds those that cover the same
/// box of the same tile.
class SharedBoxes
{
public:
    SharedBoxes(const LevelData& level, Reporter& report);

    /// Gives the first texture with the box of texture `number`. A box that leaves its tile, or a
    /// tile that the level doesn't have, ends the program with a message; a row that 16 bits or the
    /// tiles don't have is a `ReadFailure`.
    std::int32_t FirstWith(const TextInfo& info, std::int32_t number);

private:
    void Check(const TextInfo& info, std::int32_t number) const;

    std::int32_t tileBytes_;
    Reporter& report_;
    std::unordered_map<std::uint64_t, std::int32_t> firstOfBox_;
};

} // namespace morlik
