#include "samples/Textures.h"

#include "convert/Pixels.h"
#include "tests/support/Conversion.h"

#include <cstring>

namespace morlik::test
{

namespace
{

using samples::LevelContent;
using Pixel = std::array<int, 3>;

constexpr Pixel kMagenta{255, 0, 255};

Pixel PixelAt(const std::uint8_t* pixels, std::size_t index)
{
    return {pixels[3 * index], pixels[3 * index + 1], pixels[3 * index + 2]};
}

TEST(Pixels, AreConvertedByTheFormOfTheGame)
{
    const std::vector<std::tuple<VersionCode, std::uint32_t, Pixel>> rows{
        {kTR1, 0, kMagenta},           {kTR1, 1, {255, 0, 4}},
        {kTR1, 2, {125, 130, 251}},    {kTR1, 3, {0, 0, 0}},
        {kTR2, 0, kMagenta},           {kTR2, 0x8000, {0, 0, 0}},
        {kTR2, 0x7c00, {248, 0, 0}},   {kTR2, 0x83e0, {0, 248, 0}},
        {kTR2, 0x0421, {8, 8, 8}},     {kTR2, 0xffff, {248, 248, 248}},
        {kTR4, 0xff010203, {1, 2, 3}}, {kTR4, 0xfe010203, kMagenta},
        {kTR4, 0x00ffffff, kMagenta},  {kTR4, 0xff000000, {0, 0, 0}},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& [game, source, rgb] = rows[i];
        LevelData level;
        level.Palette[0] = {1, 2, 3};
        level.Palette[1] = {63, 0, 1};
        level.Palette[2] = {31, 32, 62};
        std::vector<std::uint8_t> tiles8;
        std::vector<std::uint16_t> tiles16;
        std::vector<std::uint32_t> tiles32;
        // All but the pixel in question differ from it, and a row of another value stands before.
        const std::size_t at = kTileSide + i;
        const auto fill = [at, value = source](auto& tiles) {
            tiles.assign(kTilePixels, 1);
            tiles[at] = static_cast<std::remove_reference_t<decltype(tiles[at])>>(value);
        };
        if (game == kTR1)
            fill(tiles8);
        else if (game == kTR2)
            fill(tiles16);
        else
            fill(tiles32);
        level.Tiles8 = tiles8;
        level.Tiles16 = tiles16;
        level.Tiles32 = tiles32;
        for (const PixelOrder order : {PixelOrder::Rgb, PixelOrder::Bgr}) {
            const PixelConverter converter(level, order);
            std::array<std::byte, kRowBytes> row{};
            converter.ConvertRow(1, row.data());
            const auto* pixels = reinterpret_cast<const std::uint8_t*>(row.data());
            const bool rgbOrder = order == PixelOrder::Rgb;
            EXPECT_EQ(PixelAt(pixels, i), (rgbOrder ? rgb : Pixel{rgb[2], rgb[1], rgb[0]})) << i;
            converter.ConvertRow(256, row.data());
            EXPECT_EQ(PixelAt(pixels, 255), kMagenta);
        }
    }
}

/// A level of eight tiles, tile t filled with the 16-bit pixel or palette index t + 1, whose one
/// mesh uses a texture on tile 7 and one on tile 4; texture 1 between them is not used.
LevelContent TwoTiles(VersionCode game)
{
    LevelContent level = samples::MakeTinyLevel(game);
    level.Tiles8.resize(8 * std::size_t{kTilePixels});
    level.Tiles16.resize(level.Tiles8.size());
    level.Tiles32.resize(level.Tiles8.size());
    for (std::size_t i = 0; i < level.Tiles8.size(); ++i) {
        level.Tiles8[i] = static_cast<std::uint8_t>(i / kTilePixels + 1);
        level.Tiles16[i] = level.Tiles8[i];
        level.Tiles32[i] = 0xff000000U | level.Tiles8[i];
    }
    level.ObjectTextures.clear();
    level.ObjectTexturesTR45.clear();
    AddTexture(level, {.Tile = 7, .X = 200, .Y = 20, .Width = 56, .Height = 8});
    AddTexture(level, {.Tile = 1});
    AddTexture(level, {.Tile = 4, .X = 2, .Y = 200, .Width = 12, .Height = 56});
    level.Meshes[0].Rectangles = {{{0, 1, 2, 3}, 0}, {{0, 1, 2, 3}, 2}};
    return level;
}

TEST(Textures, KeepTheTilesFromTheFirstUsedOneToTheLast)
{
    for (const VersionCode game : {kTR1, kTR2, kTR3, kTR4, kTR5}) {
        LevelContent content = TwoTiles(game);
        content.Palette[255] = {63, 1, 0}; // which the samples leave black
        content.Palette16[255] = {254, 4, 3};
        Conversion run(content);
        EXPECT_TRUE(run.Save());
        EXPECT_EQ(run.Host.Messages(), Strings{});
        const ObjectSet wad = run.Wad();
        const auto pixels = PixelsOf(wad.Tiles);
        const bool isOlder = IsOlderGame(game);
        ASSERT_EQ(wad.Textures.size(), isOlder ? 260U : 2U) << game;
        EXPECT_EQ(wad.Textures[0], (TextInfo{200, 20, 3, 255, 55, 255, 7}));
        EXPECT_EQ(wad.Textures[1], (TextInfo{2, 200, 0, 255, 11, 255, 55}));
        ASSERT_EQ(pixels.size(), (isOlder ? 5 : 4) * std::size_t{kTileBytes});
        const auto pixel = [&](std::size_t tile, std::size_t x, std::size_t y) {
            return PixelAt(&pixels[tile * std::size_t{kTileBytes}], y * 256 + x);
        };
        for (std::size_t tile = 0; tile < 4; ++tile) {
            const int value = static_cast<int>(tile) + 5;
            const Pixel expected = game == kTR1
                                       ? pixel(tile, 0, 0)
                                       : Pixel{0, 0, IsOlderGame(game) ? 8 * value : value};
            EXPECT_EQ(pixel(tile, 0, 0), expected);
            EXPECT_EQ(pixel(tile, 255, 255), expected);
        }
        if (isOlder) { // in its square of the palette's tile
            EXPECT_EQ(pixel(4, 252, 12), (game == kTR1 ? Pixel{252, 4, 0} : Pixel{254, 4, 3}));
        }
    }
}

TEST(Textures, OnTilesThatTheLevelLacksAreMagentaAndTooFarOutStopTheSave)
{
    for (const int tile : {9, -3, 511, 600, 0x7fff, -0x8000}) {
        const bool good = tile >= -3 && tile <= 511;
        Conversion run(TwoTiles(kTR2));
        run.Program.Level.Textures[0].Info.Tile = Word(tile);
        EXPECT_EQ(run.Save(), good) << tile;
        EXPECT_EQ(run.Host.Messages(),
                  good ? Strings{} : Strings{"MORLIK: ERROR! Bad texture found!"});
        EXPECT_EQ(run.Host.Calls.back(), "event: Ready.");
        EXPECT_EQ(std::filesystem::exists(run.Output(".was")), good);
        if (tile == 9) {
            EXPECT_EQ(PixelAt(PixelsOf(run.Wad().Tiles).data(), 5 * kTilePixels + 7), kMagenta);
        }
    }
}

TEST(Textures, ThatLeaveTheirTileEndTheProgram)
{
    const std::vector<std::pair<TextInfo, std::string>> rows{
        {{.X = 200, .Width = 55}, ""},
        {{.X = 200, .Width = 56}, "X"},
        {{.Y = 255, .Height = 1}, "Y"},
        {{.X = 255, .Y = 255, .Width = 255, .Height = 255}, "X"}};
    for (const auto& [info, fault] : rows) {
        Conversion run(TwoTiles(kTR3));
        run.Program.Level.Textures[2].Info = info;
        EXPECT_EQ(EndOf([&] { run.Save(); }),
                  fault.empty() ? "" : "Wrong TextInfo found - TextInfo2 -> " + fault + " invalid");
    }
}

TEST(Textures, OfALevelThatUsesNoneAreThePaletteTileAlone)
{
    for (const VersionCode game : {kTR1, kTR4}) {
        LevelContent level = samples::MakeTinyLevel(game);
        level.Meshes[0].Rectangles.clear();
        Conversion run(level);
        EXPECT_TRUE(run.Save());
        EXPECT_EQ(run.Wad().Textures.size(), game == kTR1 ? 258U : 0U);
        EXPECT_EQ(static_cast<std::size_t>(run.Wad().Tiles.NumBytes()),
                  game == kTR1 ? std::size_t{kTileBytes} : 0U);
        if (game == kTR1) {
            EXPECT_EQ(run.Wad().Textures[0].Tile, 0);
        }
    }
}

} // namespace

} // namespace morlik::test
