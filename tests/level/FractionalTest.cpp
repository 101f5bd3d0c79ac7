#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "level/Orientation.h"
#include "samples/Textures.h"
#include "tests/support/Conversion.h"
#include "tests/support/FaceProof.h"
#include "tests/support/RealLevels.h"

#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

/// Saves the loaded level and gives the share of faces with the right pixels.
double SavedShare(Conversion& run)
{
    EXPECT_TRUE(run.Save());
    EXPECT_EQ(check::CheckWad(run.Wad()), check::Complaints());
    const FaceShare share = ProveFaces(run.Program.Level, run.Program.State, run.Wad());
    EXPECT_GT(share.Faces, 0U);
    return share.Share();
}

} // namespace

TEST(FractionalTextures, LieOnTheirFacesAsInTheLevel)
{
    for (const VersionCode game : kGames) {
        SCOPED_TRACE(NumberOf(game));
        samples::LevelContent level = samples::MakeRichLevel(game);
        samples::MakeFractional(level);
        Conversion run;
        run.CopyDataFiles();
        run.OpenLog();
        ASSERT_TRUE(run.Load(level));
        EXPECT_EQ(run.LogLines().at(2), "-Texture form: fractional");
        EXPECT_EQ(SavedShare(run), 1.0);
        EXPECT_EQ(run.Host.Messages(), std::vector<std::string>());
    }
}

TEST(FractionalTextures, ClassicSamplesLieOnTheirFacesToo)
{
    for (const VersionCode game : kGames) {
        SCOPED_TRACE(NumberOf(game));
        Conversion run;
        run.CopyDataFiles();
        ASSERT_TRUE(run.Load(samples::MakeRichLevel(game)));
        EXPECT_EQ(SavedShare(run), 1.0);
    }
}

TEST(FractionalTextures, OfRealLevelsConvertWithoutAMessage)
{
    const auto levels = RealLevels("modern");
    if (levels.empty())
        GTEST_SKIP() << "no real levels here";
    for (const std::string& path : levels) {
        SCOPED_TRACE(path);
        Conversion run;
        run.CopyDataFiles();
        LoadLevel(run.Program, path);
        EXPECT_GE(SavedShare(run), 0.999);
        EXPECT_EQ(run.Host.Messages(), std::vector<std::string>());
    }
}

TEST(FractionalTextures, OfRealLevelsInClassicFormLoseTheirTurnsAtTheMost)
{
    const auto levels = RealLevels();
    if (levels.empty())
        GTEST_SKIP() << "no real levels here";
    for (const std::string& path : levels) {
        Conversion run;
        run.CopyDataFiles();
        LoadLevel(run.Program, path);
        const double share = SavedShare(run);
        RecordProperty(FileTitle(path), std::to_string(share));
        // The level of the first game is as its own tools left it; the others have turned textures.
        EXPECT_GE(share, run.Program.Level.Version == kTR1 ? 1.0 : 0.7) << path;
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
    EXPECT_EQ(run.LogLines().back(), "1 textures simplified");
}

} // namespace morlik::test
