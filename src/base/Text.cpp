#include "base/Text.h"

#include "base/Utf8.h"

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

/// Whether a character is a control character; `letter` is UTF-8 or a byte by itself.
bool IsControl(std::string_view letter)
{
    const auto code = static_cast<unsigned char>(letter.back());
    const bool isHigh = code >= 0x80 && code < 0xa0;
    if (letter.size() == 1)
        return code < 0x20 || code == 0x7f || isHigh;
    return letter.size() == 2 && letter[0] == '\xc2' && isHigh;
}

/// "\\x0A" and the like, but for the line break.
std::string Escape(char control)
{
    const auto code = static_cast<unsigned char>(control);
    return control == '\n' ? "\\n" : (code < 0x10 ? "\\x0" : "\\x") + Hex(code);
}

} // namespace

std::size_t Utf8Length(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const auto first = byte(0);
    if (first < 0x80)
        return 1;
    const std::size_t length = first < 0xc2 ? 0 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    if (length == 0 || first > 0xf4 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xc0U) != 0x80)
            return 0;
    const bool hasShorterForm =
        (first == 0xe0 && byte(1) < 0xa0) || (first == 0xf0 && byte(1) < 0x90);
    const bool isNoLetter =
        (first == 0xed && byte(1) >= 0xa0) || (first == 0xf4 && byte(1) >= 0x90);
    return hasShorterForm || isNoLetter ? 0 : length;
}

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

std::string Grouped(std::size_t count)
{
    auto text = std::to_string(count);
    for (auto i = text.size(); i > 3; i -= 3)
        text.insert(i - 3, ",");
    return text;
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

std::string Printable(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const auto letter = text.substr(0, std::max<std::size_t>(Utf8Length(text), 1));
        if (IsControl(letter))
            shown += Escape(letter.back());
        else
            shown += letter;
        text.remove_prefix(letter.size());
    }
    return shown;
}

std::string PrintableLines(std::string_view text)
{
    std::string shown;
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        shown += Printable(text.substr(0, end)) + "\n  ";
        text.remove_prefix(end + 1);
    }
    return shown + Printable(text);
}

std::string FromLatin1(std::string_view text)
{
    std::string utf8;
    for (const char character : text.substr(0, text.find('\0'))) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x80) {
            utf8 += character;
        } else {
            utf8 += static_cast<char>(0xc0U | (code >> 6U));
            utf8 += static_cast<char>(0x80U | (code & 0x3fU));
        }
    }
    utf8.erase(utf8.find_last_not_of(' ') + 1);
    return utf8;
}

std::string ToLatin1(std::string_view name)
{
    std::string text;
    for (std::string_view rest = name; !rest.empty();) {
        const std::size_t length = Utf8Length(rest);
        if (length == 0)
            return std::string(name);
        const unsigned lead = static_cast<unsigned char>(rest[0]);
        if (length == 1)
            text += rest[0];
        else if (lead <= 0xc3U) // the letters from 0x80 to 0xff
            text += static_cast<char>((lead << 6U) | (static_cast<unsigned char>(rest[1]) & 0x3fU));
        else
            text += '?';
        rest.remove_prefix(length);
    }
    return text;
}

bool HasLineBreak(std::string_view text)
{
    return text.find_first_of("\r\n") != std::string_view::npos;
}

bool NameBegins(const std::filesystem::path& name, std::string_view start)
{
    const auto& characters = name.native();
    return characters.size() >= start.size() &&
           std::equal(start.begin(), start.end(), characters.begin(), [](char wanted, auto found) {
               const bool isCapital = found >= 'A' && found <= 'Z';
               return (isCapital ? found + ('a' - 'A') : found) == Lower(wanted);
           });
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
