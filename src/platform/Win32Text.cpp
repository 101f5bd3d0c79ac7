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
    const bool quoted = commandLine.starts_with(L'"');
    const auto nameEnd = quoted ? commandLine.find(L'"', 1) : commandLine.find_first_of(L" \t");
    if (nameEnd == std::wstring_view::npos)
        return {};
    const auto start = commandLine.find_first_not_of(L" \t", nameEnd + (quoted ? 1 : 0));
    return start == std::wstring_view::npos ? std::wstring_view() : commandLine.substr(start);
}

} // namespace morlik

#endif
