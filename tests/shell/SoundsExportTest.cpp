// The export of all sounds: what it takes, and that the user can stop it.

#include "samples/MainSfx.h"
#include "set/Sounds.h"
#include "shell/Sounds.h"
#include "tests/support/Conversion.h"
#include "tests/support/HeapPeak.h"

#include <algorithm>
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

/// The number of WAV files in the folder of a run.
std::ptrdiff_t CountWaves(const Conversion& run)
{
    return std::ranges::count_if(FilesBelow(run.Folder.Path()),
                                 [](const auto& file) { return file.first.ends_with(".wav"); });
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
        Conversion run;
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
        const bool complete = WriteLevelSounds(run.Base(), level, run.Program.Report);
        EXPECT_LT(HeapPeak(), std::size_t{64} << 20U);
        EXPECT_EQ(complete, row.Detail.empty());
        EXPECT_EQ(CountWaves(run), complete ? 31 : 0);
        if (complete)
            continue;
        EXPECT_EQ(run.Host.Messages(), Strings{"MORLIK: The sounds are damaged - can't continue!"});
        EXPECT_TRUE(run.Host.Details.at(0).starts_with(row.Detail));
    }
    Conversion run;
    for (const auto& [count, bytes] :
         {std::pair{std::size_t{257}, large.size()}, {kMostSampleLines + 1, std::size_t{8}}}) {
        MainSFXState mainSFX;
        mainSFX.MainSFXSamples.assign(count, std::span(large).first(bytes));
        EXPECT_FALSE(WriteMainSFXSounds(run.Base(), mainSFX, run.Program.Report));
    }
    EXPECT_EQ(run.Host.Messages().size(), 2U);
    EXPECT_EQ(CountWaves(run), 0);
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
