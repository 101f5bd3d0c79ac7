// Levels whose name tells another game, or another place of the palette, than they have.

#include "tests/support/Conversion.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

using samples::LevelContent;
using samples::MakeRichLevel;

/// The WAD file of a level.
std::vector<std::byte> WadOf(Conversion& run)
{
    EXPECT_TRUE(run.Save());
    return ReadFile(run.Output(".wad"));
}

/// A level with a texture that costs a message in games I to III.
LevelContent LevelWithMessage(VersionCode game)
{
    LevelContent level = MakeRichLevel(game);
    if (!level.ObjectTextures.empty()) // the right side is left of the left one
        level.ObjectTextures.push_back(
            {.Corners = {
                 {{1, 200, 1, 0}, {0xff, 10, 1, 0}, {0xff, 10, 0xff, 60}, {1, 200, 0xff, 60}}}});
    return level;
}

TEST(OtherWays, OpenALevelThatCanNotBeReadAsItsNameTells)
{
    struct Row
    {
        VersionCode Game;
        bool OtherPalette;
        const char* Name;
        VersionCode ToldByName;
        const char* LogLine; ///< of the other way
    };
    const std::vector<Row> rows{
        {kTR1, true, "demo.phd", kTR1, "-Palette where .TUB files have it"},
        {kTR1Gold, true, "gold.tub", kTR1Gold, "-Palette where .PHD files have it"},
        {kTR5, false, "tr5.trc.bak", kTR4, "-LevelVersion:5"},
        {kTR5, false, "level.tr5", kTR4, "-LevelVersion:5"},
        {kTR4, false, "level.trc", kTR5, "-LevelVersion:4"},
        {kTR4, false, "model.trc", kTR5Demo, "-LevelVersion:4"}};
    for (const Row& row : rows) {
        LevelContent level = LevelWithMessage(row.Game);
        std::array<Conversion, 2> runs;
        for (Conversion& run : runs) {
            run.OpenLog();
        }
        ASSERT_TRUE(runs[0].Load(level));
        level.OtherPalettePlace = row.OtherPalette;
        const auto file = WriteLevel(level).Bytes;
        ASSERT_TRUE(runs[1].Load(file, row.Name)) << row.Name;
        EXPECT_EQ(runs[1].Program.Level.Version, runs[0].Program.Level.Version);
        EXPECT_EQ(runs[1].Host.Messages(), runs[0].Host.Messages());
        const auto lines = runs[1].LogLines();
        EXPECT_EQ(lines.at(1), "-LevelVersion:" + DigitsOf(row.ToldByName));
        EXPECT_EQ(lines.at(2).find("-Can't be read as its name tells: "), 0U) << lines[2];
        EXPECT_EQ(lines.at(3), row.LogLine);
        EXPECT_EQ(lines.size(), runs[0].LogLines().size() + 2);
        EXPECT_EQ(WadOf(runs[1]), WadOf(runs[0])) << row.Name;

        // Without its end it can be read in no way: then the name counts.
        Conversion cut;
        cut.OpenLog();
        EXPECT_FALSE(cut.Load({file.begin(), file.begin() + std::ssize(file) / 2}, row.Name));
        EXPECT_EQ(cut.Program.State.LevelVersion, row.ToldByName);
        const auto told = cut.Host.Messages();
        EXPECT_EQ(std::count(told.begin(), told.end(), told.back()), 1)
            << testing::PrintToString(told);
        EXPECT_EQ(cut.Host.Details.size(), 1U);
    }
}

TEST(OtherWays, DontHideWhatTheReadingByTheNameReports)
{
    LevelContent level = LevelWithMessage(kTR1);
    const auto messages = [](const LevelContent& content, bool opens) {
        Conversion run;
        EXPECT_EQ(run.Load(content), opens);
        return run.Host.Messages();
    };
    const auto good = messages(level, true);
    EXPECT_EQ(good.size(), 2U);
    level.SoundMap[0] = 0;
    level.Samples.clear(); // both readings fail in the end
    level.SampleIndices.resize(1);
    auto file = WriteLevel(level);
    file.SetCount("Sample indices", 0x7fffffff);
    Conversion run;
    EXPECT_FALSE(run.Load(file.Bytes, "level.phd"));
    auto all = good;
    all.emplace_back("MORLIK error: ReadTR -> Error reading level");
    EXPECT_EQ(run.Host.Messages(), all);
    EXPECT_EQ(run.Host.Details.at(0).find("sample indices, offset "), 0U) << run.Host.Details[0];

    // More messages than can be kept until then are shown at once.
    level = LevelWithMessage(kTR1);
    level.ObjectTextures.resize(5000, level.ObjectTextures.back());
    level.OtherPalettePlace = true;
    EXPECT_EQ(messages(level, false).back(), "MORLIK error: ReadTR -> Error reading level");
    level.OtherPalettePlace = false;
    EXPECT_EQ(messages(level, true).size(), 21U);

    // A message that ends the program is told as well.
    level = MakeRichLevel(kTR1);
    const auto faulty = std::to_string(level.ObjectTextures.size());
    level.ObjectTextures.push_back(
        {.Corners = {{{0xff, 10, 1, 5}, {1, 20, 1, 77}, {}, {1, 88, 0, 9}}}});
    EXPECT_EQ(messages(level, false),
              Strings{"MORLIK: ConvertTextInfo -> Error reading texture" + faulty});
}

} // namespace

} // namespace morlik::test
