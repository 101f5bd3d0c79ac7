#include "samples/SampleArt.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace morlik::samples
{

namespace
{

/// A pixel of a drawing and the drawing's size.
struct Spot
{
    int X;
    int Y;
    int Width;
    int Height;

    /// Pixels to the nearest edge.
    int Edge() const { return std::min({X, Y, Width - 1 - X, Height - 1 - Y}); }
    /// Distance from the middle, 1 at the nearer edges.
    double FromMiddle() const
    {
        const double x = X - (Width - 1) / 2.0;
        const double y = Y - (Height - 1) / 2.0;
        return std::sqrt(x * x + y * y) * 2 / std::min(Width, Height);
    }
    bool Within(int left, int top, int right, int bottom) const
    {
        return X >= left && X < right && Y >= top && Y < bottom;
    }
};

constexpr Colour kTransparent{0, 0, 0, 0};

/// 0 to `range` - 1, the same for the same place.
int Grain(int x, int y, int range)
{
    std::uint32_t mixed =
        static_cast<std::uint32_t>(x) * 374761393U + static_cast<std::uint32_t>(y) * 668265263U;
    mixed = (mixed ^ (mixed >> 13U)) * 1274126177U;
    return static_cast<int>((mixed >> 16U) % static_cast<std::uint32_t>(range));
}

Colour Bricks(const Spot& s)
{
    const int row = s.Y / 16;
    const int x = s.X + (row % 2) * 16;
    if (s.Y % 16 < 2 || x % 32 < 2)
        return Shaded(Ink::Stone, 5 + Grain(s.X, s.Y, 2));
    return Shaded(Ink::Brick, 9 + Grain(x / 32 * 7, row * 3, 4) + Grain(s.X, s.Y, 2));
}

Colour Slab(const Spot& s)
{
    const int edge = std::min({s.X % 64, s.Y % 64, 63 - s.X % 64, 63 - s.Y % 64});
    return Shaded(Ink::Stone,
                  (edge < 2 ? 5 : 9) + Grain(s.X / 64 * 5, s.Y / 64 * 9, 3) + Grain(s.X, s.Y, 2));
}

/// Planks of `width` pixels that run downward.
Colour Planks(int x, int y, int width, Ink ink)
{
    if (x % width == 0)
        return Shaded(ink, 3);
    return Shaded(ink, 10 + Grain(x / width * 3, 1, 3) + Grain(x, y / 6, 3));
}

Colour Beam(const Spot& s)
{
    return Planks(s.Y, s.X, 16, Ink::Bark);
}

Colour Grass(const Spot& s)
{
    return Shaded(Ink::Grass, 7 + Grain(s.X, s.Y, 4) + Grain(s.X / 8, s.Y / 8, 3));
}

Colour CrateFrame(const Spot& s)
{
    if (s.Edge() == 3 && (s.X + s.Y) % 10 == 0)
        return Shaded(Ink::Steel, 14); // nails
    return Shaded(Ink::Wood, s.Edge() == 0 || s.Edge() == 7 ? 6 : 14 + Grain(s.X, s.Y, 2));
}

Colour CrateSideAt(const Spot& s)
{
    if (s.Edge() < 8)
        return CrateFrame(s);
    const int brace = std::abs(s.X - s.Y);
    if (brace < 6)
        return Shaded(Ink::Wood, brace == 5 ? 5 : 13 + Grain(s.X, s.Y, 2));
    return Planks(s.X, s.Y, 12, Ink::Wood);
}

Colour CrateTopAt(const Spot& s)
{
    if (s.Edge() < 8)
        return CrateFrame(s);
    const double ring = s.FromMiddle();
    if (ring > 0.35 && ring < 0.5)
        return Shaded(Ink::Red, 12);
    return Planks(s.Y, s.X, 12, Ink::Wood);
}

/// Slanting stripes between two rings of gold.
Colour PillarAt(const Spot& s)
{
    if (s.Y < 6 || s.Y >= s.Height - 6)
        return Shaded(Ink::Gold, 10 + s.X % 6);
    const bool red = (s.X + s.Y) / 16 % 2 == 0;
    return Shaded(red ? Ink::Red : Ink::White, 13 - std::abs(s.X - s.Width / 2) / 8);
}

Colour PillarLidAt(const Spot& s)
{
    return Shaded(Ink::Gold, 8 + (s.X + s.Y) / 6 % 3 * 2);
}

/// An arrow to the right on painted boards.
Colour Arrow(const Spot& s)
{
    const int fromAxis = std::abs(s.Y - s.Height / 2);
    const bool shaft = s.X >= 14 && s.X < 72 && fromAxis < 8;
    const bool head = s.X >= 72 && s.X < 112 && fromAxis < (112 - s.X) * 5 / 8;
    if (shaft || head)
        return Shaded(Ink::White, 15);
    return s.Edge() < 4 ? Shaded(Ink::Bark, 12) : Planks(s.Y, s.X, 16, Ink::Wood);
}

/// Four panels and a knob at the right.
Colour DoorAt(const Spot& s)
{
    const double x = s.X - 56;
    const double y = s.Y - 66;
    if (x * x + y * y < 16)
        return Shaded(Ink::Gold, 16 - static_cast<int>(x + y + 4) / 2);
    const int fromPanel = std::min(std::abs(s.X % 32 - 16), 14) * 2;
    const int rowDistance = std::abs(s.Y % 64 - 32);
    if (fromPanel < 20 && rowDistance < 22)
        return Shaded(Ink::Cloth, fromPanel >= 18 || rowDistance >= 20 ? 5 : 10);
    return Shaded(Ink::Cloth, 7 + Grain(s.X / 3, s.Y / 12, 2));
}

Colour Blocks(const Spot& s)
{
    return Shaded(Ink::Stone, s.Y % 32 < 2 ? 5 : 11 + Grain(s.X / 2, s.Y / 2, 3));
}

Colour Plate(const Spot& s)
{
    const bool bolt = s.X % 22 > 2 && s.X % 22 < 7 && s.Y % 22 > 2 && s.Y % 22 < 7;
    return Shaded(Ink::Steel, bolt ? 16 : s.Edge() < 2 ? 6 : 10 + Grain(s.X, s.Y / 4, 2));
}

Colour LeverAt(const Spot& s)
{
    return s.Y < 8 ? Shaded(Ink::Red, 10 + s.X / 3) : Shaded(Ink::Steel, 8 + s.X / 2);
}

Colour Cross(const Spot& s)
{
    const bool cross = s.Within(13, 5, 19, 27) || s.Within(5, 13, 27, 19);
    return cross ? Shaded(Ink::Red, 15) : Shaded(Ink::White, s.Edge() < 2 ? 8 : 15);
}

Colour FaceAt(const Spot& s)
{
    if (s.Y < 8 || ((s.X < 3 || s.X > 28) && s.Y < 22))
        return Shaded(Ink::Bark, 9 + Grain(s.X, 3, 4));
    if (s.Within(7, 13, 12, 16) || s.Within(20, 13, 25, 16))
        return s.X % 13 == 9 || s.X == 22 ? Shaded(Ink::Bark, 4) : Shaded(Ink::White, 16);
    if (s.Within(11, 24, 21, 27))
        return Shaded(Ink::Red, 11);
    return Shaded(Ink::Skin, s.Within(15, 15, 17, 22) ? 12 : 15);
}

Colour HairAt(const Spot& s)
{
    return Shaded(Ink::Bark, 8 + Grain(s.X, s.Y / 10, 5));
}

Colour ShirtAt(const Spot& s)
{
    return Shaded(Ink::Cloth, 13 - std::abs(s.X - s.Width / 2) / 4 + Grain(s.X, s.Y, 2));
}

Colour ShortsAt(const Spot& s)
{
    return s.Y < 5 ? Shaded(Ink::Bark, s.X % 16 < 4 ? 16 : 8)
                   : Shaded(Ink::Wood, 10 + Grain(s.X, s.Y, 2));
}

Colour SkinAt(const Spot& s)
{
    return Shaded(Ink::Skin, 15 - std::abs(s.X - s.Width / 2) / 5);
}

Colour BootAt(const Spot& s)
{
    const bool lace = s.Y % 6 == 2 && s.X > 10 && s.X < 22;
    return lace ? Shaded(Ink::White, 13) : Shaded(Ink::Bark, 7 + Grain(s.X, s.Y, 2));
}

/// White plaster between dark beams, with a window.
Colour MillWallAt(const Spot& s)
{
    if (s.Within(24, 22, 40, 44))
        return Shaded(Ink::Sky, s.X == 32 || s.Y == 32 ? 2 : 12);
    const bool beam = s.Edge() < 4 || std::abs(s.X - s.Y) < 3 || std::abs(s.X + s.Y - 63) < 3;
    return beam ? Shaded(Ink::Bark, 11) : Shaded(Ink::Sand, 14 + Grain(s.X, s.Y, 2));
}

Colour RoofTiles(const Spot& s)
{
    const int x = s.X + s.Y / 8 % 2 * 4;
    return Shaded(Ink::Brick, x % 8 == 0 || s.Y % 8 == 0 ? 6 : 14 - s.Y % 8 / 2);
}

Colour BladeAt(const Spot& s)
{
    return Shaded(Ink::Steel, s.Y > s.Height - 6 ? 16 : 7 + Grain(s.X / 4, s.Y, 3));
}

/// A fan of narrow leaves.
Colour LeafAt(const Spot& s)
{
    const double x = s.X - (s.Width - 1) / 2.0;
    const double y = s.Height - 1 - s.Y;
    const double reach = std::sqrt(x * x + y * y) / s.Height;
    const double wave = std::cos(std::atan2(y, x) * 14);
    if (reach > 0.95 || wave < reach * 1.6 - 0.8)
        return kTransparent;
    return Shaded(Ink::Leaf, 7 + static_cast<int>(wave * 4 + reach * 5));
}

Colour GlowAt(const Spot& s)
{
    return Shaded(Ink::Gold, static_cast<int>((1 - s.FromMiddle()) * kFullShade));
}

Colour RockAt(const Spot& s)
{
    return Shaded(Ink::Stone, 7 + Grain(s.X / 4, s.Y / 4, 4) + Grain(s.X, s.Y, 2));
}

Colour CloudAt(const Spot& s)
{
    const double wave = std::sin(s.X * 0.098) + std::sin(s.Y * 0.196 + 1) * 0.7;
    return wave > 0.6 ? Shaded(Ink::White, 15) : Shaded(Ink::Sky, 13 + static_cast<int>(wave));
}

/// A flame that leans to one side.
Colour FlameAt(const Spot& s, int lean)
{
    const double height = 1 - static_cast<double>(s.Y) / s.Height;
    const double x = std::abs(s.X - (s.Width - 1) / 2.0 - lean * height) / (s.Width / 2.0);
    const double heat = std::sqrt(height) * (1.2 - height) * 1.9 - x;
    if (heat < 0)
        return kTransparent;
    return Shaded(heat > 0.35 ? Ink::Gold : Ink::Red, 12 + static_cast<int>(heat * 8));
}

Colour FlameLeft(const Spot& s)
{
    return FlameAt(s, -10);
}

Colour FlameRight(const Spot& s)
{
    return FlameAt(s, 10);
}

Colour CoinAt(const Spot& s)
{
    const double ring = s.FromMiddle();
    if (ring > 1)
        return kTransparent;
    return Shaded(Ink::Gold, ring > 0.8 || ring < 0.3 ? 10 : 15);
}

struct Drawing
{
    TextureBox Box;
    Colour (*At)(const Spot& spot);
};

/// In the order of `Art`.
constexpr std::array<Drawing, static_cast<std::size_t>(Art::Count)> kDrawings{{
    {{0, 0, 0, 128, 128}, Bricks},     {{0, 128, 0, 128, 128}, Slab},
    {{0, 0, 128, 128, 128}, Beam},     {{0, 128, 128, 128, 128}, Grass},
    {{1, 0, 0, 64, 64}, CrateSideAt},  {{1, 64, 0, 64, 64}, CrateTopAt},
    {{1, 0, 64, 64, 128}, PillarAt},   {{1, 64, 64, 32, 32}, PillarLidAt},
    {{1, 128, 0, 128, 64}, Arrow},     {{1, 128, 64, 64, 128}, DoorAt},
    {{1, 96, 64, 32, 128}, Blocks},    {{1, 192, 64, 32, 32}, Plate},
    {{1, 224, 64, 16, 32}, LeverAt},   {{1, 192, 96, 32, 32}, Cross},
    {{2, 0, 0, 32, 32}, FaceAt},       {{2, 32, 0, 32, 32}, HairAt},
    {{2, 64, 0, 32, 32}, ShirtAt},     {{2, 96, 0, 32, 32}, ShortsAt},
    {{2, 128, 0, 32, 32}, SkinAt},     {{2, 160, 0, 32, 32}, BootAt},
    {{2, 0, 64, 64, 64}, MillWallAt},  {{2, 64, 64, 32, 32}, RoofTiles},
    {{2, 128, 64, 64, 32}, BladeAt},   {{2, 192, 64, 64, 64, 1}, LeafAt},
    {{2, 64, 128, 64, 64, 2}, GlowAt}, {{2, 0, 128, 64, 64}, RockAt},
    {{2, 128, 128, 128, 64}, CloudAt}, {{3, 0, 0, 32, 64}, FlameLeft},
    {{3, 32, 0, 32, 64}, FlameRight},  {{3, 64, 0, 32, 32}, CoinAt},
}};

void Draw(Picture& picture, const Drawing& drawing)
{
    const TextureBox& box = drawing.Box;
    for (int y = 0; y < box.Height; ++y) {
        for (int x = 0; x < box.Width; ++x) {
            picture.Set(box.Tile, box.X + x, box.Y + y, drawing.At({x, y, box.Width, box.Height}));
        }
    }
}

/// Each pixel takes the ink of the corner that it is nearest to.
void DrawSail(Picture& picture, std::uint16_t cornerCode)
{
    constexpr std::array<Ink, 3> kInkOf{Ink::Red, Ink::Leaf, Ink::White};
    const TextureBox box = SailBox(cornerCode);
    const auto corners = CornersOf(cornerCode);
    for (int y = 0; y < box.Height; ++y) {
        for (int x = 0; x < box.Width; ++x) {
            std::array<int, 3> distances{};
            for (std::size_t c = 0; c < corners.size(); ++c) {
                const int cornerX = (corners.at(c) & kTopRight) != 0 ? box.Width - 1 : 0;
                const int cornerY = (corners.at(c) & kBottomLeft) != 0 ? box.Height - 1 : 0;
                distances.at(c) = (x - cornerX) * (x - cornerX) + (y - cornerY) * (y - cornerY);
            }
            const auto* const nearest = std::min_element(distances.begin(), distances.end());
            const auto at = static_cast<std::size_t>(nearest - distances.begin());
            const int shade = kFullShade - *nearest / 64;
            picture.Set(box.Tile, box.X + x, box.Y + y, Shaded(kInkOf.at(at), shade));
        }
    }
}

} // namespace

TextureBox BoxOf(Art art)
{
    return kDrawings.at(static_cast<std::size_t>(art)).Box;
}

TextureBox SailBox(std::uint16_t cornerCode)
{
    constexpr int kSide = 32;
    return {.Tile = 2, .X = (cornerCode >> 13) * kSide, .Y = 32, .Width = kSide, .Height = kSide};
}

Picture DrawTiles(int tiles)
{
    Picture picture(tiles);
    for (const Drawing& drawing : kDrawings)
        Draw(picture, drawing);
    for (const std::uint16_t code : kCornerCodes)
        DrawSail(picture, code);
    for (int tile = kArtTiles; tile < tiles; ++tile) {
        for (int y = 0; y < kTileSide; ++y) {
            for (int x = 0; x < kTileSide; ++x)
                picture.Set(tile, x, y, Shaded(Ink::White, y % 16 < 2 || x % 32 < 2 ? 4 : 12));
        }
    }
    return picture;
}

} // namespace morlik::samples
