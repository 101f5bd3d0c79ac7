#ifdef _WIN32

#include "platform/Win32Text.h"

#include <windows.h>

namespace morlik
{

std::wstring ToWide(std::string_view text)
{
    const int size = static_cast<int>(text.size());
    const int wideSize = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(wideSize), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), wideSize);
    return wide;
}

std::string FromWide(std::wstring_view text)
{
    const int wideSize = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), wideSize, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), wideSize, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring_view WithoutProgramName(std::wstring_view commandLine)
{
    constexpr std::wstring_view blanks = L" \t";
    bool quoted = false;
    std::size_t end = 0;
    for (; end < commandLine.size(); ++end) {
        if (!quoted && blanks.find(commandLine[end]) != std::wstring_view::npos)
            break;
        quoted ^= commandLine[end] == L'"';
    }
    const auto start = commandLine.find_first_not_of(blanks, end);
    return start == std::wstring_view::npos ? std::wstring_view() : commandLine.substr(start);
}

} // namespace morlik

#endif
