// Saves onto disks that are full, folders that stand in the way and the like. The faults are such
// that they stop root too.

#include "tests/support/Conversion.h"

#include <optional>

#ifndef _WIN32
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace morlik::test
{

/// A run with a loaded level whose set needs every kind of file, and a file that is none of its.
class SaveOfAll : public Conversion
{
public:
    explicit SaveOfAll(VersionCode game) : Conversion(samples::MakeRichLevel(game))
    {
        Folder.Write("main.sfx", MainSfxFile());
        std::filesystem::create_directory(Folder.Path() / "out");
        Folder.Write("out/set of another.wad", "mine");
        Host.ExpSprTicked = true;
    }

    std::string Out(const std::string& name) const { return Folder.File("out/" + name); }

    bool SaveAs(const std::string& path)
    {
        Host.Calls.clear();
        Host.OpenAnswers = {Folder.File("main.sfx")};
        return SaveLevel(Program, path);
    }
    bool Save() { return SaveAs(Out("set.was")); }

    Strings Messages() const { return Host.Messages(); }

    /// The status is at rest, or at rest again.
    bool IsAtRest() const
    {
        const auto last =
            std::find_if(Host.Calls.rbegin(), Host.Calls.rend(),
                         [](const auto& call) { return call.starts_with("event: "); });
        return last == Host.Calls.rend() || *last == "event: Ready.";
    }

    /// One line of the messages that a failed write of `path` must give.
    static std::string CannotWrite(const std::string& path)
    {
        return std::string(kAppTitle) + ": Can't write " + path + ": ";
    }

    FileMap Files() const { return FilesBelow(Folder.Path() / "out"); }
};

using DiskFault = testing::TestWithParam<VersionCode>;
INSTANTIATE_TEST_SUITE_P(Forms, DiskFault, testing::Values(kTR1, kTR2, kTR4));

TEST_P(DiskFault, AtAnyFileIsToldAndLeavesTheOldSetAsItWas)
{
    SaveOfAll save(GetParam());
    ASSERT_TRUE(save.Save());
    const FileMap whole = save.Files();
    ASSERT_GE(whole.size(), 7U);
    for (const auto& [name, bytes] : whole) {
        if (name == "set of another.wad")
            continue;
        SCOPED_TRACE(name);
        const auto path = ToPath(save.Out(name));
        std::filesystem::remove(path);
        std::filesystem::create_directory(path);
        FileMap others = whole;
        others.erase(name);
        EXPECT_FALSE(save.Save());
        ASSERT_EQ(save.Messages(),
                  std::vector{SaveOfAll::CannotWrite(save.Out(name)) + "Is a directory"});
        EXPECT_TRUE(save.IsAtRest());
        EXPECT_EQ(save.Files(), others);

        std::filesystem::remove(path);
        EXPECT_TRUE(save.Save());
        EXPECT_EQ(save.Files(), whole);
    }
}

TEST(DiskFaults, OfNamesAreTold)
{
    SaveOfAll save(kTR1);
    const std::string endless = save.Out(std::string(4000, 'x') + ".was");
    EXPECT_FALSE(save.SaveAs(endless));
    ASSERT_EQ(save.Messages().size(), 1U);
#ifndef _WIN32 // which has other words for it
    EXPECT_TRUE(save.Messages()[0].ends_with(": File name too long")) << save.Messages()[0];
#endif

    const std::string file = save.Out("set of another.wad"); // in the place of the folder
    std::filesystem::rename(file, save.Out("set-Sounds"));
    EXPECT_FALSE(save.Save());
    EXPECT_EQ(save.Messages(), Strings{"MORLIK: Can't make the folder " + save.Out("set-Sounds") +
                                       ": Not a directory"});
    EXPECT_EQ(save.Files().size(), 1U);

    EXPECT_FALSE(save.SaveAs(save.Out("missing/set.was")));
    EXPECT_EQ(save.Messages()[0],
              SaveOfAll::CannotWrite(save.Out("missing/set.was")) + "No such file or directory");

    const std::string folder = save.Out("\u0142\u00f3d\u017a \u57ce");
    std::filesystem::create_directory(ToPath(folder));
    EXPECT_TRUE(save.SaveAs(folder + "/\u00fc.was"));
    EXPECT_TRUE(std::filesystem::exists(ToPath(folder + "/\u00fc-Sounds")));

    // A level that went away after it was chosen, and the endless name again.
    for (const std::string& path : {save.Out("gone.phd"), endless})
        EXPECT_TRUE(
            EndOf([&] { LoadLevel(save.Program, path); }).starts_with("Can't open " + path + ": "));
}

#ifndef _WIN32

/// Runs `work` in a child of this process that may mount what it likes, with a tmpfs on `folder`.
/// Gives its result, or nothing where the system doesn't allow that.
template <class Work>
std::optional<bool> OnTmpfs(const std::string& folder, const char* options, unsigned long flags,
                            Work work)
{
    constexpr int kRefused = 2;
    const pid_t child = fork();
    if (child == 0) {
        if ((unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) ||
            mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", folder.c_str(), "tmpfs", flags, options) != 0)
            _exit(kRefused);
        _exit(work() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFEXITED(status))
        return false;
    return WEXITSTATUS(status) == kRefused ? std::nullopt : std::optional(WEXITSTATUS(status) == 0);
}

TEST(DiskFaults, OfSmallAndReadOnlyDisksLeaveTheOldSet)
{
    SaveOfAll before(kTR1);
    SaveOfAll after(kTR2);
    ASSERT_TRUE(after.Save());
    const FileMap fresh = after.Files();
    const std::string disk = after.Out("");
    const auto grow = [&] {
        std::filesystem::copy(before.Out(""), disk); // the file of another
        if (!before.SaveAs(after.Out("set.was")))
            return false;
        const FileMap old = after.Files();
        const auto remount = [&](unsigned long flags, const std::string& size) {
            return mount("none", disk.c_str(), "tmpfs", MS_REMOUNT | flags, size.c_str()) == 0;
        };
        const auto fails = [&](const std::string& reason) {
            return !after.Save() && after.Messages().size() == 1 &&
                   after.Messages()[0].ends_with(reason) && after.IsAtRest() &&
                   after.Files() == old;
        };
        if (!remount(MS_RDONLY, "size=64m") || !fails(": Read-only file system"))
            return false;
        int numFull = 0;
        for (int kilobytes = 400; kilobytes < 8000; kilobytes += 100)
            if (remount(0, "size=" + std::to_string(kilobytes) + "k")) { // else more is on it
                if (!fails(": No space left on device"))
                    break;
                ++numFull;
            }
        FileMap both = old; // WAV files of the old set stay
        for (const auto& [name, bytes] : fresh)
            both[name] = bytes;
        return numFull > 1 && after.Messages().empty() && after.Files() == both;
    };
    const auto good = OnTmpfs(disk, "size=64m", 0, grow);
    if (!good)
        GTEST_SKIP() << "no leave to mount a disk here";
    EXPECT_TRUE(*good);
}

#endif

} // namespace morlik::test
