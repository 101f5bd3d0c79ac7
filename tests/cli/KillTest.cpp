// The program itself, stopped by real signals at random moments of a save over an older set.

#include "check/ObjectSetCheck.h"
#include "set/ReadSet.h"
#include "tests/support/Conversion.h"

#ifndef _WIN32

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace morlik::test
{

class KillTest : public testing::Test
{
protected:
    KillTest()
    {
        std::filesystem::create_directory(Folder.File("out"));
        for (const VersionCode game : {kTR1, kTR3})
            WriteWholeFile(LevelOf(game), WriteLevel(samples::MakeRichLevel(game)).Bytes);
        Folder.Write("main.sfx", MainSfxFile());
        EXPECT_EQ(EndOf(Start(kTR1)), 0);
        First = Files();
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(EndOf(Start(kTR3)), 0);
        Whole = std::chrono::steady_clock::now() - begin;
        Last = Over(First, Files());
    }

    std::string LevelOf(VersionCode game) const { return Folder.File(LevelName(game)); }

    /// Starts a conversion of the level into the one set.
    pid_t Start(VersionCode game) const
    {
        const std::string program = std::string(MORLIK_DATA_FOLDER) + "/morlik-cli";
        const pid_t child = fork();
        if (child != 0)
            return child;
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        execl(program.c_str(), program.c_str(), "convert", LevelOf(game).c_str(), "-o",
              (Base() + ".was").c_str(), "--main-sfx", Folder.File("main.sfx").c_str(), nullptr);
        _exit(99);
    }

    /// Exit status of a child, or the negated signal that ended it.
    static int EndOf(pid_t child)
    {
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    std::string Base() const { return Folder.File("out/set"); }

    FileMap Files() const { return FilesBelow(Folder.Path() / "out"); }

    /// The files of a set saved over those of another, whose WAV files stay.
    static FileMap Over(const FileMap& old, const FileMap& fresh)
    {
        FileMap both = fresh;
        for (const auto& [name, bytes] : old)
            if (name.find("-Sounds") != std::string::npos)
                both.try_emplace(name, bytes);
        return both;
    }

    TempFolder Folder;
    FileMap First; ///< a set, and another over it, as they are saved in peace
    FileMap Last;
    std::chrono::steady_clock::duration Whole; ///< what the other one took
};

TEST_F(KillTest, LeavesTheOldOrTheNewSetWhateverTheMoment)
{
    std::minstd_rand random(1);
    int stopped = 0;
    VersionCode next = kTR1;
    for (int i = 0; i < 200; ++i) {
        const int signal = std::array{SIGINT, SIGTERM, SIGKILL}.at(static_cast<std::size_t>(i % 3));
        const pid_t child = Start(next);
        std::this_thread::sleep_for(Whole * (random() % 1100) / 1000);
        kill(child, signal);
        const int end = EndOf(child);
        const bool saved = end == 0;
        stopped += saved ? 0 : 1;
        if (signal != SIGKILL) {
            EXPECT_TRUE(saved || end == 130 || end == -signal) << end; // before it has its handler
            for (const auto& [name, bytes] : Files())
                EXPECT_FALSE(name.starts_with(".morlik-")) << name;
        }
        // What a dead process left behind is cleared up or finished by whoever reads the set.
        const auto report = check::CheckSet(Base(), ReadSet(Base() + ".was").Game);
        EXPECT_EQ(report.Problems, Strings{}) << i;
        const FileMap now = Files();
        const bool isFirst = now.at("set.was") == First.at("set.was");
        EXPECT_TRUE(now == (isFirst ? Over(now, First) : Over(now, Last))) << i << ' ' << signal;
        EXPECT_TRUE(!saved || isFirst == (next == kTR1)) << i;
        next = isFirst ? kTR3 : kTR1; // over the other one
    }
    EXPECT_GT(stopped, 20);
}

TEST_F(KillTest, LetsOnlyOneOfTwoWriteASet)
{
    for (int i = 0; i < 30; ++i) {
        const pid_t one = Start(kTR1);
        const pid_t other = Start(kTR3);
        const int endOfOne = EndOf(one);
        const int endOfOther = EndOf(other);
        EXPECT_TRUE(endOfOne == 0 || endOfOther == 0);
        const FileMap now = Files();
        EXPECT_TRUE(now == Over(now, First) || now == Over(now, Last)) << i;
    }
}

} // namespace morlik::test

#endif
