// Levels whose name tells another game, or another place of the palette, than they have, and those
// of the extended engine.

#include "check/ObjectSetCheck.h"
#include "level/Extension.h"
#include "tests/support/Conversion.h"

namespace morlik::test
{

namespace
{

using samples::LevelContent;
using samples::MakeRichLevel;

/// The files of a saved set but for the Info text.
std::vector<std::vector<std::byte>> FilesOfSave(Conversion& run)
{
    EXPECT_TRUE(run.Save());
    std::vector<std::vector<std::byte>> files;
    for (const char* ending : {".wad", ".was", ".swd", ".sam", ".sfx"})
        files.push_back(ReadFile(run.Output(ending)));
    return files;
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
    const std::vector<std::tuple<VersionCode, const char*, VersionCode, std::string>> rows{
        {kTR1, "demo.phd", kTR1, "-Palette where .TUB files have it"},
        {kTR1Gold, "gold.tub", kTR1Gold, "-Palette where .PHD files have it"},
        {kTR5, "tr5.trc.bak", kTR4, "-LevelVersion:5"},
        {kTR5, "level.tr5", kTR4, "-LevelVersion:5"},
        {kTR4, "level.trc", kTR5, "-LevelVersion:4"},
        {kTR4, "model.trc", kTR5Demo, "-LevelVersion:4"}};
    for (const auto& [game, name, toldByName, logLine] : rows) {
        LevelContent level = LevelWithMessage(game);
        std::array<Conversion, 2> runs;
        for (Conversion& run : runs)
            run.OpenLog();
        ASSERT_TRUE(runs[0].Load(level));
        level.OtherPalettePlace = logLine.starts_with("-Palette");
        const auto file = WriteLevel(level).Bytes;
        ASSERT_TRUE(runs[1].Load(file, name)) << name;
        EXPECT_EQ(runs[1].Program.Level.Version, runs[0].Program.Level.Version);
        EXPECT_EQ(runs[1].Host.Messages(), runs[0].Host.Messages());
        const auto lines = runs[1].LogLines();
        EXPECT_EQ(lines.at(1), "-LevelVersion:" + DigitsOf(toldByName));
        EXPECT_EQ(lines.at(2).find("-Can't be read as its name tells: "), 0U) << lines[2];
        EXPECT_EQ(lines.at(3), logLine);
        EXPECT_EQ(lines.size(), runs[0].LogLines().size() + 2);
        runs[1].Program.LevelTitle = runs[0].Program.LevelTitle;
        EXPECT_EQ(FilesOfSave(runs[1]), FilesOfSave(runs[0])) << name;

        // Without its end it can be read in no way: then the name counts.
        Conversion cut;
        cut.OpenLog();
        EXPECT_FALSE(cut.Load({file.begin(), file.begin() + std::ssize(file) / 2}, name));
        EXPECT_EQ(cut.Program.State.LevelVersion, toldByName);
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

using samples::LevelFile;

TEST(Extended, GivesTheSetOfItsTwinInTheFormOfTheGame)
{
    const std::vector<std::tuple<std::uint16_t, bool, const char*>> rows{
        {0, false, ""},
        {370, false, ""},
        {100, false, ""}, // the further slots are free
        {402, false, "1 sound has a number above 369 and no slot in the SFX file: 401"},
        {1024, false, "2 sounds have numbers above 369 and no slot in the SFX file: 401, 510"},
        {2048, true, "2 sounds have numbers above 369 and no slot in the SFX file: 401, 510"}};
    for (const auto& [numSlots, outside, note] : rows) {
        LevelContent twin = MakeRichLevel(kTR4);
        twin.NumOthers = 0; // no demo data
        LevelContent extended = twin;
        samples::MakeExtended(extended, numSlots, outside);
        if (numSlots != 0)
            for (std::size_t slot = numSlots; slot < kSoundMapSlotsTR2; ++slot)
                twin.SoundMap[slot] = -1;
        std::array<Conversion, 2> runs;
        runs[0].OpenLog();
        ASSERT_TRUE(runs[0].Load(extended));
        ASSERT_TRUE(runs[1].Load(twin));
        const LevelData& level = runs[0].Program.Level;
        const LevelData& other = runs[1].Program.Level;
        EXPECT_EQ(level.SoundMap, other.SoundMap) << numSlots;
        EXPECT_EQ(level.SoundDetails.size(), other.SoundDetails.size());
        EXPECT_EQ(level.SampleIndices, other.SampleIndices);
        EXPECT_EQ(level.NumSamples, outside ? 0 : other.NumSamples);
        for (std::size_t i = 0; i < level.Samples.size(); ++i)
            EXPECT_TRUE(std::ranges::equal(level.Samples[i].Data, other.Samples[i].Data));
        EXPECT_EQ(FilesOfSave(runs[0]), FilesOfSave(runs[1])) << numSlots;
        EXPECT_EQ(runs[0].Host.Messages(), Strings());
        const Strings notes(note[0] == 0 ? 0 : 1, note);
        EXPECT_EQ(runs[0].Host.Hints, notes);
        const auto lines = runs[0].LogLines();
        EXPECT_EQ(std::ranges::count(lines, note), std::ssize(notes));
    }
}

TEST(Extended, ChecksCountsAndLooksForNoSizeAtTheEnd)
{
    const std::vector<std::tuple<const char*, std::int64_t, const char*>> rows{
        {"Slots", 0xffff, "sound map, offset "},
        {"Slots", 1025, "sample indices, offset "},
        {"Samples", -1, "samples, offset "},
        {"Samples", 0x7fffffff, "samples, offset "},
        {"Samples", 12, "samples, offset "}, // of 11
        {"Samples", 0, ""},
        {"Extension", 0, ""},
        {"Extension", 0xffffffff, ""}};
    LevelContent level = MakeRichLevel(kTR4);
    for (const bool outside : {false, true})
        for (const auto& [count, value, place] : rows) {
            samples::MakeExtended(level, 1024, outside);
            LevelFile block = WriteLevelBlock(level);
            const bool inBlock = count == std::string("Slots");
            if (inBlock)
                block.SetCount(count, value);
            LevelFile file = WrapTR4(level, block.Bytes);
            if (!inBlock)
                file.SetCount(count, value);
            Conversion run;
            EXPECT_EQ(run.Load(file.Bytes, "a.tr4"), place[0] == 0) << count << value;
            EXPECT_TRUE(place[0] == 0 || run.Host.Details.at(0).starts_with(place)) << count;
        }
}

TEST(Extended, TakesSamplesThatStandInAMainSFXFromThere)
{
    LevelContent content = MakeRichLevel(kTR4);
    samples::MakeExtended(content, 1024, true);
    const auto sounds = samples::SampleSounds();
    const auto mainSFX = MainSfxFile();
    const auto end = narrow<std::uint32_t>(mainSFX.size());
    auto& places = content.Extension->Places;
    places[1] = {places[1].Start + 1, places[1].Size}; // no "RIFF" there
    places[2] = {end - 3, 4};
    places[3] = {0xffffffff, 0xffffffff};
    Conversion run(content);
    run.Host.OpenAnswers.assign(2, run.Folder.Write("main.sfx", mainSFX));
    EXPECT_TRUE(run.Save());
    const auto waves = FilesBelow(ToPath(run.Output("-Sounds")));
    EXPECT_EQ(waves.size(), sounds.size() - 1 - 3);
    EXPECT_EQ(check::CheckSet(run.Base(), kTR4).Notes, check::Complaints());
    // Of a choice, the sounds of its objects alone come along.
    ObjectChoice choice = ChooseAll(run.Program.Level);
    choice.Moveables.assign(choice.Moveables.size(), false);
    choice.Moveables[0] = true;
    run.Program.Objects = choice;
    EXPECT_TRUE(SaveLevel(run.Program, run.Folder.File("chosen.was")));
    const auto heard = FilesBelow(ToPath(run.Folder.File("chosen-Sounds")));
    EXPECT_FALSE(heard.empty());
    EXPECT_LT(heard.size(), waves.size());
    for (const auto& [name, wave] : heard)
        EXPECT_EQ(wave, waves.at(name));
    // What is behind the end of the level's samples, or a few bytes, is no place of one.
    const auto& sfx = run.Program.MainSFX;
    EXPECT_TRUE(sfx.WaveAt(0, end));
    EXPECT_FALSE(sfx.WaveAt(0, end + 1));
    EXPECT_FALSE(sfx.WaveAt(0, 3));
    EXPECT_FALSE(MainSFXState().WaveAt(0, 0));
}

} // namespace

} // namespace morlik::test
