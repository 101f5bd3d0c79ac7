#pragma once

#include "picture/Picture.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace morlik
{

/// A bitmap face of one width for labels in pictures: the characters of ASCII from blank to tilde.
/// Every other byte is shown as a question mark.
constexpr std::int32_t kLetterWidth = 6; ///< pixels, with one between two letters
constexpr std::int32_t kLineHeight = 10; ///< pixels, with two between two lines

/// Breaks a text into lines of at most `columns` letters, at least 1, where it has blanks or
/// underscores; longer words are cut. A text without letters has one empty line.
std::vector<std::string> WrapText(std::string_view text, std::size_t columns);

/// Draws a line of text with its top left corner at `x`, `y`; what lies outside the picture is left
/// out.
void DrawLine(Picture& picture, std::int32_t x, std::int32_t y, std::string_view text,
              Colour colour);

} // namespace morlik
