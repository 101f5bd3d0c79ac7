#ifdef _WIN32

#include "platform/Platform.h"
#include "platform/Win32Text.h"
#include "tests/support/Failures.h"

#include <ctime>
#include <gtest/gtest.h>

namespace morlik::test
{

using namespace std::string_literals;

TEST(Win32Text, KeepsEveryLetterAndReplacesWhatIsNone)
{
    const std::string text = "zamek-\u0142\u00f3d\u017a \u57ce \U0001f600\0."s;
    const std::wstring wide = L"zamek-\u0142\u00f3d\u017a \u57ce \U0001f600\0."s;
    EXPECT_EQ(ToWide(text), wide);
    EXPECT_EQ(FromWide(wide), text);
    EXPECT_EQ(ToWide(""), L"");
    EXPECT_EQ(FromWide(L""), "");
    EXPECT_EQ(ToWide("a\xff.phd"), L"a\ufffd.phd");
    EXPECT_EQ(FromWide(std::wstring{L'a', wchar_t{0xd800}, L'.'}), "a\ufffd.");
}

TEST(Win32Text, OfTheCommandLineEndsTheProgramsNameAtABlankOutsideQuotes)
{
    const std::vector<std::pair<std::wstring, std::wstring>> rows{
        {LR"("C:\My tools\MORLIK.exe" /makewas a.phd /export "o.was" )",
         LR"(/makewas a.phd /export "o.was" )"},
        {LR"(C:\tools\MORLIK.exe  /makewas "a b.phd")", LR"(/makewas "a b.phd")"},
        {LR"("C:\My tools"\MORLIK.exe /makewas a.phd)", L"/makewas a.phd"},
        {LR"(C:\"My tools"\"MORLIK.exe" "a b.phd")", LR"("a b.phd")"},
        {L"\"MORLIK.exe\"\t\u57ce.phd", L"\u57ce.phd"},
        {L"\"MORLIK.exe\"", L""},
        {L"MORLIK.exe ", L""},
        {L"\"MORLIK.exe /makewas", L""},
        {L"", L""},
    };
    for (const auto& [line, rest] : rows)
        EXPECT_EQ(WithoutProgramName(line), rest);
}

TEST(Win32, KnowsTheUsersFolderAndTheDate)
{
    EXPECT_EQ(StateFolder().filename(), "Morlik");
    EXPECT_TRUE(StateFolder().is_absolute());
    EXPECT_TRUE(std::filesystem::is_directory(StateFolder().parent_path()));
    const std::time_t now = std::time(nullptr);
    EXPECT_PRED2(Has, ShortDate(), std::to_string(std::localtime(&now)->tm_mday));
}

} // namespace morlik::test

#endif
