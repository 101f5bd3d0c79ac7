// Whole sets, from the level to its files and back, of the sample levels and of real ones.

#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "convert/ConvertLevel.h"
#include "samples/MainSfx.h"
#include "samples/Textures.h"
#include "set/Sounds.h"
#include "tests/support/Conversion.h"
#include "tests/support/FaceProof.h"
#include "tests/support/RealLevels.h"
#include "tests/support/SameSet.h"

#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

/// The set that is made of the loaded level. In those of IV and V the default files stand for
/// sounds and sprites, and so do those for sprites in others: these are taken from `saved`.
ObjectSet MadeSet(Conversion& run, const ObjectSet& saved)
{
    const Session& program = run.Program;
    auto made = ConvertLevel(
        program.Level, program.Names, program.LevelTitle,
        {.UpdateHorizon = run.Host.SkyFixTicked, .ExportSprites = run.Host.ExpSprTicked},
        run.Program.Report);
    if (!made)
        return {};
    if (made->Sounds && HasMainSFX(made->Game))
        ListSetSamples(*made, [&](std::int32_t sample) {
            return program.MainSFX.WaveOf(FindIn(made->Sounds->SampleIndices, sample));
        });
    if (!made->Sounds)
        made->Sounds = saved.Sounds;
    if (!made->Sprites)
        made->Sprites = saved.Sprites;
    return *made;
}

/// Saves the loaded level twice and looks at all that holds for a set. Gives the share of faces
/// that show the right pixels.
double ProvenShare(Conversion& run)
{
    std::vector<std::byte> before;
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(run.Save());
        EXPECT_EQ(run.Host.Messages(), Strings{});
        const check::SetReport report = check::CheckSet(run.Base(), run.Program.Level.Version);
        EXPECT_EQ(report.Problems, Strings{});
        EXPECT_EQ(report.Missing, Strings{});
        auto wad = ReadFile(run.Output(".wad"));
        EXPECT_TRUE(i == 0 || wad == before);
        before = std::move(wad);
    }
    const ObjectSet saved = run.Set();
    EXPECT_EQ(DifferenceOf(MadeSet(run, saved), saved), "");
    const FaceShare share = ProveFaces(run.Program.Level, run.Program.State, saved);
    EXPECT_GT(share.Faces, 0U);
    return share.Share();
}

TEST(ObjectSets, OfTheSampleLevelsAreGoodInBothFormsWithAndWithoutOptions)
{
    for (const VersionCode game : kGames) {
        for (const int kind : {0, 1, 2, 3}) {
            const bool ticked = kind % 2 != 0;
            const bool fractional = kind / 2 != 0;
            SCOPED_TRACE(std::string(LevelName(game)) + (ticked ? ", ticked" : "") +
                         (fractional ? ", fractional" : ""));
            samples::LevelContent level = samples::MakeRichLevel(game);
            if (fractional)
                MakeFractional(level);
            Conversion run;
            run.Host.SkyFixTicked = run.Host.ExpSprTicked = ticked;
            const auto mainSfx = run.Folder.File("main.sfx");
            WriteWholeFile(mainSfx, samples::WriteMainSfx(samples::SampleSounds()).Bytes);
            if (ticked)
                run.Host.OpenAnswers = {mainSfx, mainSfx};
            ASSERT_TRUE(run.Load(level));
            EXPECT_EQ(run.Program.Level.HasFractions, fractional);
            EXPECT_EQ(ProvenShare(run), 1.0);
        }
    }
}

TEST(ObjectSets, OfRealLevelsAreGood)
{
    const auto newer = RealLevels("modern");
    auto levels = RealLevels();
    if (levels.empty() && newer.empty())
        GTEST_SKIP() << "no real levels here";
    levels.insert(levels.end(), newer.begin(), newer.end());
    for (const std::string& path : levels) {
        SCOPED_TRACE(path);
        Conversion run;
        run.Host.ExpSprTicked = true;
        run.Program.LevelTitle = FileTitle(path);
        EXPECT_EQ(EndOf([&] { LoadLevel(run.Program, path); }), "");
        const double share = ProvenShare(run);
        RecordProperty(FileTitle(path), std::to_string(share));
        // The level of the first game is as its own tools left it; the other classic ones have
        // turned textures, whose turns are lost.
        const bool isFirst = run.Program.Level.Version == kTR1;
        EXPECT_GE(share, run.Program.Level.HasFractions ? 0.999 : isFirst ? 1.0 : 0.7);
    }
}

} // namespace

} // namespace morlik::test
