#include "picture/PNG.h"
#include "picture/TGA_Mod.h"
#include "tests/support/Conversion.h"

namespace morlik::test
{

constexpr std::size_t kHeaderBytes = 18;
constexpr std::size_t kSheetRow = 768;

using Bytes = std::vector<std::uint8_t>;

class TgaTest : public testing::Test
{
protected:
    bool Save(const LevelData& level) { return SaveTGA(Name, level, Report); }

    /// The bytes of the file, and three of them at the beginning of a row, in file order.
    Bytes Saved() const
    {
        Bytes bytes;
        for (const std::byte byte : ReadFile(Name))
            bytes.push_back(static_cast<std::uint8_t>(byte));
        return bytes;
    }
    static Bytes Pixel(const Bytes& file, std::size_t row)
    {
        const auto at = file.begin() + static_cast<std::ptrdiff_t>(kHeaderBytes + row * kSheetRow);
        return {at, at + 3};
    }

    /// A level of the given tiles in which the first pixel of row r has the value r (IV and V:
    /// opaque).
    static LevelData NumberedRows(VersionCode version, std::size_t tiles)
    {
        LevelData level;
        level.Version = version;
        const auto pixels =
            std::make_shared<UninitialisedVector<std::uint32_t>>(tiles * kTilePixels, 0xff000000);
        for (std::size_t row = 0; row < tiles * kTileSide; ++row)
            (*pixels)[row * kTileSide] |= static_cast<std::uint32_t>(row);
        level.Tiles32 = *pixels;
        level.InflatedTiles = pixels;
        return level;
    }

    /// A level with a room whose faces have these textures; texture n lies on tile n, but texture 0
    /// far out.
    static LevelData LevelWithFaces(VersionCode version,
                                    const std::vector<std::int16_t>& rectangles,
                                    const std::vector<std::int16_t>& triangles)
    {
        LevelData level;
        level.Version = version;
        for (std::int16_t tile = 0; tile < 400; ++tile)
            level.Textures.emplace_back().Info.Tile = tile;
        level.Textures[0].Info.Tile = 300;
        Room room;
        for (const auto texture : rectangles)
            room.Rectangles.push_back({.Texture = texture});
        for (const auto texture : triangles)
            room.Triangles.push_back({.Texture = texture});
        level.Rooms = {Room{}, room};
        return level;
    }

    TempFolder Folder;
    std::string Name = Folder.File("sheet.tga");
    ScriptedHost Host;
    Reporter Report{Host};
};

TEST_F(TgaTest, ShowsRoomTilesAndAboveThemBumpTiles)
{
    LevelData level = NumberedRows(kTR4, 16);
    level.NumRoomTiles = 10;
    level.NumObjectTiles = 5;
    level.NumBumpTiles = 2;
    ASSERT_TRUE(Save(level));
    const Bytes file = Saved();
    const Bytes header{0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 11, 24, 0};
    ASSERT_EQ(file.size(), kHeaderBytes + 2816 * kSheetRow);
    EXPECT_TRUE(std::equal(header.begin(), header.end(), file.begin()));
    // Row, and where it stands in the level: that is its colour, with blue first.
    const std::vector<std::pair<std::size_t, std::uint32_t>> sources{
        {0, 2559}, {1, 2558}, {2559, 0}, {2560, 4095}, {2815, 3840}};
    for (const auto& [row, source] : sources)
        EXPECT_EQ(Pixel(file, row), (Bytes{static_cast<std::uint8_t>(source & 0xffU),
                                           static_cast<std::uint8_t>(source >> 8U), 0}))
            << "row " << row;
}

TEST_F(TgaTest, CountsTilesByTheFacesOfTheRooms)
{
    using Textures = std::vector<std::int16_t>; // of rectangles and of triangles
    const std::vector<std::tuple<VersionCode, Textures, Textures, std::int16_t>> cases{
        {kTR3, {2, 11, 4}, {3}, 12},
        {kTR2, {2}, {9}, 10},
        {kTR1, {0, -32768 + 7}, {0}, 1}, // 0 and what has the top bit set don't count
        {kTR1, {3, 400}, {}, 4},         // there is no texture 400
        {kTR4, {5}, {}, 0},              // the level file tells
        {kTR2, {}, {}, 1},
    };
    for (const auto& [game, rectangles, triangles, numRoomTiles] : cases)
        EXPECT_EQ(CountRoomTiles(LevelWithFaces(game, rectangles, triangles)), numRoomTiles)
            << "game " << game;
}

TEST_F(TgaTest, CaptionTellsProgressAndComesBack)
{
    LevelData fourth = NumberedRows(kTR4, 1);
    fourth.NumRoomTiles = 1;
    fourth.NumBumpTiles = 1;
    using Shares = std::vector<std::pair<std::size_t, std::string>>; // at some of the captions
    const std::vector<std::tuple<LevelData, std::size_t, Shares>> rows{
        {LevelWithFaces(kTR2, {9}, {}), 257, {{0, "0"}, {128, "50"}, {255, "99"}}}, // 2560 rows
        {LevelWithFaces(kTR3, {}, {}), 27, {{13, "50"}, {25, "98"}}}, // up to the last row
        {fourth, 40, {{25, "65"}, {26, "66"}}},                       // rows 250 and 256 of 384
        {LevelWithFaces(kTR1, {9}, {}), 1, {}}};
    for (const auto& [level, count, shares] : rows) {
        Host.Calls.clear();
        Host.Turns = 0;
        Host.CaptionText = "MORLIK 1.7";
        EXPECT_TRUE(Save(level));
        ASSERT_EQ(Host.Calls.size(), count);
        EXPECT_EQ(static_cast<std::size_t>(Host.Turns) + 1, count);
        for (const auto& [at, share] : shares)
            EXPECT_EQ(Host.Calls.at(at), "caption: Saving TGA -" + share + "%");
        EXPECT_EQ(Host.Calls.back(), "caption: MORLIK 1.7");
    }
}

TEST_F(TgaTest, RefusesWhatCannotBeWritten)
{
    const auto fits = [&](const LevelData& level, const std::string& tiles) {
        Host.Calls.clear();
        const bool good = SheetFits(level, Report);
        const Strings told{"MORLIK: " + tiles + " don't fit in a TGA file - nothing was saved!"};
        EXPECT_EQ(Host.Messages(), good ? Strings{} : told);
        EXPECT_TRUE(good || !(Save(level) || SavePNG(Name, level, Report)));
        return good;
    };
    EXPECT_FALSE(fits(LevelWithFaces(kTR3, {127}, {}), "128 room tiles and 0 bump tiles"));
    // Tiles of rooms, and bump tiles, which have half the height.
    const std::vector<std::tuple<std::int16_t, std::int16_t, bool>> rows{
        {127, 1, true}, {127, 2, false}, {100, 100, false}, {0, 0, true},
        {0, 1, true},   {-1, 4, false},  {4, -1, false}};
    for (const auto& [rooms, bumps, good] : rows) {
        LevelData level = NumberedRows(kTR5, 1);
        level.NumRoomTiles = rooms;
        level.NumBumpTiles = bumps;
        EXPECT_EQ(fits(level, std::to_string(rooms) + " room tiles and " + std::to_string(bumps) +
                                  " bump tiles"),
                  good);
    }
    EXPECT_FALSE(std::filesystem::exists(Name));

    const LevelData good = LevelWithFaces(kTR3, {126}, {});
    for (const std::string& place :
         {Folder.File("missing/sheet.tga"), Folder.File("."), std::string("/dev/full")}) {
        Name = place;
        if (place == "/dev/full" && !std::filesystem::exists(place))
            continue;
        EXPECT_FALSE(Save(good)) << place;
        EXPECT_TRUE(Host.Messages().back().starts_with("MORLIK: Can't write " + Name + ": "));
    }
}

} // namespace morlik::test
