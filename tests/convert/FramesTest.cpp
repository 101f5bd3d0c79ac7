#include "convert/ConvertFrames.h"
#include "tests/support/Conversion.h"

#include <gtest/gtest.h>
#include <limits>

namespace morlik::test
{

namespace
{

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
