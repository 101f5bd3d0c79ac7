// Objects as glTF, read back by the library that writes it.

#include "convert/ConvertLevel.h"
#include "gltf/Atlas.h"
#include "gltf/SaveGltf.h"
#include "model/Animations.h"
#include "model/Model.h"
#include "picture/Scene.h"
#include "tests/gltf/ReadBack.h"
#include "tests/model/MadeSet.h"
#include "tests/support/Conversion.h"
#include "tests/support/HeapPeak.h"
#include "tests/support/RealLevels.h"

#include <cmath>

namespace morlik::test
{

namespace
{

/// Tiles whose rows begin with some pixels; all else is black, but for a row of holes.
class FewPixels : public TileRows
{
public:
    explicit FewPixels(std::vector<std::array<std::uint8_t, 3>> row) : row_(std::move(row)) {}
    void CopyRow(std::int64_t row, std::byte* out) const override
    {
        std::fill(out, out + kRowBytes, std::byte{});
        std::ranges::copy(std::as_bytes(std::span(row_)), out); // may be none
        for (std::size_t byte = 0; row == 10 && byte < kRowBytes; ++byte)
            out[byte] = byte % 3 == 1 ? std::byte{} : std::byte{255};
    }

private:
    std::vector<std::array<std::uint8_t, 3>> row_;
};

SetTiles FewTiles(const std::vector<std::array<std::uint8_t, 3>>& row)
{
    return {std::int64_t{2} * kTileBytes, std::make_shared<FewPixels>(row)};
}

/// Objects of a level as files, and back.
class Gltf : public testing::Test
{
protected:
    void Load(VersionCode game)
    {
        ASSERT_TRUE(Run.Load(samples::MakeRichLevel(game)));
        Convert();
    }
    void Load(const std::string& path)
    {
        LoadLevel(Run.Program, path);
        Convert();
    }
    void Convert()
    {
        Set =
            ConvertLevel(Run.Program.Level, Run.Program.Names, "L", {}, Run.Program.Report).value();
    }

    static GltfObject ObjectAt(std::size_t place, bool isStatic = false)
    {
        return {.IsStatic = isStatic, .Place = place, .ID = 7, .Name = "NAME"};
    }
    ReadGltf Save(const GltfObject& object, const GltfOptions& options = {})
    {
        const auto path = Run.Folder.File("out.glb");
        EXPECT_TRUE(SaveGltf(Set, {&object, 1}, path, false, options, Run.Program.Report));
        return ReadGltfFile(path);
    }

    Colour PixelOf(const GeometryFace& face, const FaceCorner& corner)
    {
        const TextInfo& box = Set.Textures[face.Texture];
        Pixels.Need({box.Tile});
        const auto* const tile = Pixels.Tile(box.Tile);
        const Colour colour = tile[corner.Y * kTileSide + corner.X];
        if (!face.Blends())
            return Shown(colour);
        // Its brightest part is its alpha, its parts are shares of that.
        const std::array<double, 3> parts{double(colour & 0xffU), double(colour >> 8U & 0xffU),
                                          double(colour >> 16U & 0xffU)};
        const double alpha = *std::max_element(parts.begin(), parts.end());
        Colour glow = 0;
        for (unsigned part = 0; alpha > 0 && part < 3; ++part)
            glow |= static_cast<Colour>(std::lround(parts[part] * 255 / alpha)) << 8 * part;
        return Shown(glow | static_cast<Colour>(alpha) << 24U);
    }
    /// What a mesh of the set shows, as `TrianglesOf` tells it.
    std::vector<ShownTriangle> ShownBy(const MeshGeometry& mesh)
    {
        std::vector<ShownTriangle> shown;
        for (const GeometryFace& face : mesh.Faces)
            for (std::size_t third = 2; third < face.NumCorners; ++third) {
                ShownTriangle& triangle = shown.emplace_back();
                const std::array<std::size_t, 3> order{0, third, third - 1};
                for (std::size_t i = 0; i < 3; ++i) {
                    const FaceCorner& corner = face.Corners[order[i]];
                    const Vertex& place = mesh.Positions[corner.Vertex];
                    triangle.Places[i] = {place.X, place.Y, place.Z};
                    triangle.Colours[i] = PixelOf(face, corner);
                }
                triangle.TurnToFirst();
            }
        std::sort(shown.begin(), shown.end());
        return shown;
    }
    void ExpectSame(const MeshGeometry& mesh, const ReadGltf& file, int number)
    {
        EXPECT_TRUE((number < 0 ? std::vector<ShownTriangle>() : TrianglesOf(file, number)) ==
                    ShownBy(mesh));
    }
    void ExpectSameShapes()
    {
        Pixels = TexturePixels(Set.Tiles);
        for (std::size_t i = 0; i < Set.Moveables.size(); ++i) {
            SCOPED_TRACE(i);
            const Model model = ModelOfMoveable(Set, i);
            const ReadGltf file = Save(ObjectAt(i));
            ASSERT_EQ(file.Tables.nodes.size(), model.Meshes.size());
            for (std::size_t mesh = 0; mesh < model.Meshes.size(); ++mesh)
                ExpectSame(model.Meshes[mesh], file, file.Tables.nodes[mesh].mesh);
        }
        for (std::size_t i = 0; i < Set.StaticMeshes.size(); ++i) {
            SCOPED_TRACE(i);
            const ReadGltf file = Save(ObjectAt(i, true));
            ExpectSame(ModelOfStaticMesh(Set, i).Meshes[0], file, file.Tables.nodes.at(0).mesh);
        }
    }

    Conversion Run;
    ObjectSet Set;
    TexturePixels Pixels{{}};
};

TEST_F(Gltf, ShowsTheFacesOfTheSetPixelByPixel)
{
    for (const VersionCode game : kGames) {
        SCOPED_TRACE(game);
        Load(game);
        ExpectSameShapes();
    }
    for (const std::string& path : RealLevels()) {
        SCOPED_TRACE(path);
        Load(path);
        ExpectSameShapes();
    }
}

void ExpectNear(const Point& game, const Point& metres)
{
    constexpr double kUnit = 2.0 / 1024;
    constexpr double kMost = 1e-5;
    EXPECT_NEAR(-game.X * kUnit, metres.X, kMost);
    EXPECT_NEAR(-game.Y * kUnit, metres.Y, kMost);
    EXPECT_NEAR(game.Z * kUnit, metres.Z, kMost);
}

/// In every frame, also between those that the set holds, each node stands where the model has the
/// mesh, and turned alike.
TEST_F(Gltf, MovesAsTheModelDoes)
{
    for (const VersionCode game : {kTR1, kTR4}) {
        Load(game);
        for (Animation& animation : Set.Animations) // the last one ends on the way to a frame
            if (animation.FrameRate > 1)
                --animation.FrameEnd;
        for (const bool hasSkin : {false, true})
            for (std::size_t i = 0; i < Set.Moveables.size(); ++i) {
                SCOPED_TRACE(i);
                const ReadGltf file = Save(ObjectAt(i), {.HasSkin = hasSkin});
                const AnimationRange range = AnimationsOf(Set, i);
                const Skeleton joints = SkeletonOf(Set, i);
                ASSERT_EQ(file.Tables.animations.size(), range.Count);
                for (std::size_t a = 0; a < range.Count; ++a) {
                    const Animation record = AnimationOf(Set, range, a).Record;
                    for (int frame = 0; frame <= record.FrameEnd - record.FrameStart; ++frame) {
                        const auto model = TransformsAt(
                            Set, i, joints,
                            {.Animation = a, .Number = static_cast<std::size_t>(frame)});
                        const auto nodes = NodesAt(file.Tables, a, frame);
                        for (std::size_t mesh = 0; mesh < joints.size(); ++mesh)
                            for (const Point& point : {Point{}, {100, 200, 300}})
                                ExpectNear(model[mesh].Apply(point),
                                           nodes[mesh].Apply(
                                               {-point.X / 512, -point.Y / 512, point.Z / 512}));
                    }
                }
            }
    }
}

/// The mesh on bones lies where the parts lie, with its bones in the first pose.
TEST_F(Gltf, BindsTheSkinToItsBones)
{
    Load(kTR3);
    const Model model = ModelOfMoveable(Set, 0);
    const auto transforms = TransformsAt(Set, 0, model.Joints, {});
    const ReadGltf file = Save(ObjectAt(0), {.HasSkin = true});
    const auto bones = NodesAt(file.Tables, {}, 0);
    ASSERT_EQ(file.Tables.skins.size(), 1U);
    const auto ways = ValuesOf(file.Tables, file.Tables.skins[0].inverseBindMatrices);
    std::vector<std::array<long, 3>> found;
    std::vector<std::array<long, 3>> wanted;
    const auto add = [](std::vector<std::array<long, 3>>& list, const Point& p, double unit) {
        list.push_back({std::lround(p.X * unit), std::lround(p.Y * unit), std::lround(p.Z * unit)});
    };
    for (const auto& primitive : file.Tables.meshes.at(0).primitives) {
        const auto places = ValuesOf(file.Tables, primitive.attributes.at("POSITION"));
        const auto joints = ValuesOf(file.Tables, primitive.attributes.at("JOINTS_0"));
        for (const auto& weight : ValuesOf(file.Tables, primitive.attributes.at("WEIGHTS_0")))
            EXPECT_EQ(weight, (std::vector<double>{1, 0, 0, 0}));
        for (std::size_t i = 0; i < places.size(); ++i) {
            const auto bone = static_cast<std::size_t>(joints[i][0]);
            const auto& way = ways.at(bone);
            const Point bound{places[i][0] + way[12], places[i][1] + way[13],
                              places[i][2] + way[14]};
            add(found, bones.at(bone).Apply(bound), 51.2); // to a tenth of a unit's place
        }
    }
    for (std::size_t mesh = 0; mesh < model.Meshes.size(); ++mesh)
        for (const GeometryFace& face : model.Meshes[mesh].Faces)
            for (const FaceCorner& corner : face.Used()) {
                const Point p =
                    transforms[mesh].Apply(PointOf(model.Meshes[mesh].Positions[corner.Vertex]));
                add(wanted, {-p.X, -p.Y, p.Z}, 0.1);
            }
    for (auto* const list : {&found, &wanted}) {
        std::sort(list->begin(), list->end());
        list->erase(std::unique(list->begin(), list->end()), list->end());
    }
    EXPECT_EQ(found, wanted);
}

TEST_F(Gltf, KeepsWhatElseAnimationsTell)
{
    Set = MadeSet({MadeMesh()});
    Set.Tiles = FewTiles({});
    Set.Moveables = {{.ObjectID = 5, .NumMeshes = 1, .Animation = -1},
                     {.ObjectID = 7, .NumMeshes = 1, .Animation = 1}};
    // clang-format off
    const Animation walk{.FrameRate = 3, .FrameSize = 10, .State = 11,
                         .Speed = 0x18000, .Accel = -0x8000, .FrameStart = 4, .FrameEnd = 8,
                         .NextAnimation = 2, .NextFrame = 9,
                         .NumStateChanges = 1, .NumAnimCommands = 5};
    // clang-format on
    Set.Animations = {{}, walk, {.FrameOffset = 40, .FrameRate = 1, .FrameEnd = 0}};
    Set.Frames.resize(20);
    Set.Frames[9] = 1 << 14;
    Set.Frames[16] = 30; // the second frame's offset
    Set.Frames[19] = (1 << 14) | 1024;
    Set.StateChanges = {{.StateID = 12, .NumAnimDispatches = 1, .AnimDispatch = 0}};
    Set.AnimDispatches = {{.Low = 4, .High = 6, .NextAnimation = 1, .NextFrame = 5}};
    Set.AnimCommands = {5, 6, -0x8000 + 77, 3, 2, -30, 40, 6, 8, 12, 1, -4, 5, 6};
    const ReadGltf file = Save(ObjectAt(1));
    ASSERT_EQ(file.Tables.animations.size(), 2U);
    const auto& notes = file.Tables.animations[0].extras;
    EXPECT_EQ(notes.Get("state").GetNumberAsInt(), 11);
    EXPECT_EQ(notes.Get("speed").GetNumberAsDouble(), 1.5);
    EXPECT_EQ(notes.Get("acceleration").GetNumberAsDouble(), -0.5);
    EXPECT_EQ(notes.Get("nextAnimation").GetNumberAsInt(), 1);
    EXPECT_EQ(notes.Get("nextFrame").GetNumberAsInt(), 9);
    const auto& dispatch = notes.Get("stateChanges").Get(0).Get("dispatches").Get(0);
    EXPECT_EQ(dispatch.Get("animation").GetNumberAsInt(), 0);
    EXPECT_EQ(dispatch.Get("high").GetNumberAsInt(), 6);
    const auto& commands = notes.Get("commands");
    ASSERT_EQ(commands.ArrayLen(), 5U);
    EXPECT_EQ(commands.Get(0).Get("sound").GetNumberAsInt(), 77);
    EXPECT_EQ(commands.Get(0).Get("where").GetNumberAsInt(), 2);
    EXPECT_EQ(commands.Get(2).Get("vertical").GetNumberAsInt(), -30);
    EXPECT_EQ(commands.Get(3).Get("effect").GetNumberAsInt(), 12);
    EXPECT_EQ(commands.Get(4).Get("y").GetNumberAsInt(), 5);
    // Numbers 4 to 8 in steps of 3: two keys, and one on the way to a third that is not stored.
    const auto& sampler = file.Tables.animations[0].samplers[0];
    const auto times = ValuesOf(file.Tables, sampler.input);
    ASSERT_EQ(times.size(), 3U);
    EXPECT_FLOAT_EQ(static_cast<float>(times[2][0]), 4 / 30.0F);
    EXPECT_EQ(ValuesOf(file.Tables, sampler.output)[2][0], -30 / 512.0);
    EXPECT_EQ(TransformsAt(Set, 1, SkeletonOf(Set, 1), {.Animation = 0, .Number = 4})[0].Shift.X,
              30);
    EXPECT_EQ(ValuesOf(file.Tables, file.Tables.animations[1].samplers[0].input).size(), 1U);
}

TEST(GltfAtlas, PacksBoxesWithTheirBorders)
{
    ObjectSet set = MadeSet();
    set.Tiles = FewTiles({{10, 20, 30}, {255, 0, 255}, {255, 0, 255}, {200, 100, 50}, {1, 2, 3}});
    set.Textures = {{.X = 0, .Width = 3, .Height = 1},
                    {.X = 4, .Width = 0, .Height = 0},
                    {.X = 0, .Y = 9, .Height = 1},
                    {.X = 0, .Y = 10, .Height = 1}}; // holes are its lower and its upper row
    const GeometryFace mask{.Texture = 0};
    const GeometryFace glow{.Texture = 0, .Flags = 1};
    const GeometryFace dot{.Texture = 1};
    const GeometryFace low{.Texture = 2};
    const GeometryFace high{.Texture = 3};
    Atlas atlas;
    for (const GeometryFace& face : {mask, glow, dot, low, high, mask})
        atlas.Need(set, face);
    TexturePixels pixels(set.Tiles);
    atlas.Lay(pixels);
    const Picture& image = atlas.Image();
    EXPECT_EQ(image.Width * image.Height, 128); // 6, 6, 3, 3 and 3 pixels on a shelf of 4
    EXPECT_TRUE(atlas.HasHoles(set, mask));
    EXPECT_FALSE(atlas.HasHoles(set, dot));
    const auto around = [&](const GeometryFace& face, std::uint8_t x, std::int32_t dx,
                            std::uint8_t y = 0, std::int32_t dy = -1) {
        const auto [u, v] = atlas.MiddleOf(set, face, {.X = x, .Y = y});
        return image
            .Pixels[image.At(static_cast<std::int32_t>(u * static_cast<float>(image.Width)) + dx,
                             static_cast<std::int32_t>(v * static_cast<float>(image.Height)) + dy)];
    };
    const std::vector<Colour> shown{
        around(mask, 0, -1),      around(mask, 0, 1),    around(mask, 3, -1), around(mask, 3, 1),
        around(glow, 3, 0),       around(glow, 0, 0),    around(dot, 4, -1),  around(dot, 4, 1),
        around(low, 0, 0, 10, 0), around(high, 0, 0, 10)};
    const std::vector<Colour> wanted{Opaque(10, 20, 30),
                                     Opaque(10, 20, 30) & ~kOpaque,
                                     Opaque(200, 100, 50) & ~kOpaque,
                                     Opaque(200, 100, 50),
                                     200U << 24U | (Opaque(255, 128, 64) & ~kOpaque),
                                     30U << 24U | (Opaque(85, 170, 255) & ~kOpaque),
                                     Opaque(1, 2, 3),
                                     Opaque(1, 2, 3),
                                     Opaque(10, 20, 30) & ~kOpaque,
                                     Opaque(10, 20, 30) & ~kOpaque};
    EXPECT_EQ(shown, wanted);
}

TEST(GltfFileNames, StayInTheFolderAndAreEachOfItsOwn)
{
    const std::vector<GltfObject> objects{{.ID = 7, .Name = "Cat"},
                                          {.ID = 7, .Name = "CAT"},
                                          {.IsStatic = true, .ID = 7, .Name = ""},
                                          {.ID = 8, .Name = "../a\xe9 b"}};
    EXPECT_EQ(GltfFiles(objects, "", true, {}),
              (Strings{"7-Cat.glb", "7-CAT--2.glb", "static-7.glb", "8-___a__b.glb"}));
}

TEST_F(Gltf, TellsMaterialsAndLights)
{
    WadMesh mesh = MadeMesh();
    mesh.Normals.clear();
    mesh.NumNormals = -4;
    mesh.Lights = {0, 4096, 8191, 6144};
    mesh.Faces.push_back(mesh.Faces[0]);
    mesh.Faces[1].Flags = 1 + 2 * 9; // additive, and how it shines
    Set = MadeSet({mesh});
    Set.Tiles = FewTiles({{9, 9, 9}});
    Set.StaticMeshes = {{.ObjectID = 7, .CollisionBox = {1, 2, 3, 4, 5, 6}}};
    const ReadGltf file = Save(ObjectAt(0, true), {.IsLit = true, .DoubleSided = true});
    EXPECT_EQ(file.Tables.asset.generator, "Morlik");
    const auto& materials = file.Tables.materials;
    ASSERT_EQ(materials.size(), 2U);
    EXPECT_EQ(materials[0].alphaMode, "OPAQUE");
    EXPECT_TRUE(materials[0].doubleSided && materials[0].extensions.empty());
    EXPECT_EQ(materials[1].alphaMode, "BLEND");
    EXPECT_EQ(materials[1].extensions.count("KHR_materials_unlit"), 1U);
    EXPECT_EQ(materials[1].extras.Get("shine").GetNumberAsInt(), 9);
    const auto lights =
        ValuesOf(file.Tables, file.Tables.meshes[0].primitives[0].attributes.at("COLOR_0"));
    EXPECT_EQ(lights[0][0], 1);
    EXPECT_EQ(lights[1][0], 1);
    EXPECT_NEAR(lights[2][0], 0, 1e-4);
    EXPECT_NEAR(lights[3][0], 0.214, 1e-3); // half of the light, as it is shown
    EXPECT_EQ(file.Tables.nodes[0].extras.Get("collisionBox").Get(5).GetNumberAsInt(), 6);
}

/// Moveables that lead to the same animations or the same mesh again and again are left out in the
/// end, before the file takes more memory than it may.
TEST_F(Gltf, IsBounded)
{
    constexpr std::size_t kMany = 400;
    std::vector<GltfObject> objects;
    for (const bool animates : {true, false}) {
        SCOPED_TRACE(animates);
        objects.clear();
        if (animates) {
            Load(kTR4);
            Set.Animations.assign(300, {.FrameRate = 1});
            Set.Frames.clear();
            Set.Moveables.resize(1);
            Set.Moveables[0].Animation = 0;
            Set.Moveables.resize(kMany, Set.Moveables[0]);
            for (std::size_t i = 1; i < kMany; i += 2)
                Set.Moveables[i].Animation = 299;
        } else {
            Set = MadeSet(std::vector(200, MadeMesh()));
            Set.Tiles = FewTiles({});
            Set.MeshTrees.resize(4 * Set.Meshes.MeshPointers.size());
            Set.Moveables.assign(kMany, {.NumMeshes = 200, .Animation = -1});
        }
        for (std::size_t i = 0; i < kMany; i += 2)
            objects.push_back(ObjectAt(i));
        Run.Host.Details.clear();
        ResetHeapPeak();
        EXPECT_FALSE(
            SaveGltf(Set, objects, Run.Folder.File("all.glb"), false, {}, Run.Program.Report));
        EXPECT_LT(HeapPeak(), std::size_t{256} << 20U);
        EXPECT_NE(Run.Host.Details.at(0).find("would take more than"), std::string::npos);
    }
    Set.Meshes.MeshPointers.clear(); // with no object left there is no file
    const std::string none = Run.Folder.File("none.glb");
    EXPECT_FALSE(SaveGltf(Set, objects, none, false, {}, Run.Program.Report));
    EXPECT_FALSE(std::filesystem::exists(none));
    Run.Host.TurnsToStop = Run.Host.Turns + 3; // the user has seen enough
    EXPECT_THROW(SaveGltf(Set, objects, Run.Folder.File("b"), false, {}, Run.Program.Report),
                 Interrupted);
}

} // namespace

} // namespace morlik::test
