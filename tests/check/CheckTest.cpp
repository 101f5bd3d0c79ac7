// A good set with one fault at a time: the checker must find each and say where it is.

#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "check/WadCheck.h"
#include "samples/MainSfx.h"
#include "tests/support/Conversion.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
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
        run_->Folder.Write("main.sfx", samples::WriteMainSfx(samples::SampleSounds()).Bytes);
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
    struct Case
    {
        std::function<void(Set&)> Damage;
        const char* Complaint;
    };
    const std::vector<Case> cases{
        {[](Set& s) { s.Wad.Textures[1].Tile = 99; }, "Texture 1 lies on tile 99 of"},
        {[](Set& s) {
             s.Wad.Tiles = {s.Wad.Tiles.NumBytes(), std::make_shared<PixelAtEnd>()};
         },
         "The palette tile has a wrong pixel at byte 196605"},
        {[](Set& s) { PutMeshWord(s, FirstFace(s), 7); }, "a face of type 7"},
        {[](Set& s) { PutMeshWord(s, FirstFace(s) + 2, 99); },
         "Face 0 of the mesh at 0 has vertex"},
        {[](Set& s) { PutMeshWord(s, FirstFace(s) + 10, 2999); },
         "Face 0 of the mesh at 0 has texture"},
        {[](Set& s) {
             PutMeshWord(s, FirstFace(s) + 10, Word(-static_cast<int>(s.Wad.ColourBase())));
         },
         "Face 0 of the mesh at 0 turns a colour square"},
        {[](Set& s) { s.Wad.Moveables[1].ObjectID = s.Wad.Moveables[0].ObjectID; },
         "Moveable 1 has the ID of another"},
        {[](Set& s) { s.Wad.Moveables[1].Animation = 0; }, "Moveable 1 has its first animation"},
        {[](Set& s) { s.Wad.Animations[0].FrameSize += 1; }, "Animation 0 has frames of "},
        {[](Set& s) { s.Sam[0] += '9'; }, "Line 1 is \"TR1 Sound"},
        {[](Set& s) { s.Sam.pop_back(); }, " lines for "},
        {[](Set& s) { s.Was[0] = "LARA"; }, "Line 1 has no source path"},
        {[](Set& s) { s.Was.pop_back(); }, " static meshes"},
        {[](Set& s) { s.Was.back() = "X" + s.Was.back(); }, " has two names for one object"}};
    const Set good(kTR1);
    EXPECT_EQ(ComplaintsOf(good), "");
    for (const Case& fault : cases) {
        Set set = good;
        fault.Damage(set);
        EXPECT_NE(ComplaintsOf(set).find(fault.Complaint), std::string::npos)
            << "wanted: " << fault.Complaint << "\n"
            << ComplaintsOf(set);
    }
    Set painted = good;
    const auto square = painted.Wad.ColourBase() + 3;
    painted.Wad.Textures[square].Width = 9;
    EXPECT_NE(ComplaintsOf(painted).find("Texture " + std::to_string(square) +
                                         " is not palette square 3\n"),
              std::string::npos);
    Set fifth(kTR5);
    EXPECT_EQ(ComplaintsOf(fifth), "");
    fifth.Wad.Moveables[1].ObjectID = 77;
    fifth.Wad.Textures[0].FlipX = 0;
    EXPECT_NE(ComplaintsOf(fifth).find("Moveable 2 has the ID 2 behind 77\n"), std::string::npos);
    EXPECT_NE(ComplaintsOf(fifth).find("flips of the other kind"), std::string::npos);
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
    EXPECT_NE(ComplaintsOf(set).find(" more\n"), std::string::npos); // not cut off silently
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
    set.Animations = {{.FrameRate = 2,
                       .FrameSize = 12,
                       .FrameEnd = 3,
                       .NumStateChanges = 1,
                       .NumAnimCommands = 2}};
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
    struct Case
    {
        void (*Change)(ObjectSet&);
        const char* Complaint; ///< empty for none
    };
    const std::vector<Case> cases{
        {[](ObjectSet&) {}, ""},
        {[](ObjectSet& s) { s.Moveables[0].ObjectID = 501; }, "Moveable 0 has the ID 501"},
        {[](ObjectSet& s) { s.Moveables[0].ObjectID = -1; }, "Moveable 0 has the ID -1"},
        {[](ObjectSet& s) { s.StaticMeshes[0].ObjectID = 90; }, "Static mesh 0 has the ID 90"},
        {[](ObjectSet& s) { s.StaticMeshes[0].Mesh = 2; }, "Static mesh 0 has mesh 2"},
        {[](ObjectSet& s) { s.Moveables[0].StartingMesh = 1; }, "Moveable 0 has 2 meshes from 1"},
        {[](ObjectSet& s) { s.Moveables[0].NumMeshes = 0; }, "Moveable 0 has 0 meshes"},
        {[](ObjectSet& s) { s.Animations.resize(3), s.Moveables[0].Animation = 2; },
         "Animations 0 to 1 belong to no moveable"},
        {[](ObjectSet& s) { s.Moveables[0].Animation = 1; }, "Moveable 0 has animation 1 of 1"},
        {[](ObjectSet& s) { s.Moveables[0].FrameOffset = 2; }, "Moveable 0 has its frames at 2"},
        {[](ObjectSet& s) { s.MeshTrees.pop_back(); }, "its mesh tree at word 0 of 3"},
        {[](ObjectSet& s) { s.MeshTrees[0] = 3; }, ""}, // takes from the empty stack, as some do
        {[](ObjectSet& s) { s.Moveables[0].NumMeshes = 3, s.MeshTrees = {0, 0, 0, 0, 1, 0, 0, 0}; },
         "Moveable 0 takes from the empty stack at mesh 2"},
        {[](ObjectSet& s) { s.MeshTrees[0] = 4; }, "Moveable 0 has the flags 4 at mesh 1"},
        {[](ObjectSet& s) { s.Animations[0].FrameEnd = 4; }, "Animation 0 has 2 frames for 3"},
        {[](ObjectSet& s) { s.Animations[0].FrameEnd = -1; }, "runs from frame 0 to -1"},
        {[](ObjectSet& s) { s.Animations[0].FrameStart = -1; }, "runs from frame -1"},
        {[](ObjectSet& s) { s.Animations[0].FrameStart = 3; }, ""},
        {[](ObjectSet& s) { s.Animations[0].FrameRate = 0; }, "in steps of 0"},
        {[](ObjectSet& s) { s.Animations[0].FrameOffset = 1; }, "frames at 1, the next ones at 48"},
        {[](ObjectSet& s) { s.Animations[0].FrameSize = 24, s.Animations[0].FrameEnd = 1; }, ""},
        {[](ObjectSet& s) { s.Animations[0].FrameSize = 11; }, "has frames of 11 words in 24"},
        {[](ObjectSet& s) { s.Animations[0].FrameOffset = 2; }, "Animation 0 has frames of 12"},
        {[](ObjectSet& s) { s.Frames.clear(); }, "Animation 0 has 0 frames for 2"},
        {[](ObjectSet& s) { s.Frames.clear(), s.Animations[0].FrameSize = 0; }, ""},
        {[](ObjectSet& s) { s.Frames[21] = 0x3fff; }, "at word 12 is too short"}, // now a pair
        {[](ObjectSet& s) { s.Frames[9] = Word(0x8000), s.Frames[10] = Word(0xc000); }, ""},
        {[](ObjectSet& s) { s.Frames.resize(18), s.Animations[0].FrameSize = 9; },
         "at word 0 is too short"},
        {[](ObjectSet& s) { s.Animations[0].NextAnimation = 1; }, "is followed by 1 of 1"},
        {[](ObjectSet& s) { s.Animations[0].NumStateChanges = 2; }, "its state changes outside"},
        {[](ObjectSet& s) { s.Animations[0].NumAnimCommands = 3; }, "Command 2 of animation 0"},
        {[](ObjectSet& s) {
             s.AnimCommands = {4, 6, 7, 7};
         },
         ""},
        {[](ObjectSet& s) { s.AnimCommands = {1, 0, 0, 0, 5, 0, 0}; }, ""},
        {[](ObjectSet& s) { s.AnimCommands[0] = 7; }, "Command 0 of animation 0 at word 0"},
        {[](ObjectSet& s) { s.AnimCommands.pop_back(); }, "Command 1 of animation 0 at word 1"},
        {[](ObjectSet& s) { s.StateChanges[0].NumAnimDispatches = 2; }, "dispatches outside"},
        {[](ObjectSet& s) { s.AnimDispatches[0].NextAnimation = 1; }, "to animation 1 of another"},
        {[](ObjectSet& s) { s.AnimDispatches[0].NextAnimation = -1; }, "Dispatch 0 leads from"},
        {[](ObjectSet& s) { s.AnimDispatches[0].Low = 4; }, "holds from frame 4 to 3"},
        {[](ObjectSet& s) { s.AnimDispatches[0].Low = -1; }, "holds from frame -1"},
        {[](ObjectSet& s) { s.AnimDispatches[0].Low = 0; }, ""},
        {[](ObjectSet& s) {
             s.StateChanges.assign(200, {0, 30000, 0}), s.AnimDispatches.assign(30000, {});
             s.Animations[0].NumStateChanges = 200;
         },
         "overlap too often"},
        {[](ObjectSet& s) { s.Meshes.MeshData.push_back({}); }, "walked: mesh record, offset"},
        {[](ObjectSet& s) { s.Meshes.MeshPointers[1] = 4; }, "Mesh pointer 1 leads to 4"},
        {[](ObjectSet& s) {
             s.Tiles = {kTileBytes, nullptr};
         },
         "first to the last of the 1 tiles"},
        {[](ObjectSet& s) {
             s.Tiles = {kTileBytes - 1, nullptr};
         },
         "are no whole tiles"},
        {[](ObjectSet& s) { s.Textures.resize(2048); }, "2048 textures are more"},
        {[](ObjectSet& s) { s.Textures = {{.X = 200, .Y = 1, .Width = 56}}; }, "leaves its tile"},
        {[](ObjectSet& s) { s.Textures = {{.X = 1, .Y = 200, .Height = 56}}; }, "leaves its tile"},
        {[](ObjectSet& s) { s.StaticMeshes.resize(61); }, "61 static meshes are more"},
        {[](ObjectSet& s) { WithSprite(s); }, ""},
        {[](ObjectSet& s) { WithSprite(s).SpriteTextures[0].Tile = 1; }, "on tile 1 of 1"},
        {[](ObjectSet& s) { WithSprite(s).SpriteTextures[0].X = 201; }, "leaves its tile"},
        {[](ObjectSet& s) { WithSprite(s).SpriteTextures[0].Y = 255; }, ""},
        {[](ObjectSet& s) {
             SpriteTexture& sprite = WithSprite(s).SpriteTextures[0];
             sprite.Y = 255, sprite.Height = 256;
         },
         "leaves its tile"},
        {[](ObjectSet& s) { WithSprite(s).SpriteSequences[0].NegatedCount = -2; },
         "2 textures from"},
        {[](ObjectSet& s) { WithSprite(s).SpriteSequences[0].NegatedCount = 0; },
         "0 textures from"},
        {[](ObjectSet& s) {
             WithSprite(s).Tiles = {1, nullptr};
         },
         "1 tile bytes are no whole"},
    };
    const auto complaintsOf = [](const ObjectSet& set) {
        auto all = CheckWad(set);
        if (set.Sprites)
            for (const std::string& complaint : CheckSwd(*set.Sprites))
                all.push_back(complaint);
        return all;
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        ObjectSet set = LeastSet();
        cases[i].Change(set);
        const auto all = complaintsOf(set);
        const std::string wanted = cases[i].Complaint;
        const auto has = [&](const std::string& c) { return c.find(wanted) != std::string::npos; };
        EXPECT_TRUE(wanted.empty() ? all.empty() : std::ranges::any_of(all, has))
            << i << ' ' << wanted << ' ' << testing::PrintToString(all);
    }
    std::array<ObjectSet, 2> full{LeastSet(), LeastSet()};
    full[0].Textures.resize(2047);
    full[1].StaticMeshes.resize(60);
    for (const ObjectSet& set : full)
        for (const std::string& complaint : complaintsOf(set))
            EXPECT_EQ(complaint.find(" are more than "), std::string::npos) << complaint;
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

TEST(Check, FindsFaultsOfWavFilesAndMissingFiles)
{
    for (const VersionCode game : {kTR1, kTR3}) {
        const Set set(game);
        const auto found = [&] {
            const SetReport report = CheckSet(set.Base, game);
            std::string all;
            for (const Complaints& some : {report.Missing, report.Problems, report.Notes})
                for (const std::string& text : some)
                    all += text + '\n';
            return all;
        };
        EXPECT_EQ(found(), "");
        const std::string folder = set.Base + "-Sounds";
        const std::string name = set.Sam[0];
        const auto wave = ReadFile(folder + "/" + name);
        const auto with = [&](std::span<const std::byte> bytes) {
            WriteWholeFile(folder + "/" + name, bytes);
            return found();
        };
        EXPECT_EQ(with({}), "wav: " + name + " holds no sound\n");
        const std::size_t head = game == kTR1 ? 8 : 44;
        EXPECT_EQ(with(std::span(wave).first(head)), "wav: " + name + " holds no sound\n");
        EXPECT_EQ(with(std::span(wave).first(head + 1)),
                  "wav: " + name + " has another size than its header says\n");
        EXPECT_EQ(with(std::span(wave).first(wave.size() - 1)),
                  "wav: " + name + " has another size than its header says\n");
        EXPECT_EQ(with(std::vector<std::byte>(wave.size())), "wav: " + name + " is no RIFF file\n");
        std::filesystem::resize_file(ToPath(folder + "/" + name), (512U << 20U) + 1);
        EXPECT_NE(found().find("wav: Can't open " + FromPath(ToPath(folder) / ToPath(name)) +
                               ": 536870913 bytes"),
                  std::string::npos);
        std::filesystem::remove(ToPath(folder + "/" + name));
        EXPECT_EQ(found(), "wav: There is no file \"" + name + "\"\n");
        EXPECT_EQ(with(wave), "");
        WriteWholeFile(folder + "/old.wav", wave);
        EXPECT_NE(found().find("No line names \"old.wav\""), std::string::npos);
        EXPECT_EQ(CheckSet(set.Base, game).Problems, Complaints());

        std::filesystem::remove_all(ToPath(folder));
        EXPECT_NE(found().find(game == kTR1 ? "wav: There is no file " : "without main.sfx"),
                  std::string::npos);
        EXPECT_EQ(CheckSet(set.Base, game).Problems.empty(), game != kTR1);
        for (const char* extension : {".sfx", ".sam", ".wad", ".swd", ".was"})
            std::filesystem::remove(ToPath(set.Base + extension));
        EXPECT_EQ(found(), ".wad\n.was\n.swd\n.sfx\n.sam\n");
    }
}

} // namespace

} // namespace morlik::test
