#include "picture/ContactSheet.h"

#include "base/Narrow.h"
#include "model/Damage.h"
#include "picture/Lettering.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <span>

namespace morlik
{

namespace
{

constexpr std::int32_t kGap = 8;      ///< between two cells and around them all
constexpr std::int32_t kLabelGap = 4; ///< between a picture and its label

/// A cell of the sheet.
struct Cell
{
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::vector<std::string> Lines;
};

/// The cells, row by row; each row is as high as its longest label wants it.
struct Layout
{
    Layout(const std::vector<std::string>& labels, const SheetLook& look)
    {
        const auto letters = static_cast<std::size_t>(std::max(1, look.Side / kLetterWidth));
        const auto columns = static_cast<std::size_t>(look.Columns);
        for (std::size_t i = 0; i < labels.size(); ++i) {
            if (i % columns == 0)
                y_ = Height;
            const auto column = static_cast<std::int64_t>(i % columns);
            Cell cell{.X = static_cast<std::int32_t>(kGap + column * (look.Side + kGap)),
                      .Y = static_cast<std::int32_t>(y_),
                      .Lines = WrapText(labels[i], letters)};
            Width = std::max<std::int64_t>(Width, cell.X + look.Side + kGap);
            const auto lines = static_cast<std::int64_t>(cell.Lines.size());
            Height = std::max(Height, y_ + look.Side + kLabelGap + lines * kLineHeight + kGap);
            Cells.push_back(std::move(cell));
            if (Height > kMostPictureSide || Width > kMostPictureSide)
                return;
        }
    }

    std::vector<Cell> Cells;
    std::int64_t Width = std::int64_t{2} * kGap;
    std::int64_t Height = kGap;

private:
    std::int64_t y_ = 0;
};

void Copy(const Picture& from, Picture& to, std::int32_t x, std::int32_t y)
{
    for (std::int32_t row = 0; row < from.Height; ++row) {
        const auto line = std::span(from.Pixels).subspan(from.At(0, row));
        std::copy_n(line.begin(), from.Width, &to.Pixels[to.At(x, y + row)]);
    }
}

/// Where a sprite lies on its tile.
struct SpriteBox
{
    explicit SpriteBox(const SpriteTexture& sprite)
        : X(sprite.X),
          Y(sprite.Y),
          // In 256ths of a pixel less 1.
          Width(std::min(sprite.Width / 256 + 1, kTileSide - X)),
          Height(std::min(sprite.Height / 256 + 1, kTileSide - Y))
    {
    }

    std::int32_t X, Y, Width, Height;
};

std::span<const SpriteTexture> SpritesOf(const SpriteTables& sprites,
                                         const SpriteSequence& sequence)
{
    const std::int64_t count = -std::int64_t{sequence.NegatedCount};
    if (count < 0 || !Inside(sequence.FirstTexture, count, sprites.SpriteTextures.size()))
        FailDamaged("sprites of object ", sequence.ObjectID, ": ", count, " from ",
                    sequence.FirstTexture, " on of ", sprites.SpriteTextures.size());
    return std::span(sprites.SpriteTextures)
        .subspan(count == 0 ? 0 : narrow<std::size_t>(sequence.FirstTexture),
                 static_cast<std::size_t>(count));
}

/// Draws a sprite into the square of `side` pixels at `left`, `top`, in its middle, `scale` times
/// as large.
void DrawSprite(Picture& picture, const SpriteBox& box, const Colour* tile, std::int32_t left,
                std::int32_t top, std::int32_t side, double scale)
{
    const auto scaled = [&](std::int32_t extent) {
        return std::clamp(static_cast<std::int32_t>(extent * scale), 1, side);
    };
    const std::int32_t width = scaled(box.Width);
    const std::int32_t height = scaled(box.Height);
    for (std::int32_t y = 0; y < height; ++y)
        for (std::int32_t x = 0; x < width; ++x) {
            const Colour pixel =
                tile[(box.Y + y * box.Height / height) * kTileSide + box.X + x * box.Width / width];
            if (pixel != 0)
                picture.Pixels[picture.At(left + (side - width) / 2 + x,
                                          top + (side - height) / 2 + y)] = pixel;
        }
}

} // namespace

std::optional<Picture> MakeContactSheet(const std::vector<std::string>& labels,
                                        const SheetLook& look,
                                        const std::function<Picture(std::size_t)>& draw)
{
    const Layout layout(labels, look);
    if (layout.Width > kMostPictureSide || layout.Height > kMostPictureSide)
        return {};
    Picture sheet{.Width = static_cast<std::int32_t>(layout.Width),
                  .Height = static_cast<std::int32_t>(layout.Height),
                  .Pixels = {}};
    sheet.Pixels.resize(sheet.At(0, sheet.Height), look.Background);
    for (std::size_t i = 0; i < layout.Cells.size(); ++i) {
        const Cell& cell = layout.Cells[i];
        Copy(draw(i), sheet, cell.X, cell.Y);
        std::int32_t y = cell.Y + look.Side + kLabelGap;
        for (const std::string& line : cell.Lines) {
            DrawLine(sheet, cell.X, y, line, look.Letters);
            y += kLineHeight;
        }
    }
    return sheet;
}

Picture DrawSprites(const SpriteTables& sprites, const SpriteSequence& sequence, std::int32_t side,
                    Colour background, TexturePixels& textures)
{
    Picture picture{.Width = side, .Height = side, .Pixels = {}};
    picture.Pixels.resize(picture.At(0, side), background);
    const auto list = SpritesOf(sprites, sequence);
    std::set<std::int32_t> tiles;
    std::int32_t largest = 1;
    for (const SpriteTexture& sprite : list) {
        tiles.insert(sprite.Tile);
        largest = std::max({largest, SpriteBox(sprite).Width, SpriteBox(sprite).Height});
    }
    textures.Need({tiles.begin(), tiles.end()});
    const auto columns =
        static_cast<std::int32_t>(std::ceil(std::sqrt(static_cast<double>(list.size()))));
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::int32_t room = side / columns;
        const auto number = static_cast<std::int32_t>(i);
        if (room > 0)
            DrawSprite(picture, SpriteBox(list[i]), textures.Tile(list[i].Tile),
                       number % columns * room, number / columns * room, room,
                       static_cast<double>(room) / largest);
    }
    return picture;
}

} // namespace morlik
