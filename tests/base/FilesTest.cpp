#include "base/Text.h"
#include "base/TextLines.h"
#include "tests/support/Conversion.h"

#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

/// The text of the failure that `work` ends in; empty where it doesn't fail.
template <class Work>
std::string FailureOf(Work work)
{
    try {
        work();
    } catch (const FileFailure& failure) {
        return failure.what();
    }
    return {};
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
    std::vector<std::byte> expected;
    WriteWholeFile(folder.File("out"), std::vector<std::byte>(900000)); // longer than what comes
    {
        OutputFile file(folder.File("out"));
        file.Flush();
        EXPECT_EQ(ReadFile(folder.File("out")).size(), 0U); // as a log that is read while it grows
        for (const std::size_t size : {3U, 65535U, 65536U, 1U, 200000U, 65533U, 2U}) {
            const std::vector<std::byte> piece(size, static_cast<std::byte>(expected.size()));
            file.PutBytes(piece);
            expected.insert(expected.end(), piece.begin(), piece.end());
        }
    } // not closed: what a stopped save has written stays
    EXPECT_EQ(ReadFile(folder.File("out")), expected);
    { // over a longer one, of which nothing stays
        OutputFile file(folder.File("out"));
        file.PutBytes(std::vector<std::byte>(70000));
    }
    EXPECT_EQ(ReadFile(folder.File("out")), std::vector<std::byte>(70000));
    WriteWholeFile(folder.File("out"), std::span(expected).first(3));
    EXPECT_EQ(ReadFile(folder.File("out")).size(), 3U);
}

TEST(Files, TellTheFileAndTheReasonOfAFailure)
{
    const TempFolder folder;
    const std::string missing = folder.File("missing/out");
    EXPECT_EQ(FailureOf([&] { OutputFile file(missing); }),
              "Can't write " + missing + ": No such file or directory");
    EXPECT_EQ(FailureOf([&] { FileBytes::Load(missing); }),
              "Can't open " + missing + ": No such file or directory");
    EXPECT_NE(FailureOf([&] { FileBytes::Load(folder.File(".")); }), "");
}

TEST(Files, HaveNamesOfAllLetters)
{
    const TempFolder folder;
    const std::string name = "zamek-\u0142\u00f3d\u017a \u00fc \u57ce.phd";
    WriteWholeFile(folder.File(name), std::vector<std::byte>(3));
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
    EXPECT_EQ(FailureOf([&] { WriteWholeFile(full, std::vector<std::byte>(10)); }), message);
    EXPECT_EQ(FailureOf([&] { WriteWholeFile(full, std::vector<std::byte>(1000000)); }), message);
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
