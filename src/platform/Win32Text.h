#pragma once

#ifdef _WIN32

#include <string>
#include <string_view>

namespace morlik
{

/// The system's texts are UTF-16, ours UTF-8. What is not valid in one form becomes U+FFFD in the
/// other; zeros within a text stay.

std::wstring ToWide(std::string_view text);
std::string FromWide(std::wstring_view text);

/// What a command line holds behind the program's name and the blanks that end it. Blanks of the
/// name stand in quotes, be it the whole of it or one folder.
std::wstring_view WithoutProgramName(std::wstring_view commandLine);

} // namespace morlik

#endif
