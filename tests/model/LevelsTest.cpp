// What sample levels, real ones and damaged sets look like.

#include "convert/ConvertLevel.h"
#include "model/Animations.h"
#include "model/Model.h"
#include "tests/support/Conversion.h"
#include "tests/support/RealLevels.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace morlik::test
{

namespace
{

/// The set of the loaded level.
ObjectSet SetOf(Session& program)
{
    return ConvertLevel(program.Level, program.Names, "LEVEL", {}, program.Report).value();
}

ObjectSet RealSet(const std::string& path)
{
    Conversion run;
    LoadLevel(run.Program, path);
    return SetOf(run.Program);
}

/// Decodes all frames of an animation and gives their words. The largest one fills its size, but
/// for the last word that a frame of Tomb Raider I keeps from its old form.
std::size_t DecodeFrames(const ObjectSet& set, const ModelAnimation& animation, bool isGood)
{
    const std::size_t size = animation.Record.FrameSize;
    std::size_t largest = 0;
    for (std::size_t frame = 0; frame < animation.NumFrames; ++frame)
        largest = std::max(largest, PoseOf(set, animation, frame).NumWords);
    const std::size_t kept = set.Game == kTR1 ? 1 : 0;
    EXPECT_TRUE(!isGood || largest == 0 || largest + kept == size) << size;
    return animation.NumFrames * size;
}

/// Decodes all objects of a set. A good one has no failure, and its frames fill their table without
/// a gap. Gives the number of failures.
std::size_t DecodeAll(const ObjectSet& set, bool isGood)
{
    std::size_t failures = 0;
    std::size_t frameWords = 0;
    const auto attempt = [&failures](const auto& work) {
        try {
            work();
        } catch (const ReadFailure&) {
            ++failures;
        }
    };
    const auto expectInside = [](const Model& model) {
        for (const MeshGeometry& mesh : model.Meshes)
            for (const GeometryFace& face : mesh.Faces)
                for (const FaceCorner& corner : face.Used())
                    ASSERT_LT(corner.Vertex, mesh.Positions.size());
    };
    for (std::size_t i = 0; i < set.StaticMeshes.size(); ++i)
        attempt([&] { expectInside(ModelOfStaticMesh(set, i)); });
    for (std::size_t i = 0; i < set.Moveables.size(); ++i) {
        attempt([&] { expectInside(ModelOfMoveable(set, i)); });
        attempt([&] {
            const AnimationRange range = AnimationsOf(set, i);
            for (std::size_t a = 0; a < range.Count; ++a)
                frameWords += DecodeFrames(set, AnimationOf(set, range, a), isGood);
        });
    }
    EXPECT_TRUE(!isGood || (failures == 0 && frameWords == set.Frames.size())) << failures;
    return failures;
}

TEST(LevelModels, DecodeToTheLastFrame)
{
    for (const VersionCode game : kGames) {
        Conversion run(samples::MakeRichLevel(game));
        DecodeAll(SetOf(run.Program), true);
    }
    for (const char* below : {"", "modern"}) {
        for (const std::string& path : RealLevels(below)) {
            SCOPED_TRACE(path);
            DecodeAll(RealSet(path), true);
        }
    }
}

/// Mean distance of the sides of the boxes of the player figure's frames from the bounds of a model
/// in these poses. Some frames are enough.
double BoxDistance(const ObjectSet& set, const Model& model)
{
    constexpr std::size_t kStep = 9;
    double sum = 0;
    int sides = 0;
    const AnimationRange range = AnimationsOf(set, 0);
    for (std::size_t a = 0; a < range.Count; ++a) {
        const ModelAnimation animation = AnimationOf(set, range, a);
        for (std::size_t frame = 0; frame < animation.NumFrames; frame += kStep, sides += 6) {
            const Pose pose = PoseOf(set, animation, frame);
            const auto [least, greatest] =
                BoundsOf(model, TransformsOf(model.Joints, pose)).value();
            const auto& box = pose.Box;
            sum += std::abs(least.X - box[0]) + std::abs(greatest.X - box[1]) +
                   std::abs(least.Y - box[2]) + std::abs(greatest.Y - box[3]) +
                   std::abs(least.Z - box[4]) + std::abs(greatest.Z - box[5]);
        }
    }
    return sum / sides;
}

/// The meshes of the figure itself are only stand-ins from Tomb Raider III on: others have its
/// skin. With those the figure fills the boxes of its frames nearly to the unit. With another order
/// of the axes, or another sign of an angle, the best one is 22 units off.
TEST(LevelModels, OfThePlayerFigureFillTheBoxesOfTheirFrames)
{
    const auto levels = RealLevels();
    if (levels.empty())
        GTEST_SKIP() << "no real levels here";
    for (const std::string& path : levels) {
        const ObjectSet set = RealSet(path);
        double nearest = 1000;
        for (std::size_t i = 0; i < set.Moveables.size(); ++i)
            if (set.Moveables[i].NumMeshes == set.Moveables[0].NumMeshes)
                nearest = std::min(nearest, BoxDistance(set, ModelOfMoveable(set, i)));
        EXPECT_LT(nearest, 6) << path;
    }
}

/// Changes some 16-bit words anywhere in a table.
template <class Table>
void Damage(Table& table, std::mt19937& random)
{
    constexpr std::array<std::int16_t, 6> kWords{-1, 0, 1, 0x7fff, -0x8000, 300};
    const auto bytes = std::as_writable_bytes(std::span(table));
    for (int change = 0; change < 12; ++change)
        std::memcpy(&bytes[random() % (bytes.size() - 1)], &kWords.at(random() % 6), 2);
}

TEST(LevelModels, OfDamagedSetsFailOrDecode)
{
    std::mt19937 random(12); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same each time
    for (const VersionCode game : {kTR1, kTR3, kTR5}) {
        Conversion run(samples::MakeRichLevel(game));
        std::size_t failures = 0;
        for (int round = 0; round < 30; ++round) {
            ObjectSet set = SetOf(run.Program);
            Damage(set.Moveables, random);
            Damage(set.Animations, random);
            Damage(set.MeshTrees, random);
            Damage(set.Frames, random);
            Damage(set.Textures, random);
            Damage(set.Meshes.MeshPointers, random);
            Damage(set.Meshes.MeshData, random);
            failures += DecodeAll(set, false);
        }
        EXPECT_GT(failures, 30U) << game;
    }
}

} // namespace

} // namespace morlik::test
