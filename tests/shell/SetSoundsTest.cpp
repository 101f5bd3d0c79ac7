// The sounds of a set, and the export of all sounds: what it takes, and that the user can stop it.

#include "set/Sounds.h"
#include "shell/Sounds.h"
#include "tests/support/Conversion.h"
#include "tests/support/HeapPeak.h"

#include <map>
#include <numeric>

namespace morlik::test
{

namespace
{

using samples::LevelContent;

SoundDetail Detail(std::int16_t sample, int samples)
{
    return {.Sample = sample, .Raw = {5, 6}, .Characteristics = Word(0x7f80 | samples << 2 | 3)};
}

/// Sounds of every kind: detail 0 without a slot, 1 in two slots, 2 with samples behind the end, 3
/// without samples, and the most samples that a detail can have in 4.
LevelContent WithSounds(VersionCode game)
{
    LevelContent level = samples::MakeTinyLevel(game);
    level.SoundMap.fill(-1);
    level.SoundMap[7] = level.SoundMap[9] = 1;
    level.SoundMap[12] = 2;
    level.SoundMap[13] = 3;
    level.SoundMap[255] = 4;
    level.SoundMap[369] = -3;
    level.SoundDetails = {Detail(3, 1), Detail(1, 3), Detail(4, 2), Detail(0, 0), Detail(0, 31)};
    level.SampleIndices = {2, 0, 99, 1, 2};
    const auto sounds = samples::SampleSounds();
    if (game == kTR1)
        level.Samples = {sounds.begin(), sounds.begin() + 5};
    return level;
}

/// The SAM lines of that level, where detail 0 has the sound number `unnamed`.
Strings LinesOf(const std::string& game, const std::string& unnamed)
{
    Strings lines;
    const auto add = [&](const std::string& sound, int samples) {
        for (int n = 0; n < samples; ++n)
            lines.push_back("TR" + game + " Sound " + sound + "-" + std::to_string(n) + ".wav");
    };
    add(unnamed, 1);
    add("9", 3);
    add("12", 2);
    add("255", 31);
    return lines;
}

/// The number of WAV files in the folder of a run and below.
std::ptrdiff_t CountWaves(const Conversion& run)
{
    return std::ranges::count_if(FilesBelow(run.Folder.Path()),
                                 [](const auto& file) { return file.first.ends_with(".wav"); });
}

TEST(Sounds, OfTombRaiderICountTheSlotsThatItLeavesEmpty)
{
    const LevelContent level = WithSounds(kTR1);
    Conversion run(level);
    run.OpenLog();
    EXPECT_TRUE(run.Save());
    EXPECT_EQ(LinesOfFile(run.Output(".sam")), LinesOf("1", "369"));
    EXPECT_EQ(CountWaves(run), 10); // one and three, one of two, five of 31
    const std::string missing = "Samples that do not exist and get no WAV file: 27";
    EXPECT_EQ(std::ranges::count(run.LogLines(), missing), 1);
    const SoundTables sfx = *run.Set().Sounds;
    EXPECT_EQ(sfx.SoundMap[255], 4);
    EXPECT_EQ(sfx.SoundMap[254], -1);
    EXPECT_EQ(sfx.SoundMap[369], 0);
    EXPECT_EQ(sfx.SoundDetails[2].Raw[1], 6);
    EXPECT_EQ(sfx.SampleIndices, level.SampleIndices);
}

TEST(Sounds, OfTombRaiderIIAndIIIComeFromMainSfx)
{
    const auto sounds = samples::SampleSounds();
    for (const VersionCode game : {kTR2, kTR3}) {
        Conversion run(WithSounds(game));
        const std::string mainSfx = run.Folder.File("main.sfx");
        // Cancelled: all but the WAV files.
        EXPECT_TRUE(run.Save());
        EXPECT_EQ(LinesOfFile(run.Output(".sam")), LinesOf(DigitsOf(game), "0"));
        EXPECT_EQ(run.Set().Sounds->SoundMap[369], -3);
        EXPECT_FALSE(std::filesystem::exists(run.Output("-Sounds")));
        EXPECT_EQ(run.Program.FMLoad.Filter,
                  "TR Levels|*.phd;*.tub;*.tr2;*.tr4;*.trc|PRJ Files|*.prj|"
                  "TR2&3 Sound Data (main.sfx)|main.sfx");

        run.Host.OpenAnswers = {mainSfx};
        EXPECT_FALSE(run.Save());
        EXPECT_EQ(run.Host.Messages(),
                  Strings{"MORLIK: Can't open " + mainSfx + ": No such file or directory"});
        EXPECT_FALSE(std::filesystem::exists(run.Output("-Sounds")));

        WriteWholeFile(mainSfx, samples::WriteMainSfx(sounds).Bytes);
        for (int i = 0; i < 2; ++i) { // the indices count in the file chosen last
            run.Host.OpenAnswers = {mainSfx};
            EXPECT_TRUE(run.Save());
            EXPECT_EQ(CountWaves(run), 1 + 2 + 1 + 4);
        }
        std::filesystem::remove_all(run.Output("-Sounds"));
        EXPECT_TRUE(run.Save()); // cancelled again: the choice before is none of this save
        EXPECT_EQ(CountWaves(run), 0);
        EXPECT_EQ(run.Program.State.LevelVersion, game);
        const std::string asked = "open: TR2&3 Sound Data (main.sfx)|main.sfx in ";
        EXPECT_EQ(std::count(run.Host.Calls.begin(), run.Host.Calls.end(), asked), 5);
    }
}

TEST(Sounds, ThatNoSetCanHoldEndTheProgram)
{
    LevelContent level = WithSounds(kTR2);
    level.SampleIndices.assign(31, 0);
    Conversion run(level);
    // A WAV file of 9 MiB, 31 times over.
    samples::LevelFile file{std::vector<std::byte>(std::size_t{9} << 20U), {}};
    file.Set({.Offset = 0, .Size = 4}, 0x46464952); // "RIFF"
    file.Set({.Offset = 40, .Size = 4}, static_cast<std::int64_t>(file.Bytes.size()) - 44);
    run.Host.OpenAnswers = {run.Folder.Write("main.sfx", file.Bytes)};
    EXPECT_EQ(EndOf([&] { run.Save(); }), "The sounds are damaged - can't continue!");
    EXPECT_EQ(CountWaves(run), 0);
}

TEST(Sounds, OfALevelAreListedByItsSlotsAndExportedByThoseOfTheEditor)
{
    const std::vector<std::pair<VersionCode, Strings>> rows{
        {kTR1, {"0", "255"}},
        {kTR2, {"0", "255", "256", "369"}},
        {kTR3, {"0", "255", "256", "369"}},
        {kTR4, {"0", "255", "256", "369"}},
        {kTR5, {"0", "255", "256", "369", "370", "449"}},
    };
    const std::vector<std::byte> wave(6);
    for (const auto& [game, slots] : rows) {
        LevelData level;
        level.Version = game;
        level.SoundMap.fill(-1);
        std::int16_t detail = 0;
        for (const std::size_t slot : {0U, 255U, 256U, 369U, 370U, 449U}) {
            level.SoundMap[slot] = detail;
            level.SoundDetails.push_back(Detail(detail++, 1));
            level.Samples.push_back({std::span(wave).first(level.Samples.size())});
        }
        level.SoundMap[300] = 0; // of several slots the first one counts
        level.SoundDetails.push_back(Detail(0, 1));
        level.SoundMap[257] = 6;
        level.SoundDetails[6].Sample = 99;
        Strings listed;
        for (const SoundEntry& entry : LevelSounds(level))
            listed.push_back(entry.Text);
        Strings expected;
        for (std::size_t i = 0; i < slots.size(); ++i)
            expected.push_back("TR" + DigitsOf(game) + " Sound " + slots[i] + "-0 (" +
                               std::to_string(i) + " bytes)");
        if (game != kTR1)
            expected.push_back("TR" + DigitsOf(game) + " Sound 257-0 (0 bytes)");
        EXPECT_EQ(listed, expected);

        Conversion run;
        run.OpenLog();
        WriteLevelSounds(run.Folder.File("out"), level, run.Program.Report);
        std::map<std::string, std::size_t> files;
        for (const auto& [name, bytes] : FilesBelow(run.Folder.Path()))
            if (name.ends_with(".wav"))
                files[name] = bytes.size();
        // Without a slot among those of the editor, a detail is sound 0.
        EXPECT_EQ(files, (std::map<std::string, std::size_t>{{"out 0-0.wav", 5},
                                                             {"out 255-0.wav", 1},
                                                             {"out 256-0.wav", 2},
                                                             {"out 369-0.wav", 3}}));
        EXPECT_EQ(run.LogLines(), Strings{"No WAV file for 1 samples that do not exist"});
    }
}

TEST(DefaultFiles, AreCopiedForTombRaiderIVAndVAndMissedOneByOne)
{
    for (const VersionCode game : {kTR4, kTR5}) {
        Conversion run(samples::MakeTinyLevel(game));
        run.Host.ExpSprTicked = true; // the box is for the older games
        Strings missed;
        for (const std::string kind : {"sam", "sfx", "swd"}) {
            run.Folder.Write("morlik." + kind, kind + "!");
            missed.push_back("MORLIK: Can't find morlik." + kind);
        }
        EXPECT_TRUE(run.Save());
        EXPECT_EQ(CountWaves(run), 0);
        for (const std::string kind : {"sam", "sfx", "swd"}) {
            const auto file = run.Folder.File("morlik." + kind);
            EXPECT_EQ(ReadFile(run.Output("." + kind)), ReadFile(file));
            std::filesystem::remove(file);
        }
        std::filesystem::remove(run.Output(".was"));
        EXPECT_FALSE(run.Save());
        EXPECT_EQ(run.Host.Messages(), missed);
        EXPECT_EQ(LinesOfFile(run.Output(".was")).size(), 1U);
    }
}

TEST(Sprites, AreBuiltWithTheTilesBetweenThemOrCopied)
{
    for (const VersionCode game : {kTR1, kTR2}) {
        LevelContent level = samples::MakeTinyLevel(game);
        level.Tiles8.resize(9 * std::size_t{kTilePixels}, 0);
        level.Tiles16.resize(level.Tiles8.size(), 0x7c00);
        level.SpriteTextures = {{.Tile = 8}, {.Tile = 6}, {.Tile = 8}};
        level.SpriteTextures[1].Sides[3] = 77 * 256;
        level.SpriteSequences.resize(2);
        level.SpriteSequences[1].FirstTexture = 78 * 256;
        Conversion run(level);
        EXPECT_TRUE(run.Save());
        EXPECT_EQ(ReadFile(run.Output(".swd")), ReadFile(run.Folder.File("morlik.swd")));

        run.Host.ExpSprTicked = true;
        EXPECT_TRUE(run.Save());
        const SpriteTables swd = *run.Set().Sprites;
        ASSERT_EQ(swd.SpriteTextures.size(), 3U);
        EXPECT_EQ(swd.SpriteTextures[0].Tile, 2);
        EXPECT_EQ(swd.SpriteTextures[1].Tile, 0);
        EXPECT_EQ(swd.SpriteTextures[1].Sides[3], 77 * 256);
        EXPECT_EQ(swd.SpriteSequences.at(1).FirstTexture, 78 * 256);
        const auto pixels = PixelsOf(swd.Tiles);
        EXPECT_EQ(pixels.size(), 786432U);
        EXPECT_EQ(pixels[0], game == kTR1 ? 255 : 248);
        EXPECT_EQ(run.Program.Level.SpriteTextures[0].Tile, 8);
        EXPECT_EQ(run.Host.Calls.at(run.Host.Calls.size() - 4).rfind("prog: 5", 0), 0U);

        run.Program.Level.SpriteTextures[0].Tile = 0x7fff;
        EXPECT_FALSE(run.Save());
        EXPECT_EQ(run.Host.Messages(), Strings{"MORLIK: ERROR! Bad texture found!"});
    }
}

/// At the limits themselves, see the samples of sets in `tests/set`.
TEST(SoundsExport, RefusesMoreThanAnyLevelHas)
{
    // A small level may want a gigabyte of WAV files, or millions of names of a few files.
    const std::vector<std::byte> large(kMostWaveBytes / 256 + 1);
    for (const auto& [details, bytes, told] :
         {std::tuple{std::size_t{300}, large.size(), "samples: WAV files of "},
          {kMostSampleLines / 31 + 1, std::size_t{8}, "sound details: 1048"}}) {
        Conversion run;
        LevelData level;
        level.Version = kTR4;
        std::iota(level.SoundMap.begin(), level.SoundMap.begin() + 300, std::int16_t{0});
        level.SoundDetails.assign(details, Detail(0, 31));
        level.Samples.assign(31, {std::span(large).first(bytes)});
        MainSFXState mainSFX;
        mainSFX.MainSFXSamples.assign(bytes == 8 ? kMostSampleLines + 1 : 257,
                                      std::span(large).first(bytes));
        ResetHeapPeak();
        EXPECT_FALSE(WriteLevelSounds(run.Base(), level, run.Program.Report));
        EXPECT_FALSE(WriteMainSFXSounds(run.Base(), mainSFX, run.Program.Report));
        EXPECT_LT(HeapPeak(), std::size_t{64} << 20U);
        EXPECT_EQ(run.Host.Messages(),
                  Strings(2, "MORLIK: The sounds are damaged - can't continue!"));
        EXPECT_TRUE(run.Host.Details.at(0).starts_with(told));
        EXPECT_EQ(CountWaves(run), 0);
    }
}

TEST(SoundsExport, GivesTurnsInWhichTheUserCanStopIt)
{
    const auto sounds = samples::SampleSounds();
    MainSFXState mainSFX;
    LevelData level;
    level.Version = kTR1;
    for (const auto& sound : sounds) {
        mainSFX.MainSFXSamples.emplace_back(sound);
        level.Samples.push_back({sound});
    }
    level.SoundDetails = {{.Sample = 0, .Raw = {}, .Characteristics = 0x10}};
    for (const int turns : {1, 3, 100}) {
        Conversion run;
        run.OpenLog();
        run.Host.TurnsToStop = turns;
        Reporter& report = run.Program.Report;
        EXPECT_EQ(WriteMainSFXSounds(run.Folder.File("m"), mainSFX, report), turns == 100);
        EXPECT_EQ(CountWaves(run), turns == 100 ? std::ssize(sounds) : turns - 1);
        run.Host.Turns = 0;
        EXPECT_EQ(WriteLevelSounds(run.Folder.File("l"), level, report), turns == 100);
        if (turns == 100)
            continue;
        EXPECT_EQ(run.LogLines().back(),
                  "Stopped: " + std::to_string(turns - 1) + " of 4 WAV files are written");
    }
}

} // namespace

} // namespace morlik::test
