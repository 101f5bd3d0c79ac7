// The commands of morlik-cli, from the words of a command line to what is printed and written.

#include "cli/MainSFX.h"
#include "platform/Platform.h"
#include "samples/Project.h"
#include "tests/cli/RunCli.h"
#include "tests/support/HeapPeak.h"

#include <nlohmann/json.hpp>

namespace morlik::test
{

namespace
{

using nlohmann::json;

/// What is told of the single file of a command.
json FileOf(const Ran& ran)
{
    const auto told = json::parse(ran.Out);
    EXPECT_EQ(told["schema"], 2);
    EXPECT_EQ(told["files"].size(), 1U);
    return told["files"][0];
}

TEST_F(CliTest, TellsTimesAndKeepsALog)
{
    const auto told = FileOf(Run("convert -d %sets %0 --json --timings"));
    EXPECT_GT(told["milliseconds"]["convert"], 0);
    const auto logged = Run("convert %4 -o %log.was --log %log --timings", true);
    EXPECT_PRED2(Has, logged.Out, "log.was\n  read ");
    EXPECT_PRED2(Has, logged.Errors, "[####"); // the bar of a terminal
    const auto lines = LinesOfFile(File("log"));
    for (const char* line : {"MORLIK v1.6", "Loading TR4Objects.dat", "Loading level", "Saving WAS",
                             "Writing WAS file"})
        EXPECT_EQ(std::ranges::count(lines, line), 1) << line;
}

#ifndef _WIN32 // there one name stands for all

TEST_F(CliTest, TakesTheFirstOfSeveralMainSfx)
{
    std::filesystem::create_directories(ToPath(File("sfx/below")));
    // In their order; the plain name goes before all others.
    const Strings names{"main.sfx", "MAIN.SFX", "MAIN.SFx", "MAIN.sfx", "MaiN.SFX",
                        "Main.sfx", "mAIN.sfx", "maiN.SFX", "main.SFX"};
    for (std::size_t i = 0; i < names.size(); ++i)
        WriteWholeFile(File("sfx/" + names[i * 4 % names.size()]), {});
    for (const std::string& name : names) {
        for (const char* level : {"sfx/a.tr2", "sfx/below/a.tr2"})
            EXPECT_EQ(cli::FindMainSFX(File(level)), File("sfx/" + name));
        std::filesystem::remove(ToPath(File("sfx/" + name)));
    }
    EXPECT_EQ(cli::FindMainSFX(File("sfx/a.tr2")), File("MAIN.Sfx"));
    std::filesystem::create_directory(ToPath(File("sfx/main.sfx"))); // a folder is none
    EXPECT_EQ(cli::FindMainSFX(File("sfx/a.tr2")), File("MAIN.Sfx"));
    EXPECT_EQ(cli::FindMainSFX(File("sfx/below/a.tr2")), "");
}

#endif

TEST_F(CliTest, WritesNoSetInThePlaceOfItsOwnFilesNorALogInThatOfTheSet)
{
    Expect(2, "convert %0 -o " + FromPath(ProgramFolder() / "morlik.was"));
    EXPECT_EQ(
        RunCli({"convert", Levels[0], "-o", File("a.was"), "--log", File("a Info.txt")}).Status, 2);
    EXPECT_FALSE(Exists("a.was"));
}

TEST_F(CliTest, TellsHowItIsUsed)
{
    Expect(2, "", "Run with --help for more information.\n");
    for (const char* line : {"--help", "find --help"})
        EXPECT_PRED2(Has, Expect(0, line).Out, "Exit status: 0 all good") << line;
}

TEST_F(CliTest, TellsWhatIsInAFile)
{
    for (const std::int16_t texture :
         std::initializer_list<std::int16_t>{99, 0}) { // none, one for rectangles
        auto damaged = samples::MakeTinyLevel(kTR4);
        damaged.Meshes[0].Triangles = {{{0, 1, 2}, texture}};
        Write("bad.tr4", damaged);
        EXPECT_PRED2(Has, Expect(1, "info %bad.tr4").Out, "\ntextures used: unknown\n");
    }
    auto horizon = samples::MakeTinyLevel(kTR2); // converts as long as it isn't repainted
    horizon.Moveables[0].ObjectID = 254;
    horizon.Meshes[0].ColouredRectangles = {{{99, 0, 1, 2}, 1}};
    Write("horizon.tr2", horizon);
    Expect(0, "info %horizon.tr2");

    Expect(1, "info [gone]", "open ./[gone]:");
    Expect(1, "info gone]", "open gone]:");
}

TEST_F(CliTest, MakesNoSheetOfNothing)
{
#ifdef MORLIK_PNG
    Write("empty.tr4", samples::MakeTinyLevel(kTR4)); // no tiles of rooms
    Expect(1, "sheet %empty.tr4 %b.PNG", "MORLIK: There is nothing to show in a PNG file\n");
#else
    Expect(2, "sheet %3 %a.PNG");
#endif
}

/// Whether a terminal shows all of a text as it stands.
bool IsPrintable(std::string text)
{
    std::erase(text, '\n');
    return Printable(text) == text;
}

#ifndef _WIN32 // whose names hold no line breaks
TEST_F(CliTest, ShowsANameThatForgesALine)
{
    const std::string name = "two\nlines\x1b\xc2\x9b: saved as good.was";
    const std::string shown = "two\\nlines\\x1B\\x9B: saved as good.was";
    const auto level = File(name + ".phd");
    Write(name + ".phd", ReadFile(Levels[0]));
    const auto ran = RunCli({"convert", level, "-d", File("sets")});
    EXPECT_EQ(ran.Status, 1);
    EXPECT_EQ(ran.Out, "");
    EXPECT_EQ(ran.Errors, File(shown) + ".phd: not converted, or not wholly\n" +
                              "  MORLIK: A name with a line break can't stand in the list of a " +
                              "set: " + shown + ".was\n");
    EXPECT_EQ(RunCli({"convert", level, "-o", File("good.was")}).Status, 1);
    EXPECT_FALSE(Exists("good.wad"));
    std::filesystem::create_directory(ToPath(File("in\ntwo"))); // a folder is in no list
    const auto good = RunCli({"convert", Levels[0], "-o", File("in\ntwo/a.was"), "--json"});
    EXPECT_EQ(good.Status, 0);
    EXPECT_EQ(FileOf(good)["set"], File("in\ntwo/a.was"));

    const auto text = RunCli({"info", level});
    EXPECT_TRUE(text.Out.starts_with("file: " + File(shown) + ".phd\n")) << text.Out;
    const auto told = RunCli({"info", level, "--json"});
    EXPECT_TRUE(IsPrintable(told.Out));
    EXPECT_EQ(FileOf(told)["file"], level);
    for (const Strings& words :
         {Strings{"info", File("gone\n\x7f")}, Strings{"sheet", File("gone\n\x7f"), File("a.tga")},
          Strings{"check", File("gone\n\x7f.was")}, Strings{"gone\n\x7f"}, Strings{"--gone\n\x7f"},
          Strings{"convert", File("gone\n\x7f"), "-o", "gone\n\x7f"},
          Strings{"convert", File("gone\n\x7f"), "-o", File("a.was")}}) {
        const auto errors = RunCli(words).Errors;
        EXPECT_TRUE(IsPrintable(errors)) << errors;
        EXPECT_EQ(errors.find("\n\x7f"), std::string::npos);
    }
}
#endif

TEST_F(CliTest, ShowsNoOrdersToTheTerminal)
{
    auto project = samples::MakeProject();
    project.Rooms[0].Name = "one\x80\x7f\nL\xf6we\xa0\xa9 ";
    project.Rooms[0].BlockColumns = 12;
    Write("a.prj", samples::WriteProject(project).Bytes);
    EXPECT_PRED2(Has, Run("info %a.prj").Out,
                 "       0  one\\x80\\x7F\\nL\u00f6we\u00a0\u00a9       12     2       14\n");
    const auto told = Run("info %a.prj --json");
    EXPECT_TRUE(IsPrintable(told.Out));
    EXPECT_PRED2(Has, told.Out, "we\xc2\xa0\xc2\xa9\"");
    EXPECT_EQ(FileOf(told)["rooms"][0]["name"], "one\xc2\x80\x7f\nL\xc3\xb6we\xc2\xa0\xc2\xa9");

    Expect(0, "convert %0 -o %a.was");
    WriteText("a.sam", "\x1b[2J\xc2\x9bgood\r\n");
    const auto checked = Run("check %a.was").Out;
    EXPECT_PRED2(Has, checked, "\"\\x1B[2J\\x9Bgood\"");
    EXPECT_TRUE(IsPrintable(checked));
}

TEST_F(CliTest, PrintsTwentyMessagesOfAKindAndLogsThemAll)
{
    auto level = samples::MakeTinyLevel(kTR1);
    // Rectangles whose right side lies left of the left one: two messages each.
    level.ObjectTextures.resize(
        101, {.Corners = {
                  {{1, 200, 1, 0}, {0xff, 100, 1, 0}, {0xff, 100, 0xff, 9}, {1, 200, 0xff, 9}}}});
    Write("a.phd", level);
    const auto errors = Run("convert %a.phd -o %a.was").Errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 22) << errors;
    EXPECT_PRED2(Has, errors,
                 "  MORLIK: There are 180 more messages like these, not shown: no log is kept.\n");
    Run("convert %a.phd -o %a.was --log %log");
    const auto lines = LinesOfFile(File("log"));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "ConvertTextInfo -> Error reading texture100"),
              2);
}

TEST_F(CliTest, TellsOfShortMemory)
{
    Expect(0, "convert %0 -o %a.was");
    const ShortMemory memory(std::size_t{16} << 10U);
    for (const char* line : {"info %0", "sheet %0 %a.tga", "sounds %0 %waves", "info %MAIN.Sfx",
                             "check %a.was", "convert %0 %1 %4 -d %sets --jobs 3"})
        Expect(1, line, "MORLIK error: There is not enough memory\n");
}

} // namespace

} // namespace morlik::test
