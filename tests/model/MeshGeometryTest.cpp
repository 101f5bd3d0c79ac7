// What objects look like: made ones, those of sample levels and of real ones.

#include "convert/ConvertLevel.h"
#include "model/Animations.h"
#include "model/Model.h"
#include "tests/model/MadeSet.h"
#include "tests/support/Conversion.h"
#include "tests/support/RealLevels.h"

#include <functional>
#include <utility>

namespace morlik::test
{

namespace
{

TEST(MeshGeometry, TellsColoursFlagsAndLights)
{
    WadMesh mesh = MadeMesh();
    mesh.Faces[0].Flags = 0x43;
    mesh.NumNormals = -4;
    mesh.Normals.clear();
    mesh.Lights = {0, 1, 2, 8191};
    mesh.Faces.push_back({.Type = kFaceTriangle, .Vertices = {0, 1, 2}, .Texture = 2});
    ObjectSet set = MadeSet({mesh});
    set.Textures.resize(2 + kNumPaletteTextures, {.X = 4, .Width = 3, .Height = 3});
    for (const VersionCode game : {kTR3, kTR4}) {
        set.Game = game; // with palette squares, of which the first is texture 2, and without
        const MeshGeometry geometry = GeometryOf(set, 0);
        EXPECT_EQ(geometry.Positions, mesh.Vertices);
        EXPECT_TRUE(geometry.Normals.empty());
        EXPECT_EQ(geometry.Lights, mesh.Lights);
        EXPECT_TRUE(geometry.Faces[0].Blends());
        EXPECT_EQ(geometry.Faces[0].Shine(), 0x21);
        EXPECT_FALSE(geometry.Faces[0].IsColour);
        EXPECT_FALSE(geometry.Faces[1].Blends());
        EXPECT_EQ(geometry.Faces[1].IsColour, game == kTR3);
        EXPECT_EQ(geometry.Faces[1].Corners[1], (FaceCorner{.Vertex = 1, .X = 7, .Y = 0}));
    }
}

using MeshChange = std::function<void(ObjectSet&, WadMesh&)>;
// clang-format off
const std::vector<std::pair<std::string, MeshChange>> kMeshDamages{
    {"mesh 0, face 0: vertex 4 of 4", [](auto&, auto& mesh) { mesh.Faces[0].Vertices[3] = 4; }},
    {"mesh 0, face 0: vertex -1 of 4", [](auto&, auto& mesh) { mesh.Faces[0].Vertices[0] = -1; }},
    {"mesh 0, face 0: texture 2 of 2", [](auto&, auto& mesh) { mesh.Faces[0].Texture = -2; }},
    {"texture 1 lies on tile 2 of 2", [](auto& set, auto&) { set.Textures[1].Tile = 2; }},
    {"texture 1 lies on tile -1 of 2", [](auto& set, auto&) { set.Textures[1].Tile = -1; }},
    {"texture 1 leaves its tile", [](auto& set, auto&) { set.Textures[1].X = 251; }},
    {"texture 1 leaves its tile", [](auto& set, auto&) { set.Textures[1].Y = 249; }},
    {"mesh 0: 4 normals or lights for 5 vertices", [](auto&, auto& mesh) { mesh.Vertices.push_back({}); }},
    {"", [](auto&, auto& mesh) { mesh.NumNormals = 0; mesh.Normals.clear(); }},
    {"", [](auto& set, auto&) { set.Textures[1].X = 250; set.Textures[1].Y = 248; }},
    {"moveable 0: mesh tree of 4 words", [](auto& set, auto&) { set.MeshTrees.clear(); }},
    {"there is no mesh 2", [](auto& set, auto&) { set.Moveables[0].StartingMesh = 1; }},
    {"there is no mesh -1", [](auto& set, auto&) { set.Moveables[0].StartingMesh = -1; }},
    {"there is no mesh -1", [](auto& set, auto&) { set.StaticMeshes[0].Mesh = -1; }},
    {"static mesh 0 of 0", [](auto& set, auto&) { set.StaticMeshes.clear(); }},
};
// clang-format on

/// A moveable of two meshes and a static mesh, both meshes still to come.
ObjectSet TwoObjects()
{
    ObjectSet set = MadeSet();
    set.MeshTrees = {0, 100, 0, 0};
    set.Moveables = {{.NumMeshes = 2}};
    set.StaticMeshes = {{.Mesh = 1}};
    return set;
}

TEST(Models, OfDamagedRecordsFailWithThePlace)
{
    for (const auto& [failure, change] : kMeshDamages) {
        WadMesh mesh = MadeMesh();
        ObjectSet set = TwoObjects();
        change(set, mesh);
        AddMeshes(set, {mesh, MadeMesh()});
        ExpectFailure(failure, [&] {
            ModelOfMoveable(set, 0);
            ModelOfStaticMesh(set, 0);
        });
    }
}

TEST(Models, EndWhereAMeshThatComesAgainAndAgainWouldFillMemory)
{
    WadMesh large;
    large.Vertices.resize(8192);
    large.Faces.resize(8192, {.Type = kFaceTriangle});
    ObjectSet set = TwoObjects();
    AddMeshes(set, {large});
    set.Meshes.MeshPointers.resize(17, 0);
    set.MeshTrees.resize(std::size_t{4} * 17);
    set.Moveables[0].NumMeshes = 16;
    EXPECT_EQ(ModelOfMoveable(set, 0).Meshes.size(), 16U);
    set.Moveables[0].NumMeshes = 17;
    ExpectFailure("more than 262144", [&] { ModelOfMoveable(set, 0); });
}

TEST(Models, HaveBoundsOverAllTheirMeshes)
{
    WadMesh other = MadeMesh();
    other.Vertices[0].X = -500;
    ObjectSet set = TwoObjects();
    AddMeshes(set, {MadeMesh(), other});
    const Model figure = ModelOfMoveable(set, 0);
    const auto bounds = BoundsOf(figure, TransformsOf(figure.Joints, RestPose(2))).value();
    EXPECT_EQ(bounds.Least.X, -400);
    EXPECT_EQ(bounds.Greatest.X, 108);
    EXPECT_EQ(bounds.Greatest.Z, 9);
    const Model fixed = ModelOfStaticMesh(set, 0);
    EXPECT_EQ(BoundsOf(fixed, TransformsOf(fixed.Joints, RestPose(1)))->Least.X, -500);
    EXPECT_FALSE(BoundsOf({}, {}));
}

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
