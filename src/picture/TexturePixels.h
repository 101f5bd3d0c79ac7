#pragma once

#include "picture/Picture.h"
#include "set/Tiles.h"

#include <map>
#include <vector>

namespace morlik
{

/// The tiles of a set as pixels, with magenta turned into no colour at all (0). Each is decoded
/// when it is first needed, so that the pictures of many objects share the work.
class TexturePixels
{
public:
    explicit TexturePixels(SetTiles tiles) : tiles_(std::move(tiles)) {}

    /// Tiles that are kept at a time, of 256 KiB each, and so the most that a picture may need.
    static constexpr std::size_t kMostTiles = 256;

    /// Decodes those of `numbers`, in rising order, that are not here; others may go for them.
    /// `ReadFailure` for more than `kMostTiles`, or for tiles that the set doesn't have.
    void Need(const std::vector<std::int32_t>& numbers);

    /// The 256 rows of a tile that was needed last.
    const Colour* Tile(std::int32_t number) const { return decoded_.at(number).data(); }

private:
    SetTiles tiles_;
    std::map<std::int32_t, std::vector<Colour>> decoded_;
};

} // namespace morlik
