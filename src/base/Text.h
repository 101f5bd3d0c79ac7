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

/// Whether `text` ends in `ending`, without regard to the case of ASCII letters.
bool EndsWithNoCase(std::string_view text, std::string_view ending);

/// Upper-case hexadecimal digits without leading zeros.
std::string Hex(std::uint32_t value);

/// Position of the last character that ends a folder (`\` or `/`), counted from 1; 0 if none does.
std::size_t LastFolderEnd(std::string_view path);

/// The name of a file without its folder.
std::string FileTitle(std::string_view path);

std::filesystem::path ToPath(std::string_view text);
std::string FromPath(const std::filesystem::path& path);

} // namespace morlik
