#include "samples/Textures.h"

#include "base/Narrow.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace morlik::samples
{

namespace
{

constexpr int kTriangleCodes = 8;
constexpr int kCodeStep = 0x2000; ///< between the codes of triangles

/// The corners of a texture with that code, which have the numbers 0 to 3 from the top left
/// clockwise: three of a triangle, four of a rectangle. The code of a triangle tells the
/// right-angled corner that c1 is, and whether c2 follows it clockwise or, from 0x8000 on,
/// counter-clockwise.
std::span<const int> CornersOf(std::int32_t cornerCode)
{
    static constexpr std::array<int, 4> kRectangle{0, 1, 2, 3};
    static constexpr std::array<int, 4> kMirroredRectangle{1, 0, 3, 2};
    static constexpr std::array<std::array<int, 3>, kTriangleCodes> kTriangles{
        {{0, 1, 3}, {1, 2, 0}, {2, 3, 1}, {3, 0, 2}, {1, 0, 2}, {0, 3, 1}, {3, 2, 0}, {2, 1, 3}}};
    if (cornerCode == kPlain)
        return kRectangle;
    if (cornerCode == kMirrored)
        return kMirroredRectangle;
    return kTriangles.at(static_cast<std::size_t>(cornerCode / kCodeStep));
}

/// A corner as the games' own tools write it: the last pixel still belongs to the texture.
TextureCorner CornerAt(const TextureBox& box, int corner)
{
    const bool right = corner == 1 || corner == 2;
    const bool bottom = corner >= 2;
    const auto side = [](bool far) { return static_cast<std::uint8_t>(far ? 0xff : 1); };
    return {.XCoord = side(right),
            .XPixel = narrow<std::uint8_t>(right ? box.X + box.Width - 1 : box.X),
            .YCoord = side(bottom),
            .YPixel = narrow<std::uint8_t>(bottom ? box.Y + box.Height - 1 : box.Y)};
}

/// Full colours of the inks, 0 to 63 like all palette entries.
constexpr std::array<Colour6, kInks> kFullColours{{{48, 32, 16},
                                                   {44, 43, 40},
                                                   {24, 48, 14},
                                                   {36, 50, 62},
                                                   {63, 48, 8},
                                                   {60, 42, 32},
                                                   {60, 6, 0},
                                                   {63, 63, 63}}};

constexpr std::uint8_t kTransparent = 0;

/// How the two inks of a drawing share its box.
enum class Pattern : std::uint8_t
{
    Frame, ///< the second around the first
    Checker,
    Arrow, ///< to the right
    Face,
    Disk,   ///< the second around a core of the first; transparent outside
    Glow,   ///< the first, fading toward the edges
    Corners ///< inks of its own, by the numbers of the corners
};

struct Drawing
{
    TextureBox Box;
    Pattern Kind = Pattern::Corners;
    Ink First = Ink::White;
    Ink Second = Ink::White;
    std::int32_t CornerCode = kPlain;
};

/// In the order of `Art`, without the sails.
constexpr std::array<Drawing, static_cast<std::size_t>(Art::Sail)> kDrawings{{
    {{0, 0, 0, 256, 256}, Pattern::Checker, Ink::Stone, Ink::White},
    {{0, 0, 0, 128, 128}, Pattern::Checker, Ink::Red, Ink::Stone},
    {{0, 128, 0, 128, 64}, Pattern::Frame, Ink::Stone, Ink::Sky},
    {{1, 64, 0, 64, 64}, Pattern::Arrow, Ink::Wood, Ink::Gold},
    {{1, 64, 0, 64, 64}, Pattern::Arrow, Ink::Wood, Ink::Gold},
    {{1, 128, 0, 128, 64}, Pattern::Arrow, Ink::Wood, Ink::White},
    {{1, 128, 0, 128, 64}, Pattern::Arrow, Ink::Wood, Ink::White, kMirrored},
    {{1, 192, 64, 48, 32}, Pattern::Frame, Ink::White, Ink::Red},
    {{2, 0, 0, 32, 32}, Pattern::Face, Ink::Skin, Ink::Wood},
    {{2, 64, 0, 32, 32}, Pattern::Frame, Ink::Sky, Ink::White},
    {{2, 128, 0, 32, 32}, Pattern::Frame, Ink::Skin, Ink::Wood},
    {{2, 160, 0, 32, 32}, Pattern::Checker, Ink::Wood, Ink::Stone},
    {{2, 192, 64, 64, 64, 1}, Pattern::Disk, Ink::Gold, Ink::Grass},
    {{2, 64, 128, 64, 64, 2}, Pattern::Glow, Ink::Gold},
    {{2, 0, 128, 64, 64}, Pattern::Checker, Ink::Stone, Ink::Grass},
    {{2, 128, 128, 64, 64}, Pattern::Checker, Ink::Stone, Ink::Grass, 0},
    {{2, 128, 128, 64, 64}, Pattern::Checker, Ink::Stone, Ink::Grass, 0xa000},
    {{3, 0, 0, 32, 64}, Pattern::Disk, Ink::Gold, Ink::Red},
}};

std::vector<Drawing> AllDrawings()
{
    std::vector<Drawing> drawings(kDrawings.begin(), kDrawings.end());
    for (int code = 0; code < kTriangleCodes; ++code)
        drawings.push_back(
            {.Box = {.Tile = 2, .X = code * 32, .Y = 32}, .CornerCode = code * kCodeStep});
    return drawings;
}

/// The quarter of each corner in the ink of its number among those of the texture.
Ink CornerInk(const Drawing& drawing, bool right, bool bottom)
{
    constexpr std::array kInkOf{Ink::Red, Ink::Grass, Ink::White, Ink::Sky};
    const auto corners = CornersOf(drawing.CornerCode);
    const int corner = bottom ? (right ? 2 : 3) : (right ? 1 : 0);
    return kInkOf.at(
        static_cast<std::size_t>(std::ranges::find(corners, corner) - corners.begin()));
}

std::uint8_t PixelAt(const Drawing& drawing, int x, int y)
{
    constexpr int kStep = 8; // of squares
    // -1 at the left and the top to 1 at the right and the bottom.
    const double across = (2.0 * x + 1) / drawing.Box.Width - 1;
    const double down = (2.0 * y + 1) / drawing.Box.Height - 1;
    const double ring = std::hypot(across, down);
    const bool isMiddle = std::abs(down) < 0.3;
    const int light = kFullShade - static_cast<int>(5 + 5 * down); // it comes from above
    bool second = false;
    switch (drawing.Kind) {
    case Pattern::Frame:
        second = std::max(std::abs(across), std::abs(down)) > 0.8;
        break;
    case Pattern::Checker:
        second = (x / kStep + y / kStep) % 2 != 0;
        break;
    case Pattern::Arrow:
        second = across < 0 ? isMiddle : std::abs(down) < 1 - across;
        break;
    case Pattern::Face: // hair, eyes, mouth
        second = down < -0.6 || (isMiddle && std::abs(std::abs(across) - 0.4) < 0.2) ||
                 (std::abs(across) < 0.4 && std::abs(down - 0.6) < 0.2);
        break;
    case Pattern::Disk:
        if (ring > 1)
            return kTransparent;
        second = ring > 0.4;
        break;
    case Pattern::Glow:
        return Shaded(drawing.First, static_cast<int>(std::max(0.0, 1 - ring) * kFullShade));
    case Pattern::Corners:
        return Shaded(CornerInk(drawing, across > 0, down > 0), kFullShade);
    }
    return Shaded(second ? drawing.Second : drawing.First, light);
}

} // namespace

std::int16_t AddTexture(LevelContent& level, const TextureBox& box, std::int32_t cornerCode)
{
    const auto numbers = CornersOf(cornerCode);
    std::array<TextureCorner, 4> corners{};
    std::transform(numbers.begin(), numbers.end(), corners.begin(),
                   [&box](int number) { return CornerAt(box, number); });
    // The older games tell a triangle by a fourth corner of zeros, the others by a bit of the tile.
    if (IsOlderGame(level.Game)) {
        level.ObjectTextures.push_back({box.Attribute, box.Tile, corners});
        return narrow<std::int16_t>(level.ObjectTextures.size() - 1);
    }
    level.ObjectTexturesTR45.push_back(
        {.Attribute = box.Attribute,
         .Tile = Word(numbers.size() == 3 ? box.Tile | 0x8000 : box.Tile),
         .Corners = corners,
         .Width = box.Width - 1,
         .Height = box.Height - 1});
    return narrow<std::int16_t>(level.ObjectTexturesTR45.size() - 1);
}

void MakeFractional(LevelContent& level)
{
    const auto place = [](std::array<TextureCorner, 4>& corners, bool triangle, std::size_t turn) {
        const std::span used = std::span(corners).first(triangle ? 3 : 4);
        std::rotate(used.begin(), used.begin() + static_cast<std::ptrdiff_t>(turn % used.size()),
                    used.end());
        for (TextureCorner& corner : used)
            corner.XCoord = corner.YCoord = 0x7f;
    };
    std::size_t turn = 0;
    for (ObjectTexture& texture : level.ObjectTextures)
        place(texture.Corners, texture.Corners[3].XCoord == 0, turn++);
    const auto asFloat = [](std::int32_t pixels) {
        return std::bit_cast<std::int32_t>(static_cast<float>(pixels * 256));
    };
    for (ObjectTextureTR45& texture : level.ObjectTexturesTR45) {
        place(texture.Corners, texture.Tile < 0, turn++);
        texture.Width = asFloat(texture.Width);
        texture.Height = asFloat(texture.Height);
    }
}

std::uint8_t Shaded(Ink ink, int shade)
{
    return static_cast<std::uint8_t>(1 + static_cast<int>(ink) * kShades + shade);
}

void SetPalette(LevelContent& level)
{
    for (int entry = 0; entry < kInks * kShades; ++entry) {
        const Colour6& full = kFullColours.at(static_cast<std::size_t>(entry / kShades));
        const auto part = [entry](int value, int scale) {
            return static_cast<std::uint8_t>(value * (entry % kShades) / kFullShade * scale);
        };
        const auto index = static_cast<std::size_t>(entry) + 1;
        level.Palette.at(index) = {part(full.R, 1), part(full.G, 1), part(full.B, 1)};
        level.Palette16.at(index) = {part(full.R, 4), part(full.G, 4), part(full.B, 4)};
    }
}

void AddTiles(LevelContent& level, std::span<const std::uint8_t> pixels)
{
    for (const std::uint8_t pixel : pixels) {
        const auto& [r, g, b, unused] = level.Palette16.at(pixel);
        const bool solid = pixel != kTransparent;
        if (IsOlderGame(level.Game))
            level.Tiles8.push_back(pixel);
        else
            level.Tiles32.push_back(
                solid ? 0xff000000U | static_cast<std::uint32_t>(r << 16 | g << 8 | b) : 0);
        if (!IsFirstGame(level.Game)) // 5 bits a colour; the top bit tells black from transparent
            level.Tiles16.push_back(
                static_cast<std::uint16_t>(solid ? 0x8000 | r / 8 << 10 | g / 8 << 5 | b / 8 : 0));
    }
}

std::vector<std::uint8_t> DrawTiles()
{
    std::vector<std::uint8_t> tiles(std::size_t{kArtTiles} * kTilePixels, kTransparent);
    for (const Drawing& drawing : AllDrawings()) {
        const TextureBox& box = drawing.Box;
        for (int y = 0; y < box.Height; ++y) {
            for (int x = 0; x < box.Width; ++x) {
                const int at = (box.Tile * kTileSide + box.Y + y) * kTileSide + box.X + x;
                tiles.at(static_cast<std::size_t>(at)) = PixelAt(drawing, x, y);
            }
        }
    }
    return tiles;
}

void AddArtTextures(LevelContent& level, std::size_t firstTile)
{
    for (const Drawing& drawing : AllDrawings()) {
        TextureBox box = drawing.Box;
        box.Tile = Word(box.Tile + static_cast<int>(firstTile));
        AddTexture(level, box, drawing.CornerCode);
    }
}

TextureBox BoxOf(Art art)
{
    return kDrawings.at(static_cast<std::size_t>(art)).Box;
}

} // namespace morlik::samples
