// Sets of some of a level's objects: each is a good one, and its objects are those of the whole
// set.

#include "base/AnimCommands.h"
#include "check/ObjectSetCheck.h"
#include "convert/ConvertLevel.h"
#include "convert/ObjectNeeds.h"
#include "convert/UsedTextures.h"
#include "model/Animations.h"
#include "model/Skeleton.h"
#include "tests/support/Conversion.h"
#include "tests/support/RealLevels.h"

#include <cstdlib>
#include <random>

namespace morlik::test
{

namespace
{

/// A set and its pixels, to look at one object.
struct Whole
{
    explicit Whole(ObjectSet made) : Set(std::move(made)), Pixels(PixelsOf(Set.Tiles)) {}

    /// What a face shows: its corners, flags and pixels, whatever number its texture has.
    auto Look(const WadFace& face) const
    {
        const TextInfo& box = Set.Textures.at(face.TextureNumber());
        std::vector<std::uint8_t> pixels{box.FlipX, box.FlipY, box.Width, box.Height};
        for (std::size_t y = box.Y; y <= std::size_t{box.Y} + box.Height; ++y) {
            const std::size_t row = static_cast<std::size_t>(box.Tile) * kTileSide + y;
            const auto* first = &Pixels.at(row * kRowBytes + box.X * std::size_t{kPixelBytes});
            pixels.insert(pixels.end(), first, first + (box.Width + 1) * kPixelBytes);
        }
        const auto orientation =
            face.Type == kFaceTriangle ? face.Texture & 0xe000 : static_cast<int>(face.Texture < 0);
        return std::tuple(face.Type, face.Vertices, face.Flags, orientation, pixels);
    }

    ObjectSet Set;
    std::vector<std::uint8_t> Pixels;
};

void ExpectSameMesh(const Whole& all, std::size_t mesh, const Whole& some, std::size_t chosen)
{
    WadMesh expected = WadMeshOf(all.Set.Meshes, mesh);
    WadMesh found = WadMeshOf(some.Set.Meshes, chosen);
    ASSERT_EQ(found.Faces.size(), expected.Faces.size());
    for (std::size_t i = 0; i < found.Faces.size(); ++i) {
        // The whole set can't tell that its texture 0 is mirrored; in a choice it has a number.
        if (expected.Faces[i].Texture == 0 && found.Faces[i].Texture < 0)
            found.Faces[i].Texture = static_cast<std::int16_t>(-found.Faces[i].Texture);
        ASSERT_TRUE(some.Look(found.Faces[i]) == all.Look(expected.Faces[i])) << i;
    }
    found.Faces = expected.Faces = {};
    ASSERT_TRUE(found == expected);
}

/// The transitions and commands of an animation, counted from the first of its object.
std::vector<std::int64_t> Ways(const ObjectSet& set, const Animation& animation, std::size_t first)
{
    const auto own = [first](std::int16_t next) { return next - static_cast<std::int64_t>(first); };
    std::vector<std::int64_t> ways{own(animation.NextAnimation)};
    for (int i = 0; i < animation.NumStateChanges; ++i) {
        const auto& change =
            set.StateChanges.at(static_cast<std::size_t>(animation.StateChange + i));
        ways.push_back(change.StateID);
        for (int d = 0; d < change.NumAnimDispatches; ++d) {
            const auto& to =
                set.AnimDispatches.at(static_cast<std::size_t>(change.AnimDispatch + d));
            ways.insert(ways.end(), {to.Low, to.High, own(to.NextAnimation), to.NextFrame});
        }
    }
    auto at = static_cast<std::size_t>(animation.AnimCommand);
    for (int i = 0; i < animation.NumAnimCommands; ++i)
        for (auto words = CommandLength(set.AnimCommands, at); words > 0; --words)
            ways.push_back(set.AnimCommands.at(at++));
    return ways;
}

void ExpectSameMoveable(const Whole& all, std::size_t index, const Whole& some, std::size_t chosen)
{
    const Moveable& expected = all.Set.Moveables.at(index);
    const Moveable& found = some.Set.Moveables.at(chosen);
    ASSERT_EQ(found.ObjectID, expected.ObjectID);
    ASSERT_EQ(found.NumMeshes, expected.NumMeshes);
    ASSERT_EQ(some.Set.Listed.at(chosen).EditorName, all.Set.Listed.at(index).EditorName);
    for (int i = 0; i < found.NumMeshes; ++i)
        ExpectSameMesh(all, static_cast<std::size_t>(expected.StartingMesh + i), some,
                       static_cast<std::size_t>(found.StartingMesh + i));
    ASSERT_TRUE(SkeletonOf(some.Set, chosen) == SkeletonOf(all.Set, index));
    const auto whole = AnimationsOf(all.Set, index);
    const auto own = AnimationsOf(some.Set, chosen);
    ASSERT_EQ(own.Count, whole.Count);
    for (std::size_t i = 0; i < own.Count; ++i) {
        const auto a = AnimationOf(all.Set, whole, i);
        const auto b = AnimationOf(some.Set, own, i);
        const auto frames = [](const ObjectSet& set, const ModelAnimation& animation) {
            return std::span(set.Frames)
                .subspan(animation.FirstWord, animation.NumFrames * animation.Record.FrameSize);
        };
        ASSERT_TRUE(std::ranges::equal(frames(all.Set, a), frames(some.Set, b))) << i;
        ASSERT_EQ(Ways(some.Set, b.Record, own.First), Ways(all.Set, a.Record, whole.First)) << i;
        ASSERT_EQ(b.Record.FrameStart, a.Record.FrameStart);
        ASSERT_EQ(b.Record.Speed, a.Record.Speed);
    }
}

ObjectSet SetOf(Session& program, std::optional<ObjectChoice> choice)
{
    auto set = ConvertLevel(program.Level, program.Names, "LEVEL", {.Objects = std::move(choice)},
                            program.Report);
    return std::move(set).value();
}

/// Calls `visit` with each marked object and its place among those that `of` marks.
template <class Visit>
void ForMarked(const std::vector<bool>& marks, const std::vector<bool>& of, Visit visit)
{
    std::size_t place = 0;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (marks[i]) {
            ASSERT_NO_FATAL_FAILURE(visit(place)) << "object " << i;
        }
        place += of[i] ? 1U : 0U;
    }
}

/// A choice as a set, which is good and has what the one of all objects that fit has.
void ExpectGood(Session& program, const Whole& all, const ObjectChoice& fitting,
                const ObjectChoice& choice)
{
    const Whole some(SetOf(program, choice));
    const auto complaints = check::CheckWad(some.Set);
    ASSERT_TRUE(complaints.empty()) << testing::PrintToString(complaints);
    // One may be spare, where all are mirrored.
    EXPECT_LE(some.Set.ColourBase() - CountTextures(NeedsOf(program.Level), choice), 1);
    std::size_t chosen = 0;
    ASSERT_NO_FATAL_FAILURE(ForMarked(choice.Moveables, fitting.Moveables, [&](std::size_t place) {
        ExpectSameMoveable(all, place, some, chosen++);
    }));
    ASSERT_EQ(some.Set.Moveables.size(), chosen);
    std::size_t statics = 0;
    ASSERT_NO_FATAL_FAILURE(
        ForMarked(choice.StaticMeshes, fitting.StaticMeshes, [&](std::size_t place) {
            const auto mesh = static_cast<std::size_t>(some.Set.StaticMeshes.at(statics++).Mesh);
            const auto expected = static_cast<std::size_t>(all.Set.StaticMeshes.at(place).Mesh);
            ExpectSameMesh(all, expected, some, mesh);
        }));
    ASSERT_EQ(some.Set.StaticMeshes.size(), statics);
}

/// Choices at random of each level: those that the environment asks for (`./run choices`), or a
/// few.
int NumRandomChoices()
{
    const char* wanted = std::getenv("MORLIK_CHOICES"); // NOLINT(concurrency-mt-unsafe)
    return wanted != nullptr ? std::atoi(wanted) : 8;   // NOLINT(cert-err34-c): 0 for no number
}

/// Each moveable alone, and some choices at random.
void ExpectChoicesGood(Session& program)
{
    ObjectChoice fitting = ChooseAll(program.Level);
    FitChoice(NeedsOf(program.Level), fitting, kMostTextures);
    const Whole all(SetOf(program, fitting.IsAll() ? std::nullopt : std::optional(fitting)));
    EXPECT_EQ(PixelsOf(SetOf(program, fitting).Tiles), all.Pixels);
    ObjectChoice choice = fitting;
    const auto mark = [&choice](bool moveables, bool statics) {
        choice.Moveables.assign(choice.Moveables.size(), moveables);
        choice.StaticMeshes.assign(choice.StaticMeshes.size(), statics);
    };
    for (std::size_t i = 0; i < choice.Moveables.size(); ++i) {
        if (!fitting.Moveables[i])
            continue;
        mark(false, false);
        choice.Moveables[i] = true;
        ASSERT_NO_FATAL_FAILURE(ExpectGood(program, all, fitting, choice)) << "moveable " << i;
    }
    std::mt19937 random(4); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same choices each time
    for (int i = 0; i < NumRandomChoices(); ++i) {
        constexpr std::size_t kParts = 8;
        const std::size_t taken = 1 + random() % (kParts - 1); // of so many objects
        const auto choose = [&](const std::vector<bool>& of, std::vector<bool>& marks) {
            for (std::size_t object = 0; object < marks.size(); ++object)
                marks[object] = of[object] && random() % kParts < taken;
        };
        choose(fitting.Moveables, choice.Moveables);
        choose(fitting.StaticMeshes, choice.StaticMeshes);
        ASSERT_NO_FATAL_FAILURE(ExpectGood(program, all, fitting, choice)) << "choice " << i;
    }
}

using ChosenObjects = testing::TestWithParam<VersionCode>;

TEST_P(ChosenObjects, OfSamplesAreThoseOfTheWholeSet)
{
    Conversion run(samples::MakeRichLevel(GetParam()));
    ExpectChoicesGood(run.Program);

    // No object is left out in vain.
    const ObjectNeeds needs = NeedsOf(run.Program.Level);
    ObjectChoice choice = ChooseAll(run.Program.Level);
    const std::size_t most = CountTextures(needs, choice) / 2;
    const auto leftOut = FitChoice(needs, choice, most);
    EXPECT_LE(CountTextures(needs, choice), most);
    ASSERT_FALSE(leftOut.empty());
    const ObjectPlace& last = leftOut.back();
    (last.IsStatic ? choice.StaticMeshes : choice.Moveables)[last.Index] = true;
    EXPECT_GT(CountTextures(needs, choice), most);

    choice.Moveables.assign(choice.Moveables.size(), false); // and so nothing makes a sound
    const auto counts = SetOf(run.Program, choice).EmptyCounts;
    EXPECT_EQ(counts.SoundDetails, 0);
    EXPECT_EQ(counts.SampleIndices, 0);
}

INSTANTIATE_TEST_SUITE_P(Games, ChosenObjects, testing::ValuesIn(kGames));

TEST(RealChoices, OfRealLevelsAreThoseOfTheWholeSet)
{
    auto levels = RealLevels();
    if (NumRandomChoices() > 8) // in a long run
        for (const char* below : {"modern", "extended"})
            for (const std::string& level : RealLevels(below))
                levels.push_back(level);
    if (levels.empty())
        GTEST_SKIP() << "no real levels here";
    for (const std::string& level : levels) {
        SCOPED_TRACE(level);
        Conversion run;
        LoadLevel(run.Program, level);
        ExpectChoicesGood(run.Program);
    }
}

} // namespace

} // namespace morlik::test
