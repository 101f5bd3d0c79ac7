#include "convert/ConvertMeshes.h"
#include "samples/Models.h"
#include "tests/support/Conversion.h"

namespace morlik::test
{

namespace
{

using Words = std::vector<std::int16_t>;
using samples::MeshContent;

Words WordsOf(std::span<const std::byte> bytes)
{
    return ByteReader(bytes).Table<std::int16_t>(static_cast<std::int64_t>(bytes.size() / 2));
}

/// A level of nothing but meshes and textures, whose corner codes are given.
struct MeshLevel
{
    MeshLevel(VersionCode version, const std::vector<MeshContent>& meshes,
              const std::vector<std::int32_t>& codes)
    {
        Level.Version = version;
        for (const std::int32_t code : codes) {
            const auto number = static_cast<std::int32_t>(Level.Textures.size());
            LevelTexture& texture = Level.Textures.emplace_back();
            texture.TextureFlip = code;
            texture.TextureRemap = number;
        }
        for (const MeshContent& mesh : meshes) {
            Level.MeshPointers.push_back(static_cast<std::int32_t>(MeshData.size()));
            const auto bytes = EncodeMesh(mesh, version);
            MeshData.insert(MeshData.end(), bytes.begin(), bytes.end());
        }
    }

    bool Convert()
    {
        Level.MeshData = MeshData;
        Info.clear();
        const auto textures = NumberTextures(Level, FirstTextureOf(Level), Report);
        if (textures) {
            LimitTextures(textures->InOrder.size(), Report);
            Textures = *textures;
            Set = ConvertMeshes(Level, Textures, Host.SkyFixTicked, Info, Report);
        }
        return textures.has_value();
    }

    /// Faces of a converted mesh.
    std::vector<WadFace> FacesOf(std::size_t mesh) const { return WadMeshOf(Set, mesh).Faces; }

    ScriptedHost Host;
    Reporter Report{Host};
    LevelData Level;
    std::vector<std::byte> MeshData;
    UsedTextures Textures;
    WadMeshSet Set;
    Strings Info;
};

MeshContent Corner()
{
    MeshContent mesh;
    mesh.Centre = {1, 2, -3};
    mesh.Radius = 0x50004;
    mesh.Vertices = {{10, 11, 12}, {20, 21, 22}, {30, 31, 32}};
    return mesh;
}

TEST(ConvertMeshes, WritesRecordsWithNormalsOrLightsUpToMultiplesOf4Bytes)
{
    MeshContent lit = Corner();
    lit.Lights = {7, 8, 9};
    lit.Triangles = {{{0, 1, 2}, 1}};
    MeshContent smooth = Corner();
    smooth.Normals = {{1, 0, 0}, {0, 1, 0}, {0, 0, -1}};
    smooth.Rectangles = {{{0, 1, 2, 1}, 0}};
    MeshLevel made(kTR2, {smooth, lit, Corner()}, {-1, 0x6000});
    made.Level.Textures[1].Attribute = 2;
    made.Level.MeshPointers = {made.Level.MeshPointers[0], made.Level.MeshPointers[1],
                               made.Level.MeshPointers[0], made.Level.MeshPointers[2],
                               made.Level.MeshPointers[1]};
    ASSERT_TRUE(made.Convert());
    EXPECT_EQ(made.Set.MeshPointers, (std::vector<std::int32_t>{0, 68, 0, 120, 68}));
    const Words head{1, 2, -3, 4, 5, 3, 10, 11, 12, 20, 21, 22, 30, 31, 32};
    Words expected = head;
    const auto add = [&expected](const Words& words) {
        expected.insert(expected.end(), words.begin(), words.end());
    };
    add({3, 1, 0, 0, 0, 1, 0, 0, 0, -1, 1, 9, 0, 1, 2, 1, 0, 0, 0}); // one word of padding
    add(head);
    add({-3, 7, 8, 9, 1, 8, 0, 1, 2, 0x6001, 1});
    add(head);
    add({0, 0, 0}); // no normals, no faces, padding
    EXPECT_EQ(WordsOf(made.Set.MeshData), expected);
    EXPECT_TRUE(made.Host.Messages().empty());
}

TEST(ConvertMeshes, NumbersAndFlagsTheFacesByTheRulesOfTheGame)
{
    MeshContent mesh = Corner();
    mesh.Rectangles = {{{0, 1, 2, 0}, 9, 5}, {{0, 1, 2, 0}, 2, 0x7fff}};
    mesh.Triangles = {{{2, 1, 0}, 7, 6}, {{2, 1, 0}, 4, -1}};
    mesh.ColouredRectangles = {{{0, 1, 2, 0}, 0x0123}};
    mesh.ColouredTriangles = {{{2, 1, 0}, Word(0xff00)}, {{2, 1, 0}, 0x0123}, {{2, 1, 0}, 0}};
    using Faces = std::vector<std::array<int, 3>>; // type, texture, flags
    const Faces textured{{9, -3, 1}, {9, 0, 0}, {8, -8190, 0}, {8, 0x6001, 1}};
    const std::vector<std::pair<VersionCode, Faces>> rows{
        {kTR1, {{9, 0x27, 0}, {8, 4, 0}, {8, 0x27, 0}, {8, 4, 0}}},
        {kTR3, {{9, 5, 0}, {8, 259, 0}, {8, 5, 0}, {8, 4, 0}}},
        {kTR4, {{9, -3, 5}, {9, 0, 0x7fff}, {8, -8190, 6}, {8, 0x6001, -1}}},
    };
    for (auto [version, expected] : rows) {
        if (version != kTR4)
            expected.insert(expected.begin(), textured.begin(), textured.end());
        MeshLevel made(version, {mesh}, {1, 1, 1, 1, 0x6000, 0, 0, 0xe000, 1, -1});
        made.Level.Textures[9].Attribute = 2;
        made.Level.Textures[4].Attribute = 2;
        made.Level.Textures[7].Attribute = 1;
        ASSERT_TRUE(made.Convert());
        EXPECT_EQ(made.Textures.TextureNumbers,
                  (std::vector<std::int32_t>{-1, -1, 0, -1, 1, -1, -1, 2, -1, 3}));
        Faces faces;
        for (const WadFace& face : made.FacesOf(0))
            faces.push_back({face.Type, face.Texture, face.Flags});
        EXPECT_EQ(faces, expected) << version;
    }
    // A repeated texture takes the number of the first and the code of its own.
    MeshLevel shared(kTR5, {mesh}, {1, 1, 1, 1, 0x6000, 0, 0, 0xe000, 1, -1});
    shared.Level.Textures[7].TextureRemap = 4;
    shared.Level.Textures[9].TextureRemap = 2;
    ASSERT_TRUE(shared.Convert());
    EXPECT_EQ(shared.Textures.ColourBase(), 2);
    const Words words = WordsOf(shared.Set.MeshData);
    EXPECT_EQ(words.at(22), 0);
    EXPECT_EQ(words.at(35), Word(0xe001));
}

TEST(ConvertMeshes, TakesNoMoreThan2047Textures)
{
    for (const auto count : std::initializer_list<std::int16_t>{2047, 2048}) {
        MeshContent mesh = Corner();
        for (std::int16_t i = 0; i < count; ++i)
            mesh.Rectangles.push_back({{0, 1, 2, 0}, i});
        MeshLevel made(kTR1, {mesh}, std::vector<std::int32_t>(2048, 1));
        EXPECT_EQ(EndOf([&] { made.Convert(); }),
                  count == 2047 ? "" : "To many object textures in level - can't continue!");
    }
}

TEST(ConvertMeshes, StopsAtMeshesThatLeaveTheData)
{
    const auto size = static_cast<std::int32_t>(EncodeMesh(Corner(), kTR1).size());
    for (const std::int32_t offset : {-1, 2, size, size - 8, 0x7fffffff}) {
        MeshLevel made(kTR1, {Corner()}, {});
        made.Level.MeshPointers.push_back(offset);
        EXPECT_EQ(EndOf([&] { made.Convert(); }), "Mesh 1 is damaged - can't continue!") << offset;
    }
    for (const std::size_t count : {10U, 30U, 32U, 34U, 36U, 38U}) // of vertices, normals, faces
        for (const std::byte high : {std::byte{0x7f}, std::byte{0x80}}) {
            MeshLevel made(kTR1, {Corner()}, {1});
            made.MeshData[count + 1] = high;
            EXPECT_EQ(EndOf([&] { made.Convert(); }), "Mesh 0 is damaged - can't continue!")
                << count;
            EXPECT_TRUE(made.Host.Details.at(0).starts_with("mesh, offset "));
        }
}

TEST(ConvertMeshes, EndsQuicklyWhereMeshesLieOneOverTheOther)
{
    // Read from any even offset the words are a mesh of 25 KB: without a limit they would cost
    // gigabytes.
    MeshLevel made(kTR1, {}, std::vector<std::int32_t>(0x400, 1));
    for (std::int32_t offset = 0; offset < 0x80000; offset += 2) {
        made.Level.MeshPointers.push_back(offset);
        made.MeshData.insert(made.MeshData.end(), {std::byte{0}, std::byte{3}});
    }
    EXPECT_PRED2(Has, EndOf([&] { made.Convert(); }), "is damaged - can't continue!");
}

TEST(ConvertMeshes, TellsFacesWithATextureOfTheOtherKindOrOfNone)
{
    const std::string unknown = "Unknown texture found in ";
    const std::vector<std::tuple<bool, std::int16_t, std::string>> rows{
        {false, 1, "Triangle texture used on rectangle!"},
        {true, 0, "Rectangle texture used on triangle!"},
        {true, 2, "Rectangle texture used on triangle!"},
        {false, 3, unknown + "rectangle!"},
        {true, -1, unknown + "triangle!"},
        {true, 4, unknown + "triangle!"},
    };
    for (const auto& [isTriangle, texture, message] : rows) {
        MeshContent mesh = Corner();
        (isTriangle ? mesh.Triangles : mesh.Rectangles) = {{{0, 1, 2}, texture}};
        MeshLevel made(kTR5, {Corner(), mesh}, {1, 0, -1, 1});
        made.Level.Textures[3].TextureRemap = 4; // to a texture that isn't there
        const bool ends = !message.starts_with(unknown);
        if (!ends)
            made.MeshData.pop_back(); // damage behind it, not reached
        bool converted = true;
        const auto end = EndOf([&] { converted = made.Convert(); });
        EXPECT_EQ(end, ends ? message : "");
        EXPECT_EQ(converted, ends);
        EXPECT_EQ(made.Host.Messages(), Strings{"MORLIK: " + message});
    }
}

TEST(UsedTextures, OfFractionalLevelsBeginWithOneThatNothingMirrors)
{
    using Numbers = std::vector<std::int32_t>;
    const std::vector<std::tuple<Numbers, bool, Numbers>> rows{
        {{-1, -1, 1, 1, -1}, true, {2, 0, 1, 3, 4}},
        {{-1, -1, 1, 1, -1}, false, {0, 1, 2, 3, 4}}, // as the games' own tools had them
        {{1, -1, 1}, true, {0, 1, 2}},
        {{-1, -1}, true, {0, 1}},
        {Numbers{}, true, Numbers{}},
    };
    for (const auto& [codes, fractional, inOrder] : rows) {
        MeshContent mesh = Corner();
        for (std::size_t i = 0; i < codes.size(); ++i)
            mesh.Rectangles.push_back({{0, 1, 2, 0}, Word(static_cast<std::int32_t>(i))});
        MeshLevel made(kTR4, {mesh}, codes);
        made.Level.HasFractions = fractional;
        ASSERT_TRUE(made.Convert());
        EXPECT_EQ(made.Textures.InOrder, inOrder);
        for (std::size_t i = 0; i < inOrder.size(); ++i) {
            const auto texture = static_cast<std::size_t>(inOrder[i]);
            EXPECT_EQ(made.Textures.TextureNumbers[texture], static_cast<int>(i));
        }
        if (codes.size() == 3) { // the first one by a repeat of its box
            made.Level.Textures[1].TextureRemap = 0;
            ASSERT_TRUE(made.Convert());
            EXPECT_EQ(made.Textures.InOrder, (std::vector<std::int32_t>{2, 0}));
        }
    }
}

TEST(Horizon, IsRepaintedAndTellsOfTheClouds)
{
    constexpr std::uint8_t kBright = 9; // (10, 20, 30)
    constexpr std::uint8_t kDark = 8;   // (0, 20, 30)
    constexpr std::uint8_t kWarm = 6;   // (10, 20, 0)
    // The vertices 0, 1 and 2 lie at, 3 above and 4 below the line. Behind the faces with their
    // colours stand the textures of all and the colour of the clouds; null for the text without.
    using Faces = std::vector<std::pair<std::array<std::int16_t, 4>, std::uint8_t>>;
    using Textures = std::vector<int>;
    const std::vector<std::tuple<VersionCode, bool, Faces, Faces, Textures, const char*>> rows{
        {kTR2, false, {{{0, 1, 2, 3}, 9}}, {{{0, 1, 3}, 9}, {{0, 1, 4}, 8}}, {9, 9, 8}, nullptr},
        {kTR3, false, {{{0, 1, 2, 4}, 9}}, {{{0, 1, 3}, 9}, {{0, 1, 4}, 8}}, {9, 9, 256}, nullptr},
        {kTR2,
         true,
         {{{0, 1, 2, 3}, 7}, {{0, 1, 2, 4}, 7}},
         {{{0, 1, 2}, kBright}, {{0, 1, 4}, kDark}, {{3, 1, 4}, kDark}},
         {257, 7, 257, 8, 257},
         "10,20,30"},
        {kTR2, true, {}, {{{0, 1, 2}, kDark}, {{0, 1, 2}, kBright}}, {8, 257}, "0,20,30"},
        {kTR2, true, {}, {{{0, 1, 2}, kWarm}}, {kWarm}, "10,20,0"},
        {kTR3,
         true,
         {},
         {{{3, 1, 4}, kBright}, {{0, 1, 2}, 255}, {{0, 1, 3}, kDark}},
         {256, 257, 257},
         "255,1,2"},
        {kTR3, true, {{{3, 1, 2, 4}, 1}}, {{{0, 1, 4}, kBright}}, {257, 256}, nullptr},
        {kTR2, true, {}, {}, {}, nullptr},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& [game, fixesSky, rectangles, triangles, wanted, layer] = rows[i];
        MeshContent mesh;
        mesh.Vertices = {{5, 0, 5}, {5, 0, 5}, {5, 0, 5}, {5, -1, 5}, {-5, 1, -5}};
        for (const auto& [vertices, colour] : rectangles)
            mesh.ColouredRectangles.push_back({vertices, Word(colour << 8 | 1)});
        for (const auto& [vertices, colour] : triangles)
            mesh.ColouredTriangles.push_back({vertices, Word(colour << 8 | 1)});
        MeshLevel made(game, {Corner(), mesh}, {});
        made.Level.Palette16[kBright] = {10, 20, 30};
        made.Level.Palette16[kDark] = {0, 20, 30};
        made.Level.Palette16[kWarm] = {10, 20, 0};
        made.Level.Palette16[255] = {255, 1, 2};
        const std::int32_t id = game == kTR2 ? 254 : 355;
        made.Level.Moveables = {{.ObjectID = id}, {.ObjectID = id, .StartingMesh = 1}};
        made.Host.SkyFixTicked = fixesSky;
        ASSERT_TRUE(made.Convert());
        std::vector<int> textures;
        for (const WadFace& face : made.FacesOf(1))
            textures.push_back(face.Texture);
        EXPECT_EQ(textures, wanted) << i;
        ASSERT_EQ(made.Info.size(), layer != nullptr ? 6U : 4U) << i;
        EXPECT_EQ(made.Info.back(), layer != nullptr
                                        ? std::string("Layer1=") + layer
                                        : "The horizon is NOT updates for cloud support")
            << i;
        for (const std::int16_t vertex : {Word(5), Word(-1)}) { // of 5
            mesh.ColouredRectangles = {{{0, 1, 2, vertex}, 1}};
            made.MeshData = EncodeMesh(mesh, game);
            made.Level.MeshPointers = {0};
            made.Level.Moveables = {{.ObjectID = id}};
            EXPECT_EQ(EndOf([&] { made.Convert(); }),
                      fixesSky ? "Mesh 0 is damaged - can't continue!" : "");
        }
    }
}

TEST(Horizon, IsOneMeshOfTombRaiderIIOrIIIThatWasNotStoredBefore)
{
    const std::vector<std::tuple<VersionCode, std::int32_t, std::int16_t, bool>> rows{
        {kTR1, 254, 0, false}, {kTR2, 355, 0, false}, {kTR3, 254, 0, false}, {kTR4, 254, 0, false},
        {kTR2, 254, 1, false}, {kTR2, 254, 9, false}, {kTR2, 254, 0, true},  {kTR3, 355, 0, true}};
    for (const auto& [version, id, startingMesh, isTreated] : rows) {
        MeshContent mesh = Corner();
        mesh.ColouredTriangles = {{{0, 1, 2}, 0x0101}};
        MeshLevel made(version, {mesh}, {});
        made.Level.MeshPointers.push_back(0);
        made.Level.Moveables = {{.ObjectID = id, .StartingMesh = startingMesh}};
        ASSERT_TRUE(made.Convert());
        EXPECT_EQ(!made.Info.empty(), isTreated) << version << id << startingMesh;
    }
}

} // namespace

} // namespace morlik::test
