// The files of object sets. Their layouts stand in the code once, for writing and for reading: what
// they are is written down here a second time, byte by byte.

#include "set/Sounds.h"
#include "set/Swd.h"
#include "set/Wad.h"
#include "set/Was.h"
#include "tests/support/Conversion.h"

namespace morlik::test
{

namespace
{

/// One tile whose row r is filled with the byte r.
class Rows : public TileRows
{
    void CopyRow(std::int64_t row, std::byte* out) const override
    {
        std::fill_n(out, kRowBytes, static_cast<std::byte>(row));
    }
};

SetTiles OneTile()
{
    return {kTileBytes, std::make_shared<Rows>()};
}

/// Words of 16 bits in the order of a file.
std::vector<int> WordsOf(const std::vector<std::byte>& bytes)
{
    ByteReader reader(bytes);
    std::vector<int> words;
    while (reader.Left() != 0)
        words.push_back(reader.Read<std::uint16_t>());
    return words;
}

/// The words without those of the one tile, which stand behind its count at `at`.
std::vector<int> WithoutTile(std::vector<int> words, std::ptrdiff_t at)
{
    constexpr std::ptrdiff_t kTileWords = kTileBytes / 2;
    for (std::ptrdiff_t row = 0; row < kTileSide; ++row)
        EXPECT_EQ(words.at(static_cast<std::size_t>(at + row * kRowBytes / 2)), row * 0x101);
    words.erase(words.begin() + at, words.begin() + at + kTileWords);
    return words;
}

WadMesh Triangle()
{
    WadMesh mesh;
    mesh.Centre = {1, 2, 3};
    mesh.Radius = 0x50004;
    mesh.Vertices = {{6, 7, 8}};
    mesh.NumNormals = -2;
    mesh.Lights = {9, 10};
    mesh.Faces = {{.Type = kFaceTriangle, .Vertices = {11, 12, 13}, .Texture = 14, .Flags = 15},
                  {.Type = kFaceRectangle, .Vertices = {1, 2, 3, 4}, .Texture = -5, .Flags = 6}};
    return mesh;
}

TEST(WadFile, HasItsBlocksAndRecordsByteByByte)
{
    ScriptedHost host;
    Reporter report(host);
    ObjectSet set;
    set.Textures = {{.X = 1, .Y = 2, .Tile = 3, .FlipX = 4, .Width = 5, .FlipY = 6, .Height = 7}};
    set.Tiles = OneTile();
    AppendWadMesh(set.Meshes, Triangle(), report);
    AppendMeshPointer(set.Meshes, 0);
    // clang-format off
    set.Animations = {{.FrameOffset = 0x10002, .FrameRate = 3, .FrameSize = 4, .State = 5,
                       .Speed = 0x60007, .Accel = 0x80009,
                       .LateralSpeed = 0xa000b, .LateralAccel = 0xc000d,
                       .FrameStart = 14, .FrameEnd = 15, .NextAnimation = 16, .NextFrame = 17,
                       .NumStateChanges = 18, .StateChange = 19,
                       .NumAnimCommands = 20, .AnimCommand = 21}};
    set.StateChanges = {{1, 2, 3}};
    set.AnimDispatches = {{1, 2, 3, 4}};
    set.EmptyCounts.AnimCommands = -7;
    set.MeshTrees = {0x10002};
    set.Frames = {1, 2, 3};
    set.Moveables = {{.ObjectID = 0x10002, .NumMeshes = 3, .StartingMesh = 4, .MeshTree = 0x50006,
                      .FrameOffset = 0x70008, .Animation = -1}};
    set.StaticMeshes = {{.ObjectID = 0x10002, .Mesh = 3, .VisibilityBox = {4, 5, 6, 7, 8, 9},
                         .CollisionBox = {10, 11, 12, 13, 14, 15}, .Flags = 16}};
    ByteWriter out;
    WadProgress unwatched;
    WriteWad(out, set, unwatched);
    const std::vector<int> expected{
        129, 0,
        1, 0, 0x201, 3, 0x504, 0x706,
        0, 3, // of tile bytes, which stand here
        2, 0, 0, 0, 0, 0,
        26, 0, 1, 2, 3, 4, 5, 1, 6, 7, 8, 0xfffe, 9, 10, 2,
            8, 11, 12, 13, 14, 15, 9, 1, 2, 3, 4, 0xfffb, 6,
        1, 0, 2, 1, 0x403, 5, 7, 6, 9, 8, 11, 10, 13, 12, 14, 15, 16, 17, 18, 19, 20, 21,
        1, 0, 1, 2, 3,
        1, 0, 1, 2, 3, 4,
        0xfff9, 0xffff, // a count below 0, as a level had it
        1, 0, 2, 1,
        3, 0, 1, 2, 3,
        1, 0, 2, 1, 3, 4, 6, 5, 8, 7, 0xffff,
        1, 0, 2, 1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    // clang-format on
    EXPECT_EQ(WithoutTile(WordsOf(out.Bytes()), 10), expected);
    EXPECT_EQ(WadMeshOf(set.Meshes, 1), Triangle());
}

TEST(SwdFile, HasItsTablesAndRecordsByteByByte)
{
    ObjectSet set;
    set.Sprites =
        SpriteTables{{{.Tile = 1, .X = 2, .Y = 3, .Width = 4, .Height = 5, .Sides = {6, 7, 8, -9}}},
                     OneTile(),
                     {{.ObjectID = 0x10002, .NegatedCount = -1, .FirstTexture = 3}}};
    ByteWriter out;
    WadProgress unwatched;
    WriteSwd(out, set, unwatched);
    EXPECT_EQ(WithoutTile(WordsOf(out.Bytes()), 14),
              (std::vector<int>{129, 0,      1, 0, 1, 0x302, 4, 5, 6,      7,
                                8,   0xfff7, 0, 3, 1, 0,     2, 1, 0xffff, 3}));
}

TEST(SfxFile, HasItsTablesByteByByte)
{
    ObjectSet set;
    SoundTables& tables = set.Sounds.emplace();
    tables.SoundMap.fill(-1);
    tables.SoundMap[369] = 0;
    tables.SoundDetails = {{.Sample = 1, .Raw = {2, 3}, .Characteristics = 4}};
    tables.SampleIndices = {0x50006};
    ByteWriter out;
    WriteSfx(out, set);
    std::vector<int> expected(369, 0xffff);
    expected.insert(expected.end(), {0, 1, 0, 1, 2, 3, 4, 1, 0, 6, 5});
    EXPECT_EQ(WordsOf(out.Bytes()), expected);
}

SoundDetail Detail(std::int16_t sample, int samples)
{
    return {.Sample = sample, .Characteristics = Word(samples << 2)};
}

TEST(SetSamples, OfOneNameHaveTheLastFileThatExists)
{
    ObjectSet set;
    set.Game = kTR2;
    SoundTables& tables = set.Sounds.emplace();
    tables.SoundMap.fill(-1);
    tables.SoundMap[7] = 1;
    // All but detail 1 are sound 0, for no slot names them.
    tables.SoundDetails = {Detail(5, 1), Detail(6, 1), Detail(7, 2), Detail(9, 1)};
    const std::vector<std::byte> files(9);
    const auto waveOf = [&](std::int32_t sample) -> std::optional<std::span<const std::byte>> {
        const auto size = static_cast<std::size_t>(sample);
        return size < 9 ? std::optional(std::span(files).first(size)) : std::nullopt;
    };
    for (int i = 0; i < 2; ++i) { // the second list takes the place of the first
        ListSetSamples(set, waveOf);
        std::vector<std::pair<std::string, std::size_t>> listed;
        for (const SetSample& sample : set.Samples)
            listed.emplace_back(sample.Name, sample.Wave.value().size());
        EXPECT_EQ(listed,
                  (std::vector<std::pair<std::string, std::size_t>>{{"TR2 Sound 0-0.wav", 7},
                                                                    {"TR2 Sound 7-0.wav", 6},
                                                                    {"TR2 Sound 0-0.wav", 7},
                                                                    {"TR2 Sound 0-1.wav", 8},
                                                                    {"TR2 Sound 0-0.wav", 7}}));
        EXPECT_EQ(set.MissingSamples, 1U);
    }
}

TEST(SetSamples, OfMoreThanAnyLevelHasAreRefused)
{
    ObjectSet set;
    set.Sounds.emplace().SoundDetails.assign(33825, Detail(0, 31));
    set.Sounds->SoundDetails.push_back(Detail(0, 1)); // 2^20 of them
    const auto none = [](std::int32_t) { return std::nullopt; };
    ListSetSamples(set, none);
    EXPECT_EQ(set.Samples.size(), std::size_t{1} << 20U);
    set.Sounds->SoundDetails.push_back(Detail(0, 1));
    EXPECT_THROW(ListSetSamples(set, none), SoundsDamaged);

    const std::vector<std::byte> mebibyte(std::size_t{1} << 20U);
    std::vector<SetSample> samples;
    for (int i = 0; i < 256; ++i)
        samples.push_back({std::to_string(i), mebibyte});
    samples.push_back(samples.back()); // one file once more
    const TempFolder folder;
    const std::string waves = folder.File("waves");
    std::filesystem::create_directories(ToPath(waves + "/0")); // in the place of the first file
    FileGroup group(folder.File("set.was"));
    group.AddFolder(waves);
    EXPECT_THROW(WriteWaves(group, waves, samples), FileFailure);
    samples.push_back({"one byte more", std::span(mebibyte).first(1)});
    EXPECT_THROW(WriteWaves(group, waves, samples), SoundsDamaged);
}

TEST(WasFile, IsCutWhereItWasPutTogether)
{
    const TempFolder folder;
    ObjectSet set;
    set.Game = kTR3;
    set.SourceTitle = "A:B.TR2";
    set.Listed = {{"a:b", "C\\D"}, {"", ""}};
    TextLines file;
    file.Open(folder.File("was"));
    WriteWas(file, set);
    file.Close();
    const auto lines = LinesOfFile(folder.File("was"));
    EXPECT_EQ(lines, (Strings{"a:b:Z:\\TOMB3\\A:B.TR2\\C\\D", ":Z:\\TOMB3\\A:B.TR2\\"}));
    EXPECT_EQ(CutWasLine(lines[1], kTR3)->SourceTitle, "A:B.TR2");
    EXPECT_EQ(CutWasLine(lines[0], kTR3)->Names.EditorName, "a:b");
    for (const char* line : {"", "a", "a:Z:\\TOMB2\\X\\b", "a:Z:\\TOMB3\\", "a:Z:\\TOMB3\\b"})
        EXPECT_FALSE(CutWasLine(line, kTR3)) << line;
    EXPECT_EQ(GameOfWas("x\r\na:Z:\\TOMB5\\"), kTR5);
    for (const char* text : {"", ":Z:\\TOMB", ":Z:\\TOMB6\\", ":Z:\\TOMB0", ":z:\\TOMB1"})
        EXPECT_EQ(GameOfWas(text), kNoLevel) << text;
}

TEST(Lists, EndEveryLineInCrLf)
{
    const auto lines = [](const std::string& text) {
        return ReadLines(std::as_bytes(std::span(text)));
    };
    EXPECT_EQ(lines(""), Strings{});
    EXPECT_EQ(lines("\r\na\r\n"), (Strings{"", "a"}));
    for (const char* text : {"a", "a\n", "\n", "a\r", "a\rb\r\n", "a\r\nb", "\r\r\n"})
        EXPECT_THROW(lines(text), ReadFailure) << text;
    EXPECT_EQ(MessageOf<ReadFailure>([&] { lines("a\r\nb\n"); }),
              "text, offset 5: line 2 doesn't end in CR LF");
    std::string most;
    for (int i = 0; i < 1 << 16; ++i)
        most += "\r\n";
    EXPECT_EQ(lines(most).size(), std::size_t{1} << 16U);
    EXPECT_THROW(lines(most + "\r\n"), ReadFailure);
    EXPECT_THROW(lines(most + "a"), ReadFailure);
}

TEST(MeshRecords, AreWalkedToTheirEndOrRefused)
{
    ScriptedHost host;
    Reporter report(host);
    WadMeshSet set;
    WadMesh mesh = Triangle();
    AppendWadMesh(set, mesh, report);
    mesh.Faces.pop_back();
    AppendWadMesh(set, mesh, report); // with two bytes that fill it up
    std::vector<std::size_t> offsets;
    const auto walk = [&] {
        offsets.clear();
        ForEachWadMesh(set, [&](std::size_t at, const WadMesh&) { offsets.push_back(at); });
    };
    walk();
    EXPECT_EQ(offsets, (std::vector<std::size_t>{0, 52}));
    EXPECT_EQ(mesh.Faces[0].TextureNumber(), 14U);
    EXPECT_EQ(Triangle().Faces[1].TextureNumber(), 5U);
    EXPECT_EQ(WadMeshOf(set, 1), mesh);
    EXPECT_EQ(MessageOf<ReadFailure>([&] { WadMeshOf(set, 2); }),
              "mesh pointer, offset 0: there is no mesh 2");
    set.MeshData.back() = std::byte{1};
    EXPECT_THROW(walk(), ReadFailure);
    for (const int count : {-1, 2, 0x7fff}) { // faces of the last mesh
        std::memcpy(&set.MeshData[52 + 24], &count, 2);
        EXPECT_THROW(WadMeshOf(set, 1), ReadFailure) << count;
    }
    mesh.Faces.push_back({.Type = 7});
    EXPECT_EQ(EndOf([&] { AppendWadMesh(set, mesh, report); }), "Unknown face type - Face 1");
}

TEST(ObjectSets, ThatAreCutShortAreRefusedWhereTheyAreRead)
{
    Conversion run(samples::MakeTinyLevel(kTR1));
    run.Host.ExpSprTicked = true;
    ASSERT_TRUE(run.Save());
    for (const char* extension : {".wad", ".swd", ".sfx", ".was"}) {
        const auto whole = ReadFile(run.Output(extension));
        for (const std::size_t size : {whole.size() - 1, whole.size() / 2, std::size_t{5}}) {
            WriteWholeFile(run.Output(extension), std::span(whole).first(size));
            EXPECT_THROW(run.Set(), ReadFailure) << extension << ' ' << size;
        }
        auto longer = whole;
        longer.push_back({});
        WriteWholeFile(run.Output(extension), longer);
        EXPECT_THROW(run.Set(), ReadFailure) << extension;
        WriteWholeFile(run.Output(extension), whole);
    }
    EXPECT_NO_THROW(run.Set());
    const auto list = ReadFile(run.Output(".was"));
    WriteWholeFile(run.Output(".was"), std::vector<std::byte>(list.size() + 2));
    EXPECT_EQ(MessageOf<ReadFailure>([&] { run.Set(); }), "list: no line tells the game");
    auto twice = list;
    twice.insert(twice.end(), list.end() - 2, list.end());
    WriteWholeFile(run.Output(".was"), twice);
    EXPECT_EQ(MessageOf<ReadFailure>([&] { run.Set(); }), "list: line 2 has no source path");
}

} // namespace

} // namespace morlik::test
