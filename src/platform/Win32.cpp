#include "base/Text.h"
#include "platform/System.h"
#include "platform/Trial.h"
#include "platform/Win32Text.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <io.h>
#include <memory>
#include <windows.h>

namespace morlik
{

namespace
{

/// Holds any message whole.
constexpr std::size_t kStreamBuffer = 8192;

} // namespace

std::filesystem::path ExecutablePath()
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD size =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (size < path.size()) { // else it is cut off
            path.resize(size);
            return path;
        }
        path.resize(2 * path.size());
    }
}

std::string Environment(const char* name)
{
    const auto wideName = ToWide(name);
    // With room for the zero behind it; nothing where there is none.
    std::wstring value(GetEnvironmentVariableW(wideName.c_str(), nullptr, 0), L'\0');
    value.resize(
        GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return FromWide(value);
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

void TakeFaultsAsErrors()
{
    // a limit here is an error from the start
}

namespace
{

// The system calls the handler in a thread of its own.
std::atomic<bool> stopRequested{false};

BOOL WINAPI RequestStop(DWORD event)
{
    const bool isFirst = !stopRequested.exchange(true);
    return isFirst && (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) ? TRUE : FALSE;
}

} // namespace

InterruptScope::InterruptScope()
{
    stopRequested = false;
    SetConsoleCtrlHandler(RequestStop, TRUE);
}

InterruptScope::~InterruptScope()
{
    SetConsoleCtrlHandler(RequestStop, FALSE);
}

bool InterruptScope::IsRequested()
{
    return stopRequested;
}

bool ErrorsGoToATerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

std::size_t ColumnsOfErrors()
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    const bool isKnown = GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) != FALSE;
    return isKnown ? static_cast<std::size_t>(info.dwSize.X) : kUsualColumns;
}

/// The system keeps the line whole.
std::string CommandLine(int, const char* const*)
{
    return FromWide(WithoutProgramName(GetCommandLineW()));
}

/// Those that `main` gets are in the system's 8-bit code page, which lacks most letters.
std::vector<std::string> Arguments(int, const char* const*)
{
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; words && i < count; ++i)
        arguments.push_back(FromWide(words.get()[i]));
    return arguments;
}

std::string ShortDate()
{
    std::array<wchar_t, 128> text{};
    GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, text.data(),
                    static_cast<int>(text.size()), nullptr);
    return FromWide(text.data());
}

void ShowLastMessage(const std::string& text, const std::string& title)
{
    MessageBoxW(nullptr, ToWide(text).c_str(), ToWide(title).c_str(), MB_OK | MB_ICONERROR);
}

void ShowAnswer(const std::string& text, const std::string& title)
{
    MessageBoxW(nullptr, ToWide(text).c_str(), ToWide(title).c_str(), MB_OK);
}

/// There are no children by copy here, and nothing to be tried in one: the display is always there.
Trial::Trial(const std::function<bool()>& /*work*/, std::chrono::milliseconds /*limit*/)
    : isGood_(true)
{
}
Trial::~Trial() = default;

/// Without a buffer a letter of several bytes goes to the console in pieces, which shows none of
/// them; with one, errors are still written out after each text.
ConsoleTexts::ConsoleTexts() : codePage_(GetConsoleOutputCP())
{
    SetConsoleOutputCP(CP_UTF8);
    for (std::FILE* stream : {stdout, stderr})
        std::setvbuf(stream, nullptr, _IOFBF, kStreamBuffer);
}

ConsoleTexts::~ConsoleTexts()
{
    if (codePage_ != 0)
        SetConsoleOutputCP(codePage_);
}

} // namespace morlik
