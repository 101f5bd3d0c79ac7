// A good set with one fault at a time: the checker must find each and say where it is.

#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "samples/MainSfx.h"
#include "tests/support/Conversion.h"

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
        run_->CopyDataFiles();
        WriteWholeFile(run_->Folder.File("main.sfx"),
                       samples::WriteMainSfx(samples::SampleSounds()).Bytes);
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
    std::vector<std::string> Was, Sam;

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
        {[](Set& s) { s.Wad.Textures[1].Width = 255; }, "Texture 1 leaves its tile"},
        {[](Set& s) {
             s.Wad.Tiles = {s.Wad.Tiles.NumBytes(), std::make_shared<PixelAtEnd>()};
         },
         "The palette tile has a wrong pixel at byte 196605"},
        {[](Set& s) { s.Wad.Meshes.MeshPointers[1] += 4; }, "Mesh pointer 1 leads to"},
        {[](Set& s) { PutMeshWord(s, 10, 99); }, "mesh data can't be walked"}, // too many vertices
        {[](Set& s) { PutMeshWord(s, FirstFace(s), 7); }, "a face of type 7"},
        {[](Set& s) { PutMeshWord(s, FirstFace(s) + 2, 99); },
         "Face 0 of the mesh at 0 has vertex"},
        {[](Set& s) { PutMeshWord(s, FirstFace(s) + 10, 2999); },
         "Face 0 of the mesh at 0 has texture"},
        {[](Set& s) { s.Wad.Moveables[1].StartingMesh = 999; }, "Moveable 1 has "},
        {[](Set& s) { s.Wad.Moveables[0].MeshTree = 9999; },
         "Moveable 0 has its mesh tree at word 9999"},
        {[](Set& s) { s.Wad.Moveables[1].ObjectID = s.Wad.Moveables[0].ObjectID; },
         "Moveable 1 has the ID of another"},
        {[](Set& s) { s.Wad.Moveables[0].ObjectID = 501; }, "Moveable 0 has the ID 501, which no"},
        {[](Set& s) { s.Wad.Moveables[0].FrameOffset += 2; }, "Moveable 0 has its frames at"},
        {[](Set& s) { s.Wad.Moveables[0].Animation = -1; }, "belong to no moveable"},
        {[](Set& s) { s.Wad.Moveables[1].Animation = 0; }, "Moveable 1 has its first animation"},
        {[](Set& s) { s.Wad.StaticMeshes[0].Mesh = -1; }, "Static mesh 0 has mesh -1"},
        {[](Set& s) { s.Wad.Animations[1].StateChange = 999; },
         "Animation 1 has its state changes"},
        {[](Set& s) { s.Wad.Animations[1].NextAnimation = 999; }, "Animation 1 is followed by 999"},
        {[](Set& s) { s.Wad.Animations[0].FrameOffset += 1; }, "Animation 0 has its frames at"},
        {[](Set& s) { s.Wad.Animations[0].FrameEnd = 9999; }, "Animation 0 has "},
        {[](Set& s) { s.Wad.Animations[0].FrameSize += 1; }, "Animation 0 has frames of "},
        {[](Set& s) { s.Wad.Animations[0].FrameRate = 0; }, "in steps of 0"},
        {[](Set& s) { s.Wad.AnimDispatches[0].Low = 32767; }, "Dispatch 0 holds from frame 32767"},
        {[](Set& s) { s.Wad.StateChanges[0].AnimDispatch = 999; }, "State change 0 has its"},
        {[](Set& s) { s.Wad.AnimDispatches[0].NextAnimation = -1; }, "Dispatch 0 leads from"},
        {[](Set& s) { s.Wad.AnimCommands[0] = 7; }, " is not known or runs past"},
        {[](Set& s) { s.Wad.AnimCommands.pop_back(); }, " runs past the last word"},
        {[](Set& s) { s.Wad.Sprites->SpriteTextures[0].Tile = 99; },
         "Sprite texture 0 lies on tile 99"},
        {[](Set& s) { s.Wad.Sprites->SpriteTextures[0].X += 255; }, "Sprite texture 0 leaves"},
        {[](Set& s) { s.Wad.Sprites->SpriteSequences[0].FirstTexture = 999; },
         "Sprite sequence 0 has"},
        {[](Set& s) { s.Wad.Sounds->SoundMap[3] = 999; }, "Sound 3 has sound detail 999"},
        {[](Set& s) { s.Wad.Sounds->SoundDetails[0].Sample = 999; }, "Sound detail 0 has"},
        {[](Set& s) { s.Wad.Sounds->SampleIndices[0] = -1; }, "Sample index 0 is -1"},
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
    Set fifth(kTR5);
    EXPECT_EQ(ComplaintsOf(fifth), "");
    fifth.Wad.Moveables[1].ObjectID = 77;
    fifth.Wad.Textures[0].FlipX = 0;
    EXPECT_NE(ComplaintsOf(fifth).find("Moveable 1 has the ID 77\n"), std::string::npos);
    EXPECT_NE(ComplaintsOf(fifth).find("flips of the other kind"), std::string::npos);

    Set set = good;
    for (Animation& animation : set.Wad.Animations)
        animation.NextAnimation = -1;
    set.Wad.Animations.resize(25, set.Wad.Animations.back());
    EXPECT_NE(ComplaintsOf(set).find(" more\n"), std::string::npos); // not cut off silently
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
        EXPECT_EQ(with(std::span(wave).first(2)), "wav: " + name + " holds no sound\n");
        EXPECT_EQ(with(std::span(wave).first(wave.size() - 1)),
                  "wav: " + name + " has another size than its header says\n");
        EXPECT_EQ(with(std::vector<std::byte>(wave.size())), "wav: " + name + " is no RIFF file\n");
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
