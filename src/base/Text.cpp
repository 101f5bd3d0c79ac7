#include "base/Text.h"

#include <algorithm>

namespace morlik
{

namespace
{

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char Upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

} // namespace

std::string ToLower(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
    return lower;
}

std::string ToUpper(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return upper;
}

bool EndsWithNoCase(std::string_view text, std::string_view ending)
{
    return text.size() >= ending.size() &&
           ToLower(text.substr(text.size() - ending.size())) == ToLower(ending);
}

std::string Hex(std::uint32_t value)
{
    std::string digits;
    do {
        digits.insert(digits.begin(), "0123456789ABCDEF"[value & 15U]);
        value >>= 4U;
    } while (value != 0);
    return digits;
}

std::size_t LastFolderEnd(std::string_view path)
{
    const auto at = path.find_last_of("\\/");
    return at == std::string_view::npos ? 0 : at + 1;
}

std::string FileTitle(std::string_view path)
{
    return std::string(path.substr(LastFolderEnd(path)));
}

std::filesystem::path ToPath(std::string_view text)
{
#ifdef _WIN32
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
#else
    return {text};
#endif
}

std::string FromPath(const std::filesystem::path& path)
{
#ifdef _WIN32
    const auto text = path.u8string();
    return {text.begin(), text.end()};
#else
    return path.string();
#endif
}

} // namespace morlik
