#include "convert/ConvertFrames.h"
#include "convert/FixAnimDispatches.h"
#include "tests/support/Conversion.h"

#include <limits>

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

using Words = std::vector<std::int16_t>;

/// Frames by their words behind the header. The header words look like rotations: one that gets
/// touched shows.
Words Frames(const std::vector<std::vector<int>>& frames)
{
    Words words;
    for (const auto& frame : frames) {
        words.insert(words.end(), 9, 0x4401);
        for (const int word : frame)
            words.push_back(Word(word));
    }
    return words;
}

struct Row
{
    const char* Name;
    VersionCode Version;
    std::vector<std::pair<std::int16_t, std::int16_t>> Owners; ///< mesh count, first animation
    std::vector<std::pair<std::int32_t, int>> Animations;      ///< first word, frame size in words
    Words Before;
    Words After;
    std::vector<int> Sizes{};
    Strings BadOwners{}; ///< the moveables are called 0, 1, ...; animation 0 of each
};

/// Thirty words of which the first frame's and the second frame's first rotation change.
Words HalfFrames(std::int16_t rotation)
{
    Words words(30, 0x4001);
    words[9] = words[19] = rotation;
    return words;
}

// clang-format off
const std::vector<Row> kRows{
    {"one-word rotations get 12 bits", kTR2, {{4, 0}}, {{0, 13}},
     Frames({{0x4123, 0x8001, 0xc3ff, 0x4400}, {0x7fff, 0, 0, 0x8005, 0x4001}}),
     Frames({{0x448c, 0x8004, 0xcffc, 0x4000}, {0x4ffc, 0, 0, 0x8014, 0x4004}})},
    {"two-word rotations stay whatever their second word is", kTR3, {{2, 0}}, {{0, 12}},
     Frames({{0x1234, 0x5678, 0x4001}, {0x4001, 0x3fff, 0xc001}}),
     Frames({{0x1234, 0x5678, 0x4004}, {0x4004, 0x3fff, 0xc001}})},
    {"Tomb Raider I loses its count and exchanges the words", kTR1, {{2, 0}}, {{0, 99}},
     Frames({{2, 0x11, 0x21, 0x12, 0x22}, {2, 0x13, 0x23, 0x14, 0x24}}),
     Frames({{0x21, 0x11, 0x22, 0x12, 0x22}, {0x23, 0x13, 0x24, 0x14, 0x24}}), {14}},
    {"rescaling follows the exchange", kTR1, {{1, 0}}, {{0, 0}},
     Frames({{1, 0x4001, 0x8001}}), Frames({{0x8004, 0x4001, 0x8001}}), {12}},
    {"counts of other meshes are told for each animation", kTR1,
     {{1, 0}, {1, 2}}, {{0, 0}, {14, 0}, {26, 0}},
     Frames({{2, 0x11, 0x21, 0x12, 0x22}, {1, 0x13, 0x23}, {0, 5, 6}}),
     Frames({{0x21, 0x11, 0x21, 0x12, 0x22}, {0x23, 0x13, 0x23}, {6, 5, 6}}),
     {14, 12, 10}, {"0", "1"}},
    {"a frame size that does not fit stays", kTR1, {{1, 0}}, {{0, 12}},
     Frames({{123, 0x11, 0x21}}), Frames({{0x21, 0x11, 0x21}}), {12}, {"0"}},
    {"the owner search passes over objects without animations", kTR2,
     {{1, 0}, {9, -1}, {2, 1}, {9, -1}}, {{0, 11}, {11, 11}, {22, 11}},
     Frames({{0x4001, 0x4001}, {0x4001, 0x4001}, {0x4001, 0x4001}}),
     Frames({{0x4004, 0x4001}, {0x4004, 0x4004}, {0x4004, 0x4004}})},
    {"frames that are cut short count by rounding a half to the even neighbour", kTR2,
     {{1, 0}}, {{0, 10}, {15, 10}, {20, 0}, {20, 20}}, HalfFrames(0x4001), HalfFrames(0x4004)},
    {"an animation outside the frames does nothing", kTR2,
     {{3, 0}}, {{1000, 10}, {-40, 40}, {0, 10}}, Frames({{0x4001}}), Frames({{0x4004}})},
    {"later games have the form already", kTR4,
     {{1, 0}}, {{0, 10}}, Frames({{0x4001}}), Frames({{0x4001}})},
};
// clang-format on

TEST(ConvertFrames, BringsFramesToTheFormOfTheEditor)
{
    for (const Row& row : kRows) {
        ObjectNames names;
        ObjectSet level;
        level.Game = row.Version;
        level.Frames = row.Before;
        for (std::size_t i = 0; i < row.Owners.size(); ++i) {
            const auto id = static_cast<std::int32_t>(i);
            level.Moveables.push_back({.ObjectID = id,
                                       .NumMeshes = row.Owners[i].first,
                                       .Animation = row.Owners[i].second});
            names.SetMoveable(kTR1, id, std::to_string(i));
        }
        for (const auto& [word, size] : row.Animations)
            level.Animations.push_back(
                {.FrameOffset = 2 * word, .FrameSize = static_cast<std::uint8_t>(size)});
        Conversion run;
        run.OpenLog();
        ConvertFrames(level, names, run.Program.Report);
        EXPECT_EQ(level.Frames, row.After) << row.Name;
        for (std::size_t i = 0; i < row.Sizes.size(); ++i)
            EXPECT_EQ(level.Animations[i].FrameSize, row.Sizes[i]) << row.Name;

        Strings messages;
        Strings log;
        if (row.Version != kTR4)
            log.emplace_back("Converting frames");
        for (const std::string& name : row.BadOwners) {
            messages.push_back("MORLIK: Error converting animations from the " + name);
            log.push_back("ERROR! Error when converting " + name + ", animation 0");
        }
        EXPECT_EQ(run.Host.Messages(), messages) << row.Name;
        EXPECT_EQ(run.LogLines(), log) << row.Name;
    }
}

TEST(ConvertFrames, EndsWhereTheWalkWouldTakeHours)
{
    // Every animation runs over all frames.
    ObjectSet overlapping;
    overlapping.Game = kTR2;
    overlapping.Frames.assign(100000, 0);
    overlapping.Moveables = {{.NumMeshes = 30000}};
    for (int i = 0; i < 3000; ++i)
        overlapping.Animations.push_back({.FrameOffset = i % 2 == 0 ? 0 : 200000, .FrameSize = 1});

    // A handful of words, with billions of frames in front of them.
    ObjectSet before;
    before.Game = kTR1;
    before.Frames.assign(10, 0);
    before.Moveables = {{.NumMeshes = 30000}};
    before.Animations = {{.FrameOffset = std::numeric_limits<std::int32_t>::min(), .FrameSize = 1},
                         {.FrameOffset = std::numeric_limits<std::int32_t>::max(), .FrameSize = 1}};

    for (ObjectSet* level : {&overlapping, &before}) {
        ScriptedHost host;
        Reporter report(host);
        ConvertFrames(*level, {}, report);
        EXPECT_EQ(host.Messages().size(), 1U);
    }
}

} // namespace

} // namespace morlik::test
