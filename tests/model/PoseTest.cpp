#include "model/Animations.h"
#include "model/Between.h"
#include "model/Transform.h"
#include "tests/model/MadeSet.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace morlik::test
{

namespace
{

struct TreeRow
{
    std::string Failure;
    std::vector<std::int32_t> Flags; ///< of each node
    std::vector<std::size_t> Parents{};
    Moveable Object{};
};

// clang-format off
const std::vector<TreeRow> kTrees{
    {"", {}},
    {"", {0, 0, 0}, {0, 1, 2}},
    // A figure: legs from the hips, arms and head from the torso.
    {"", {2, 0, 3, 0, 1, 2, 0, 3, 0, 1}, {0, 1, 0, 3, 0, 5, 6, 5, 8, 5}},
    {"", {2, 2, 1, 1}, {0, 1, 1, 0}}, // what was put last comes first
    {"", {1, 0}, {0, 1}},             // nothing to take yet
    {"", {3, 0, 1}, {0, 1, 0}},       // but something to put
    {"mesh 2: mesh tree takes from the empty stack", {1, 1}},
    {"mesh 3: mesh tree takes from the empty stack", {2, 1, 1}},
    {"mesh 1: mesh tree flags 4", {4}},
    {"mesh 2: mesh tree flags -1", {0, -1}},
    {"", {}, {}, {.NumMeshes = 1, .MeshTree = 50}},
    {"mesh tree of 8 words at word 2 of 9", {0, 0}, {}, {.NumMeshes = 3, .MeshTree = 2}},
    {"mesh tree of 4 words at word -1 of 9", {0, 0}, {}, {.NumMeshes = 2, .MeshTree = -1}},
    {"moveable 0: 0 meshes", {}, {}, {.MeshTree = 1}},
    {"moveable 0: -1 meshes", {}, {}, {.NumMeshes = -1}},
};
// clang-format on

TEST(Skeletons, FollowTheMeshTree)
{
    for (const auto& [failure, flags, parents, object] : kTrees) {
        ObjectSet set = MadeSet();
        set.MeshTrees = {99};
        Skeleton wanted(1);
        for (const std::int32_t flag : flags)
            set.MeshTrees.insert(set.MeshTrees.end(), {flag, 1, -70000, 3});
        for (const std::size_t parent : parents)
            wanted.push_back({.Parent = parent, .X = 1, .Y = -70000, .Z = 3});
        const bool isWhole = object == Moveable{};
        set.Moveables = {
            isWhole ? Moveable{.NumMeshes = narrow<std::int16_t>(flags.size() + 1), .MeshTree = 1}
                    : object};
        Skeleton skeleton;
        ExpectFailure(failure, [&] { skeleton = SkeletonOf(set, 0); });
        EXPECT_TRUE(!failure.empty() || skeleton == wanted) << flags.size();
    }
    ExpectFailure("moveable 0 of 0", [] { SkeletonOf(MadeSet(), 0); });
}

std::vector<std::int16_t> FrameOf(const std::vector<int>& rotations)
{
    std::vector<std::int16_t> frame{-1, 2, -3, 4, -5, 6, 7, -8, 9};
    for (const int word : rotations)
        frame.push_back(Word(word));
    return frame;
}

struct FrameRow
{
    std::string Failure;
    std::vector<int> Words; ///< behind the header
    std::vector<Rotation> Wanted;
    std::size_t Filling = 0;
};

// clang-format off
const std::vector<FrameRow> kFrames{
    {"", {}, {}},
    {"", {0x4001, 0x8fff, 0xc400}, {{1, 0, 0}, {0, 4095, 0}, {0, 0, 1024}}},
    {"", {0x7002, 0xb003}, {{2, 0, 0}, {0, 3, 0}}}, // bits 12 and 13 mean nothing
    {"", {0x3fff, 0xffff}, {{4092, 4092, 4092}}},
    {"", {0x3ff0, 0, 0x000f, 0xfc00, 0, 0x03ff}, {{4092, 0, 0}, {0, 4092, 0}, {0, 0, 4092}}},
    {"", {0x0010, 0x0802, 0x4005, 0, 0x4001, 1, 2}, {{4, 8, 8}, {5, 0, 0}, {0, 64, 4}}, 2},
    {"too short for its rotations", {0x4001, 0x3000}, {{}, {}}},
    {"too short for 2 rotations", {0x4001}, {{}, {}}},
};
// clang-format on

TEST(Poses, AreReadFromBothPackings)
{
    for (const FrameRow& row : kFrames) {
        Pose pose;
        ExpectFailure(row.Failure, [&] { pose = ReadPose(FrameOf(row.Words), row.Wanted.size()); });
        const Pose whole{.Box = {-1, 2, -3, 4, -5, 6},
                         .Offset = {7, -8, 9},
                         .Rotations = row.Wanted,
                         .NumWords = 9 + row.Words.size() - row.Filling};
        EXPECT_TRUE(!row.Failure.empty() || pose == whole) << row.Words.size();
    }
    ExpectFailure("a frame of 8 words", [] { ReadPose(std::vector<std::int16_t>(8), 0); });
}

void ExpectNear(const Point& found, const Point& wanted)
{
    constexpr double kRounding = 1e-9;
    EXPECT_NEAR(found.X, wanted.X, kRounding);
    EXPECT_NEAR(found.Y, wanted.Y, kRounding);
    EXPECT_NEAR(found.Z, wanted.Z, kRounding);
}

constexpr std::int16_t kQuarter = kFullTurn / 4;

TEST(Transforms, TurnAboutZThenXThenY)
{
    const double half = std::sqrt(0.5);
    // clang-format off
    const std::vector<std::pair<Rotation, Point>> rows{
        {{0, 0, 0}, {1, 2, 3}}, {{kQuarter, 0, 0}, {1, -3, 2}}, {{0, kQuarter, 0}, {3, 2, -1}},
        {{0, 0, kQuarter}, {-2, 1, 3}}, {{kQuarter, kQuarter, 0}, {2, -3, -1}},
        {{kQuarter, 0, kQuarter}, {-2, -3, 1}}, {{0, kQuarter, kQuarter}, {3, 1, 2}},
        {{kQuarter, kQuarter, 2 * kQuarter}, {-2, -3, 1}}, {{0, 0, 512}, {-half, 3 * half, 3}},
    };
    // clang-format on
    for (const auto& [rotation, wanted] : rows)
        ExpectNear(TurnOf(rotation).Apply({1, 2, 3}), wanted);
}

TEST(Transforms, LeadMeshesAlongTheirParents)
{
    // An arm that turns with its body, and a leg of the body's.
    const Skeleton skeleton{{},
                            {.Parent = 0, .X = 0, .Y = -200, .Z = 100},
                            {.Parent = 1, .X = 0, .Y = 50, .Z = 0},
                            {.Parent = 0, .X = -30, .Y = 60, .Z = 0}};
    Pose pose = RestPose(4);
    pose.Offset = {10, -400, 5};
    pose.Rotations[0].Y = kQuarter; // Z to X, X to -Z
    pose.Rotations[1].X = kQuarter; // Y to Z, and by the body's turn to X
    pose.Rotations[3].Z = kQuarter;
    const auto transforms = TransformsOf(skeleton, pose);
    ASSERT_EQ(transforms.size(), 4U);
    ExpectNear(transforms[0].Apply({}), {10, -400, 5});
    ExpectNear(transforms[1].Apply({}), {110, -600, 5});
    ExpectNear(transforms[2].Apply({}), {160, -600, 5});
    ExpectNear(transforms[2].Apply({0, 40, 7}), {200, -607, 5});
    ExpectNear(transforms[3].Apply({0, 10, 0}), {10, -340, 45});
    ExpectFailure("3 rotations for 4 meshes",
                  [&] { return TransformsOf(skeleton, RestPose(3)).size(); });
}

TEST(Transforms, LeadTheShorterWayBetweenPoses)
{
    const Skeleton skeleton{{}, {.Parent = 0, .X = 100, .Y = 0, .Z = 0}};
    const auto turned = [](const Vertex& offset, const Rotation& first, const Rotation& second) {
        return Pose{.Offset = offset, .Rotations = {first, second}};
    };
    // Over the full turn, and by Y alone or by X and Z, which lead to the same turn.
    const Pose from = turned({0, 0, 0}, {.Z = kFullTurn - 512}, {.Y = kFullTurn / 2});
    const Pose to = turned({2, 8, -6}, {.Z = 512}, {.X = kFullTurn / 2, .Z = kFullTurn / 2});
    const auto middle = TransformsBetween(skeleton, from, to, 0.5);
    ExpectNear(middle[0].Apply({}), {1, 4, -3});
    ExpectNear(middle[1].Apply({1, 2, 3}), {100, 6, -6});
    for (const double share : {0.0, 1.0}) {
        const auto wanted = TransformsOf(skeleton, share == 0 ? from : to);
        const auto ends = TransformsBetween(skeleton, from, to, share);
        for (const std::size_t mesh : {0U, 1U})
            ExpectNear(ends[mesh].Apply({1, 2, 3}), wanted[mesh].Apply({1, 2, 3}));
    }
    // An eighth of a turn is a third of the way to three eighths.
    const auto third = TransformsBetween(skeleton, from, turned({}, {.Z = 1024}, {}), 1.0 / 3);
    ExpectNear(third[0].Apply({10, 0, 0}), {10, 0, 0});
    ExpectFailure("1 rotations for 2 meshes",
                  [&] { return TransformsBetween(skeleton, from, RestPose(1), 0.5).size(); });
}

/// Two moveables of one mesh with two animations and one, and one without any at each end. Frames
/// are of 10 words; those of the animations are 3, 1 and 2, behind 5 words that are none.
ObjectSet AnimatedSet()
{
    ObjectSet set = MadeSet();
    for (const std::int16_t first : std::vector<std::int16_t>{-1, 0, 2, -1})
        set.Moveables.push_back({.NumMeshes = 1, .Animation = first});
    const Animation base{.FrameRate = 2, .FrameSize = 10};
    set.Animations.resize(3, base);
    set.Animations[0].FrameOffset = 10;
    set.Animations[0].FrameEnd = 5;
    set.Animations[0].NextAnimation = 1;
    set.Animations[1].FrameOffset = 70;
    set.Animations[1].NextAnimation = 2;
    set.Animations[2].FrameOffset = 90;
    set.Animations[2].NextAnimation = 2;
    set.Animations[2].FrameStart = 8;
    set.Animations[2].FrameEnd = 9; // one frame is needed, two are there
    set.Frames.resize(5, -1);
    for (std::int16_t frame = 0; frame < 6; ++frame) {
        const auto words = FrameOf({0x4000 + frame});
        set.Frames.insert(set.Frames.end(), words.begin(), words.end());
    }
    return set;
}

TEST(Animations, BelongToTheirMoveable)
{
    const ObjectSet set = AnimatedSet();
    for (const std::size_t without : {0U, 3U})
        EXPECT_EQ(AnimationsOf(set, without).Count, 0U);
    const AnimationRange range = AnimationsOf(set, 1);
    ASSERT_EQ(range.Count, 2U);
    const ModelAnimation first = AnimationOf(set, range, 0);
    EXPECT_EQ(first.Next, 1U);
    EXPECT_EQ(first.NumFrames, 3U);
    EXPECT_EQ(PoseOf(set, first, 2).Rotations, std::vector<Rotation>{{.X = 2}});
    EXPECT_FALSE(AnimationOf(set, range, 1).Next); // leads to another moveable
    const AnimationRange other = AnimationsOf(set, 2);
    ASSERT_EQ(other.Count, 1U);
    const ModelAnimation last = AnimationOf(set, other, 0);
    EXPECT_EQ(last.Next, 0U);
    EXPECT_EQ(last.NumFrames, 2U);
    EXPECT_EQ(PoseOf(set, last, 1).Rotations, std::vector<Rotation>{{.X = 5}});
    EXPECT_EQ(RestPose(2).Rotations, std::vector<Rotation>(2));
}

using Change = std::function<void(ObjectSet&)>;
// clang-format off
const std::vector<std::pair<std::string, Change>> kAnimationDamages{
    {"", [](auto&) {}},
    {"moveable 1: 0 animations from 0", [](auto& set) { set.Moveables[2].Animation = 0; }},
    {"moveable 1: -2 animations from 4", [](auto& set) { set.Moveables[1].Animation = 4; }},
    {"moveable 1: 4 animations from -2", [](auto& set) { set.Moveables[1].Animation = -2; }},
    {"moveable 1: 99 animations from 0", [](auto& set) { set.Moveables[2].Animation = 99; }},
    {"moveable 1: 0 meshes", [](auto& set) { set.Moveables[1].NumMeshes = 0; }},
    {"steps of 0", [](auto& set) { set.Animations[0].FrameRate = 0; }},
    {"from frame -1", [](auto& set) { set.Animations[0].FrameStart = -1; }},
    {"from frame 6 to 5", [](auto& set) { set.Animations[0].FrameStart = 6; }},
    {"frames of 0 bytes in 60", [](auto& set) { set.Animations[0].FrameSize = 0; }},
    {"frames of 22 bytes in 60", [](auto& set) { set.Animations[0].FrameSize = 11; }},
    {"59 bytes of frames at 11", [](auto& set) { set.Animations[0].FrameOffset = 11; }},
    {"72 bytes of frames at -2", [](auto& set) { set.Animations[0].FrameOffset = -2; }},
    {"-10 bytes of frames at 80", [](auto& set) { set.Animations[0].FrameOffset = 80; }},
    {"200 bytes of frames at 10 of 130", [](auto& set) { set.Animations[1].FrameOffset = 210; }},
    {"3 frames for 4", [](auto& set) { set.Animations[0].FrameEnd = 6; }},
    {"0 frames for 3", [](auto& set) { set.Animations[1].FrameOffset = 10; }},
    {"too short for 2 rotations", [](auto& set) { set.Moveables[1].NumMeshes = 2; }},
    {"too short for its rotations", [](auto& set) { set.Frames[34] = 0; }},
    {"frame 2 of 2", [](auto& set) { set.Animations[1].FrameOffset = 50; set.Animations[0].FrameEnd = 3; }},
    // No frames at all are no fault, but there is none to show.
    {"frame 0 of 0", [](auto& set) { set.Animations[1].FrameOffset = 10; set.Animations[0].FrameSize = 0; }},
};
// clang-format on

TEST(Animations, ThatAreDamagedFail)
{
    for (const auto& [failure, change] : kAnimationDamages) {
        ObjectSet set = AnimatedSet();
        change(set);
        ExpectFailure(failure, [&] {
            const auto animation = AnimationOf(set, AnimationsOf(set, 1), 0);
            for (std::size_t frame = 0; frame < 3; ++frame)
                PoseOf(set, animation, frame);
        });
    }
    ObjectSet set = AnimatedSet();
    ExpectFailure("animation 2: the object has 2",
                  [&] { AnimationOf(set, AnimationsOf(set, 1), 2); });
    ExpectFailure("animation 0: the object has 0",
                  [&] { AnimationOf(set, AnimationsOf(set, 0), 0); });
    // Another set than that of the range or of the animation.
    ExpectFailure("animation 0 of an object", [&] { AnimationOf(set, {1, 3, 1}, 0); });
    const auto animation = AnimationOf(set, AnimationsOf(set, 1), 0);
    set.Frames.resize(14);
    ExpectFailure("frame 0 of 3", [&] { PoseOf(set, animation, 0); });
}

} // namespace

} // namespace morlik::test
