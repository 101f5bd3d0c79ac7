#include "base/FileGroup.h"

#include "tests/support/Conversion.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace morlik::test
{

constexpr const char* kHeld = ".morlik-held";

class FileGroupTest : public testing::Test
{
protected:
    FileGroupTest()
    {
        std::filesystem::create_directory(Folder.Path() / "waves");
        for (const auto& [name, bytes] : Old)
            Folder.Write(name, bytes);
    }

    /// Writes a whole group, without putting it in its place.
    void Write(FileGroup& group) const
    {
        group.AddFolder(Folder.File("waves"));
        group.AddFolder(Folder.File("new"));
        for (const char* name : {"set.was", "set.wad", "waves/1.wav", "waves/3.wav", "new/4.wav"})
            group.Write(Folder.File(name), Is);
    }

    /// Writes the note of a group into its hidden folder.
    static void WriteNote(const std::filesystem::path& hidden, const std::string& note)
    {
        const auto path = FromPath(hidden / kHeld);
        OutputFile(path, path).PutText(note);
    }

    FileMap Files() const { return FilesBelow(Folder.Path()); }

    /// The hidden folder of the group.
    std::filesystem::path Hidden() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(Folder.Path()))
            if (FromPath(entry.path().filename()).starts_with(".morlik-"))
                return entry.path();
        return {};
    }

    /// Leaves what a writer leaves that dies: what `write` did, in a copy of the hidden folder.
    template <class Write>
    void Die(Write write) const
    {
        std::filesystem::path hidden;
        const auto copy = Folder.Path() / "copy";
        {
            FileGroup group(Folder.File("set.was"));
            write(group);
            hidden = Hidden();
            std::filesystem::create_directory(copy);
            for (const auto& entry : std::filesystem::directory_iterator(hidden))
                if (entry.path().filename() != kHeld) // nobody else may read it on every system
                    std::filesystem::copy(entry.path(), copy / entry.path().filename(),
                                          std::filesystem::copy_options::recursive);
        }
        std::filesystem::rename(copy, hidden);
    }

    const std::vector<std::byte> Was{3, std::byte{'o'}};
    const std::vector<std::byte> Is{3, std::byte{'n'}};
    const FileMap Old{{"set.was", Was}, {"waves/1.wav", Was}, {"waves/2.wav", Was}};
    const FileMap New{{"set.was", Is},      {"set.wad", Is},     {"waves/1.wav", Is},
                      {"waves/2.wav", Was}, {"waves/3.wav", Is}, {"new/4.wav", Is}};
    TempFolder Folder;
};

TEST_F(FileGroupTest, AppearsWholeOrNotAtAll)
{
    {
        FileGroup group(Folder.File("set.was"));
        Write(group);
    }
    EXPECT_EQ(Files(), Old);
    EXPECT_FALSE(std::filesystem::exists(Folder.File("new")));
    for (int i = 0; i < 2; ++i) {
        FileGroup group(Folder.File("set.was"));
        Write(group);
        group.TakePlaces();
    }
    EXPECT_EQ(Files(), New);
    EXPECT_EQ(Hidden(), "");
}

TEST_F(FileGroupTest, HasOneWriterAtATime)
{
    {
        const FileGroup group(Folder.File("set.was"));
        const FileGroup other(Folder.File("set2.was"));
        EXPECT_THROW(FileGroup(Folder.File("set.was")), FileFailure);
        EXPECT_THROW(FinishGroup(Folder.File("set.was")), FileFailure);
    }
    EXPECT_NO_THROW(FileGroup(Folder.File("set.was")));
    EXPECT_EQ(Files(), Old);
}

TEST_F(FileGroupTest, OfADeadWriterIsClearedUpOrFinished)
{
    for (const bool byReader : {true, false}) {
        const auto comeNext = [&] {
            if (byReader)
                FinishGroup(Folder.File("set.was"));
            else
                FileGroup(Folder.File("set.was"));
        };
        Die([this](FileGroup& group) { Write(group); });
        comeNext();
        EXPECT_EQ(Files(), Old);
        EXPECT_EQ(Hidden(), "");
    }
    // One that died behind its note, in the middle of an exchange where the system has that: the
    // old file has the name of the new one, and must not come back.
    Die([this](FileGroup& group) { Write(group); });
    std::string note;
    for (const char* name : {"set.was", "set.wad", "waves/1.wav", "waves/3.wav"})
        note += std::to_string(FileNumber(Hidden() / name)) + " ";
    WriteNote(Hidden(), note + ".");
    std::filesystem::rename(Hidden() / "set.wad", Folder.File("set.wad"));
    if (FileNumber(Hidden() / "waves/1.wav") != 0) {
        std::filesystem::rename(Folder.File("waves/1.wav"), Folder.File("old"));
        std::filesystem::rename(Hidden() / "waves/1.wav", Folder.File("waves/1.wav"));
        std::filesystem::rename(Folder.File("old"), Hidden() / "waves/1.wav");
    }
    FinishGroup(Folder.File("set.was"));
    EXPECT_EQ(Files(), New);
    EXPECT_EQ(Hidden(), "");
}

TEST_F(FileGroupTest, FinishesNoneThatSomebodyElseMade)
{
#ifndef _WIN32
    // Such a folder may come with somebody's set, and lead to any files of the user.
    Die([this](FileGroup& group) { Write(group); });
    const auto hidden = Hidden();
    std::filesystem::remove_all(hidden);
    const TempFolder home;
    home.Write("mine", Was);
    const FileMap mine = FilesBelow(home.Path());
    const auto comeNext = [this] {
        FinishGroup(Folder.File("set.was"));
        FileGroup(Folder.File("set.was"));
    };
    std::filesystem::create_symlink(home.Path(), hidden);
    EXPECT_THROW(comeNext(), FileFailure);
    std::filesystem::remove(hidden);
    std::filesystem::create_directory(hidden);
    std::filesystem::create_symlink(home.File("mine"), hidden / kHeld);
    EXPECT_THROW(comeNext(), FileFailure);
    std::filesystem::remove(hidden / kHeld);
    // Finished, but neither with what a link leads to nor with what the note doesn't count.
    WriteNote(hidden, ".");
    std::filesystem::create_symlink(home.Path(), hidden / "waves");
    Folder.Write(FromPath(hidden.filename() / "set.wad"), Is);
    comeNext();
    EXPECT_EQ(Files(), Old);
    EXPECT_EQ(FilesBelow(home.Path()), mine);
#endif
}

TEST_F(FileGroupTest, LooksAtThePlacesAgainBeforeItTakesThem)
{
    {
        FileGroup group(Folder.File("set.was"));
        Write(group);
        std::filesystem::create_directory(Folder.File("set.wad"));
        EXPECT_THROW(group.TakePlaces(), FileFailure); // before it has touched the others
    }
    std::filesystem::remove(Folder.File("set.wad"));
    EXPECT_EQ(Files(), Old);
    EXPECT_EQ(Hidden(), "");
}

#ifndef _WIN32
TEST_F(FileGroupTest, TakesPlacesOnAnotherDisk)
{
    const auto diskOf = [](const char* folder) {
        struct stat status = {};
        return stat(folder, &status) == 0 ? status.st_dev : 0;
    };
    const char* other = "/dev/shm";
    if (diskOf(other) == diskOf(Folder.Path().c_str()))
        other = "/var/tmp";
    if (diskOf(other) == diskOf(Folder.Path().c_str()) || diskOf(other) == 0)
        GTEST_SKIP() << "no folder on another disk here";
    const TempFolder disk(other);
    const auto waves = Folder.Path() / "waves";
    std::filesystem::copy(waves, disk.Path() / "w");
    std::filesystem::remove_all(waves);
    std::filesystem::create_directory_symlink(disk.Path() / "w", waves);
    // Something is in the way of the last file: the others are new then, and it comes with the
    // next one that looks.
    const auto inTheWay = waves / ".morlik-3.wav";
    std::filesystem::create_directories(inTheWay / "mine");
    {
        FileGroup group(Folder.File("set.was"));
        Write(group);
        EXPECT_THROW(group.TakePlaces(), FileFailure);
    }
    EXPECT_EQ(FilesBelow(disk.Path()), (FileMap{{"w/1.wav", Is}, {"w/2.wav", Was}}));
    EXPECT_THROW(FinishGroup(Folder.File("set.was")), FileFailure);
    std::filesystem::remove_all(inTheWay);
    FinishGroup(Folder.File("set.was"));
    EXPECT_EQ(FilesBelow(disk.Path()),
              (FileMap{{"w/1.wav", Is}, {"w/2.wav", Was}, {"w/3.wav", Is}}));
    EXPECT_EQ(Hidden(), "");
}
#endif

} // namespace morlik::test
