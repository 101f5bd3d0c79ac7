#include "level/Orientation.h"
#include "level/TextureForm.h"
#include "samples/Textures.h"
#include "tests/support/Conversion.h"

#include <gtest/gtest.h>

namespace morlik::test
{

TEST(TextureForm, IsToldByCornersAndSizes)
{
    constexpr TextureCorner kHalf{0x7f, 8, 0x7f, 8};
    constexpr TextureCorner kOther{0x40, 8, 0x7f, 8};
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
    EXPECT_TRUE(isFractional(0, {}, {kHalf, kOther}));
    const Corners other{kOther, kOther, kOther, kOther};
    EXPECT_FALSE(isFractional(62, other, other));
    EXPECT_TRUE(isFractional(63, other, other)); // so many are no accident
    EXPECT_FALSE(isFractional(63, other, {kOther, kOther, kOther, kClassic}));

    constexpr std::int32_t kOne = 0x3f800000; // 1.0 as a float
    struct Row
    {
        std::int32_t Size;
        bool Classic;
        bool Float;
    };
    for (const Row& row :
         {Row{0, true, true}, Row{255, true, false}, Row{256, false, false}, Row{-1, false, false},
          Row{kOne, false, true}, Row{kOne - 1, false, false}, Row{0x47800000, false, true},
          Row{0x47800001, false, false}}) {
        for (const bool wide : {false, true}) {
            // The corner is not at the middle of its pixel: the sizes alone tell.
            ObjectTextureTR45 texture{.Corners = {kOther, kOther, kOther, kOther}};
            (wide ? texture.Width : texture.Height) = row.Size;
            const std::vector textures{ObjectTextureTR45{}, texture};
            EXPECT_EQ(HasClassicSizes(textures), row.Classic) << row.Size;
            EXPECT_EQ(HasFloatSizes(textures), row.Float) << row.Size;
            EXPECT_EQ(FormOf(textures) == TextureForm::Fractional, !row.Classic && row.Float);
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

TEST(FractionalTextures, WithoutARightAngleTakeTheNearestLayoutAndAreCounted)
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

} // namespace morlik::test
