#include "base/FileIdentity.h"
#include "base/Folders.h"
#include "base/TextLines.h"
#include "tests/support/Conversion.h"
#include "tests/support/Failures.h"

#include <fstream>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace morlik::test
{

TEST(Text, ChangesTheCaseOfAsciiLettersAlone)
{
    const std::string text = "@AZ[`az{\xda\xfa";
    EXPECT_EQ(ToLower(text), "@az[`az{\xda\xfa");
    EXPECT_EQ(ToUpper(text), "@AZ[`AZ{\xda\xfa");
    EXPECT_TRUE(EndsWithNoCase("zZ.TRC", "Zz.trc"));
    EXPECT_FALSE(EndsWithNoCase("trc", ".trc"));
    EXPECT_EQ(Hex(0x90af), "90AF");
    EXPECT_EQ(FileTitle("a\\b/c\\d"), "d");
    EXPECT_EQ(FileTitle("a/"), "");
}

TEST(TextLines, EndsLinesInCrLfAndContinuesThemForAFlagOf0)
{
    const TempFolder folder;
    TextLines file;
    file.Line("before the file is open");
    file.Open(folder.File("old"));
    file.Line("a longer text that the next file replaces");
    file.Open(folder.File("old"));
    file.Line("one", 0);
    file.Line(" and two");
    file.Line("");
    file.Line("three", 0);
    file.Close();
    const auto bytes = ReadFile(folder.File("old"));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()),
              "one and two\r\n\r\nthree");
    file.OpenNew(folder.File("new"));
    file.Line("a line that nobody wants");
    file.Abandon();
    file.Open(folder.File("old"));
    file.Close();
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        EXPECT_EQ(entry.path(), ToPath(folder.File("old")));
}

TEST(OutputFile, KeepsTheOrderOfSmallAndLargePieces)
{
    const TempFolder folder;
    const std::string name = folder.File("out");
    std::vector<std::byte> expected;
    WriteWholeFile(name, std::vector<std::byte>(900000)); // longer than what comes
    {
        OutputFile file(name, name);
        file.Flush();
        EXPECT_EQ(ReadFile(name).size(), 0U); // as a log that is read while it grows
        for (const std::size_t size : {3U, 65535U, 65536U, 1U, 200000U, 65533U, 2U}) {
            const std::vector<std::byte> piece(size, static_cast<std::byte>(expected.size()));
            file.PutBytes(piece);
            expected.insert(expected.end(), piece.begin(), piece.end());
        }
    } // not closed: what is buffered is written all the same
    EXPECT_EQ(ReadFile(name), expected);
}

TEST(NewFile, TakesItsPlaceWholeOrNotAtAll)
{
    const TempFolder folder;
    const std::string name = folder.File("out");
    const std::vector<std::byte> old(9, std::byte{1});
    const std::vector<std::byte> fresh(100000, std::byte{2});
    const auto numFiles = [&] {
        const std::filesystem::directory_iterator files(folder.Path());
        return std::distance(begin(files), end(files));
    };
    WriteWholeFile(name, old);
    {
        NewFile file(name);
        file.File().PutBytes(fresh);
    }
    EXPECT_EQ(ReadFile(name), old);
    EXPECT_EQ(numFiles(), 1);
    std::filesystem::path draft; // as a process that is killed leaves it
    std::vector<std::filesystem::path> parts;
    {
        NewFile file(name);
        file.File().Flush();
        draft = std::filesystem::directory_iterator(folder.Path())->path();
        if (draft.filename() == "out")
            draft = std::next(std::filesystem::directory_iterator(folder.Path()))->path();
        for (const auto& part : std::filesystem::directory_iterator(draft))
            parts.push_back(part.path());
    }
    std::filesystem::create_directory(draft);
    for (const auto& part : parts)
        std::ofstream(part) << "half a file";
    WriteWholeFile(name, old); // clears it up
    EXPECT_EQ(numFiles(), 1);
    std::filesystem::create_hard_link(name, folder.File("level.phd"));
#ifdef _WIN32 // where links of the other kind take rights that users seldom have
    std::filesystem::create_hard_link(name, folder.File("link"));
#else
    std::filesystem::create_symlink(folder.File("level.phd"), folder.File("link"));
#endif
    for (const std::string& place : {name, folder.File("link")}) {
        WriteWholeFile(place, fresh); // a link is only a name
        EXPECT_EQ(ReadFile(place), fresh);
        EXPECT_EQ(ReadFile(folder.File("level.phd")), old);
    }
    EXPECT_EQ(numFiles(), 3);
    EXPECT_EQ(FailureOf([&] { WriteWholeFile(FromPath(folder.Path()), fresh); }),
              "Can't write " + FromPath(folder.Path()) + ": Is a directory");
#ifndef _WIN32
    const std::string pipe = folder.File("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
    EXPECT_EQ(FailureOf([&] { WriteWholeFile(pipe, fresh); }),
              "Can't write " + pipe + ": It is a device or a pipe, no file");
    EXPECT_EQ(FailureOf([&] { WriteWholeFile("/dev/null", fresh); }), ""); // meant to be written
#endif
}

TEST(Files, ThatAreFoldersOrTooLongAreNotOpened)
{
    const TempFolder folder;
    EXPECT_NE(FailureOf([&] { FileBytes::Load(folder.File(".")); }), "");
    folder.Write("three", std::vector<std::byte>(3));
    EXPECT_EQ(FailureOf([&] { FileBytes::Load(folder.File("three"), 3); }), "");
    EXPECT_EQ(FailureOf([&] { FileBytes::Load(folder.File("three"), 2); }),
              "Can't open " + folder.File("three") + ": 3 bytes are more than any such file has");
}

TEST(Files, TellOfAFullDisk)
{
    const std::string full = "/dev/full";
    if (!std::filesystem::exists(full))
        GTEST_SKIP() << "no file here that is always full";
    const std::string message = "Can't write /dev/full: No space left on device";
    TextLines file;
    file.Open(full);
    file.Line("a line"); // goes on without a word
    file.Flush();
    file.Line("another line");
    EXPECT_EQ(FailureOf([&] { file.Close(); }), message);
    EXPECT_EQ(FailureOf([&] { file.Close(); }), "");
    const TempFolder folder;
    file.Open(full);
    file.Line("a line");
    file.Flush();
    file.Open(folder.File("good")); // the fault of the other file is none of this one
    file.Line("a line");
    file.Close();
    EXPECT_EQ(LinesOfFile(folder.File("good")), Strings{"a line"});
}

namespace fs = std::filesystem;

TEST(Inputs, AreKnownUnderEveryName)
{
    const TempFolder folder;
    const auto input = folder.File("level.phd");
    WriteWholeFile(input, std::as_bytes(std::span("level")));
    WriteWholeFile(folder.File("twin"), std::as_bytes(std::span("level"))); // as long, and no more
    fs::create_directory(folder.Path() / "sub");
    fs::create_hard_link(input, folder.File("hard.wad"));
    Strings same{input, folder.File("./sub/../level.phd"), folder.File("hard.wad")};
#ifndef _WIN32
    fs::create_symlink("level.phd", folder.File("soft.wad"));
    fs::create_symlink("../soft.wad", folder.File("sub/soft.sam"));
    fs::create_directory_symlink(".", folder.File("here"));
    fs::create_symlink("nowhere", folder.File("dangling"));
    same.insert(same.end(), {folder.File("soft.wad"), folder.File("sub/soft.sam"),
                             folder.File("here/hard.wad")});
#endif
    const Strings others{folder.File("twin"), folder.File("none"), folder.File("sub"),
                         folder.File("dangling"), ""};
    const Strings inputs{folder.File("gone"), folder.File("sub"), "", input};
    EXPECT_EQ(FailureOf([&] { GuardInputs(inputs, others); }), "");
    for (const std::string& output : same) {
        Strings outputs = others;
        outputs.push_back(output);
        EXPECT_EQ(FailureOf([&] { GuardInputs(inputs, outputs); }),
                  "Can't write " + output + ": it " +
                      (output == input ? "" : "is " + input + ", which ") +
                      "is read and would be replaced");
    }
}

TEST(Folders, ThatCannotBeMadeTellWhy)
{
    const TempFolder folder;
    const auto file = folder.File("file");
    WriteWholeFile(file, {});
    for (const char* good : {"", "a", "a/b/c", "a/b/c/"})
        EXPECT_EQ(FailureOf([&] { MakeFolder(folder.Path() / good); }), "") << good;
    EXPECT_EQ(FailureOf([] { MakeFolder({}); }), "");
    EXPECT_TRUE(fs::is_directory(folder.File("a/b/c")));
    const std::string tells = "Can't make the folder ";
    EXPECT_EQ(FailureOf([&] { MakeFolder(file); }), tells + file + ": Not a directory");
#ifndef _WIN32
    // The system makes no folder in the place of a link; that there is none would fool the user.
    fs::create_symlink("nowhere", folder.File("link"));
    const auto told = FailureOf([&] { MakeFolder(folder.File("link")); });
    EXPECT_TRUE(told.starts_with(tells + folder.File("link") + ": ")) << told;
    EXPECT_EQ(told.find("No such file"), std::string::npos) << told;
#endif
}

} // namespace morlik::test
