// Whole sets, from the level to its files and back, of the sample levels and of real ones.

#include "check/ObjectSetCheck.h"
#include "convert/ConvertLevel.h"
#include "convert/RawMesh.h"
#include "samples/Textures.h"
#include "set/Sounds.h"
#include "tests/support/Conversion.h"
#include "tests/support/RealLevels.h"
#include "tests/support/SameSet.h"

#include <cstdlib>

namespace morlik::test
{

namespace
{

/// The set that is made of the loaded level. In those of IV and V the default files stand for
/// sounds and sprites, and so do those for sprites in others: these are taken from `saved`.
ObjectSet MadeSet(Conversion& run, const ObjectSet& saved)
{
    const Session& program = run.Program;
    auto made = ConvertLevel(
        program.Level, program.Names, program.LevelTitle,
        {.UpdateHorizon = run.Host.SkyFixTicked, .ExportSprites = run.Host.ExpSprTicked},
        run.Program.Report);
    if (!made)
        return {};
    if (made->Sounds && HasMainSFX(made->Game))
        ListSetSamples(*made, [&](std::int32_t sample) {
            return program.MainSFX.WaveOf(FindIn(made->Sounds->SampleIndices, sample));
        });
    if (!made->Sounds)
        made->Sounds = saved.Sounds;
    if (!made->Sprites)
        made->Sprites = saved.Sprites;
    return *made;
}

/// Corners of the box in the order of a face's vertices: 0 top left, 1 top right, 2 bottom right,
/// 3 bottom left. What the editor's game makes of a code, written down once more on its own.
constexpr std::array<std::array<int, 4>, 2> kRectangles{{{0, 1, 2, 3}, {1, 0, 3, 2}}};
constexpr std::array<std::array<int, 3>, 8> kTriangles{
    {{0, 1, 3}, {1, 2, 0}, {2, 3, 1}, {3, 0, 2}, {1, 0, 2}, {0, 3, 1}, {3, 2, 0}, {2, 1, 3}}};

bool Near(const TextInfo& box, int place, const TextureCorner& corner)
{
    const int x = box.X + (place == 1 || place == 2 ? box.Width : 0);
    const int y = box.Y + (place >= 2 ? box.Height : 0);
    return std::abs(x - corner.XPixel) <= 1 && std::abs(y - corner.YPixel) <= 1;
}

/// Whether the faces agree with the set's vertices being those of the level, turned by any number
/// of places.
bool Agrees(const RawFace& face, const std::array<TextureCorner, 4>& corners,
            const WadFace& wadFace, const TextInfo& box)
{
    const std::size_t n = wadFace.NumVertices();
    for (std::size_t turn = 0; turn < n; ++turn) {
        bool good = true;
        for (std::size_t k = 0; k < n && good; ++k) {
            const std::size_t j = (k + turn) % n;
            const int place = n == 4 ? kRectangles.at(wadFace.Texture < 0 ? 1 : 0).at(k)
                                     : kTriangles.at((wadFace.Texture & 0xe000) >> 13).at(k);
            good = wadFace.Vertices[k] == face.Vertices.at(j) && Near(box, place, corners.at(j));
        }
        if (good)
            return true;
    }
    return false;
}

/// The share of textured faces whose vertices are shown with the right pixels: the ones that the
/// set gives them, by its texture record and its code or sign, against the corners that the level
/// has for them. No vertex may be off by more than a pixel.
double ShareOfGoodFaces(const LevelData& level, const TrMainState& state, const ObjectSet& wad)
{
    std::size_t faces = 0;
    std::size_t good = 0;
    const bool isOlder = IsOlderGame(level.Version);
    for (std::size_t m = 0; m < level.MeshPointers.size(); ++m) {
        const RawMesh raw = ReadRawMesh(level.MeshData, level.MeshPointers[m], isOlder);
        const WadMesh record = WadMeshOf(wad.Meshes, m);
        std::size_t next = 0;
        for (const auto* list : {&raw.Rectangles, &raw.Triangles})
            for (const RawFace& face : *list) {
                const WadFace& wadFace = record.Faces.at(next++);
                const auto texture = static_cast<std::uint16_t>(face.Texture);
                const auto& corners = isOlder ? state.ObjectTextures.at(texture).Corners
                                              : state.ObjectTexturesTR45.at(texture).Corners;
                const TextInfo& box = wad.Textures.at(wadFace.TextureNumber());
                ++faces;
                good += Agrees(face, corners, wadFace, box) ? 1U : 0U;
            }
    }
    EXPECT_GT(faces, 0U);
    return static_cast<double>(good) / static_cast<double>(faces);
}

/// Saves the loaded level twice and looks at all that holds for a set. Gives the share of faces
/// that show the right pixels.
double ProvenShare(Conversion& run)
{
    std::vector<std::byte> before;
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(run.Save());
        EXPECT_EQ(run.Host.Messages(), Strings{});
        const check::SetReport report = check::CheckSet(run.Base(), run.Program.Level.Version);
        EXPECT_EQ(report.Problems, Strings{});
        EXPECT_EQ(report.Missing, Strings{});
        auto wad = ReadFile(run.Output(".wad"));
        EXPECT_TRUE(i == 0 || wad == before);
        before = std::move(wad);
    }
    const ObjectSet saved = run.Set();
    EXPECT_EQ(DifferenceOf(MadeSet(run, saved), saved), "");
    return ShareOfGoodFaces(run.Program.Level, run.Program.State, saved);
}

TEST(ObjectSets, OfTheSampleLevelsAreGoodInBothFormsWithAndWithoutOptions)
{
    for (const VersionCode game : kGames) {
        for (const int kind : {0, 1, 2, 3}) {
            const bool ticked = kind % 2 != 0;
            const bool fractional = kind / 2 != 0;
            SCOPED_TRACE(std::string(LevelName(game)) + (ticked ? ", ticked" : "") +
                         (fractional ? ", fractional" : ""));
            samples::LevelContent level = samples::MakeRichLevel(game);
            if (fractional)
                MakeFractional(level);
            Conversion run;
            run.Host.SkyFixTicked = run.Host.ExpSprTicked = ticked;
            const auto mainSfx = run.Folder.Write("main.sfx", MainSfxFile());
            if (ticked)
                run.Host.OpenAnswers = {mainSfx, mainSfx};
            ASSERT_TRUE(run.Load(level));
            EXPECT_EQ(run.Program.Level.HasFractions, fractional);
            EXPECT_EQ(ProvenShare(run), 1.0);
        }
    }
}

TEST(ObjectSets, OfRealLevelsAreGood)
{
    const auto newer = RealLevels("modern");
    auto levels = RealLevels();
    if (levels.empty() && newer.empty())
        GTEST_SKIP() << "no real levels here";
    levels.insert(levels.end(), newer.begin(), newer.end());
    for (const std::string& path : levels) {
        SCOPED_TRACE(path);
        Conversion run;
        run.Host.ExpSprTicked = true;
        run.Program.LevelTitle = FileTitle(path);
        EXPECT_EQ(EndOf([&] { LoadLevel(run.Program, path); }), "");
        const double share = ProvenShare(run);
        RecordProperty(FileTitle(path), std::to_string(share));
        // The level of the first game is as its own tools left it; the other classic ones have
        // turned textures, whose turns are lost.
        const bool isFirst = run.Program.Level.Version == kTR1;
        EXPECT_GE(share, run.Program.Level.HasFractions ? 0.999 : isFirst ? 1.0 : 0.7);
    }
}

} // namespace

} // namespace morlik::test
