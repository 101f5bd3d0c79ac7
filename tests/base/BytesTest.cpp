#include "base/Narrow.h"
#include "base/Text.h"
#include "tests/support/Failures.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace morlik::test
{

constexpr std::array<std::byte, 10> kTen{};

TEST(ByteReader, RefusesEveryStepThatLeavesTheBytes)
{
    using Limits = std::numeric_limits<std::int64_t>;
    const std::vector<std::pair<const char*, void (*)(ByteReader&)>> steps{
        {"a value across the end", [](ByteReader& r) { r.Skip(4), r.Read<std::int32_t>(); }},
        {"a size that would wrap", [](ByteReader& r) { r.Take(static_cast<std::size_t>(-1)); }},
        {"one record too many", [](ByteReader& r) { r.Table<std::int32_t>(2); }},
        {"a negative count", [](ByteReader& r) { r.Table<std::int32_t>(-1); }},
        {"a count whose bytes wrap to 0",
         [](ByteReader& r) { r.SkipTable(Limits::max() / 2 + 1, 4); }},
        {"the largest count", [](ByteReader& r) { r.Table<std::int32_t>(Limits::max()); }},
        {"the least count", [](ByteReader& r) { r.TakeTable(Limits::min(), 1); }},
        {"a jump behind the end", [](ByteReader& r) { r.Seek(11); }},
    };
    for (const auto& [name, take] : steps) {
        ByteReader reader(kTen);
        reader.Skip(3);
        EXPECT_THROW(take(reader), ReadFailure) << name;
    }
}

TEST(ByteReader, ReachesTheLastByteAndTellsWhereItFailed)
{
    ByteReader reader(kTen);
    reader.Section("frames");
    reader.Seek(10);
    EXPECT_TRUE(reader.Table<std::int64_t>(0).empty());
    reader.SeekUpTo(11);
    EXPECT_EQ(reader.Left(), 0U);
    reader.Seek(2);
    EXPECT_EQ(reader.Table<std::int64_t>(1).size(), 1U);
    reader.Seek(2);
    EXPECT_EQ(MessageOf<ReadFailure>([&] { reader.Table<std::int32_t>(3); }),
              "frames, offset 2: 3 records of 4 bytes wanted, 8 bytes left");
}

TEST(Narrow, KeepsWhatFitsAndFailsOnTheRest)
{
    EXPECT_EQ(narrow<std::uint8_t>(255), 255);
    EXPECT_THROW(narrow<std::uint8_t>(256), ReadFailure);
    EXPECT_THROW(narrow<std::uint8_t>(-1), ReadFailure);
    EXPECT_EQ(Word(0xe005), -8187);
}

TEST(Printable, EscapesControlCharactersAndKeepsLetters)
{
    const std::vector<std::pair<std::string, std::string>> rows{
        {"plain C:\\new", "plain C:\\new"},
        {"two\nlines: saved as good.was", "two\\nlines: saved as good.was"},
        {std::string("\0\t\r\x1b[2J\x7f", 8), "\\x00\\x09\\x0D\\x1B[2J\\x7F"},
        // Letters of UTF-8 whose bytes are C1 by themselves, and C1 in UTF-8.
        {"\xc3\x9c \xe4\xb8\x9d \xf0\x9f\x98\x80", "\xc3\x9c \xe4\xb8\x9d \xf0\x9f\x98\x80"},
        {"a\xc2\x9b"
         "31m\xc2\xa0",
         "a\\x9B31m\xc2\xa0"},
        // Western letters stay; a C1 byte by itself does not.
        {"L\xf6we \x9b\x80", "L\xf6we \\x9B\\x80"},
        // No letters of UTF-8: too long a form, cut short, half of a pair, behind the last.
        {"\xc0\x9b", "\xc0\\x9B"},
        {"\xe0\x82\x9b", "\xe0\\x82\\x9B"},
        {"\xed\xa0\x80", "\xed\xa0\\x80"},
        {"\xf4\x90\x80\x80", "\xf4\\x90\\x80\\x80"},
        {"\xf0\x82\x82\x9b", "\xf0\\x82\\x82\\x9B"},
        {"\xe4\x9b", "\xe4\\x9B"},
        {"\xc2", "\xc2"},
        {"\xc2\n", "\xc2\\n"}};
    for (const auto& [text, shown] : rows)
        EXPECT_EQ(Printable(text), shown);
    EXPECT_EQ(PrintableLines("one\ntwo\t\n\nfour"), "one\n  two\\x09\n  \n  four");
    EXPECT_EQ(PrintableLines(""), "");
}

} // namespace morlik::test
