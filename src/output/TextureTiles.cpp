#include "output/TextureTiles.h"

#include "output/Pixels.h"

#include <cstring>
#include <vector>

namespace morlik
{

namespace
{

constexpr std::int32_t kSquareSide = 4;
constexpr std::int32_t kSquaresPerRow = kTileSide / kSquareSide;
constexpr std::uint8_t kFlipMark = 0xff;
constexpr std::int32_t kProgressSteps = 256;

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

void PaintSquare(std::vector<std::byte>& tile, std::size_t number, const Rgb& colour)
{
    const auto place = PlaceOf(number);
    for (std::int32_t y = place.Y; y < place.Y + kSquareSide; ++y)
        for (std::int32_t x = place.X; x < place.X + kSquareSide; ++x)
            std::memcpy(&tile[static_cast<std::size_t>(y * kTileSide + x) * kPixelBytes],
                        colour.data(), kPixelBytes);
}

/// The palette tile is black where no square lies. Square 256 is black too, square 257 magenta,
/// but for Tomb Raider I, which has no horizon to repaint.
std::vector<std::byte> PaletteTile(std::int32_t version, const TrMainState& state)
{
    std::vector<std::byte> tile(kTileBytes);
    for (std::size_t i = 0; i < 256; ++i) {
        const Colour6& dim = state.Palette[i];
        const Colour8& full = state.Palette16[i];
        const auto times4 = [](std::uint8_t v) { return static_cast<std::uint8_t>(v * 4); };
        PaintSquare(tile, i,
                    version == kTR1 ? Rgb{times4(dim.R), times4(dim.G), times4(dim.B)}
                                    : Rgb{full.R, full.G, full.B});
    }
    if (version != kTR1)
        PaintSquare(tile, 257, {255, 0, 255});
    return tile;
}

} // namespace

std::array<TextInfo, kNumPaletteTextures> PaletteTextures(const TileRange& tiles)
{
    std::array<TextInfo, kNumPaletteTextures> records;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const auto place = PlaceOf(i);
        records[i] = {.X = static_cast<std::uint8_t>(place.X),
                      .Y = static_cast<std::uint8_t>(place.Y),
                      .Tile = static_cast<std::int16_t>(tiles.Count()),
                      .FlipX = kFlipMark,
                      .Width = kSquareSide - 1,
                      .FlipY = kFlipMark,
                      .Height = kSquareSide - 1};
    }
    return records;
}

void ConvertTextureTiles(LevelData& level, const TrMainState& state, ByteSink& out,
                         const TileRange& tiles, Reporter& report)
{
    const PhaseScope scope(report.Times, Phase::Tiles);
    const bool classic = IsClassic(level.Version);
    report.LogLine("Converting texture tiles");
    out.Put((tiles.Count() + (classic ? 1 : 0)) * kTileBytes);

    const PixelConverter converter(level, state, PixelOrder::Rgb);
    // Each step of the progress converts a 256th of the rows: as many as there are tiles.
    std::vector<std::byte> pixels(static_cast<std::size_t>(tiles.Count()) * kRowBytes);
    std::int64_t row = std::int64_t{tiles.First} * kTileSide;
    for (std::int32_t step = 0; step < kProgressSteps; ++step) {
        report.TheHost().SetProg(30 + static_cast<float>(step) / 10.2F);
        report.TheHost().GiveTurn();
        for (std::size_t at = 0; at < pixels.size(); at += kRowBytes)
            converter.ConvertRow(row++, &pixels[at]);
        out.PutBytes(pixels);
    }
    if (classic) {
        out.PutBytes(PaletteTile(level.Version, state));
        level.TileBytes += kTileBytes;
    }
}

} // namespace morlik
