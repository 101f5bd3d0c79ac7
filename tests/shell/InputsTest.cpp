// What a save must not replace, and what it asks about.

#include "shell/MORLIK_Main.h"
#include "shell/SetFiles.h"
#include "tests/support/Conversion.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace morlik::test
{

namespace fs = std::filesystem;

TEST(SaveLevel, DoesNotReplaceWhatItReads)
{
    const auto sounds = MainSfxFile();
    const std::vector<std::tuple<VersionCode, const char*, std::vector<const char*>>> rows{
        {kTR1, "level.phd", {".was", ".wad", " Info.txt", "-Sounds/TR1 Sound 17-0.wav"}},
        {kTR1, "morlik.sam", {".was", ".sam", "-Sounds/TR1 Sound 17-0.wav"}},
        {kTR1, "TR4Objects.dat", {".swd", ".sfx"}},
        // That it is chosen shows in the middle of the save.
        {kTR2, "game.sfx", {".sfx", ".swd", ".was", "-Sounds/TR2 Sound 17-0.wav"}}};
    for (const auto& [game, input, endings] : rows)
        for (const std::string ending : endings) {
            Conversion run;
            const auto path = run.Folder.File(input);
            run.Host.OpenAnswers = {run.Folder.Write("game.sfx", sounds)};
            ASSERT_TRUE(run.Load(samples::MakeRichLevel(game)));
            fs::create_directory(ToPath(run.Output("-Sounds")));
            fs::create_hard_link(ToPath(path), ToPath(run.Output(ending)));
            const auto before = ReadFile(path);
            EXPECT_FALSE(run.Save());
            EXPECT_EQ(run.Host.Messages(),
                      Strings{"MORLIK: Can't write " + run.Output(ending) + ": it is " + path +
                              ", which is read and would be replaced"});
            EXPECT_EQ(ReadFile(path), before) << ending;
            EXPECT_EQ(fs::exists(ToPath(run.Output(".was"))), ending == ".was");
        }
    // Nor is a main.sfx that has nothing to do with the level, in any case of letters.
    for (const char* name : {"main.sfx", "MAIN.Sfx"}) {
        Conversion run(samples::MakeRichLevel(kTR1));
        const auto set = run.Folder.File("main.was");
        EXPECT_TRUE(SaveLevel(run.Program, set)); // nobody's sounds are in this folder
        fs::remove(ToPath(run.Folder.File("main.sfx")));
        run.Folder.Write(name, sounds);
        EXPECT_FALSE(SaveLevel(run.Program, set));
        EXPECT_EQ(run.Host.Messages(),
                  Strings{"MORLIK: Can't write " + run.Folder.File("main.sfx") + ": " + name +
                          " holds the sounds of a game; give the set another name"});
        EXPECT_EQ(ReadFile(run.Folder.File(name)), sounds);
    }
}

TEST(QuestionToReplace, NamesWhatIsThereAndNotWhatWasAskedAbout)
{
    const TempFolder folder;
    const auto set = folder.File("my.WAS");
    EXPECT_EQ(QuestionToReplace(FilesOfSet(set), set), "");
    WriteWholeFile(set, {});
    EXPECT_EQ(QuestionToReplace({set}, set), "");
    fs::create_directory(ToPath(folder.File("my-Sounds")));
    for (const char* name : {"my.wad", "my Info.txt", "my-Sounds/TR1 Sound 2-0.wav",
                             "my-Sounds/TR2 Sound 2-0.wav", "my-Sounds/mine.wav"})
        folder.Write(name, "");
    const auto ask = [&](VersionCode game) {
        return QuestionToReplace(FilesOfSet(set, game), set);
    };
    const std::string head = "These files are there already and would be replaced:\n";
    EXPECT_EQ(ask(kTR1),
              head + "\nmy.wad\nmy Info.txt\nmy-Sounds/TR1 Sound 2-0.wav\n\nReplace them?");
    EXPECT_EQ(ask(kTR4), head + "\nmy.wad\nmy Info.txt\n\nReplace them?");
    // The list in small letters is not the file that was asked about, if it is another.
    folder.Write("my.was", "");
    const bool isOther = !fs::equivalent(ToPath(set), ToPath(folder.File("my.was")));
    EXPECT_EQ(ask(kTR4).starts_with(head + "\nmy.was\n"), isOther);
    for (int i = 10; i < 20; ++i)
        folder.Write("my-Sounds/TR3 Sound " + std::to_string(i) + "-0.wav", "");
    const auto many = ask(kTR3);
    const std::string end = isOther ? "14-0.wav\nand 5" : "15-0.wav\nand 4";
    EXPECT_TRUE(many.ends_with("TR3 Sound " + end + " more\n\nReplace them?")) << many;
}

TEST(Log, DoesNotReplaceTheLevel)
{
    Conversion run;
    run.Host.Folder = run.Folder.File("program");
    run.Host.State = run.Folder.File("state");
    fs::create_directory(run.Host.Folder);
    const std::vector<std::byte> level(100, std::byte{7});
    run.Folder.Write("level.phd", level);
    fs::create_hard_link(ToPath(run.Folder.File("level.phd")), run.Host.Folder / "MORLIK.log");
    OpenLog(run.Program.Report, run.Folder.File("level.phd"));
    EXPECT_EQ(ReadFile(run.Folder.File("level.phd")), level);
    EXPECT_EQ(LinesOfFile(run.Folder.File("state/MORLIK.log")).size(), 3U);
#ifndef _WIN32
    // Nor what a link leads to; a pipe would wait for its reader.
    const std::string log = run.Folder.File("program/MORLIK.log");
    fs::remove(log);
    fs::create_symlink(run.Folder.File("level.phd"), log);
    OpenLog(run.Program.Report, "");
    EXPECT_EQ(ReadFile(run.Folder.File("level.phd")), level);
    fs::remove(log);
    ASSERT_EQ(mkfifo(log.c_str(), 0600), 0);
    OpenLog(run.Program.Report, "");
    EXPECT_TRUE(fs::is_fifo(log));
#endif
}

} // namespace morlik::test
