#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace morlik
{

/// What the operating system is asked for outside of windows.

/// The program folder: that of the environment variable `MORLIK_FOLDER` where it is set, else that
/// of the executable, or `lib/morlik` beside its folder where there is one.
std::filesystem::path ProgramFolder();

/// The user's folder for the program's own state, not created yet; empty where there is none.
std::filesystem::path StateFolder();

/// Whether there is a display to show windows on, as far as its name tells: it may not answer.
bool HasDisplay();

/// The command line without the program's name; where the system splits it, the arguments joined
/// with single blanks.
std::string CommandLine(int argc, const char* const* argv);

/// The arguments of the command line, each by itself, without the program's name.
std::vector<std::string> Arguments(int argc, const char* const* argv);

/// For the start of a main. A file that passes the size set for this user's files, and a reader of
/// the results that goes away, are faults of writing then; else the system ends the process in the
/// middle of its work, without a word. Standard streams that the caller has closed stay unusable,
/// but no other file takes their numbers and with them what is printed.
void TakeFaultsAsErrors();

/// While one lives, a first Ctrl+C, or a first word of the system to end (SIGINT, SIGTERM), is a
/// request to stop, which the work looks for in its turns. A second one ends the process at once,
/// as without this. One lives at a time.
class InterruptScope
{
public:
    InterruptScope();
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;
    ~InterruptScope();

    /// Whether there was a request since the last one was made.
    static bool IsRequested();
};

/// Exit status of a program that was asked to stop.
constexpr int kStoppedStatus = 130;

/// Whether standard error is a terminal, and not a file or another program.
bool ErrorsGoToATerminal();
/// The columns of that terminal; 80 where it doesn't tell.
std::size_t ColumnsOfErrors();

/// Today's date in the short form that the user's system is set to.
std::string ShortDate();

/// Tells why the program can't go on, where there may be no window of its own to tell it: in a box
/// on Windows, whose window programs have no console, and on standard error elsewhere.
void ShowLastMessage(const std::string& text, const std::string& title);

/// Shows what a command line asks for and nothing else: on standard output, in a box on Windows.
void ShowAnswer(const std::string& text, const std::string& title);

/// While one lives, texts with names of files come out right on the console. That of Windows reads
/// bytes by a code page, which belongs to all programs in it and is put back at the end.
class ConsoleTexts
{
public:
    ConsoleTexts();
    ConsoleTexts(const ConsoleTexts&) = delete;
    ConsoleTexts& operator=(const ConsoleTexts&) = delete;
    ~ConsoleTexts(); // NOLINT(performance-trivially-destructible): Windows has work for it

private:
    [[maybe_unused]] unsigned int codePage_ = 0; ///< what to put back; 0 without a console
};

} // namespace morlik
