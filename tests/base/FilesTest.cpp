#include "base/Text.h"
#include "base/TextLines.h"
#include "tests/support/Conversion.h"
#include "tests/support/Failures.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace morlik::test
{

namespace
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

TEST(Files, TellTheFileAndTheReasonOfAFailure)
{
    const TempFolder folder;
    const std::string missing = folder.File("missing/out");
    EXPECT_EQ(FailureOf([&] { NewFile file(missing); }),
              "Can't write " + missing + ": No such file or directory");
    EXPECT_EQ(FailureOf([&] { FileBytes::Load(missing); }),
              "Can't open " + missing + ": No such file or directory");
    EXPECT_NE(FailureOf([&] { FileBytes::Load(folder.File(".")); }), "");
    folder.Write("three", std::vector<std::byte>(3));
    EXPECT_EQ(FailureOf([&] { FileBytes::Load(folder.File("three"), 3); }), "");
    EXPECT_EQ(FailureOf([&] { FileBytes::Load(folder.File("three"), 2); }),
              "Can't open " + folder.File("three") + ": 3 bytes are more than any such file has");
}

TEST(Files, HaveNamesOfAllLetters)
{
    const TempFolder folder;
    const std::string name = "zamek-\u0142\u00f3d\u017a \u00fc \u57ce.phd";
    folder.Write(name, std::vector<std::byte>(3));
    EXPECT_EQ(ReadFile(folder.File(name)).size(), 3U);
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        EXPECT_EQ(FromPath(entry.path().filename()), name);
    EXPECT_EQ(FailureOf([&] { FileBytes::Load("missing " + name); }),
              "Can't open missing " + name + ": No such file or directory");
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
}

} // namespace

} // namespace morlik::test
