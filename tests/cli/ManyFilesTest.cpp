// Commands that take many files and folders, up to each line that they print.

#include "cli/ManyFiles.h"

#include "cli/Columns.h"
#include "cli/ProgressBar.h"
#include "samples/Project.h"
#include "set/ReadSet.h"
#include "tests/cli/RunCli.h"

#include <nlohmann/json.hpp>

namespace morlik::test
{

namespace
{

using nlohmann::json;

/// A line at a time, as a reader sees them that the program's end cuts off.
std::vector<json> LinesOf(const Ran& ran)
{
    std::vector<json> lines;
    std::istringstream in(ran.Out);
    for (std::string line; std::getline(in, line);)
        lines.push_back(json::parse(line));
    return lines;
}

Strings Events(const std::vector<json>& lines)
{
    Strings events;
    for (const json& line : lines) {
        EXPECT_EQ(line["schema"], 2);
        events.push_back(line["event"]);
    }
    return events;
}

/// Levels in folders, one of them broken, and what is none.
class ManyFilesTest : public CliTest
{
protected:
    ManyFilesTest()
    {
        for (const char* folder : {"in/b", "in/a/deep", "in/.morlik-set"})
            std::filesystem::create_directories(ToPath(File(folder)));
        Write("in/b/one.tr2", Read("l2level.tr2"));
        Write("in/a/deep/one.TR4", Read("l4level.tr4"));
        Write("in/.morlik-set/half.phd", Read("l4level.tr4"));
        WriteText("in/a/bad.phd", "TR4c: encrypted");
        WriteText("in/readme.txt", "none");
        Write("in/z.prj", samples::WriteProject(samples::MakeProject()).Bytes);
    }
};

TEST_F(ManyFilesTest, GoThroughFoldersAndTellEachFileInALine)
{
    const auto ran = Expect(1, "convert -r %in -d %out -j 2 --json-lines");
    const auto lines = LinesOf(ran);
    EXPECT_EQ(Events(lines), (Strings{"not_converted", "converted", "converted", "end"}));
    EXPECT_EQ(WithSlashes(lines[1]["set"]), WithSlashes(File("out/a/deep/one.was")))
        << "sets keep their folders";
    EXPECT_EQ(lines[1]["game"], 4);
    EXPECT_EQ(lines[3]["begun"], 3);
    Expect(0, "convert %in/b/one.tr2 -d %flat");
    EXPECT_TRUE(Exists("flat/one.was"));

    const auto again = Expect(1, "convert -r %in -d %out --skip-existing");
    EXPECT_PRED2(Has, again.Out, "one.TR4: skipped, there is");
    EXPECT_EQ(Expect(0, "convert %in/b/one.tr2 -d %out/b --skip-existing -q").Out, "");
    EXPECT_EQ(Expect(0, "convert %in/b/one.tr2 -d %quiet -q").Out, "");

    const std::string note = "  note: There are no WAV files: the set was saved without main.sfx\n";
    EXPECT_EQ(WithSlashes(Run("check -r %out").Out),
              WithSlashes(Filled("%out/a/deep/one.was: good\n%out/b/one.was: good\n" + note)));
    std::filesystem::remove(ToPath(File("out/b/one.swd")));
    EXPECT_EQ(WithSlashes(Run("check -q -r %out").Out),
              WithSlashes(Filled("%out/b/one.was: NOT good\n  missing: the .swd file\n" + note)));
    const auto checked = json::parse(Expect(1, "check -r --json %out").Out);
    EXPECT_EQ(checked["files"][0]["good"], true);
    EXPECT_EQ(checked["files"][1]["missing"], json{".swd"});
    EXPECT_EQ(checked["files"][1]["game"], 2);
    EXPECT_EQ(Events(LinesOf(Run("info --json-lines -r %in"))),
              (Strings{"unreadable", "told", "told", "told", "end"}));
    EXPECT_PRED2(Has, Run("info %1 %2").Out, "\n\nfile: ");
    Expect(2, "check -r %in", "Can't find a file in");
    Expect(2, "info %0 --json --json-lines", "--json");
    Expect(2, "check %a.tr4", "a set is named by its list");
}

TEST_F(ManyFilesTest, FindObjects)
{
    Expect(0, "convert %2 -o %in/made.was");
    const std::string level = "%in/b/one.tr2\t";
    const std::string set = "%in/made.was\t";
    const std::string other = "%in/a/deep/one.TR4\t";
    const std::string fan = "moveable\t95\tAir fan\t2\t2\t9\n";
    const std::string crate = "moveable\t67\tMovable cubical block (pushable)\t1\t0\t2\n";
    const std::string plant = "static\t0\tPLANT0\t1\t0\t1\n";
    const std::vector<std::tuple<std::string, int, std::string, std::string>> rows{
        {"air?fan %in/b/one.tr2", 0, level + fan, ""},
        {"67 90-99,static:PLANT0 %in/b/one.tr2 %in/made.was", 0,
         level + crate + level + fan + level + plant + set + crate + set + fan + set + plant, ""},
        {"--sound 17 -r %in", 0,
         other + "sound\t17\t-\t-\t-\t-\n" + level + "sound\t17\t-\t-\t-\t-\n" + set +
             "sound\t17\t-\t-\t-\t-\n",
         ""},
        {"LARRA -r %in", 1, "", ""},
        {"LARRA %none.tr2", 2, "", "none of the words is a file or a folder"},
        {"air?fan %none.tr2 %in/b/one.tr2", 0, level + fan, "none.tr2: MORLIK error: Can't open"},
        {", %in/b/one.tr2", 2, "", "names no object"},
        {"--same-as %none.tr2:LARA %in/b/one.tr2", 2, "", "is not LEVEL:NAME"},
        {"--same-as %2:LARRA %in/b/one.tr2", 2, "", "near: LARA"},
        {"-q LARA -r %in", 0, "", ""},
        {"LARA %in/a/bad.phd", 1, "", "bad.phd: MORLIK: Unknown level version - 0x63345254 If"},
    };
    for (const auto& [words, status, out, told] : rows)
        EXPECT_EQ(WithSlashes(Expect(status, "find " + words, told).Out), WithSlashes(Filled(out)))
            << words;
    // The same meshes in the level, in its set and, by chance of the sample, in other games.
    const auto lines = LinesOf(Run("find --same-as %2:static:PLANT0 --json-lines -r %in"));
    Strings files;
    for (const json& line : lines)
        if (line["event"] == "hit") {
            EXPECT_EQ(line["kind"], "static");
            files.push_back(WithSlashes(line["file"]));
        }
    for (const char* file : {"in/b/one.tr2", "in/made.was"})
        EXPECT_NE(std::ranges::find(files, WithSlashes(File(file))), files.end()) << file;
}

TEST(ProgressBar, FitsTheLineAndNamesWhatItDoes)
{
    std::ostringstream out;
    std::ostringstream errors;
    const auto drawn = [&errors] { return std::exchange(errors, {}).str(); };
    for (const std::size_t columns : {4U, 20U, 30U, 50U, 80U, 200U}) {
        const cli::Streams streams{out, errors, true, columns};
        const Strings names{"folder/a.tr4", "folder/\u57ce l\u00f6we with a long name.tr4"};
        cli::ProgressBar bar(streams, names);
        bar.Set(1, 50);
        const std::string line = drawn();
        EXPECT_LT(cli::Width(line), columns + 1) << line; // a '\r' stands before it
        if (columns == 200) {
            EXPECT_EQ(line, "\r[" + std::string(10, '#') + std::string(30, ' ') +
                                "] 25 %  0 of 2  \u57ce l\u00f6we with a long name.tr4");
        } else if (columns == 50) {
            EXPECT_TRUE(line.ends_with("  0 of 2  e with a long name.tr4")) << line;
        } else if (columns == 30) {
            EXPECT_TRUE(line.ends_with("  0 of 2")) << line;
        }
        bar.Set(1, 40); // a save goes back to 0 at its end
        EXPECT_EQ(drawn(), "");
        bar.Around([&errors] { errors << "text"; });
        const std::string wiped = '\r' + std::string(cli::Width(line) - 1, ' ') + '\r';
        EXPECT_EQ(drawn(), wiped + "text" + line);
        bar.Set(1, 100);
        bar.Set(0, 100);
        bar.Around([] {});
        drawn();
        bar.Around([] {});
        EXPECT_EQ(drawn(), "") << "nothing is left to show";
    }
    const Strings name{"a.tr4"};
    cli::ProgressBar({out, errors, false}, name).Set(0, 50);
    EXPECT_EQ(drawn(), "");
}

TEST(WorkOnFiles, TellsWhatAWorkThrowsAndGoesOn)
{
    std::ostringstream out;
    std::ostringstream errors;
    const auto work = [](std::size_t file, const cli::OnProg&) {
        if (file == 0)
            throw std::bad_alloc();
        return cli::FileOutcome{.Text = "good\n"};
    };
    const cli::Streams streams{out, errors, false};
    EXPECT_EQ(cli::WorkOnFiles({"a", "b"}, {}, streams, work), cli::kFailed);
    EXPECT_EQ(out.str(), "good\n");
    EXPECT_PRED2(Has, errors.str(), "a:\n  MORLIK error: There is not enough memory\n");
    cli::ManyOptions lines;
    lines.JsonLines = true;
    EXPECT_EQ(cli::WorkOnFiles({"a"}, lines, streams, work), cli::kFailed);
    EXPECT_PRED2(Has, out.str(),
                 R"({"schema":2,"event":"failed","file":"a","messages":["MORLIK error: )");
}

} // namespace

} // namespace morlik::test
