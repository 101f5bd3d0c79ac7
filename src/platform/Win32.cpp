#include "base/Text.h"
#include "platform/System.h"

#include <windows.h>

namespace morlik
{

namespace
{

std::string FromWide(const wchar_t* text)
{
    return FromPath(std::filesystem::path(text));
}

} // namespace

std::filesystem::path ExecutablePath()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::string Environment(const char* name)
{
    const std::wstring wide(name, name + std::char_traits<char>::length(name));
    const wchar_t* value = _wgetenv(wide.c_str());
    return value != nullptr ? FromWide(value) : "";
}

bool HasDisplay()
{
    return true;
}

std::filesystem::path StateFolder()
{
    const auto local = ToPath(Environment("LOCALAPPDATA"));
    return local.empty() ? local : local / "Morlik";
}

/// The system keeps the line whole; what stands before the first argument is the program's name,
/// in quotes where it holds blanks.
std::string CommandLine(int, const char* const*)
{
    const wchar_t* line = GetCommandLineW();
    const wchar_t end = *line == L'"' ? L'"' : L' ';
    if (*line == L'"')
        ++line;
    while (*line != L'\0' && *line != end)
        ++line;
    if (*line == L'"')
        ++line;
    while (*line == L' ')
        ++line;
    return FromWide(line);
}

} // namespace morlik
