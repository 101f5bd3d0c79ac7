// The export of all sounds: what it takes, and that the user can stop it.

#include "samples/MainSfx.h"
#include "set/Sounds.h"
#include "shell/Sounds.h"
#include "tests/support/Conversion.h"
#include "tests/support/HeapPeak.h"

#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

/// Details that each have the most samples that a detail can have, all of them sample 0.
std::vector<SoundDetail> Details(std::size_t count)
{
    return std::vector<SoundDetail>(count, {.Sample = 0, .Raw = {}, .Characteristics = 0xff});
}

/// The number of files in a folder.
std::ptrdiff_t CountFiles(const TempFolder& folder)
{
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
}

TEST(SoundsExport, RefusesMoreThanAnyLevelHas)
{
    // A small level may want a gigabyte of WAV files, or millions of names of a few files.
    const std::vector<std::byte> large(kMostWaveBytes / 256 + 1);
    const std::size_t perDetail = static_cast<std::size_t>(Details(1)[0].NumSamples());
    struct Row
    {
        std::size_t Details;
        std::size_t Slots;
        std::size_t SampleBytes;
        std::string Detail; ///< of the message; empty: they are written
    };
    const std::vector<Row> rows{
        {300, 300, large.size(), "samples: WAV files of "},
        {kMostSampleLines / perDetail + 1, 1, 8, "sound details: 1048"},
        {kMostSampleLines / perDetail, 1, 8, ""},
    };
    for (const Row& row : rows) {
        const TempFolder folder;
        ScriptedHost host;
        Reporter report(host);
        LevelData level;
        level.Version = kTR4;
        level.SoundMap.fill(-1);
        for (std::size_t i = 0; i < row.Slots; ++i)
            level.SoundMap[i] = static_cast<std::int16_t>(i);
        level.SoundDetails = Details(row.Details);
        level.Samples.resize(perDetail);
        for (Sample& sample : level.Samples)
            sample.Data = std::span(large).first(row.SampleBytes);
        ResetHeapPeak();
        const bool complete = WriteLevelSounds(folder.File("a"), level, report);
        EXPECT_LT(HeapPeak(), std::size_t{64} << 20U);
        EXPECT_EQ(complete, row.Detail.empty());
        EXPECT_EQ(CountFiles(folder), complete ? std::ptrdiff_t{31} : 0);
        if (complete)
            continue;
        EXPECT_EQ(host.Messages(), Strings{"MORLIK: The sounds are damaged - can't continue!"});
        EXPECT_EQ(host.Details.at(0).substr(0, row.Detail.size()), row.Detail);
    }
    const TempFolder folder;
    ScriptedHost host;
    Reporter report(host);
    MainSFXState mainSFX;
    mainSFX.MainSFXSamples.assign(257, large);
    EXPECT_FALSE(WriteMainSFXSounds(folder.File("a"), mainSFX, report));
    mainSFX.MainSFXSamples.assign(kMostSampleLines + 1, std::span(large).first(8));
    EXPECT_FALSE(WriteMainSFXSounds(folder.File("a"), mainSFX, report));
    EXPECT_EQ(host.Messages().size(), 2U);
    EXPECT_EQ(CountFiles(folder), 0);
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
        const TempFolder folder;
        Conversion run;
        run.OpenLog();
        ScriptedHost& host = run.Host;
        Reporter& report = run.Program.Report;
        host.TurnsToStop = turns;
        EXPECT_EQ(WriteMainSFXSounds(folder.File("m"), mainSFX, report), turns == 100);
        const auto all = static_cast<std::ptrdiff_t>(sounds.size());
        EXPECT_EQ(CountFiles(folder), turns == 100 ? all : turns - 1);
        host.Turns = 0;
        EXPECT_EQ(WriteLevelSounds(folder.File("l"), level, report), turns == 100);
        if (turns == 100)
            continue;
        EXPECT_EQ(run.LogLines().back(),
                  "Stopped: " + std::to_string(turns - 1) + " of 4 WAV files are written");
    }
}

} // namespace

} // namespace morlik::test
