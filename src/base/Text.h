#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace morlik
{

/// Texts are 8-bit. Names of files are texts too: UTF-8 on Windows, the system's own bytes
/// elsewhere.

/// ASCII letters in the other case; all other bytes stay.
std::string ToLower(std::string_view text);
std::string ToUpper(std::string_view text);

/// Text of a count: 2,121.
std::string Grouped(std::size_t count);

/// Whether `text` ends in `ending`, without regard to the case of ASCII letters.
bool EndsWithNoCase(std::string_view text, std::string_view ending);

/// Upper-case hexadecimal digits without leading zeros.
std::string Hex(std::uint32_t value);

/// Position of the last character that ends a folder (`\` or `/`), counted from 1; 0 if none does.
std::size_t LastFolderEnd(std::string_view path);

/// The name of a file without its folder.
std::string FileTitle(std::string_view path);

/// A text that may come from a file, fit for a terminal, where control characters give orders, and
/// for a line of a list or a log, which a line break in a name would forge: control characters of
/// ASCII and those of 0x80 to 0x9f, in UTF-8 or as bytes by themselves, as \xNN, line breaks as \n.
/// All else stays, valid UTF-8 and other 8-bit letters.
std::string Printable(std::string_view text);

/// The same for a text of several lines. The further ones are set in by two blanks, so that none of
/// them looks like a line of the program's own.
std::string PrintableLines(std::string_view text);

/// An 8-bit text of a level, set or project as UTF-8, its padding cut off: what a 0 begins, and
/// blanks at its end.
std::string FromLatin1(std::string_view text);

/// The name of a file as a text of the formats: UTF-8 as Western letters, with "?" for others;
/// bytes that are no UTF-8 stay.
std::string ToLatin1(std::string_view name);

/// Whether a text holds what ends a line in some list.
bool HasLineBreak(std::string_view text);

/// Whether the name of a file begins with an ASCII text, without regard to the case of letters. It
/// is compared in the system's own characters: on Windows there are names that no text can hold.
bool NameBegins(const std::filesystem::path& name, std::string_view start);

std::filesystem::path ToPath(std::string_view text);
std::string FromPath(const std::filesystem::path& path);

} // namespace morlik
