#include "level/ConvertTR5TextInfo.h"
#include "level/ConvertTextInfo.h"
#include "level/Orientation.h"
#include "level/TextureForm.h"
#include "samples/Textures.h"
#include "tests/support/Conversion.h"

namespace morlik::test
{

namespace
{

std::vector<int> Box(const TextInfo& info)
{
    return {info.X, info.Y, info.Width, info.Height, info.FlipX, info.FlipY};
}

/// The tables of one conversion.
struct Textures
{
    explicit Textures(std::vector<ObjectTexture> textures)
    {
        State.ObjectTextures = std::move(textures);
        Level.NumTextInfo = static_cast<std::int32_t>(State.ObjectTextures.size());
        End = EndOf([this] { ConvertTextInfo(Level, State, Report); });
    }
    explicit Textures(std::vector<ObjectTextureTR45> textures)
    {
        State.ObjectTexturesTR45 = std::move(textures);
        Level.NumTextInfo = static_cast<std::int32_t>(State.ObjectTexturesTR45.size());
        Level.TileBytes = 2 * kTileBytes;
        End = EndOf([this] { ConvertTR5TextInfo(Level, State, Report); });
    }

    std::vector<std::int32_t> Remaps() const
    {
        std::vector<std::int32_t> remaps;
        for (const LevelTexture& texture : Level.Textures)
            remaps.push_back(texture.TextureRemap);
        return remaps;
    }

    ScriptedHost Host;
    Reporter Report{Host};
    LevelData Level;
    TrMainState State;
    std::string End;
};

TEST(ConvertTextInfo, ReadsTheCodeOfATriangleFromItsFirstTwoCorners)
{
    constexpr std::uint8_t kFar = 0xff;
    const std::vector<std::pair<std::array<std::uint8_t, 4>, std::int32_t>> rows{
        {{1, 1, kFar, 1}, 0},
        {{kFar, 1, kFar, kFar}, 0x2000},
        {{kFar, kFar, 1, kFar}, 0x4000},
        {{1, kFar, 1, 1}, 0x6000},
        {{kFar, 1, 1, 1}, 0x8000},
        {{1, 1, 1, kFar}, 0xa000},
        {{1, kFar, kFar, kFar}, 0xc000},
        {{kFar, kFar, kFar, 1}, 0xe000},
        {{0, 0, 0, 0}, 0xa000},
    };
    for (const auto& [sides, code] : rows) {
        const auto& s = sides;
        const Textures made({ObjectTexture{
            .Tile = -3, .Corners = {{{s[0], 30, s[1], 7}, {s[2], 20, s[3], 90}, {1, 61, 1, 50}}}}});
        EXPECT_EQ(made.Level.Textures.at(0).TextureFlip, code);
        EXPECT_EQ(Box(made.Level.Textures.at(0).Info), (std::vector<int>{20, 7, 41, 83, 0, 0}));
        EXPECT_EQ(made.Level.Textures.at(0).Info.Tile, -3);
    }
}

/// A rectangle by what counts of it: X side and pixel of c1, X pixel of c2; the same for Y of c1
/// and c4.
ObjectTexture Rectangle(const std::array<std::uint8_t, 6>& c)
{
    return {.Corners = {{{c[0], c[1], c[3], c[4]}, {1, c[2], 1, 77}, {}, {1, 88, 0, c[5]}}}};
}

TEST(ConvertTextInfo, TurnsRectanglesOverAndTellsThoseThatCannotBe)
{
    using Corners = std::array<std::uint8_t, 6>;
    using Place = std::vector<int>; // of the box; empty where the program ends
    const std::vector<std::tuple<Corners, Place, std::int32_t, std::size_t>> rows{
        {{1, 0, 255, 1, 5, 9}, {0, 5, 255, 4, 255, 255}, 1, 0},
        {{0xff, 30, 20, 1, 5, 9}, {20, 5, 10, 4, 255, 255}, -1, 0},
        {{1, 3, 4, 0xff, 9, 0}, {3, 0, 1, 9, 255, 255}, 1, 0},
        {{1, 20, 10, 1, 5, 9}, {20, 5, 0, 4, 255, 255}, 1, 2},
        {{1, 20, 10, 0xff, 9, 5}, {20, 5, 0, 4, 255, 255}, 1, 2},
        {{1, 10, 20, 1, 20, 10}, {10, 20, 10, 0, 255, 255}, 1, 1},
        {{1, 20, 10, 1, 20, 10}, {20, 20, 0, 0, 255, 255}, 1, 2},
        {{0xff, 30, 20, 0xff, 5, 9}, {20, 9, 10, 0, 255, 255}, -1, 1},
        {{0xff, 10, 20, 1, 5, 9}, {}, 0, 1},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& [corners, place, code, messages] = rows[i];
        const ObjectTexture good = Rectangle(std::get<0>(rows[0]));
        const Textures made({good, Rectangle(corners), good});
        EXPECT_EQ(made.Host.Messages(),
                  Strings(messages, "MORLIK: ConvertTextInfo -> Error reading texture1"))
            << i;
        EXPECT_EQ(!made.End.empty(), place.empty()) << i;
        if (place.empty())
            continue;
        EXPECT_EQ(Box(made.Level.Textures.at(1).Info), place) << i;
        EXPECT_EQ(made.Level.Textures.at(1).TextureFlip, code) << i;
        EXPECT_EQ(Box(made.Level.Textures.at(2).Info), std::get<1>(rows[0])) << i;
        EXPECT_EQ(made.Remaps(), (std::vector<std::int32_t>{0, 1, 2}));
    }
}

ObjectTextureTR45 Texture(std::int16_t tile, std::array<std::array<int, 2>, 3> corners,
                          std::int32_t width, std::int32_t height)
{
    ObjectTextureTR45 texture{.Tile = tile, .Width = width, .Height = height};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        texture.Corners.at(i).XPixel = static_cast<std::uint8_t>(corners.at(i)[0]);
        texture.Corners.at(i).YPixel = static_cast<std::uint8_t>(corners.at(i)[1]);
    }
    return texture;
}

TEST(ConvertTR5TextInfo, MapsRepeatsOfABoxToTheFirst)
{
    const auto box = [](std::int16_t tile, int x, int width, int height = 10) {
        return Texture(tile, {{{x, 0}, {x + width, 0}, {x, 0}}}, width, height);
    };
    const Textures made({box(0, 2, 7), box(0, 2, 9), box(0, 2, 7, 12), box(1, 2, 7), box(0, 2, 7),
                         box(Word(0x8000), 2, 7), box(0, 4, 7), box(1, 2, 7), box(0, 2, 9)});
    EXPECT_EQ(made.Remaps(), (std::vector<std::int32_t>{0, 1, 2, 3, 0, 0, 6, 3, 1}));
    EXPECT_EQ(made.Level.Textures.at(5).TextureFlip, 0);
    EXPECT_EQ(made.Level.Textures.at(4).TextureFlip, 1);
}

TEST(ConvertTR5TextInfo, RefusesBoxesAndTilesThatTheLevelDoesNotHave)
{
    const auto end = [](std::int16_t tile, int x, int y, std::int32_t width, std::int32_t height) {
        const Textures made({Texture(0, {{{0, 0}, {1, 0}, {0, 1}}}, 1, 1),
                             Texture(tile, {{{x, y}, {x, y}, {x, y}}}, width, height)});
        return made.End;
    };
    const std::string invalid = "ConvertTR5TextInfo -> ObjectTexture1 invalid";
    EXPECT_EQ(end(1, 200, 200, 55, 55), "");
    EXPECT_EQ(end(1, 200, 200, 56, 55), invalid);
    EXPECT_EQ(end(3, 200, 200, 55, 56), invalid);
    EXPECT_EQ(end(3, 0, 0, 1, 1), "Invalid objecttexture - Tile wrong");
    // The level has two tiles: number 2 is let through as a tile, but none of its rows are there.
    EXPECT_THROW(end(2, 0, 0, 1, 1), ReadFailure);
    EXPECT_THROW(end(0, 0, 0, 256, 1), ReadFailure);
    EXPECT_THROW(end(0, 0, 0, 1, -1), ReadFailure);
}

TEST(TextureForm, IsToldByCornersAndSizes)
{
    constexpr TextureCorner kHalf{0x7f, 8, 0x7f, 8};
    constexpr TextureCorner kOther{0x40, 8, 0x7f, 8};
    constexpr TextureCorner kOtherRow{0x7f, 8, 0x40, 8};
    constexpr TextureCorner kClassic{0x40, 8, 0xff, 8};
    using Corners = std::array<TextureCorner, 4>;
    const auto isFractional = [](std::size_t count, const Corners& all, const Corners& last) {
        std::vector<ObjectTexture> textures(count, {.Corners = all});
        textures.push_back({.Corners = last});
        return FormOf(textures) == TextureForm::Fractional;
    };
    EXPECT_FALSE(isFractional(0, {}, {}));
    EXPECT_TRUE(isFractional(0, {}, {kHalf, kOther, kHalf, kOther}));
    EXPECT_FALSE(isFractional(0, {}, {kHalf, kOther, kOther})); // the last one is unused
    EXPECT_FALSE(isFractional(0, {}, {kHalf, kOtherRow, kOtherRow}));
    EXPECT_TRUE(isFractional(0, {}, {kHalf, kOther}));
    const Corners other{kOther, kOther, kOther, kOther};
    EXPECT_FALSE(isFractional(62, other, other));
    EXPECT_TRUE(isFractional(63, other, other)); // so many are no accident
    EXPECT_FALSE(isFractional(63, other, {kOther, kOther, kOther, kClassic}));

    constexpr std::int32_t kOne = 0x3f800000; // 1.0 as a float
    const std::vector<std::tuple<std::int32_t, bool, bool>> rows{
        {0, true, true},           {255, true, false},        {256, false, false},
        {-1, false, false},        {kOne, false, true},       {kOne - 1, false, false},
        {0x47800000, false, true}, {0x47800001, false, false}};
    for (const auto& [size, isClassic, isFloat] : rows) {
        for (const bool wide : {false, true}) {
            // The corner is not at the middle of its pixel: the sizes alone tell.
            ObjectTextureTR45 texture{.Corners = {kOther, kOther, kOther, kOther}};
            (wide ? texture.Width : texture.Height) = size;
            const std::vector textures{ObjectTextureTR45{}, texture};
            EXPECT_EQ(HasClassicSizes(textures), isClassic) << size;
            EXPECT_EQ(HasFloatSizes(textures), isFloat) << size;
            EXPECT_EQ(FormOf(textures) == TextureForm::Fractional, !isClassic && isFloat);
        }
    }
    // With sizes of the games' own tools, boxes from even to odd pixels are theirs too.
    for (int odd = 0; odd < 16; ++odd) {
        const auto pixel = [odd](int bit) {
            return static_cast<std::uint8_t>(8 + (odd >> bit & 1));
        };
        const TextureCorner least{0x7f, pixel(0), 0x7f, pixel(1)};
        const TextureCorner most{0x7f, static_cast<std::uint8_t>(pixel(2) + 8), 0x7f,
                                 static_cast<std::uint8_t>(pixel(3) + 8)};
        const std::vector<ObjectTextureTR45> textures{{.Corners = {least, most, least, most}}};
        EXPECT_EQ(FormOf(textures) == TextureForm::Classic, odd == 12);
    }
}

TEST(FractionalTextures, MayMissTheirCornersByOnePixel)
{
    for (const std::uint8_t off : std::initializer_list<std::uint8_t>{0, 1, 2}) {
        for (const bool sideways : {false, true}) {
            std::array<TextureCorner, 3> corners{{{.XPixel = 10, .YPixel = 20},
                                                  {.XPixel = 26, .YPixel = 20},
                                                  {.XPixel = 10, .YPixel = 36}}};
            std::uint8_t& pixel = sideways ? corners[0].XPixel : corners[0].YPixel;
            pixel = static_cast<std::uint8_t>(pixel + off);
            const Orientation found = OrientationOf(corners, BoxOf(corners));
            EXPECT_EQ(found.Code, 0);
            EXPECT_EQ(found.Turn, 0);
            EXPECT_EQ(found.Simplified, off > 1);
        }
    }
}

TEST(FractionalTextures, WithoutARightAngleAreTurnedToTheNearestAndCounted)
{
    samples::LevelContent level = samples::MakeRichLevel(kTR3);
    samples::MakeFractional(level);
    // An arrow head: its tip is in the middle of the box's upper edge.
    auto& corners = level.ObjectTextures.back().Corners;
    corners = {{{0x7f, 8, 0x7f, 0}, {0x7f, 16, 0x7f, 16}, {0x7f, 0, 0x7f, 16}, {0, 0, 0, 0}}};
    Conversion run;
    run.OpenLog();
    ASSERT_TRUE(run.Load(level));
    EXPECT_EQ(run.LogLines().at(2), "-Texture form: fractional");
    EXPECT_EQ(run.LogLines().back(), "1 textures simplified");
}

} // namespace

} // namespace morlik::test
