// What sample levels and real ones look like.

#include "convert/ConvertLevel.h"
#include "model/Animations.h"
#include "model/Model.h"
#include "tests/support/Conversion.h"
#include "tests/support/RealLevels.h"

#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

/// Decodes all objects of the loaded level: none fails, and the frames fill their table without a
/// gap. The largest of an animation fills its size, but for the last word that a frame of Tomb
/// Raider I keeps from its old form.
void DecodeAll(Session& program)
{
    const ObjectSet set =
        ConvertLevel(program.Level, program.Names, "LEVEL", {}, program.Report).value();
    for (std::size_t i = 0; i < set.StaticMeshes.size(); ++i)
        EXPECT_NO_THROW(ModelOfStaticMesh(set, i));
    std::size_t frameWords = 0;
    for (std::size_t i = 0; i < set.Moveables.size(); ++i) {
        for (const MeshGeometry& mesh : ModelOfMoveable(set, i).Meshes)
            for (const GeometryFace& face : mesh.Faces)
                for (const FaceCorner& corner : face.Used())
                    ASSERT_LT(corner.Vertex, mesh.Positions.size());
        const AnimationRange range = AnimationsOf(set, i);
        for (std::size_t a = 0; a < range.Count; ++a) {
            const ModelAnimation animation = AnimationOf(set, range, a);
            const std::size_t size = animation.Record.FrameSize;
            std::size_t largest = 0;
            for (std::size_t frame = 0; frame < animation.NumFrames; ++frame)
                largest = std::max(largest, PoseOf(set, animation, frame).NumWords);
            EXPECT_TRUE(largest == 0 || largest + (set.Game == kTR1 ? 1 : 0) == size) << size;
            frameWords += animation.NumFrames * size;
        }
    }
    EXPECT_EQ(frameWords, set.Frames.size());
}

TEST(LevelModels, DecodeToTheLastFrame)
{
    for (const VersionCode game : kGames) {
        Conversion run(samples::MakeRichLevel(game));
        DecodeAll(run.Program);
    }
    for (const char* below : {"", "modern"}) {
        for (const std::string& path : RealLevels(below)) {
            SCOPED_TRACE(path);
            Conversion run;
            LoadLevel(run.Program, path);
            DecodeAll(run.Program);
        }
    }
}

} // namespace

} // namespace morlik::test
