// Levels with one fault each. Whatever is wrong with a file, a load and a save end in a message or
// in a set, never in a crash.

#include "level/Readers.h"
#include "side/MainSFX_Mod.h"
#include "tests/support/Conversion.h"
#include "tests/support/HeapPeak.h"
#include "tests/support/SameSet.h"

#include <ctime>
#include <map>
#include <optional>
#include <set>

namespace morlik::test
{

namespace
{

using samples::LevelContent;
using samples::LevelFile;
using samples::Mark;
using samples::MarkKind;

/// What any file may cost: processor time and memory.
#ifdef _WIN32 // where the clock of a process is that on the wall
constexpr double kMostSeconds = 20;
#else
constexpr double kMostSeconds = 1;
#endif
constexpr std::size_t kMostHeap = std::size_t{256} << 20U;

constexpr const char* kReadError = "ReadTR -> Error reading level";

/// Loads and saves a level with a damaged part: see `PartOf`, or the whole file.
class Patient
{
public:
    explicit Patient(const LevelContent& level, bool wholeFile = false)
        : Part(wholeFile ? WriteLevel(level) : PartOf(level)),
          name_(LevelName(level.Game)),
          wrapped_(level.Game == kTR4 && !wholeFile),
          frame_(wrapped_ ? WrapTR4(level, {}) : LevelFile{})
    {
    }

    /// Treats the file with `part` in its place, which must stay within the limits. Gives the
    /// message that ended the program or the save; an empty text where there is a set.
    std::string Treat(std::span<const std::byte> part, const std::string& fault)
    {
        SCOPED_TRACE(name_ + ", " + fault);
        std::string end;
        try {
            run_.Host.Calls.clear();
            run_.Folder.Write(name_, Wrapped(part));
            ResetHeapPeak();
            const auto start = std::clock();
            end = EndOf([&] {
                LoadLevel(run_.Program, run_.Folder.File(name_));
                if (!run_.Save())
                    throw ProgramEnd(run_.Host.Messages().back().substr(std::strlen("MORLIK: ")));
            });
            EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, kMostSeconds);
            EXPECT_LT(HeapPeak(), kMostHeap);
        } catch (const std::exception& failure) {
            ADD_FAILURE() << failure.what();
        }
        return end;
    }

    /// What a fault of a count must come to: the read error, or the objects of the level without
    /// the fault, where none of them hangs on what is counted.
    void ExpectErrorOrSameObjects(std::span<const std::byte> part, const std::string& fault)
    {
        SCOPED_TRACE(name_ + ", " + fault);
        if (!good_) {
            EXPECT_EQ(Treat(Part.Bytes, "no fault"), "");
            good_ = run_.Wad();
        }
        const auto end = Treat(part, fault);
        if (end.empty() && run_.Program.Level.NumStaticMeshes < 0)
            return; // the count goes on to the set, where it can't be read back
        if (end.empty())
            EXPECT_EQ(DifferenceOf(*good_, run_.Wad()), "");
        else
            EXPECT_EQ(end, kReadError);
    }

    LevelFile Part;

private:
    std::vector<std::byte> Wrapped(std::span<const std::byte> part) const
    {
        if (!wrapped_)
            return {part.begin(), part.end()};
        const auto stream = samples::Compress(part);
        const auto sizes = frame_.Count("Level block inflated").Offset;
        const auto tail = frame_.Section("Samples").Offset;
        const std::span frame(frame_.Bytes);
        ByteWriter out;
        out.PutBytes(frame.first(sizes));
        out.Put(narrow<std::int32_t>(part.size()));
        out.Put(narrow<std::int32_t>(stream.size()));
        out.PutBytes(stream);
        out.PutBytes(frame.subspan(tail));
        return out.Bytes();
    }

    std::string name_;
    bool wrapped_;
    LevelFile frame_;
    Conversion run_;
    std::optional<ObjectSet> good_;
};

using Damage = testing::TestWithParam<VersionCode>;
INSTANTIATE_TEST_SUITE_P(AllGames, Damage, testing::ValuesIn(kGames));

TEST_P(Damage, BySoManyObjectsThatNoLevelHasThemIsAReadErrorWithItsPlace)
{
    for (const std::string place : {"moveables", "static meshes", "mesh pointers"}) {
        const std::size_t most = place == "mesh pointers" ? 65536 : 4096;
        for (const std::size_t count : {most, most + 1}) {
            auto level = samples::MakeTinyLevel(GetParam());
            if (place == "moveables")
                level.Moveables.resize(count, level.Moveables.at(0));
            else if (place == "static meshes")
                level.StaticMeshes.resize(count);
            else
                level.MeshTable.resize(count);
            Conversion run;
            EXPECT_EQ(run.Load(level), count == most) << place;
            if (count == most)
                continue;
            EXPECT_EQ(run.Host.Messages(), Strings{"MORLIK error: " + std::string(kReadError)});
            const auto& detail = run.Host.Details.at(0);
            EXPECT_TRUE(detail.starts_with(place + ", offset ")) << detail;
            EXPECT_PRED2(Has, detail, ": a count of " + std::to_string(count));
        }
    }
}

/// A level block of 63 MB of mesh data, which all compress to next to nothing. Each mesh is one of
/// vertices; the meshes that lie in it begin at its first vertices and end where it ends.
LevelContent MeshBomb()
{
    constexpr std::int16_t kVertices = 0x7fff;
    constexpr std::size_t kMeshes = 320;
    auto level = samples::MakeTinyLevel(kTR4);
    samples::MeshContent mesh;
    mesh.Vertices.resize(kVertices);
    for (std::int16_t inner = 1; inner < 4; ++inner)
        mesh.Vertices[static_cast<std::size_t>(2 * inner - 1)].Z =
            static_cast<std::int16_t>(kVertices - 2 * inner);
    level.Meshes.assign(kMeshes, mesh);
    for (std::size_t i = level.MeshTable.size(); i < 4 * kMeshes; ++i)
        level.MeshTable.push_back(i / 4);
    return level;
}

TEST(DamageOfTombRaiderIV, ByMeshesThatInflateWithoutEndCostsAMessage)
{
    constexpr std::size_t kStep = 12; // from a mesh to the next one in it
    const auto level = MeshBomb();
    auto block = WriteLevelBlock(level);
    auto at = block.Section("Mesh pointers").Offset + 4;
    for (std::size_t i = 0; i < level.MeshTable.size(); ++i, at += 4) {
        std::int32_t pointer = 0;
        std::memcpy(&pointer, block.Bytes.data() + at, sizeof(pointer));
        block.Set({.Offset = at, .Size = sizeof pointer},
                  pointer + static_cast<std::int32_t>(kStep * (i % 4)));
    }
    const auto file = WrapTR4(level, block.Bytes).Bytes;
    EXPECT_LT(file.size(), std::size_t{1} << 20U);
    Conversion run;
    block = {};
    ResetHeapPeak();
    EXPECT_TRUE(run.Load(file, "level.tr4"));
    EXPECT_PRED2(Has, EndOf([&] { run.Save(); }), "is damaged - can't continue!");
    EXPECT_LT(HeapPeak(), kMostHeap);
    EXPECT_PRED2(Has, run.Host.Details.at(0), "more than any level has");
}

TEST_P(Damage, OfACountIsAReadErrorUnlessNoObjectHangsOnIt)
{
    for (const bool rich : {false, true}) {
        const auto level =
            rich ? samples::MakeRichLevel(GetParam()) : samples::MakeTinyLevel(GetParam());
        Patient patient(level);
        for (const Mark& mark : patient.Part.Marks) {
            if (mark.Kind != MarkKind::Count)
                continue;
            const std::int64_t oneMore = patient.Part.Value(mark) + 1;
            for (const std::int64_t value : std::initializer_list<std::int64_t>{
                     -1, 0, 1, 0x7fff, 0x7fffffff, 0x80000000, oneMore}) {
                LevelFile damaged = patient.Part;
                damaged.Set(mark, value);
                const auto fault = mark.Name + " set to " + std::to_string(value);
                if (mark.Name == "Tiles32 inflated" && value == 0x7fff)
                    patient.Treat(damaged.Bytes, fault); // the tiles end there
                else
                    patient.ExpectErrorOrSameObjects(damaged.Bytes, fault);
            }
        }
    }
}

/// How the reading of a level file fails; empty where it doesn't.
std::string FailureOfReading(std::span<const std::byte> bytes, VersionCode game)
{
    constexpr std::size_t kVersionBytes = 4;
    ScriptedHost host;
    Reporter report(host);
    TrMainState state;
    state.LevelVersion = game;
    LevelData level;
    ByteReader reader(bytes);
    LevelReading reading{reader, level, state, report};
    const std::map<VersionCode, void (*)(LevelReading&)> newer{
        {kTR2, ReadTR2}, {kTR3, ReadTR3}, {kTR4, ReadTR4}, {kTR5, ReadTR5}};
    return MessageOf<ReadFailure>([&] {
        reader.Skip(kVersionBytes);
        if (newer.contains(game))
            newer.at(game)(reading);
        else
            ReadTR1(reading);
    });
}

/// Sections that go by the same name in a failure as in the samples, and two that don't.
const std::string kSections =
    "|floor data|mesh data|mesh pointers|animations|state changes|dispatches|commands|mesh trees|"
    "frames|moveables|static meshes|object textures|sprite textures|sprite sequences|cameras|"
    "sound sources|boxes|overlaps|zones|animated textures|items|ai objects|light map|palette|"
    "cinematic frames|demo data|sound map|sound details|sample data|sample indices|rooms|"
    "level head|sprite mark|tiles|";
std::string SectionOf(const Mark& mark)
{
    return mark.Name == "Sprite marker" ? "sprite mark"
           : mark.Name == "Tile counts" ? "tiles"
                                        : ToLower(mark.Name);
}

TEST_P(Damage, ByACutIsFoundWithTheSectionThatItCuts)
{
    const VersionCode game = GetParam();
    const auto level = samples::MakeRichLevel(game);
    LevelFile part = PartOf(level);
    const auto whole = part.Bytes;
    for (const Mark& mark : part.Marks) {
        // Nothing depends on what stands at the end, nor on most of the samples of V.
        if (mark.Name == "Version" || mark.Size == 0 || mark.Name.starts_with("Tail") ||
            (game == kTR5 && mark.Name.starts_with("Sample") && mark.Name != "Sample indices"))
            continue;
        for (const std::size_t size :
             {mark.Offset, mark.Offset + mark.Size / 2, mark.Offset + mark.Size - 1}) {
            part.Bytes.assign(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            const auto failure = FailureOfReading(FileOf(level, part), game);
            EXPECT_NE(failure, "") << mark.Name << ' ' << size;
            if (kSections.find('|' + SectionOf(mark) + '|') != std::string::npos) {
                EXPECT_TRUE(ToLower(failure).starts_with(SectionOf(mark) + ", offset ")) << failure;
            }
        }
    }
}

TEST_P(Damage, OfTheSmallestLevelIsFoundAtEveryLength)
{
    const auto level = samples::MakeSmallestLevel(GetParam());
    const LevelFile file = WriteLevel(level);
    // A level of V may end behind its sample indices, but not inside of a sample.
    const auto isDamaged = [&](std::size_t size) {
        if (GetParam() != kTR5)
            return true;
        const std::size_t riff = file.Section("Sample 0").Offset + 8;
        return size < file.Section("Tail").Offset || size >= riff + 4;
    };
    const auto fails = [](std::span<const std::byte> bytes) {
        return !FailureOfReading(bytes, GetParam()).empty();
    };
    for (std::size_t size = 0; size < file.Bytes.size(); ++size)
        ASSERT_EQ(fails(std::span(file.Bytes).first(size)), isDamaged(size)) << size;
    EXPECT_FALSE(fails(file.Bytes));

    if (GetParam() != kTR4)
        return;
    const LevelFile block = WriteLevelBlock(level);
    for (std::size_t size = 1; size < block.Bytes.size(); ++size)
        ASSERT_EQ(fails(WrapTR4(level, std::span(block.Bytes).first(size)).Bytes),
                  size < block.Section("Tail").Offset)
            << size;
}

/// The games whose models differ in form.
using DamageOfModels = testing::TestWithParam<VersionCode>;
INSTANTIATE_TEST_SUITE_P(Forms, DamageOfModels, testing::Values(kTR1, kTR3, kTR4, kTR5));

TEST_P(DamageOfModels, IsASetOrAKnownMessageWhateverWordItHits)
{
    constexpr std::size_t kCountBytes = 4;
    using Answers = std::set<std::string>; // "" for a set
    const Answers set{""};
    const std::vector<std::pair<const char*, Answers>> sections{
        {"Mesh data",
         {"", "Mesh 0 is damaged - can't continue!", "Unknown texture found in rectangle!"}},
        {"Mesh pointers", {"Mesh 0 is damaged - can't continue!"}},
        {"Animations", set},
        {"State changes", set},
        {"Dispatches", set},
        {"Frames", set},
        {"Moveables", set},
        {"Object textures", IsOlderGame(GetParam())
                                ? Answers{"", "ERROR! Bad texture found!"}
                                : Answers{"", kReadError, "Invalid objecttexture - Tile wrong",
                                          "Triangle texture used on rectangle!"}},
        {"Sound details", set},
        {"Sample indices", set}};
    Patient patient(samples::MakeTinyLevel(GetParam()));
    for (const auto& [name, expected] : sections) {
        const Mark section = patient.Part.Section(name);
        Answers given;
        for (auto at = section.Offset; at + 2 <= section.Offset + section.Size; at += 2) {
            for (const auto value : std::initializer_list<std::uint16_t>{0x7fff, 0x8000}) {
                LevelFile damaged = patient.Part;
                damaged.Set({.Offset = at, .Size = sizeof value}, value);
                const auto fault = name + (" at " + std::to_string(at));
                if (at < section.Offset + kCountBytes)
                    patient.ExpectErrorOrSameObjects(damaged.Bytes, fault);
                else
                    given.insert(patient.Treat(damaged.Bytes, fault));
            }
        }
        EXPECT_EQ(given, expected) << name;
    }
}

TEST(DamageOfTombRaiderIV, AroundItsStreamsIsAReadErrorAndInsideThemAnAnswer)
{
    Patient patient(samples::MakeTinyLevel(kTR4), true);
    const LevelFile& whole = patient.Part;
    for (const Mark& mark : whole.Marks) {
        for (const std::int64_t value : {-1, 0, 1, 0x7fffffff}) {
            if (mark.Kind != MarkKind::Count)
                continue;
            LevelFile damaged = whole;
            damaged.Set(mark, value);
            patient.ExpectErrorOrSameObjects(damaged.Bytes, mark.Name);
        }
    }
    const Mark& block = whole.Section("Level block");
    for (std::size_t at = block.Offset; at < block.Offset + block.Size; at += 3) {
        LevelFile damaged = whole;
        damaged.Bytes[at] ^= std::byte{0x55};
        // What a damaged stream gives is read; a byte of it may well make another texture.
        patient.Treat(damaged.Bytes, "a wrong byte at " + std::to_string(at));
    }
}

TEST(ReadMainSFX, KeepsTheSamplesInFrontOfTheFaultAndRefusesOtherFiles)
{
    const auto sounds = samples::SampleSounds();
    const LevelFile good = samples::WriteMainSfx(sounds);
    Conversion run;
    run.OpenLog();
    MainSFXState state;
    const auto read = [&](std::span<const std::byte> bytes) {
        return ReadMainSFX(run.Folder.Write("main.sfx", bytes), state, run.Program.Report);
    };
    const auto expectFirst = [&](std::size_t count, std::span<const std::byte> bytes) {
        state = {};
        EXPECT_TRUE(read(bytes));
        EXPECT_TRUE(std::ranges::equal(state.MainSFXSamples, std::span(sounds).first(count),
                                       std::ranges::equal))
            << count;
    };
    for (std::size_t i = 0; i < sounds.size(); ++i) {
        const Mark& count = good.Count("Sample " + std::to_string(i));
        for (const std::size_t cut : {count.Offset - 36, count.Offset + 4, count.Offset + 5})
            expectFirst(i, std::span(good.Bytes).first(cut));
        LevelFile damaged = good;
        damaged.Set(count, 0xffffffff);
        expectFirst(i, damaged.Bytes);
    }
    EXPECT_TRUE(run.LogLines().back().starts_with("main.sfx, offset "));
    expectFirst(sounds.size(), good.Bytes);
    EXPECT_EQ(run.Host.Messages(), Strings{});
    auto otherHead = good.Bytes;
    otherHead[3] = std::byte{'X'};
    for (const auto& bytes :
         {std::vector<std::byte>(100000), std::vector<std::byte>(),
          std::vector<std::byte>(good.Bytes.begin(), good.Bytes.begin() + 3), otherHead}) {
        run.Host.Calls.clear();
        EXPECT_FALSE(read(bytes));
        EXPECT_EQ(run.Host.Messages(),
                  Strings{"MORLIK: " + run.Folder.File("main.sfx") + " is not a main.sfx"});
        EXPECT_EQ(state.MainSFXSamples.size(), sounds.size()); // as it was
        EXPECT_EQ(state.Files.size(), 1U);
    }
}

} // namespace

} // namespace morlik::test
