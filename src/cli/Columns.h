#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

namespace morlik::cli
{

/// Whether a byte of UTF-8 begins a letter.
inline bool BeginsLetter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80;
}

/// Columns that a text in UTF-8 takes.
inline std::size_t Width(const std::string& text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), BeginsLetter));
}

/// The end of a text, at most so many columns of it.
inline std::string LastColumns(const std::string& text, std::size_t columns)
{
    std::size_t width = Width(text);
    std::size_t at = 0;
    for (; at < text.size() && (width > columns || !BeginsLetter(text[at])); ++at)
        width -= BeginsLetter(text[at]) ? 1U : 0U;
    return text.substr(at);
}

} // namespace morlik::cli
