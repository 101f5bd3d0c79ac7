#include "picture/TexturePixels.h"

#include "base/Records.h"
#include "model/Damage.h"

#include <array>

namespace morlik
{

namespace
{

constexpr Colour kMagenta = Opaque(255, 0, 255);

std::vector<Colour> Decode(const SetTiles& tiles, std::int32_t number)
{
    std::vector<Colour> pixels;
    pixels.reserve(kTilePixels);
    std::array<std::byte, kRowBytes> row{};
    for (std::int64_t y = 0; y < kTileSide; ++y) {
        tiles.CopyRow(std::int64_t{number} * kTileSide + y, row.data());
        for (std::size_t at = 0; at < row.size(); at += kPixelBytes) {
            const Colour colour = Opaque(std::to_integer<std::uint32_t>(row[at]),
                                         std::to_integer<std::uint32_t>(row[at + 1]),
                                         std::to_integer<std::uint32_t>(row[at + 2]));
            pixels.push_back(colour == kMagenta ? 0 : colour);
        }
    }
    return pixels;
}

} // namespace

void TexturePixels::Need(const std::vector<std::int32_t>& numbers)
{
    if (numbers.size() > kMostTiles)
        FailDamaged("an object with textures on ", numbers.size(), " tiles");
    std::size_t missing = 0;
    for (const std::int32_t number : numbers) {
        if (number < 0 || number >= tiles_.Count())
            FailDamaged("tile ", number, " of ", tiles_.Count());
        missing += decoded_.contains(number) ? 0U : 1U;
    }
    if (decoded_.size() + missing > kMostTiles)
        decoded_.clear();
    for (const std::int32_t number : numbers)
        if (!decoded_.contains(number))
            decoded_.emplace(number, Decode(tiles_, number));
}

} // namespace morlik
