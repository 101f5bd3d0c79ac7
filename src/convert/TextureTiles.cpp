#include "convert/TextureTiles.h"

#include "convert/Pixels.h"

#include <cstring>
#include <vector>

namespace morlik
{

namespace
{

constexpr std::int32_t kSquareSide = 4;
constexpr std::int32_t kSquaresPerRow = kTileSide / kSquareSide;
constexpr std::int32_t kPaletteRows =
    (std::int32_t{kNumPaletteTextures} + kSquaresPerRow - 1) / kSquaresPerRow * kSquareSide;

/// Left column and top row of square `number` in the palette tile.
struct SquarePlace
{
    std::int32_t X;
    std::int32_t Y;
};

constexpr SquarePlace PlaceOf(std::size_t number)
{
    const auto n = static_cast<std::int32_t>(number);
    return {n % kSquaresPerRow * kSquareSide, n / kSquaresPerRow * kSquareSide};
}

using Rgb = std::array<std::uint8_t, kPixelBytes>;
using TilePixels = std::vector<std::byte>;

void PaintSquare(TilePixels& tile, std::size_t number, const Rgb& colour)
{
    const auto place = PlaceOf(number);
    for (std::int32_t y = place.Y; y < place.Y + kSquareSide; ++y)
        for (std::int32_t x = place.X; x < place.X + kSquareSide; ++x)
            std::memcpy(&tile[static_cast<std::size_t>(y * kTileSide + x) * kPixelBytes],
                        colour.data(), kPixelBytes);
}

/// The rows of the palette tile that squares lie on; it is black where none does, and below. Square
/// 256 is black too, square 257 magenta, but for Tomb Raider I, which has no horizon to repaint.
TilePixels PaletteRows(const LevelData& level)
{
    TilePixels tile(std::size_t{kPaletteRows} * kRowBytes);
    const bool isFirstGame = level.Version == kTR1;
    for (std::size_t i = 0; i < 256; ++i) {
        const Colour6& dim = level.Palette[i];
        const Colour8& full = level.Palette16[i];
        const auto times4 = [](std::uint8_t v) { return static_cast<std::uint8_t>(v * 4); };
        PaintSquare(tile, i,
                    isFirstGame ? Rgb{times4(dim.R), times4(dim.G), times4(dim.B)}
                                : Rgb{full.R, full.G, full.B});
    }
    if (!isFirstGame)
        PaintSquare(tile, 257, {255, 0, 255});
    return tile;
}

/// Rows of a range of the level's tiles, then those of the palette tile.
class LevelRows : public TileRows
{
public:
    LevelRows(const LevelData& level, const TileRange& tiles)
        : pixels_(level, PixelOrder::Rgb),
          firstRow_(std::int64_t{tiles.First} * kTileSide),
          numRows_(std::int64_t{tiles.Count()} * kTileSide),
          palette_(IsOlderGame(level.Version) ? PaletteRows(level) : TilePixels())
    {
    }

    void CopyRow(std::int64_t row, std::byte* out) const override
    {
        if (row < numRows_)
            pixels_.ConvertRow(firstRow_ + row, out);
        else if (row - numRows_ < kPaletteRows)
            std::memcpy(out, &palette_[static_cast<std::size_t>(row - numRows_) * kRowBytes],
                        kRowBytes);
        else
            std::memset(out, 0, kRowBytes);
    }

private:
    PixelConverter pixels_;
    std::int64_t firstRow_;
    std::int64_t numRows_;
    TilePixels palette_;
};

} // namespace

std::array<TextInfo, kNumPaletteTextures> PaletteTextures(const TileRange& tiles)
{
    std::array<TextInfo, kNumPaletteTextures> records;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const auto place = PlaceOf(i);
        records[i] = {.X = static_cast<std::uint8_t>(place.X),
                      .Y = static_cast<std::uint8_t>(place.Y),
                      .Tile = static_cast<std::int16_t>(tiles.Count()),
                      .FlipX = TextInfo::kFlipMark,
                      .Width = kSquareSide - 1,
                      .FlipY = TextInfo::kFlipMark,
                      .Height = kSquareSide - 1};
    }
    return records;
}

SetTiles ConvertTextureTiles(const LevelData& level, const TileRange& tiles)
{
    const auto count = tiles.Count() + (IsOlderGame(level.Version) ? 1 : 0);
    return {std::int64_t{count} * kTileBytes, std::make_shared<LevelRows>(level, tiles)};
}

} // namespace morlik
