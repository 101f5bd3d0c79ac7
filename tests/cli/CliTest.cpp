// The commands of morlik-cli, from the words of a command line to what is printed and written.

#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/MainSFX.h"
#include "cli/ProgressBar.h"
#include "picture/TGA_Mod.h"
#include "platform/Platform.h"
#include "samples/MainSfx.h"
#include "samples/Project.h"
#include "tests/cli/RunCli.h"
#include "tests/support/Conversion.h"
#include "tests/support/HeapPeak.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>

#ifdef MORLIK_PNG
#include <png.h>
#endif

namespace morlik::test
{

namespace
{

using nlohmann::json;

/// A text with one sign between the folders of its paths: where the system takes two, the program
/// leaves those of the user and puts its own behind them.
std::string WithSlashes(std::string text)
{
#ifdef _WIN32
    std::replace(text.begin(), text.end(), '\\', '/');
#endif
    return text;
}

/// A folder with levels of all games, a main.sfx in other letters, and room for sets.
class CliTest : public testing::Test
{
protected:
    CliTest()
    {
#ifdef _WIN32
        _putenv_s("MORLIK_FOLDER", MORLIK_DATA_FOLDER);
#else
        setenv("MORLIK_FOLDER", MORLIK_DATA_FOLDER, 1); // NOLINT(concurrency-mt-unsafe)
#endif
        for (const VersionCode game : kGames) {
            // Not one sum: g++ 12 at -O3 sees strings overlap where a temporary is added to "l".
            std::string name = "l";
            name += DigitsOf(game) + LevelName(game);
            Levels.push_back(folder_.File(name));
            WriteWholeFile(Levels.back(), WriteLevel(samples::MakeRichLevel(game)).Bytes);
        }
        WriteWholeFile(File("MAIN.Sfx"), samples::WriteMainSfx(samples::SampleSounds()).Bytes);
    }

    std::string File(const std::string& name) const
    {
        return folder_.File(name);
    }

    /// All files below a folder by their names.
    std::map<std::string, std::vector<std::byte>> FilesOf(const std::string& name) const
    {
        std::map<std::string, std::vector<std::byte>> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(ToPath(File(name))))
            if (entry.is_regular_file())
                files[WithSlashes(FromPath(entry.path()).substr(File(name).size()))] =
                    ReadFile(FromPath(entry.path()));
        return files;
    }

    Strings Levels;

private:
    TempFolder folder_;
};

TEST_F(CliTest, ConvertsManyLevelsToTheSameFilesAsOneByOne)
{
    std::filesystem::create_directory(ToPath(File("single")));
    for (const std::string& level : Levels) {
        const auto stem = FileTitle(level).substr(0, FileTitle(level).size() - 4);
        const auto ran = RunCli({"convert", level, "-o", File("single/" + stem + ".was"),
                                 "--main-sfx", File("MAIN.Sfx"), "--export-sprites"});
        EXPECT_EQ(ran.Status, 0) << ran.Errors;
    }
    for (const char* jobs : {"1", "3"}) {
        const std::string folder = std::string("all") + jobs;
        Strings words{"convert",          "-d",     File(folder), "--main-sfx", "auto",
                      "--export-sprites", "--jobs", jobs};
        words.insert(words.end(), Levels.begin(), Levels.end());
        const auto ran = RunCli(words);
        EXPECT_EQ(ran.Status, 0);
        EXPECT_EQ(ran.Errors, "");
        EXPECT_EQ(std::count(ran.Out.begin(), ran.Out.end(), '\n'), 6);
        EXPECT_LT(ran.Out.find("l1level"), ran.Out.find("l5level")); // in the order of the words
        EXPECT_EQ(FilesOf(folder), FilesOf("single"));
    }
    for (const auto& entry : std::filesystem::directory_iterator(ToPath(File("all1"))))
        if (entry.path().extension() == ".was") {
            const auto checked = RunCli({"check", FromPath(entry.path())});
            EXPECT_EQ(checked.Status, 0) << checked.Out << checked.Errors;
        }
}

TEST_F(CliTest, OneBadLevelDoesNotStopTheOthers)
{
    WriteWholeFile(File("bad.phd"), std::as_bytes(std::span("TR4c: encrypted")));
    const Strings words{"convert", "-d",         File("sets"), File("bad.phd"),
                        Levels[0], "--json",     "--timings",  File("gone-\u00f6.tr4"),
                        "",        "--main-sfx", "auto",       "--jobs",
                        "3"};
    const auto ran = RunCli(words);
    EXPECT_EQ(ran.Status, 1);
    EXPECT_NE(ran.Out.find("gone-\u00f6.tr4"), std::string::npos); // not as \\u00f6
    const auto told = json::parse(ran.Out);
    ASSERT_EQ(told.size(), 4U);
    EXPECT_FALSE(told[0]["complete"]);
    EXPECT_NE(told[0]["messages"][0].get<std::string>().find("Unknown level version"),
              std::string::npos);
    EXPECT_NE(told[0]["messages"].back().get<std::string>().find("has encrypted this level"),
              std::string::npos);
    EXPECT_TRUE(told[1]["complete"]);
    EXPECT_EQ(told[1]["game"], 1);
    EXPECT_GT(told[1]["milliseconds"]["convert"], 0);
    EXPECT_NE(told[2]["messages"][0].get<std::string>().find("gone-"), std::string::npos);

    const auto text = RunCli({"convert", File("bad.phd"), "-o", File("bad.was")}, true);
    EXPECT_EQ(text.Out, "");
    EXPECT_NE(text.Errors.find("bad.phd: not converted, or not wholly\n  MORLIK: Unknown"),
              std::string::npos);
    EXPECT_NE(text.Errors.find("\n  If this is a TR level"), std::string::npos);
    const auto logged = RunCli(
        {"convert", Levels[4], "-o", File("log.was"), "--log", File("log"), "--timings"}, true);
    EXPECT_EQ(logged.Status, 0);
    EXPECT_NE(logged.Out.find("log.was\n  read "), std::string::npos) << logged.Out;
    EXPECT_NE(logged.Errors.find("[####"), std::string::npos); // the bar of a terminal
    const auto lines = LinesOfFile(File("log"));
    for (const char* line : {"MORLIK v1.6", "Loading TR4Objects.dat", "Loading level", "Saving WAS",
                             "Writing WAS file"})
        EXPECT_EQ(std::ranges::count(lines, line), 1) << line;
}

TEST(ProgressBar, GoesUpToTheLastPercentAndAway)
{
    std::ostringstream out;
    std::ostringstream errors;
    const auto drawn = [&errors] { return std::exchange(errors, {}).str(); };
    const auto picture = [](std::size_t full, const std::string& percent) {
        return "\r[" + std::string(full, '#') + std::string(40 - full, ' ') + "] " + percent + " %";
    };
    const std::string wiped = '\r' + std::string(48, ' ') + '\r';
    const cli::Streams streams{out, errors, true};
    {
        cli::ProgressBar bar(streams, 2);
        bar.Set(0, 0);
        EXPECT_EQ(drawn(), picture(0, "0"));
        bar.Around([] {});
        EXPECT_EQ(drawn(), wiped + picture(0, "0"));
        bar.Set(0, 51);
        EXPECT_EQ(drawn(), picture(10, "25"));
        bar.Set(0, 40); // a save goes back to 0 at its end
        EXPECT_EQ(drawn(), "");
        bar.Around([&errors] { errors << "text"; });
        EXPECT_EQ(drawn(), wiped + "text" + picture(10, "25"));
        bar.Set(1, 300);
        EXPECT_EQ(drawn(), picture(30, "75"));
        bar.Set(0, 99);
        EXPECT_EQ(drawn(), picture(39, "99"));
        bar.Set(0, 100);
        EXPECT_EQ(drawn(), "");
    }
    EXPECT_EQ(drawn(), wiped);
    const cli::Streams file{out, errors, false};
    cli::ProgressBar(file, 1).Set(0, 50);
    EXPECT_EQ(drawn(), "");
}

TEST_F(CliTest, TellsWhereSoundsAreMissing)
{
    const auto errors = [&](const Strings& choice) {
        Strings words{"convert", Levels[2], "-o", File("a.was")};
        words.insert(words.end(), choice.begin(), choice.end());
        const auto ran = RunCli(words);
        EXPECT_EQ(ran.Status, 0);
        EXPECT_EQ(RunCli({"check", File("a.was")}).Status, 0);
        std::filesystem::remove_all(ToPath(File("a-Sounds")));
        return ran.Errors;
    };
    EXPECT_EQ(errors({"--main-sfx", "auto"}), "");
    std::filesystem::create_directories(ToPath(File("below/more")));
    WriteWholeFile(File("below/a.tr2"), ReadFile(Levels[2]));
    for (const char* level : {"below/a.tr2", "below/./a.tr2", "below/more/../a.tr2"})
        EXPECT_EQ(
            RunCli({"convert", File(level), "-d", File("new/sets"), "--main-sfx", "AUTO"}).Errors,
            "");
    EXPECT_NE(errors({}).find("see --main-sfx"), std::string::npos);
    const Strings convert{"convert", Levels[2], "-o", File("a.was"), "--main-sfx", "auto"};
    const auto indices = samples::MakeRichLevel(kTR2).SampleIndices;
    const auto sounds = samples::SampleSounds();
    for (const std::size_t count : {std::size_t{1}, sounds.size() - 1, sounds.size()}) {
        WriteWholeFile(File("main.sfx"),
                       samples::WriteMainSfx(
                           {sounds.begin(), sounds.begin() + static_cast<std::ptrdiff_t>(count)})
                           .Bytes);
        const auto missing = std::ranges::count_if(
            indices, [&](int index) { return std::cmp_greater_equal(index, count); });
        // Where one name stands for all, the file keeps the letters that it had.
        EXPECT_EQ(ToLower(RunCli(convert).Errors),
                  ToLower(missing == 0
                              ? ""
                              : Levels[2] + ":\n  " + File("main.sfx") + " lacks " +
                                    std::to_string(missing) + " of the " +
                                    std::to_string(indices.size()) + " samples of the level\n"));
    }
    // These go before MAIN.Sfx: the head of a sound without its data, and no sound at all.
    const auto sfx = ReadFile(File("MAIN.Sfx"));
    WriteWholeFile(File("main.sfx"), std::span(sfx).first(44));
    const auto lacks = RunCli({"convert", Levels[2], "-o", File("a.was"), "--main-sfx", "auto"});
    EXPECT_NE(lacks.Errors.find(" lacks "), std::string::npos) << lacks.Errors;
    for (const char* wrong : {"main.sfx holds no sounds", "main.sfx is not a main.sfx"}) {
        for (const Strings& words : {Strings{"info", File("main.sfx")},
                                     Strings{"sounds", File("main.sfx"), File("waves")}}) {
            const auto ran = RunCli(words);
            EXPECT_EQ(ran.Status, 1);
            EXPECT_NE(ran.Errors.find(wrong), std::string::npos) << ran.Errors;
        }
        WriteWholeFile(File("main.sfx"), std::vector<std::byte>(100000));
    }
    const auto wrong = RunCli({"convert", Levels[2], "-o", File("a.was"), "--main-sfx", "auto"});
    EXPECT_EQ(wrong.Status, 1);
    EXPECT_NE(ToLower(wrong.Errors).find("main.sfx is not a main.sfx"), std::string::npos)
        << wrong.Errors;
    EXPECT_FALSE(std::filesystem::exists(ToPath(File("waves"))));
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

TEST_F(CliTest, TellsWrongUseAndDoesNothing)
{
    WriteWholeFile(File("level.tga"), ReadFile(Levels[0]));
    WriteWholeFile(File("main.wad"), ReadFile(Levels[2]));
    WriteWholeFile(File("main.sfx"), ReadFile(File("MAIN.Sfx")));
    std::vector<Strings> wrong{
        {},
        {"frobnicate"},
        {"convert"},
        {"convert", Levels[0]},
        {"convert", Levels[0], "-o", File("a.was"), "-d", File("sets")},
        {"convert", Levels[0], Levels[1], "-o", File("a.was")},
        {"convert", Levels[0], File("L1level.tr4"), "-d", File("sets")},
        {"convert", Levels[0], Levels[1], "-d", File("sets"), "--log", File("log")},
        {"convert", Levels[0], "-o", File("a.was"), "--jobs", "0"},
        {"convert", Levels[0], "-o", File("a")},
        {"convert", Levels[0], "-o", File("a.was"), "--log", Levels[0]},
        {"convert", File("main.wad"), "-d", File("")}, // the set would replace its level
        {"convert", Levels[2], "-o", File("main.was"), "--main-sfx", "auto"},
        {"convert", Levels[0], "-o", File("main.was"), "--main-sfx", File("./main.sfx")},
        {"convert", Levels[0], "-o", FromPath(ProgramFolder() / "morlik.was")},
        {"sheet", Levels[0], File("sheet.bmp")},
        {"sheet", File("level.tga"), File("level.tga")},
        {"check", File("a.wad")}};
    for (const char* result : {"A.was", "A.wad", "a.swd", "a.sam", "a.sfx", "a Info.txt"})
        wrong.push_back({"convert", Levels[0], "-o", File("a.was"), "--log", File(result)});
    for (const Strings& words : wrong) {
        const auto ran = RunCli(words);
        EXPECT_EQ(ran.Status, 2) << testing::PrintToString(words);
        EXPECT_EQ(ran.Out, "");
        EXPECT_NE(ran.Errors, "");
    }
    EXPECT_FALSE(std::filesystem::exists(ToPath(File("sets"))));
    EXPECT_EQ(ReadFile(File("level.tga")), ReadFile(Levels[0]));
    EXPECT_EQ(ReadFile(File("main.wad")), ReadFile(Levels[2]));
    EXPECT_EQ(ReadFile(File("main.sfx")), ReadFile(File("MAIN.Sfx")));
    EXPECT_EQ(RunCli({"--version"}).Out, "MORLIK 1.7\n");
    EXPECT_NE(RunCli({"--help"}).Out.find("Exit status: 0 all good"), std::string::npos);
}

TEST_F(CliTest, NamesWhatIsWrongWithItsOptions)
{
    std::filesystem::create_directory(ToPath(File("other")));
    const auto twin = File("other/" + FileTitle(Levels[0]));
    WriteWholeFile(twin, ReadFile(Levels[0]));
    WriteWholeFile(File("main.tr2"), ReadFile(Levels[2]));
    const auto sfx = ReadFile(File("MAIN.Sfx"));
    struct Row
    {
        Strings Words;
        std::string Told;
    };
    const std::vector<Row> rows{
        {{Levels[0], "-o", ""}, "-o: has an empty value"},
        {{Levels[0], "-d", ""}, "-d: has an empty value"},
        {{Levels[0], "-o", File("a.was"), "--log", ""}, "--log: has an empty value"},
        {{Levels[0], "-o", File("a.was"), "--main-sfx", ""}, "--main-sfx: has an empty value"},
        {{Levels[0], "-o", File("a.was"), "-o", File("b.was")}, "-o: is given more than once"},
        {{Levels[0], "-d", File("a"), "-d", File("a")}, "-d: is given more than once"},
        {{Levels[0], "-d", File("a"), "--jobs", "1", "--jobs", "2"},
         "--jobs: is given more than once"},
        {{Levels[0], twin, "-d", File("a")},
         Levels[0] + " and " + twin + " would both be saved as " + File("a/l1level.was")},
        {{File("main.tr2"), "-d", File("")},
         "MAIN.Sfx holds the sounds of a game; give the set another name"},
    };
    for (const Row& row : rows) {
        Strings words{"convert"};
        words.insert(words.end(), row.Words.begin(), row.Words.end());
        const auto ran = RunCli(words);
        EXPECT_EQ(ran.Status, 2) << row.Told;
        EXPECT_EQ(ran.Out, "");
        EXPECT_NE(WithSlashes(ran.Errors).find(WithSlashes(row.Told)), std::string::npos)
            << ran.Errors;
    }
    EXPECT_FALSE(std::filesystem::exists(ToPath(File("a"))));
    EXPECT_EQ(ReadFile(File("MAIN.Sfx")), sfx);

    // A set is told under the name that its list has.
    const auto capitals = RunCli({"convert", Levels[0], "-o", File("S.WAS")});
    EXPECT_EQ(capitals.Out, Levels[0] + ": saved as " + File("S.was") + "\n");
    EXPECT_TRUE(std::filesystem::exists(ToPath(File("S.was"))));
    // A folder that can't be made is told of each level, and of sounds.
    const auto reason = ": Can't make the folder " + Levels[0] + ": Not a directory\n";
    for (const Strings& words : {Strings{"convert", Levels[1], Levels[2], "-d", Levels[0]},
                                 Strings{"sounds", Levels[4], Levels[0]}}) {
        const auto ran = RunCli(words);
        EXPECT_EQ(ran.Status, 1);
        EXPECT_NE(ran.Errors.find(reason), std::string::npos) << ran.Errors;
    }
}

TEST_F(CliTest, TakesTheObjectsOfAList)
{
    const auto& level = Levels[4]; // with the moveables 0 and 140
    const std::string list = "LARA\r\n\n 140 \n";
    WriteWholeFile(File("list"), std::as_bytes(std::span(list)));
    struct Row
    {
        Strings Words;
        std::string Told; ///< of a wrong use; else the set is good and holds
        std::size_t Moveables;
        std::size_t Statics;
    };
    const auto info = json::parse(RunCli({"info", level, "--json"}).Out);
    const std::pair all{info["moveables"].size(), info["static meshes"].size()};
    const std::vector<Row> rows{
        {{"--objects", "lara"}, "", 1, 0},
        {{"--objects", "LARA,130-140,static:10-11"}, "", 2, 2},
        {{"--objects", "*", "--without", "?A*,static:*"}, "", all.first - 2, 0},
        {{"--without", "LARA,static:PLANT0,400-410,Z*"}, "", all.first - 1, all.second - 1},
        {{"--objects", "@" + File("list")}, "", 2, 0},
        {{"--objects", "*,static:*"}, "", all.first, all.second},
        {{"--fit"}, "", all.first, all.second},
        {{"--objects", "LARRA"}, "The level has no moveable \"LARRA\"; near: LARA", 0, 0},
        {{"--objects", "1-5"}, "The level has no moveable \"1-5\"\n", 0, 0},
        {{"--without", "static:77"}, "The level has no static mesh \"static:77\"\n", 0, 0},
        {{"--objects", "LARA", "--without", "0"}, "No object of the level is left", 0, 0},
        {{"--objects", ","}, "\",\" names no object", 0, 0},
        {{"--objects", "@" + File("none")}, "Can't open " + File("none"), 0, 0},
    };
    int number = 0;
    for (const Row& row : rows) {
        const auto set = File("chosen" + std::to_string(++number) + ".was");
        Strings words{"convert", level, "-o", set};
        words.insert(words.end(), row.Words.begin(), row.Words.end());
        const auto ran = RunCli(words);
        EXPECT_EQ(ran.Status, row.Told.empty() ? 0 : 2) << ran.Errors;
        EXPECT_NE(ran.Errors.find(row.Told), std::string::npos) << ran.Errors;
        ASSERT_EQ(std::filesystem::exists(ToPath(set)), row.Told.empty()) << row.Words[1];
        if (!row.Told.empty())
            continue;
        EXPECT_EQ(RunCli({"check", set}).Out, "good\n") << row.Words[1];
        const ObjectSet made = ReadSet(set);
        EXPECT_EQ(made.Moveables.size(), row.Moveables) << row.Words[1];
        EXPECT_EQ(made.StaticMeshes.size(), row.Statics) << row.Words[1];
    }
    const auto guarded = RunCli({"convert", level, "-o", File("list.was"), "--log", File("list"),
                                 "--objects", "@" + File("list")});
    EXPECT_EQ(guarded.Status, 2) << "a list of objects is no log";
}

TEST_F(CliTest, WritesOverNoInputWhateverItIsCalled)
{
    WriteWholeFile(File("game.sfx"), ReadFile(File("MAIN.Sfx")));
    struct Row
    {
        std::string Input;
        std::string Output; ///< a link to it
        Strings Words;
    };
    std::vector<Row> rows{
        {Levels[0], "log", {"convert", Levels[0], "-o", File("set.was"), "--log", File("log")}},
        {Levels[0], "sheet.tga", {"sheet", Levels[0], File("sheet.tga")}},
        {Levels[0], "waves/l1level 17-1.wav", {"sounds", Levels[0], File("waves")}},
        {File("game.sfx"), "waves/game1.wav", {"sounds", File("game.sfx"), File("waves")}},
        {Levels[1], "all/l1level.wad", {"convert", Levels[0], Levels[1], "-d", File("all")}}};
    for (const char* ending :
         {".was", ".wad", ".swd", ".sam", ".sfx", " Info.txt", "-Sounds/TR1 Sound 17-1.wav"})
        rows.push_back({Levels[0],
                        std::string("set") + ending,
                        {"convert", Levels[0], "-o", File("set.was")}});
    for (const char* ending : {".sfx", ".wad", "-Sounds/TR2 Sound 17-1.wav"})
        rows.push_back(
            {File("game.sfx"),
             std::string("set") + ending,
             {"convert", Levels[2], "-o", File("set.was"), "--main-sfx", File("game.sfx")}});
    for (const bool isHard : {true, false}) {
#ifdef _WIN32
        if (!isHard) // takes rights that users seldom have
            continue;
#endif
        for (const Row& row : rows) {
            const auto before = ReadFile(row.Input);
            const auto output = ToPath(File(row.Output));
            std::filesystem::create_directories(output.parent_path());
            if (isHard)
                std::filesystem::create_hard_link(ToPath(row.Input), output);
            else
                std::filesystem::create_symlink(ToPath(row.Input), output);
            const auto ran = RunCli(row.Words);
            EXPECT_NE(ran.Status, 0) << row.Output;
            EXPECT_EQ(ran.Out, "");
            EXPECT_NE(WithSlashes(ran.Errors)
                          .find(WithSlashes("Can't write " + File(row.Output) + ": it is " +
                                            row.Input + ", which is read and would be replaced")),
                      std::string::npos)
                << ran.Errors;
            EXPECT_EQ(ReadFile(row.Input), before) << row.Output;
            std::filesystem::remove(output);
        }
    }
    EXPECT_FALSE(std::filesystem::exists(ToPath(File("set.wad"))));
    EXPECT_TRUE(FilesOf("waves").empty());
}

TEST_F(CliTest, TellsWhatIsInAFile)
{
    const auto content = samples::MakeRichLevel(kTR4);
    const auto level = json::parse(RunCli({"info", Levels[4], "--json"}).Out);
    EXPECT_EQ(level["game"], "Tomb Raider IV");
    EXPECT_EQ(level["rooms"], content.Rooms.size());
    EXPECT_EQ(level["textures"], content.ObjectTexturesTR45.size());
    EXPECT_GT(level["textures used"], 0);
    ASSERT_EQ(level["moveables"].size(), content.Moveables.size());
    EXPECT_EQ(level["moveables"][0]["name"], "LARA");
    for (std::size_t i = 0; i < content.Moveables.size(); ++i) {
        const int first = content.Moveables[i].Animation;
        auto end = static_cast<int>(content.Animations.size()); // where those of the next begin
        for (const Moveable& other : content.Moveables)
            if (other.Animation > first)
                end = std::min<int>(end, other.Animation);
        EXPECT_EQ(level["moveables"][i]["animations"], first == -1 ? 0 : end - first) << i;
    }
    EXPECT_EQ(level["static meshes"].size(), content.StaticMeshes.size());
    EXPECT_EQ(level["sounds"][0]["bytes"], content.Samples[0].size());
    const auto text = RunCli({"info", Levels[4]});
    EXPECT_EQ(text.Status, 0);
    EXPECT_NE(text.Out.find("game: Tomb Raider IV\n"), std::string::npos);
    EXPECT_NE(text.Out.find("\nsprites: unknown\n"), std::string::npos);
    for (const std::int16_t texture :
         std::initializer_list<std::int16_t>{99, 0}) { // none, one for rectangles
        auto damaged = samples::MakeTinyLevel(kTR4);
        damaged.Meshes[0].Triangles = {{{0, 1, 2}, texture}};
        WriteWholeFile(File("bad.tr4"), WriteLevel(damaged).Bytes);
        const auto bad = RunCli({"info", File("bad.tr4")});
        EXPECT_EQ(bad.Status, 1);
        EXPECT_NE(bad.Out.find("\ntextures used: unknown\n"), std::string::npos);
    }
    EXPECT_NE(text.Out.find("  0  LARA"), std::string::npos);

    const auto sounds = samples::SampleSounds();
    std::filesystem::rename(ToPath(File("MAIN.Sfx")), ToPath(File("main.sfx")));
    const auto sfx = json::parse(RunCli({"info", File("main.sfx"), "--json"}).Out);
    EXPECT_EQ(sfx["samples"].size(), sounds.size());
    EXPECT_EQ(sfx["samples"][1]["bytes"], sounds[1].size());

    samples::ProjectContent named;
    named.Rooms.resize(1);
    named.Rooms[0].Name = "L\xf6\x80 we\x7f ";
    named.Rooms[0].BlockColumns = 12;
    named.Rooms[0].Objects = {samples::kPlainObject};
    named.TextureFile = "T";
    WriteWholeFile(File("a.prj"), samples::WriteProject(named).Bytes);
    EXPECT_EQ(RunCli({"info", File("a.prj")}).Out,
              "file: " + File("a.prj") +
                  "\nversion: 1\nroom slots: 1\ntexture file: T\nrooms: 1\n"
                  "  number  name           columns  rows  objects\n"
                  "       0  L\u00f6\\x80 we\\x7F       12     2        1\n");
    EXPECT_NE(RunCli({"info", File("a.prj"), "--json"}).Out.find("\"L\u00f6"), std::string::npos);
    const auto project = samples::MakeProject();
    WriteWholeFile(File("a.prj"), samples::WriteProject(project).Bytes);
    const auto rooms = json::parse(RunCli({"info", File("a.prj"), "--json"}).Out);
    EXPECT_EQ(rooms["rooms"].size(), 3U);
    EXPECT_EQ(rooms["rooms"][0]["columns"], project.Rooms[0].BlockColumns);

    for (const char* gone : {"gone.phd", "gone.prj", "gone/main.sfx"}) {
        const auto ran = RunCli({"info", File(gone)});
        EXPECT_EQ(ran.Status, 1);
        EXPECT_EQ(ran.Out, "");
        EXPECT_NE(ran.Errors, "");
    }
    EXPECT_NE(RunCli({"info", "[gone]"}).Errors.find("open ./[gone]:"), std::string::npos);
    EXPECT_NE(RunCli({"info", "gone]"}).Errors.find("open gone]:"), std::string::npos);
}

TEST_F(CliTest, ExportsSheetsAndSounds)
{
    EXPECT_EQ(RunCli({"sheet", Levels[3], File("a.tga")}).Status, 0);
    const auto tga = ReadFile(File("a.tga"));
    const auto png = RunCli({"sheet", Levels[3], File("a.PNG")});
#ifdef MORLIK_PNG
    EXPECT_EQ(png.Status, 0) << png.Errors;
    const auto file = ReadFile(File("a.PNG"));
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_memory(&image, file.data(), file.size()), 0);
    image.format = PNG_FORMAT_BGR;
    std::vector<std::byte> rows(PNG_IMAGE_SIZE(image));
    // A TGA file has its lowest row first.
    ASSERT_NE(png_image_finish_read(&image, nullptr, rows.data(), -768, nullptr), 0);
    EXPECT_TRUE(std::equal(rows.begin(), rows.end(), tga.begin() + 18, tga.end()));
    const auto empty = samples::MakeTinyLevel(kTR4); // no tiles of rooms
    WriteWholeFile(File("empty.tr4"), WriteLevel(empty).Bytes);
    const auto nothing = RunCli({"sheet", File("empty.tr4"), File("b.png")});
    EXPECT_EQ(nothing.Status, 1);
    EXPECT_EQ(nothing.Errors, "MORLIK: There is nothing to show in a PNG file\n");
#else
    EXPECT_EQ(png.Status, 2);
#endif
    EXPECT_EQ(RunCli({"sheet", Levels[3], File("none/a.tga")}).Status, 1);

    const auto content = samples::MakeRichLevel(kTR1);
    EXPECT_EQ(RunCli({"sounds", Levels[0], File("waves")}).Status, 0);
    const auto waves = FilesOf("waves");
    ASSERT_FALSE(waves.empty());
    for (const auto& [name, bytes] : waves)
        EXPECT_TRUE(std::ranges::find(content.Samples, bytes) != content.Samples.end()) << name;
    const auto elsewhere = RunCli({"sounds", Levels[2], File("waves")});
    EXPECT_EQ(elsewhere.Status, 1);
    EXPECT_EQ(elsewhere.Errors, "MORLIK: The sounds of this game are in its main.sfx\n");
    EXPECT_EQ(RunCli({"sounds", File("MAIN.Sfx"), File("sfx")}).Status, 0);
    EXPECT_EQ(FilesOf("sfx").size(), samples::SampleSounds().size());
    EXPECT_EQ(FilesOf("sfx")["/MAIN1.wav"], samples::SampleSounds()[1]);
}

TEST_F(CliTest, CheckTellsWhatIsWrongWithASet)
{
    ASSERT_EQ(RunCli({"convert", Levels[2], "-o", File("a.was"), "--main-sfx", "auto"}).Status, 0);
    EXPECT_EQ(RunCli({"check", File("a.was")}).Out, "good\n");
    const auto wad = ReadFile(File("a.wad"));
    for (std::size_t cut : {std::size_t{0}, wad.size() / 2, wad.size() - 1}) {
        WriteWholeFile(File("a.wad"), std::span(wad).first(cut));
        const auto ran = RunCli({"check", File("a.was")});
        EXPECT_EQ(ran.Status, 1) << cut;
        EXPECT_EQ(ran.Out.substr(0, 5), "wad: ") << ran.Out;
    }
    auto damaged = wad;
    damaged[4] ^= std::byte{1}; // one texture more or less than there are records
    WriteWholeFile(File("a.wad"), damaged);
    EXPECT_EQ(RunCli({"check", File("a.was")}).Status, 1);
    WriteWholeFile(File("a.wad"), wad);
    std::filesystem::remove_all(ToPath(File("a.swd")));
    EXPECT_EQ(RunCli({"check", File("a.was"), "--game", "2"}).Out,
              "missing: the .swd file\nNOT good\n");
    EXPECT_EQ(RunCli({"check", File("none.was")}).Status, 1);
    WriteWholeFile(File("a.was"), {});
    EXPECT_NE(RunCli({"check", File("a.was")}).Errors.find("--game N"), std::string::npos);
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
    WriteWholeFile(level, ReadFile(Levels[0]));
    const auto ran = RunCli({"convert", level, "-d", File("sets")});
    EXPECT_EQ(ran.Status, 1);
    EXPECT_EQ(ran.Out, "");
    EXPECT_EQ(ran.Errors, File(shown) + ".phd: not converted, or not wholly\n" +
                              "  MORLIK: A name with a line break can't stand in the list of a " +
                              "set: " + shown + ".was\n");
    EXPECT_EQ(RunCli({"convert", level, "-o", File("good.was")}).Status, 1);
    EXPECT_FALSE(std::filesystem::exists(ToPath(File("good.wad"))));
    std::filesystem::create_directory(ToPath(File("in\ntwo"))); // a folder is in no list
    const auto good = RunCli({"convert", Levels[0], "-o", File("in\ntwo/a.was"), "--json"});
    EXPECT_EQ(good.Status, 0);
    EXPECT_EQ(json::parse(good.Out)[0]["set"], File("in\ntwo/a.was"));

    const auto text = RunCli({"info", level});
    EXPECT_EQ(text.Out.find("file: " + File(shown) + ".phd\n"), 0U) << text.Out;
    const auto told = RunCli({"info", level, "--json"});
    EXPECT_TRUE(IsPrintable(told.Out));
    EXPECT_EQ(json::parse(told.Out)["file"], level);
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
    project.Rooms[0].Name = "one\x9b\x7f\nL\xf6we";
    WriteWholeFile(File("a.prj"), samples::WriteProject(project).Bytes);
    const auto text = RunCli({"info", File("a.prj")}).Out;
    EXPECT_NE(text.find("one\\x9B\\x7F\\nL\xc3\xb6we"), std::string::npos) << text;
    const auto told = RunCli({"info", File("a.prj"), "--json"}).Out;
    EXPECT_TRUE(IsPrintable(told));
    EXPECT_EQ(json::parse(told)["rooms"][0]["name"], "one\xc2\x9b\x7f\nL\xc3\xb6we");

    ASSERT_EQ(RunCli({"convert", Levels[0], "-o", File("a.was")}).Status, 0);
    const std::string line = "\x1b[2J\xc2\x9bgood\r\n";
    WriteWholeFile(File("a.sam"), std::as_bytes(std::span(line)));
    const auto checked = RunCli({"check", File("a.was")}).Out;
    EXPECT_NE(checked.find("\"\\x1B[2J\\x9Bgood\""), std::string::npos) << checked;
    EXPECT_TRUE(IsPrintable(checked));
}

TEST_F(CliTest, TellsThePlaceOfAFault)
{
    auto file = WriteLevel(samples::MakeRichLevel(kTR1));
    file.SetCount("Moveables", -1);
    WriteWholeFile(File("a.phd"), file.Bytes);
    const auto place = "moveables, offset " + std::to_string(file.Count("Moveables").Offset + 4) +
                       ": a count of -1";
    for (const Strings& words :
         {Strings{"info", File("a.phd")}, Strings{"sheet", File("a.phd"), File("a.tga")},
          Strings{"sounds", File("a.phd"), File("waves")},
          Strings{"convert", File("a.phd"), "-o", File("a.was")}}) {
        const auto ran = RunCli(words);
        EXPECT_EQ(ran.Status, 1);
        EXPECT_NE(ran.Errors.find("ReadTR -> Error reading level\n  " + place + "\n"),
                  std::string::npos)
            << ran.Errors;
    }
    const auto told = RunCli({"convert", File("a.phd"), "-o", File("a.was"), "--json"});
    EXPECT_EQ(json::parse(told.Out)[0]["messages"][0],
              "MORLIK error: ReadTR -> Error reading level\n" + place);
}

TEST_F(CliTest, PrintsTwentyMessagesOfAKindAndLogsThemAll)
{
    auto level = samples::MakeTinyLevel(kTR1);
    // Rectangles whose right side lies left of the left one: two messages each.
    level.ObjectTextures.resize(
        101, {.Corners = {
                  {{1, 200, 1, 0}, {0xff, 100, 1, 0}, {0xff, 100, 0xff, 9}, {1, 200, 0xff, 9}}}});
    WriteWholeFile(File("a.phd"), WriteLevel(level).Bytes);
    const auto ran = RunCli({"convert", File("a.phd"), "-o", File("a.was")});
    EXPECT_EQ(std::count(ran.Errors.begin(), ran.Errors.end(), '\n'), 22) << ran.Errors;
    EXPECT_NE(ran.Errors.find("  MORLIK: There are 180 more messages like these, not shown: no "
                              "log is kept.\n"),
              std::string::npos)
        << ran.Errors;
    RunCli({"convert", File("a.phd"), "-o", File("a.was"), "--log", File("log")});
    const auto lines = LinesOfFile(File("log"));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "ConvertTextInfo -> Error reading texture100"),
              2);
}

TEST_F(CliTest, TellsOfShortMemory)
{
    ASSERT_EQ(RunCli({"convert", Levels[0], "-o", File("a.was")}).Status, 0);
    const ShortMemory memory(std::size_t{16} << 10U);
    for (const Strings& words :
         {Strings{"info", Levels[0]}, Strings{"sheet", Levels[0], File("a.tga")},
          Strings{"sounds", Levels[0], File("waves")}, Strings{"info", File("MAIN.Sfx")},
          Strings{"convert", Levels[0], Levels[1], Levels[4], "-d", File("sets"), "--jobs", "3"}}) {
        const auto ran = RunCli(words);
        EXPECT_EQ(ran.Status, 1);
        EXPECT_NE(ran.Errors.find("MORLIK error: There is not enough memory\n"), std::string::npos)
            << ran.Errors;
    }
    EXPECT_THROW(RunCli({"check", File("a.was")}), std::bad_alloc); // for the main
}

} // namespace

} // namespace morlik::test
