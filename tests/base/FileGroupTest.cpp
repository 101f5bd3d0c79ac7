#include "base/FileGroup.h"

#include "tests/support/Conversion.h"

#include <gtest/gtest.h>
#include <map>

namespace morlik::test
{

namespace
{

using Contents = std::map<std::string, std::string>;

std::span<const std::byte> BytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

class FileGroupTest : public testing::Test
{
protected:
    FileGroupTest()
    {
        std::filesystem::create_directory(Folder.Path() / "waves");
        Put("set.was", "old list");
        Put("waves/1.wav", "old");
        Put("waves/2.wav", "old");
    }

    void Put(const std::string& name, const std::string& text) const
    {
        WriteWholeFile(Folder.File(name), BytesOf(text));
    }

    /// Writes a whole group, without putting it in its place.
    void Write(FileGroup& group) const
    {
        group.AddFolder(Folder.File("waves"));
        group.AddFolder(Folder.File("new"));
        for (const char* name : {"set.was", "set.wad", "waves/1.wav", "waves/3.wav", "new/4.wav"})
            group.Write(Folder.File(name), BytesOf("new"));
    }

    /// All files below the folder.
    Contents Files() const
    {
        Contents files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Folder.Path())) {
            const auto name = entry.path().lexically_relative(Folder.Path());
            if (entry.is_regular_file()) {
                const auto bytes = ReadFile(FromPath(entry.path()));
                files[name.generic_string()] = {reinterpret_cast<const char*>(bytes.data()),
                                                bytes.size()};
            }
        }
        return files;
    }

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
                if (entry.path().filename() != "held") // nobody else may read it on every system
                    std::filesystem::copy(entry.path(), copy / entry.path().filename(),
                                          std::filesystem::copy_options::recursive);
        }
        std::filesystem::rename(copy, hidden);
    }

    TempFolder Folder;
    const Contents Old{{"set.was", "old list"}, {"waves/1.wav", "old"}, {"waves/2.wav", "old"}};
    const Contents New{{"set.was", "new"},     {"set.wad", "new"},     {"waves/1.wav", "new"},
                       {"waves/2.wav", "old"}, {"waves/3.wav", "new"}, {"new/4.wav", "new"}};
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
    WriteWholeFile(FromPath(Hidden() / "held"), BytesOf(note + "."));
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

TEST_F(FileGroupTest, RefusesPlacesThatNoFileCanTake)
{
    std::filesystem::create_directory(Folder.File("set.wad"));
    FileGroup group(Folder.File("set.was"));
    EXPECT_THROW(group.DraftOf(Folder.File("set.wad")), FileFailure);
    EXPECT_THROW(group.AddFolder(Folder.File("set.was")), FileFailure);
    EXPECT_THROW(FileGroup(Folder.File("missing/set.was")), FileFailure);
}

} // namespace

} // namespace morlik::test
