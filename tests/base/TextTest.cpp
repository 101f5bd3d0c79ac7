#include "base/Text.h"

#include <gtest/gtest.h>
#include <vector>

namespace morlik::test
{

namespace
{

TEST(Printable, EscapesControlCharactersAndKeepsLetters)
{
    struct Row
    {
        std::string Text;
        std::string Shown;
    };
    const std::vector<Row> rows{
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

} // namespace

} // namespace morlik::test
