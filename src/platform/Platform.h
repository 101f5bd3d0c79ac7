#pragma once

#include <filesystem>
#include <string>

namespace morlik
{

/// What the operating system is asked for outside of windows.

/// The program folder: that of the environment variable `MORLIK_FOLDER` where it is set, else that
/// of the executable.
std::filesystem::path ProgramFolder();

/// The user's folder for the program's own state, not created yet; empty where there is none.
std::filesystem::path StateFolder();

/// Whether there is a display to show windows on.
bool HasDisplay();

/// The command line without the program's name; where the system splits it, the arguments joined
/// with single blanks.
std::string CommandLine(int argc, const char* const* argv);

/// Today's date in the short form that the user's system is set to.
std::string ShortDate();

} // namespace morlik
