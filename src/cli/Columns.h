#pragma once

#include <cstddef>
#include <string>

namespace morlik::cli
{

/// Columns that a letter of UTF-8 takes, told by its first byte: from U+3000 on, where those of
/// China, Japan and Korea stand, mostly two. The other bytes of a letter take none.
inline std::size_t ColumnsOf(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    if ((value & 0xc0U) == 0x80)
        return 0;
    return value < 0xe3 ? 1 : 2;
}

/// Columns that a text in UTF-8 takes.
inline std::size_t Width(const std::string& text)
{
    std::size_t width = 0;
    for (const char byte : text)
        width += ColumnsOf(byte);
    return width;
}

/// The end of a text, at most so many columns of it.
inline std::string LastColumns(const std::string& text, std::size_t columns)
{
    std::size_t width = Width(text);
    std::size_t at = 0;
    for (; at < text.size() && (width > columns || ColumnsOf(text[at]) == 0); ++at)
        width -= ColumnsOf(text[at]);
    return text.substr(at);
}

} // namespace morlik::cli
