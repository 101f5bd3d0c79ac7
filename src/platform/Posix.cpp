#include "base/Text.h"
#include "platform/System.h"

#include <array>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <iostream>
#include <sys/ioctl.h>
#include <system_error>
#include <unistd.h>

namespace morlik
{

std::filesystem::path ExecutablePath()
{
    std::error_code error;
    const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() / "morlik" : path;
}

std::string Environment(const char* name)
{
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
    return value != nullptr ? value : "";
}

bool HasDisplay()
{
    if (!Environment("WAYLAND_DISPLAY").empty())
        return true;
    const auto display = Environment("DISPLAY");
    if (display.empty() || display[0] != ':')
        return !display.empty();
    // A display of this machine has a socket; a name left over from one that ended has none.
    const auto number = display.substr(1, display.find('.') - 1);
    std::error_code error;
    return std::filesystem::exists("/tmp/.X11-unix/X" + number, error);
}

std::filesystem::path StateFolder()
{
    const auto state = ToPath(Environment("XDG_STATE_HOME"));
    if (state.is_absolute())
        return state / "morlik";
    const auto home = ToPath(Environment("HOME"));
    return home.is_absolute() ? home / ".local/state/morlik" : std::filesystem::path();
}

void TakeFaultsAsErrors()
{
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) == -1) // open gives the least free number, which is this one
            static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

namespace
{

// A signal can leave its word nowhere else.
volatile std::sig_atomic_t stopRequested = 0;

void RequestStop(int /*signal*/)
{
    stopRequested = 1;
}

void Handle(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    static_cast<void>(sigaction(signal, &action, nullptr));
}

} // namespace

InterruptScope::InterruptScope()
{
    stopRequested = 0;
    Handle(SIGINT, RequestStop);
    Handle(SIGTERM, RequestStop);
}

InterruptScope::~InterruptScope()
{
    Handle(SIGINT, SIG_DFL);
    Handle(SIGTERM, SIG_DFL);
}

bool InterruptScope::IsRequested()
{
    return stopRequested != 0;
}

bool ErrorsGoToATerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

std::size_t ColumnsOfErrors()
{
    struct winsize size = {};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : kUsualColumns;
}

std::string CommandLine(int argc, const char* const* argv)
{
    std::string line;
    for (int i = 1; i < argc; ++i) {
        if (i > 1)
            line += ' ';
        line += argv[i];
    }
    return line;
}

std::vector<std::string> Arguments(int argc, const char* const* argv)
{
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::string ShortDate()
{
    const std::time_t now = std::time(nullptr);
    std::array<char, 64> text{};
    static_cast<void>(std::setlocale(LC_TIME, "")); // else dates have the form of C
    const std::tm* local = std::localtime(&now);    // NOLINT(concurrency-mt-unsafe)
    if (local == nullptr || std::strftime(text.data(), text.size(), "%x", local) == 0)
        return {};
    return text.data();
}

void ShowLastMessage(const std::string& text, const std::string& title)
{
    std::cerr << title << ": " << text << '\n';
}

void ShowAnswer(const std::string& text, const std::string& /*title*/)
{
    std::cout << text;
}

// Terminals show the bytes as they come.
ConsoleTexts::ConsoleTexts() = default;
ConsoleTexts::~ConsoleTexts() = default;

} // namespace morlik
