#include "level/Compressed.h"
#include "tests/support/Conversion.h"

#include <numeric>

namespace morlik::test
{

namespace
{

using samples::LevelContent;
using samples::LevelFile;
using samples::MakeRichLevel;
using samples::MakeTinyLevel;

constexpr const char* kReadMessage = "MORLIK error: ReadTR -> Error reading level";

TEST(ReadTR, TellsTheGameByTheFirstWordAndTheEndOfTheName)
{
    const std::vector<std::tuple<std::uint32_t, const char*, std::int16_t>> rows{
        {0x20, "a.phd", 1},
        {0x20, "a.tub", 15},
        {0x20, "A.TuB", 15},
        {0x20, "a.tub.trc", 1},
        {0x2d, "a.phd", 2},
        {0xff180038, "a.tr2", 3},
        {0xff080038, "a", 3},
        {0xfffffff0, "a.trc", 4},
        {0x03452548, "a.trc", 4},
        {0x00345254, "a.trc", 5},
        {0x00345254, "A.TRC", 5},
        {0x00345254, "a.tr4", 4},
        {0x00345254, "trc", 4},
        {0x00345254, "model.trc", 51},
        {0x00345254, "MODEL.Trc", 51},
        {0x00345254, "del.tr4", 4},
    };
    for (const auto& [word, name, version] : rows) {
        Conversion run;
        run.OpenLog();
        const auto bytes = std::as_bytes(std::span(&word, 1));
        EXPECT_FALSE(run.Load({bytes.begin(), bytes.end()}, name));
        EXPECT_EQ(NumberOf(run.Program.State.LevelVersion), version) << word << name;
        EXPECT_EQ(run.LogLines().at(1), "-LevelVersion:" + std::to_string(version));
        EXPECT_EQ(run.Host.Messages(), Strings{kReadMessage});
    }
}

TEST(ReadTR, ShowsTheFirstWordOfAnUnknownFile)
{
    const std::vector<std::tuple<std::string, std::string, std::string>> rows{
        {"", "0", " \"\""},
        {"\n", "A", " 0A \".\""},
        {{"\0\x10\x0f\xf0\1", 5}, "F00F1000", " 00 10 0F F0 \"....\""},
        {" ~\x7f\x1f", "1F7F7E20", " 20 7E 7F 1F \" ~..\""},
        {"TR4c", "63345254", " 54 52 34 63 \"TR4c\""}};
    for (const auto& [text, digits, bytesAndText] : rows) {
        Conversion run;
        run.OpenLog();
        const auto bytes = std::as_bytes(std::span(text));
        EXPECT_FALSE(run.Load({bytes.begin(), bytes.end()}, "a.phd"));
        const auto lines = run.LogLines(); // the last one is the message
        EXPECT_EQ(lines.at(lines.size() - 2), "-First bytes:" + bytesAndText);
        EXPECT_EQ(run.Host.Messages(),
                  Strings{"MORLIK: Unknown level version - 0x" + digits +
                          "\nIf this is a TR level, please mail the version code "
                          "to me."});
        const bool isProtected = digits == "63345254";
        EXPECT_EQ(run.Host.Hints.size(), isProtected ? 1U : 0U) << digits;
        EXPECT_EQ(lines.at(lines.size() - 3) == (run.Host.Hints.empty() ? "" : run.Host.Hints[0]),
                  isProtected);
    }
}

/// The bytes that readers and sample levels have in common.
TEST(ReadTR, HasRecordsAndRoomsOfTheseLayouts)
{
    std::array<std::int16_t, 31> words{}; // 1, 2, 3...
    std::iota(words.begin(), words.end(), std::int16_t{1});
    ByteReader reader(std::as_bytes(std::span(words)));
    // clang-format off
    const Animation animation{.FrameOffset = 0x20001, .FrameRate = 3, .State = 4, .Speed = 0x60005,
                              .Accel = 0x80007, .FrameStart = 9, .FrameEnd = 10,
                              .NextAnimation = 11, .NextFrame = 12, .NumStateChanges = 13,
                              .StateChange = 14, .NumAnimCommands = 15, .AnimCommand = 16};
    // clang-format on
    EXPECT_EQ(ShortAnimationFields::ReadTable(reader, 1).at(0), animation);
    ObjectTextureTR45 texture;
    TextureHeadFields::Read(reader, texture);
    TextureSizeFields::Read(reader, texture);
    EXPECT_EQ((std::array{texture.Attribute, texture.Tile, texture.NewFlags}),
              (std::array<std::int16_t, 3>{17, 18, 19}));
    EXPECT_EQ(texture.Corners[3].XCoord * 100 + texture.Corners[3].YCoord, 2627);
    EXPECT_EQ(std::pair(texture.Width, texture.Height), std::pair(0x1d001c, 0x1f001e));

    // Of each part of a room, from its head to its end.
    const std::vector<std::pair<VersionCode, std::vector<std::size_t>>> rows{
        {kTR1, {20, 98, 22, 18, 10, 130, 164, 2, 110, 146, 4}},
        {kTR2, {20, 146, 22, 18, 10, 130, 164, 6, 146, 162, 4}},
        {kTR3, {20, 146, 22, 18, 10, 130, 164, 4, 146, 162, 7}},
        {kTR4, {20, 146, 22, 18, 10, 130, 164, 4, 278, 162, 7}}};
    for (const auto& [game, expected] : rows) {
        std::vector<std::size_t> bytes;
        const LevelFile level = WriteLevelBlock(MakeRichLevel(game));
        for (const samples::Mark& mark : level.Marks)
            if (mark.Kind == samples::MarkKind::Section && mark.Name.starts_with("Room 0"))
                bytes.push_back(mark.Size);
        EXPECT_EQ(bytes, expected) << game;
    }
}

/// What a section makes of a count of 0 and of -1 in games I to III, in IV and in V: "++" takes
/// both, "+-" the first, "--" none.
using CountRow =
    std::tuple<const char*, void (*)(LevelContent&), const char*, const char*, const char*>;
const std::vector<CountRow> kCountRows{
    {"Rooms", [](LevelContent& c) { c.Rooms.clear(); }, "--", "+-", "+-"},
    {"Room 0 X sectors", [](LevelContent& c) { c.Rooms[0].NumXSectors = 0; }, "--", "+-", ""},
    {"Room 0 portals", [](LevelContent&) {}, "+-", "+-", ""},
    {"Floor data", [](LevelContent&) {}, "+-", "+-", "+-"},
    {"Mesh data", [](LevelContent& c) { c.Meshes.clear(), c.MeshTable.clear(); }, "+-", "--", "--"},
    {"Mesh pointers", [](LevelContent& c) { c.MeshTable.clear(); }, "+-", "--", "--"},
    {"Animations", [](LevelContent& c) { c.Animations.clear(); }, "--", "--", "--"},
    {"State changes", [](LevelContent& c) { c.StateChanges.clear(); }, "++", "--", "--"},
    {"Dispatches", [](LevelContent& c) { c.AnimDispatches.clear(); }, "++", "--", "--"},
    {"Commands", [](LevelContent& c) { c.AnimCommands.clear(); }, "++", "--", "--"},
    {"Mesh trees", [](LevelContent& c) { c.MeshTrees.clear(); }, "--", "--", "--"},
    {"Frames", [](LevelContent& c) { c.Frames.clear(); }, "--", "--", "--"},
    {"Moveables", [](LevelContent& c) { c.Moveables.clear(); }, "--", "--", "--"},
    {"Static meshes", [](LevelContent&) {}, "++", "+-", "+-"},
    {"Object textures",
     [](LevelContent& c) { c.ObjectTextures.clear(), c.ObjectTexturesTR45.clear(); }, "--", "--",
     "--"},
    {"Sprite textures", [](LevelContent&) {}, "++", "+-", "+-"},
    {"Sprite sequences", [](LevelContent&) {}, "++", "+-", "+-"},
    {"Cameras", [](LevelContent&) {}, "+-", "+-", "+-"},
    {"Demo data", [](LevelContent&) {}, "+-", "+-", "+-"},
    {"Sound details", [](LevelContent& c) { c.SoundDetails.clear(); }, "++", "+-", "++"},
    {"Sample indices", [](LevelContent& c) { c.SampleIndices.clear(); }, "++", "+-", "++"},
};

TEST(ReadTR, TakesCountsOf0AndLessWhereTheGameAllowsThem)
{
    for (const VersionCode game : kGames) {
        for (const auto& [name, empty, older, fourth, fifth] : kCountRows) {
            LevelContent level = MakeTinyLevel(game);
            empty(level);
            LevelFile part = PartOf(level);
            const std::string expected = game == kTR4 ? fourth : game == kTR5 ? fifth : older;
            for (std::size_t i = 0; i < expected.size(); ++i) {
                part.SetCount(name, -static_cast<std::int64_t>(i));
                Conversion run;
                EXPECT_EQ(run.Load(FileOf(level, part), LevelName(game)), expected[i] == '+')
                    << game << ' ' << name << " at -" << i;
            }
        }
    }
}

TEST(ReadTR, FillsWhatEachGameHasAndLeavesTheRest)
{
    Conversion demo;
    ASSERT_TRUE(demo.Load(WriteLevel(MakeTinyLevel(kTR5)).Bytes, "model.trc"));
    EXPECT_EQ(demo.Program.State.LevelVersion, kTR5); // as its other levels
    for (const VersionCode game : kGames) {
        LevelContent content = MakeRichLevel(game);
        content.SoundMap.fill(7);
        const Conversion run(content);
        const LevelData& level = run.Program.Level;
        const bool first = game == kTR1 || game == kTR1Gold;
        const bool older = first || game == kTR2 || game == kTR3;
        EXPECT_EQ(level.Version, first ? kTR1 : game);
        EXPECT_EQ(level.Rooms.size(), older ? content.Rooms.size() : 0);
        EXPECT_EQ(level.SpriteTextures.size(), older ? content.SpriteTextures.size() : 0);
        EXPECT_EQ(level.Tiles8.empty(), !first);
        EXPECT_EQ(level.Tiles16.empty(), !older || first);
        EXPECT_EQ(level.Tiles32.size(), older ? 0 : content.Tiles32.size());
        const auto read = std::count(level.SoundMap.begin(), level.SoundMap.end(), 7);
        EXPECT_EQ(read, first ? 256 : (game == kTR5 ? 450 : 370)) << game;
        EXPECT_EQ(level.NumSamples, game == kTR2 || game == kTR3 ? 0 : 11);
    }
}

TEST(ReadTR, LetsTheSampleListEndEarly)
{
    const auto sizes = [](const Conversion& run) {
        std::vector<std::size_t> list;
        for (const Sample& sample : run.Program.Level.Samples)
            list.push_back(sample.Size());
        return list;
    };
    const auto wav = MakeTinyLevel(kTR1).Samples[0];
    const auto none = std::vector<std::byte>{std::byte{'R'}, std::byte{'I'}, std::byte{'F'}, {}};
    for (const VersionCode game : {kTR1, kTR4, kTR5}) {
        LevelContent level = MakeTinyLevel(game);
        level.Samples = {wav, game == kTR4 ? std::vector<std::byte>{} : none, wav};
        level.SampleIndices = {0, 1, 2};
        Conversion run(level);
        // In Tomb Raider IV nothing is asked of a sample, and an empty one is just that.
        EXPECT_EQ(sizes(run), (std::vector{wav.size(), std::size_t{0},
                                           game == kTR4 ? wav.size() : std::size_t{0}}))
            << game;
    }
    for (const std::int32_t size : {-9, -8, -7}) { // less the 8 bytes before
        LevelContent level = MakeTinyLevel(kTR1);
        std::memcpy(&level.Samples[0][4], &size, sizeof(size));
        Conversion run;
        EXPECT_EQ(run.Load(level), size > -8);
        EXPECT_EQ(sizes(run), size > -8 ? std::vector<std::size_t>{1} : std::vector<std::size_t>{});
    }
    // The place of Tomb Raider V's samples hangs on the size of the level data alone.
    for (const int wrong : {-1, 1, 1000000, -1000000}) {
        LevelFile file = WriteLevel(MakeTinyLevel(kTR5));
        const auto size = file.Section("Samples").Offset - file.Section("Unused word").Offset;
        file.SetCount("Level data", static_cast<std::int64_t>(size) + wrong);
        Conversion run;
        EXPECT_EQ(run.Load(file.Bytes, "a.trc"), wrong > -1000000);
        EXPECT_EQ(sizes(run),
                  wrong > -1000000 ? std::vector<std::size_t>{0} : std::vector<std::size_t>{});
    }
}

TEST(ReadTR, TakesTileSizesAsToldUnlessNoStreamCanGiveThem)
{
    for (const VersionCode game : {kTR4, kTR5}) {
        const LevelFile good = WriteLevel(MakeTinyLevel(game));
        for (const std::int64_t size : {0LL, -1LL, 0x7fffffffLL, 0x4000001LL}) {
            LevelFile file = good;
            file.SetCount("Tiles32 inflated", size);
            Conversion run;
            run.OpenLog();
            EXPECT_FALSE(run.Load(file.Bytes, LevelName(game))) << size;
            EXPECT_EQ(run.Host.Messages(), Strings{kReadMessage});
            EXPECT_PRED2(Has, run.Host.Details.back(), "inflated size of " + std::to_string(size));
        }
        for (const std::int64_t bytes : {1, 2, 3, 4}) { // of a pixel
            LevelFile file = good;
            file.SetCount("Tiles32 inflated", std::int64_t{kTilePixels} * 8 - 4 + bytes);
            Conversion run;
            ASSERT_TRUE(run.Load(file.Bytes, LevelName(game)));
            EXPECT_EQ(run.Program.Level.TileBytes, 2 * kTileBytes - 3 + bytes * 3 / 4);
            EXPECT_EQ(run.Program.Level.Tiles32[0], MakeTinyLevel(game).Tiles32[0]);
            EXPECT_EQ(run.Program.Level.Tiles32.size(), std::size_t{kTilePixels} * 2);
            EXPECT_EQ(run.Program.Level.Tiles32.back(), 0U);
        }
    }
    // Above 64 MiB the stream must be long enough; above 96 MiB none is.
    constexpr std::int32_t kMiB = 1 << 20;
    const std::vector<std::tuple<std::int32_t, std::int32_t, bool>> rows{
        {0, 1, false},
        {1, 1, true},
        {64 * kMiB, 1, true},
        {64 * kMiB + 1032, 1, false},
        {96 * kMiB, 97540, false},
        {96 * kMiB, 97541, true},
        {96 * kMiB + 1, 97542, false}};
    for (const auto& [inflated, compressed, taken] : rows) {
        ByteWriter out;
        out.Put(inflated);
        out.Put(compressed);
        out.PutZeros(97542);
        ByteReader reader(out.Bytes());
        BlockSizes sizes{};
        std::size_t size = 0;
        const auto end = MessageOf<ReadFailure>([&] { size = TakeBlock(reader, sizes).size(); });
        EXPECT_EQ(end.empty(), taken) << inflated;
        EXPECT_EQ(size, taken ? static_cast<std::size_t>(compressed) : 0);
    }
}

TEST(ReadTR, KeepsWhatADamagedTileStreamGaveAndLeavesTheRestAtZero)
{
    for (const VersionCode game : {kTR4, kTR5}) {
        auto content = MakeTinyLevel(game);
        std::uint32_t noise = 1; // pixels that hardly deflate, so that the stream is a long one
        for (std::uint32_t& pixel : content.Tiles32)
            pixel = (noise = noise * 1664525 + 1013904223) & 0x0f0f0f0f;
        const LevelFile whole = WriteLevel(content);
        const auto& stream = whole.Section("Tiles32");
        const auto sound = content.Tiles32.size();
        for (const auto& [at, morePixels, atLeastGiven] :
             {std::tuple<std::size_t, std::size_t, std::size_t>{0, 1000, sound},
              {stream.Size - 2, 0, sound},
              {stream.Size / 2, 0, sound / 3}}) {
            LevelFile file = whole;
            if (at != 0)
                file.Bytes[stream.Offset + at] ^= std::byte{0xff};
            file.SetCount("Tiles32 inflated", static_cast<std::int64_t>((sound + morePixels) * 4));
            Conversion run;
            ASSERT_TRUE(run.Load(file.Bytes, LevelName(game)));
            const auto& tiles = run.Program.Level.Tiles32;
            ASSERT_EQ(tiles.size(), sound + morePixels);
            EXPECT_TRUE(std::ranges::equal(std::span(tiles).first(atLeastGiven),
                                           std::span(content.Tiles32).first(atLeastGiven)));
            EXPECT_EQ(std::ranges::count(std::span(tiles).subspan(sound), 0U),
                      static_cast<std::ptrdiff_t>(morePixels));
            EXPECT_EQ(run.Program.Level.NumMeshPointers, 1);
        }
    }
}

} // namespace

} // namespace morlik::test
