// A good set with one fault at a time: the checker must find each and say where it is.

#include "check/ObjectSetCheck.h"
#include "check/WadCheck.h"
#include "tests/support/Conversion.h"

#include <cstring>
#include <functional>
#include <memory>

namespace morlik::test
{

namespace
{

using namespace check;

/// The files of a set with sprites and WAV files, in memory.
struct Set
{
    explicit Set(VersionCode game)
    {
        run_->Folder.Write("main.sfx", MainSfxFile());
        run_->Host.OpenAnswers = {run_->Folder.File("main.sfx")};
        run_->Host.ExpSprTicked = true;
        EXPECT_TRUE(run_->Load(samples::MakeRichLevel(game)));
        EXPECT_TRUE(run_->Save());
        Base = run_->Base();
        Wad = run_->Set();
        Was = LinesOfFile(Base + ".was");
        Sam = LinesOfFile(Base + ".sam");
    }

    std::string Base;
    ObjectSet Wad;
    Strings Was, Sam;

private:
    std::shared_ptr<Conversion> run_ = std::make_shared<Conversion>();
};

/// Black tiles with one pixel at the end.
class PixelAtEnd : public TileRows
{
    void CopyRow(std::int64_t row, std::byte* out) const override
    {
        std::fill_n(out, kRowBytes, std::byte{0});
        if (row % kTileSide == kTileSide - 1)
            out[kRowBytes - 3] = std::byte{1};
    }
};

/// All complaints but those of the WAV files.
std::string ComplaintsOf(const Set& set)
{
    const VersionCode game = set.Wad.Game;
    std::string all;
    for (const Complaints& some :
         {CheckWad(set.Wad), CheckWas(set.Was, &set.Wad, game), CheckSwd(*set.Wad.Sprites),
          CheckSfx(*set.Wad.Sounds), CheckSam(set.Sam, *set.Wad.Sounds, game)})
        for (const std::string& complaint : some)
            all += complaint + '\n';
    return all;
}

/// Changes the word that stands `bytes` behind the beginning of the first mesh's record.
void PutMeshWord(Set& set, std::size_t bytes, std::int16_t word)
{
    std::memcpy(&set.Wad.Meshes.MeshData[bytes], &word, sizeof(word));
}

/// Where the first face of the first mesh stands in its record.
std::size_t FirstFace(const Set& set)
{
    const WadMesh mesh = WadMeshOf(set.Wad.Meshes, 0);
    return 16 + 6 * mesh.Vertices.size() + 6 * mesh.Normals.size() + 2 * mesh.Lights.size();
}

TEST(Check, FindsEachFaultOfASet)
{
    // clang-format off
    const std::vector<std::pair<const char*, std::function<void(Set&)>>> cases{
        {"Texture 1 lies on tile 99 of", [](auto& s) { s.Wad.Textures[1].Tile = 99; }},
        {"The palette tile has a wrong pixel at byte 196605",
         [](auto& s) { s.Wad.Tiles = {s.Wad.Tiles.NumBytes(), std::make_shared<PixelAtEnd>()}; }},
        {"a face of type 7", [](auto& s) { PutMeshWord(s, FirstFace(s), 7); }},
        {"Face 0 of the mesh at 0 has vertex",
         [](auto& s) { PutMeshWord(s, FirstFace(s) + 2, 99); }},
        {"Face 0 of the mesh at 0 has texture",
         [](auto& s) { PutMeshWord(s, FirstFace(s) + 10, 2999); }},
        {"Face 0 of the mesh at 0 turns a colour square",
         [](auto& s) {
             PutMeshWord(s, FirstFace(s) + 10, Word(-static_cast<int>(s.Wad.ColourBase())));
         }},
        {"Moveable 1 has the ID of another",
         [](auto& s) { s.Wad.Moveables[1].ObjectID = s.Wad.Moveables[0].ObjectID; }},
        {"Moveable 1 has its first animation", [](auto& s) { s.Wad.Moveables[1].Animation = 0; }},
        {"Animation 0 is followed by 3 of another",
         [](auto& s) { s.Wad.Animations[0].NextAnimation = 3; }},
        {"Animation 3 is followed by 0 of another",
         [](auto& s) { s.Wad.Animations[3].NextAnimation = 0; }},
        {"Animation 0 has frames of ", [](auto& s) { s.Wad.Animations[0].FrameSize += 1; }},
        {"Line 1 is \"TR1 Sound", [](auto& s) { s.Sam[0] += '9'; }},
        {" lines for ", [](auto& s) { s.Sam.pop_back(); }},
        {"Line 1 has no source path", [](auto& s) { s.Was[0] = "LARA"; }},
        {" static meshes", [](auto& s) { s.Was.pop_back(); }},
        {" has two names for one object", [](auto& s) { s.Was.back() = "X" + s.Was.back(); }},
    };
    // clang-format on
    const Set good(kTR1);
    EXPECT_EQ(ComplaintsOf(good), "");
    for (const auto& [complaint, damage] : cases) {
        Set set = good;
        damage(set);
        EXPECT_PRED2(Has, ComplaintsOf(set), complaint);
    }
    EXPECT_EQ(CheckWas({R"(b:Z:\TOMB4\X\a)"}, nullptr, kTR4),
              Complaints{"Line 1 has two names for one object"});
    Set painted = good;
    const auto square = painted.Wad.ColourBase() + 3;
    painted.Wad.Textures[square].Width = 9;
    EXPECT_PRED2(Has, ComplaintsOf(painted),
                 "Texture " + std::to_string(square) + " is not palette square 3\n");
    Set fifth(kTR5);
    EXPECT_EQ(ComplaintsOf(fifth), "");
    fifth.Wad.Moveables[1].ObjectID = 77;
    fifth.Wad.Textures[0].FlipX = 0;
    EXPECT_PRED2(Has, ComplaintsOf(fifth), "Moveable 2 has the ID 2 behind 77\n");
    EXPECT_PRED2(Has, ComplaintsOf(fifth), "flips of the other kind");
    std::filesystem::create_directory(ToPath(fifth.Base + "-Sounds")); // of a set before
    WriteWholeFile(fifth.Base + "-Sounds/old.wav", {});
    EXPECT_EQ(CheckSet(fifth.Base, kTR5).Problems, Complaints());
    EXPECT_EQ(CheckSet(fifth.Base, kTR5).Notes.size(), 1U);
    const Set second(kTR2); // as without a main.sfx
    std::filesystem::remove_all(ToPath(second.Base + "-Sounds"));
    std::filesystem::rename(ToPath(fifth.Base + "-Sounds"), ToPath(second.Base + "-Sounds"));
    EXPECT_EQ(CheckSet(second.Base, kTR2).Problems, Complaints());
    EXPECT_EQ(CheckSet(second.Base, kTR2).Notes.size(), 2U);

    Set set = good;
    for (Animation& animation : set.Wad.Animations)
        animation.NextAnimation = -1;
    set.Wad.Animations.resize(25, set.Wad.Animations.back());
    EXPECT_PRED2(Has, ComplaintsOf(set), " more\n"); // not cut off silently
}

/// The least set of a game without a palette: a mesh of one vertex, which is one moveable, with an
/// animation of two frames, one for every two numbers. Behind the header of a frame stand a
/// rotation of one word and one of two.
ObjectSet LeastSet()
{
    ScriptedHost host;
    Reporter report(host);
    WadMesh mesh;
    mesh.Vertices = {{}};
    mesh.NumNormals = -1;
    mesh.Lights = {0};
    ObjectSet set;
    set.Game = kTR4;
    AppendWadMesh(set.Meshes, mesh, report);
    AppendMeshPointer(set.Meshes, 0);
    set.MeshTrees = {0, 1, 2, 3};
    set.Moveables = {{.ObjectID = 500, .NumMeshes = 2}};
    set.StaticMeshes = {{.ObjectID = 89, .Mesh = 1}};
    set.Animations = {{.FrameRate = 2, .FrameSize = 12, .FrameEnd = 3, .NumStateChanges = 1}};
    set.Animations[0].NumAnimCommands = 2;
    set.StateChanges = {{0, 1, 0}};
    set.AnimDispatches = {{3, 3, 0, 0}};
    set.AnimCommands = {3, 2, 7, 7};
    set.Frames.assign(24, 0);
    set.Frames[9] = set.Frames[21] = 0x4000;
    return set;
}

/// Gives the set a sprite that ends at the border of its tile.
SpriteTables& WithSprite(ObjectSet& set)
{
    set.Sprites = SpriteTables{
        {{.X = 200, .Width = 55 * 256 + 255}}, {2 * kTileBytes, nullptr}, {{.NegatedCount = -1}}};
    return *set.Sprites;
}

TEST(Check, KnowsTheLastGoodValue)
{
    // clang-format off
    const std::vector<std::pair<std::string, void (*)(ObjectSet&)>> cases{ // "" where all is good
        {"", [](auto&) {}},
        {"Moveable 0 has the ID 501", [](auto& s) { s.Moveables[0].ObjectID = 501; }},
        {"Moveable 0 has the ID -1", [](auto& s) { s.Moveables[0].ObjectID = -1; }},
        {"Static mesh 0 has the ID 90", [](auto& s) { s.StaticMeshes[0].ObjectID = 90; }},
        {"Static mesh 0 has mesh 2", [](auto& s) { s.StaticMeshes[0].Mesh = 2; }},
        {"Moveable 0 has 2 meshes from 1", [](auto& s) { s.Moveables[0].StartingMesh = 1; }},
        {"Moveable 0 has 0 meshes", [](auto& s) { s.Moveables[0].NumMeshes = 0; }},
        {"Animations 0 to 1 belong to no moveable",
         [](auto& s) { s.Animations.resize(3), s.Moveables[0].Animation = 2; }},
        {"Moveable 0 has animation 1 of 1", [](auto& s) { s.Moveables[0].Animation = 1; }},
        {"Moveable 0 has its frames at 2", [](auto& s) { s.Moveables[0].FrameOffset = 2; }},
        {"its mesh tree at word 0 of 3", [](auto& s) { s.MeshTrees.pop_back(); }},
        {"", [](auto& s) { s.MeshTrees[0] = 3; }}, // takes from the empty stack, as some do
        {"Moveable 0 takes from the empty stack at mesh 2",
         [](auto& s) { s.Moveables[0].NumMeshes = 3, s.MeshTrees = {0, 0, 0, 0, 1, 0, 0, 0}; }},
        {"Moveable 0 has the flags 4 at mesh 1", [](auto& s) { s.MeshTrees[0] = 4; }},
        {"Animation 0 has 2 frames for 3", [](auto& s) { s.Animations[0].FrameEnd = 4; }},
        {"runs from frame 0 to -1", [](auto& s) { s.Animations[0].FrameEnd = -1; }},
        {"runs from frame -1", [](auto& s) { s.Animations[0].FrameStart = -1; }},
        {"", [](auto& s) { s.Animations[0].FrameStart = 3; }},
        {"in steps of 0", [](auto& s) { s.Animations[0].FrameRate = 0; }},
        {"frames at 1, the next ones at 48", [](auto& s) { s.Animations[0].FrameOffset = 1; }},
        {"", [](auto& s) { s.Animations[0].FrameSize = 24, s.Animations[0].FrameEnd = 1; }},
        {"has frames of 11 words in 24", [](auto& s) { s.Animations[0].FrameSize = 11; }},
        {"Animation 0 has frames of 12", [](auto& s) { s.Animations[0].FrameOffset = 2; }},
        {"Animation 0 has 0 frames for 2", [](auto& s) { s.Frames.clear(); }},
        {"", [](auto& s) { s.Frames.clear(), s.Animations[0].FrameSize = 0; }},
        {"at word 12 is too short", [](auto& s) { s.Frames[21] = 0x3fff; }}, // now a pair
        {"", [](auto& s) { s.Frames[9] = Word(0x8000), s.Frames[10] = Word(0xc000); }},
        {"at word 0 is too short",
         [](auto& s) { s.Frames.resize(18), s.Animations[0].FrameSize = 9; }},
        {"is followed by 1 of 1", [](auto& s) { s.Animations[0].NextAnimation = 1; }},
        {"its state changes outside", [](auto& s) { s.Animations[0].NumStateChanges = 2; }},
        {"Command 2 of animation 0", [](auto& s) { s.Animations[0].NumAnimCommands = 3; }},
        {"", [](auto& s) { s.AnimCommands = {4, 6, 7, 7}; }},
        {"", [](auto& s) { s.AnimCommands = {1, 0, 0, 0, 5, 0, 0}; }},
        {"Command 0 of animation 0 at word 0", [](auto& s) { s.AnimCommands[0] = 7; }},
        {"Command 1 of animation 0 at word 1", [](auto& s) { s.AnimCommands.pop_back(); }},
        {"dispatches outside", [](auto& s) { s.StateChanges[0].NumAnimDispatches = 2; }},
        {"to animation 1 of another", [](auto& s) { s.AnimDispatches[0].NextAnimation = 1; }},
        {"Dispatch 0 leads from", [](auto& s) { s.AnimDispatches[0].NextAnimation = -1; }},
        {"to animation 2 of another", // by the last animation of all
         [](auto& s) {
             s.Animations.resize(2, s.Animations[0]);
             s.Animations[0].NumStateChanges = 0, s.AnimDispatches[0].NextAnimation = 2;
         }},
        {"holds from frame 4 to 3", [](auto& s) { s.AnimDispatches[0].Low = 4; }},
        {"holds from frame -1", [](auto& s) { s.AnimDispatches[0].Low = -1; }},
        {"", [](auto& s) { s.AnimDispatches[0].Low = 0; }},
        {"overlap too often",
         [](auto& s) {
             s.StateChanges.assign(200, {0, 30000, 0}), s.AnimDispatches.assign(30000, {});
             s.Animations[0].NumStateChanges = 200;
         }},
        {"commands of the animations overlap too often",
         [](auto& s) {
             s.AnimCommands.assign(30000, 3);
             s.Animations.assign(200, {.FrameRate = 1, .NumAnimCommands = 30000});
         }},
        {"mesh trees overlap too often",
         [](auto& s) {
             s.MeshTrees.assign(120000, 0), s.Meshes.MeshPointers.assign(30000, 0);
             s.Moveables.clear();
             for (std::int32_t id = 0; id < 200; ++id)
                 s.Moveables.push_back({.ObjectID = id, .NumMeshes = 30000, .Animation = -1});
         }},
        {"The palette is missing", [](auto& s) { s.Game = kTR2; }},
        {"has frames of 12 words for 2 meshes", [](auto& s) { s.Game = kTR1; }},
        {"at word 14 doesn't have the form of a rebuilt frame",
         [](auto& s) {
             s.Game = kTR1, s.Animations[0].FrameSize = 14;
             s.Frames.assign(28, 0), s.Frames[27] = 1;
         }},
        {"The mesh record at ",
         [](auto& s) {
             const auto bytes = s.Meshes.MeshData;
             s.Meshes.MeshData.insert(s.Meshes.MeshData.end(), bytes.begin(), bytes.end());
         }},
        {"walked: mesh record, offset", [](auto& s) { s.Meshes.MeshData.push_back({}); }},
        {"Mesh pointer 1 leads to 4", [](auto& s) { s.Meshes.MeshPointers[1] = 4; }},
        {"first to the last of the 1 tiles", [](auto& s) { s.Tiles = {kTileBytes, nullptr}; }},
        {"2048 textures are more", [](auto& s) { s.Textures.resize(2048); }},
        {"leaves its tile", [](auto& s) { s.Textures = {{.X = 200, .Y = 1, .Width = 56}}; }},
        {"leaves its tile", [](auto& s) { s.Textures = {{.X = 1, .Y = 200, .Height = 56}}; }},
        {"61 static meshes are more", [](auto& s) { s.StaticMeshes.resize(61); }},
        {"", [](auto& s) { WithSprite(s); }},
        {"on tile 1 of 1", [](auto& s) { WithSprite(s).SpriteTextures[0].Tile = 1; }},
        {"leaves its tile", [](auto& s) { WithSprite(s).SpriteTextures[0].X = 201; }},
        {"", [](auto& s) { WithSprite(s).SpriteTextures[0].Y = 255; }},
        {"leaves its tile",
         [](auto& s) {
             WithSprite(s).SpriteTextures[0].Y = 255;
             s.Sprites->SpriteTextures[0].Height = 256;
         }},
        {"2 textures from", [](auto& s) { WithSprite(s).SpriteSequences[0].NegatedCount = -2; }},
        {"0 textures from", [](auto& s) { WithSprite(s).SpriteSequences[0].NegatedCount = 0; }},
    };
    // clang-format on
    const auto complaintsOf = [](const ObjectSet& set) {
        auto all = CheckWad(set);
        if (set.Sprites)
            for (const std::string& complaint : CheckSwd(*set.Sprites))
                all.push_back(complaint);
        return all;
    };
    for (const auto& [wanted, change] : cases) {
        ObjectSet set = LeastSet();
        change(set);
        const auto all = testing::PrintToString(complaintsOf(set));
        EXPECT_PRED2(Has, all, wanted.empty() ? "{}" : wanted);
    }
    std::array<ObjectSet, 2> full{LeastSet(), LeastSet()};
    full[0].Textures.resize(2047);
    full[1].StaticMeshes.resize(60);
    for (const ObjectSet& set : full)
        EXPECT_FALSE(Has(testing::PrintToString(complaintsOf(set)), " are more than "));
}

TEST(Check, TakesAnObjectThatIsNoneForAPlaceOfItsID)
{
    for (const VersionCode game : kGames) {
        auto level = samples::MakeTinyLevel(game);
        level.Moveables.push_back({.ObjectID = game == kTR5 ? 1 : 60, .MeshTree = -1});
        level.Moveables.back().Animation = -1;
        Conversion run(level);
        ASSERT_TRUE(run.Save());
        const auto report = CheckSet(run.Base(), run.Program.Level.Version);
        EXPECT_EQ(report.Problems, Complaints()) << game;
        EXPECT_EQ(std::ranges::count(report.Notes, "Moveable 1 has neither meshes nor animations"),
                  1)
            << testing::PrintToString(report.Notes);
    }
}

TEST(Check, ShowsTheFirst20ComplaintsAndTheFirst60Letters)
{
    SoundTables sounds;
    sounds.SoundMap.fill(-1);
    sounds.SampleIndices.assign(21, -1);
    EXPECT_EQ(CheckSfx(sounds).size(), 21U);
    EXPECT_EQ(CheckSfx(sounds).back(), "and 1 more");
    sounds.SampleIndices.pop_back();
    EXPECT_EQ(CheckSfx(sounds).back(), "Sample index 19 is -1");
    EXPECT_EQ(Quoted(std::string(60, 'x')).size(), 62U);
    EXPECT_EQ(Quoted(std::string(61, 'x')), '"' + std::string(60, 'x') + "...\"");
    EXPECT_EQ(Quoted(" \x1f\x7f\x80~"), R"(" \x1F\x7F\x80~")");
    sounds.SoundMap[0] = 0;
    sounds.SoundDetails = {{.Characteristics = 2 << 2}};
    sounds.SampleIndices = {0, 1};
    EXPECT_EQ(CheckSfx(sounds), Complaints());
    EXPECT_EQ(CheckSam({"TR2 Sound 0-0.wav", "TR2 Sound 0-1.wav"}, sounds, kTR2), Complaints());
    EXPECT_EQ(CheckSam({"", ""}, sounds, kTR4), Complaints());
    sounds.SampleIndices.pop_back();
    EXPECT_EQ(CheckSfx(sounds).size(), 1U);
    sounds.SoundMap[1] = 1;
    EXPECT_EQ(CheckSfx(sounds).size(), 2U);
}

} // namespace

} // namespace morlik::test
