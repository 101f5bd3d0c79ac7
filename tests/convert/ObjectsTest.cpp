#include "convert/FixAnimDispatches.h"
#include "tests/support/Conversion.h"

#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

/// A level of one moveable per entry, with that first animation, over six animations; animation a
/// has state change a with the dispatches 2a and 2a + 1.
ObjectSet Animated(const std::vector<std::int16_t>& first)
{
    ObjectSet level;
    for (std::int16_t a = 0; a < 6; ++a) {
        level.Animations.push_back(
            {.FrameStart = Word(100 + a), .NumStateChanges = 1, .StateChange = a});
        level.StateChanges.push_back({a, 2, Word(2 * a)});
        level.AnimDispatches.push_back({1, 2, a, 7});
        level.AnimDispatches.push_back({3, 4, Word(5 - a), 8});
    }
    for (const std::int16_t animation : first)
        level.Moveables.push_back({.Animation = animation});
    return level;
}

TEST(CountAnimations, CountsUpToTheNextMoveableThatHasAny)
{
    const auto level = Animated({0, -1, 2, -1, 5, -1});
    std::vector<int> counts;
    for (std::size_t i = 0; i < level.Moveables.size(); ++i)
        counts.push_back(CountAnimations(level.Moveables, 6, i));
    EXPECT_EQ(counts, (std::vector<int>{2, 0, 3, 0, 1, 7})); // the last one is known as it is
    EXPECT_EQ(CountAnimations(Animated({4}).Moveables, 6, 0), 2);
}

TEST(FixAnimDispatches, LeadsWaysOutOfAnObjectToItsFirstAnimation)
{
    ScriptedHost host;
    Reporter report(host);
    ObjectSet level = Animated({0, -1, 2, 4, -1});
    FixAnimDispatches(level, report);
    std::vector<int> ways; // four words of each
    for (const AnimDispatch& d : level.AnimDispatches)
        ways.insert(ways.end(), {d.Low, d.High, d.NextAnimation, d.NextFrame});
    EXPECT_EQ(ways, (std::vector<int>{1, 2, 0, 7, 3, 4, 0, 100, 1, 2, 1, 7, 3, 4, 0, 100,
                                      1, 2, 2, 7, 3, 4, 3, 8,   1, 2, 3, 7, 3, 4, 2, 8,
                                      1, 2, 4, 7, 3, 4, 4, 104, 1, 2, 5, 7, 3, 4, 4, 104}));
    // A dispatch that two objects share comes out as the later one wants it.
    level = Animated({0, 3});
    level.StateChanges[3].AnimDispatch = 0;
    FixAnimDispatches(level, report);
    EXPECT_EQ(level.AnimDispatches[0].NextAnimation, 3);
    EXPECT_EQ(level.AnimDispatches[0].NextFrame, 103);

    level = Animated({6, -5, 0x7fff}); // there are no such animations
    const auto before = level.AnimDispatches;
    FixAnimDispatches(level, report);
    EXPECT_EQ(level.AnimDispatches, before);

    level = Animated({0});
    level.StateChanges[1] = {0, 0x7fff, -5};
    level.Animations[2].StateChange = 0x7fff;
    level.Animations[3].NumStateChanges = 0x7fff;
    FixAnimDispatches(level, report);
    level.StateChanges.assign(30000, {0, 30000, 0});
    level.AnimDispatches.assign(30000, {});
    level.Animations.assign(6, {.NumStateChanges = 30000});
    EXPECT_EQ(EndOf([&] { FixAnimDispatches(level, report); }),
              "The animations are damaged - can't continue!");
}

TEST(Objects, AreNoMoreThan60StaticMeshesAndInTombRaiderVNumberedByTheirPlace)
{
    for (const VersionCode game : {kTR2, kTR5}) {
        Conversion run(samples::MakeRichLevel(game, {.ManyStatics = true}));
        ASSERT_EQ(run.Program.Level.StaticMeshes.size(), 64U);
        run.Program.Names.SetMoveable(kTR4, 1, "four");
        run.Program.Names.SetMoveable(kTR5, 1, "f\xfcnf");
        run.Program.LevelTitle = "m\xc3\xbchle \xe4\xb8\xad.trc"; // in the letters of the names
        EXPECT_TRUE(run.Save());
        const ObjectSet wad = run.Wad();
        EXPECT_EQ(wad.StaticMeshes.size(), 60U);
        const auto lines = LinesOfFile(run.Output(".was"));
        EXPECT_EQ(lines.size(), wad.Moveables.size() + 60);
        if (game != kTR5)
            continue;
        for (std::size_t i = 0; i < wad.Moveables.size(); ++i)
            EXPECT_EQ(wad.Moveables[i].ObjectID, static_cast<int>(i));
        for (std::size_t i = 0; i < wad.StaticMeshes.size(); ++i)
            EXPECT_EQ(wad.StaticMeshes[i].ObjectID, static_cast<int>(i));
        EXPECT_EQ(lines.at(1), "four:Z:\\TOMB5\\M\xfcHLE ?.TRC\\f\xfcnf");
    }
}

} // namespace

} // namespace morlik::test
