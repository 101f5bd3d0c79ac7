#include "picture/Lettering.h"

#include <algorithm>
#include <array>

namespace morlik
{

namespace
{

constexpr char kFirst = ' ';
constexpr char kLast = '~';
constexpr std::int32_t kGlyphRows = 8; ///< the last one for what hangs below the line
constexpr std::int32_t kGlyphColumns = 5;

/// A glyph has a byte for each row, the top one first; of its low 5 bits the highest is the left
/// pixel.
constexpr std::array<std::uint64_t, 95> kGlyphs{
    // clang-format off
    0x0000000000000000, 0x0404040404000400, 0x0a0a0a0000000000, 0x0a0a1f0a1f0a0a00, // blank ! " #
    0x040f140e051e0400, 0x1919020408131300, 0x0c12140815120d00, 0x0404080000000000, // $ % & '
    0x0204080808040200, 0x0804020202040800, 0x0004150e15040000, 0x0004041f04040000, // ( ) * +
    0x0000000000040408, 0x0000001f00000000, 0x00000000000c0c00, 0x0101020408101000, // , - . /
    0x0e11131519110e00, 0x040c040404040e00, 0x0e11010204081f00, 0x0e11010601110e00, // 0 1 2 3
    0x02060a121f020200, 0x1f101e0101110e00, 0x0608101e11110e00, 0x1f01020204040400, // 4 5 6 7
    0x0e11110e11110e00, 0x0e11110f01020c00, 0x000c0c000c0c0000, 0x000c0c0004040800, // 8 9 : ;
    0x0002040804020000, 0x00001f001f000000, 0x0008040204080000, 0x0e11010204000400, // < = > ?
    0x0e11171517100e00, 0x0e11111f11111100, 0x1e11111e11111e00, 0x0e11101010110e00, // @ A B C
    0x1c12111111121c00, 0x1f10101e10101f00, 0x1f10101e10101000, 0x0e11101711110f00, // D E F G
    0x1111111f11111100, 0x0e04040404040e00, 0x0702020202120c00, 0x1112141814121100, // H I J K
    0x1010101010101f00, 0x111b151511111100, 0x1119151513111100, 0x0e11111111110e00, // L M N O
    0x1e11111e10101000, 0x0e11111115120d00, 0x1e11111e14121100, 0x0f10100e01011e00, // P Q R S
    0x1f04040404040400, 0x1111111111110e00, 0x111111110a0a0400, 0x11111115151b1100, // T U V W
    0x11110a040a111100, 0x11110a0404040400, 0x1f01020408101f00, 0x0e08080808080e00, // X Y Z [
    0x1010080402010100, 0x0e02020202020e00, 0x040a110000000000, 0x000000000000001f, // backslash ] ^ _
    0x0804000000000000, 0x00000e010f110f00, 0x10101e1111111e00, 0x00000e1010110e00, // ` a b c
    0x01010f1111110f00, 0x00000e111f100e00, 0x06081e0808080800, 0x00000f11110f010e, // d e f g
    0x10101e1111111100, 0x04000c0404040e00, 0x020006020202020c, 0x1010121418141200, // h i j k
    0x0c04040404040e00, 0x00001a1515151100, 0x00001e1111111100, 0x00000e1111110e00, // l m n o
    0x00001e11111e1010, 0x00000f11110f0101, 0x0000161910101000, 0x00000f100e011e00, // p q r s
    0x08081e0808090600, 0x0000111111130d00, 0x00001111110a0400, 0x0000111115150a00, // t u v w
    0x0000110a040a1100, 0x00001111110f010e, 0x00001f0204081f00, 0x0304040804040300, // x y z {
    0x0404040404040400, 0x1804040204041800, 0x0000091512000000, // | } ~
    // clang-format on
};
static_assert(kGlyphs.size() == kLast - kFirst + 1);

std::uint64_t GlyphOf(char character)
{
    const char shown = character < kFirst || character > kLast ? '?' : character;
    return kGlyphs.at(static_cast<std::size_t>(shown - kFirst));
}

bool IsInk(std::uint64_t glyph, std::int32_t column, std::int32_t row)
{
    const std::int32_t bit = (kGlyphRows - 1 - row) * 8 + kGlyphColumns - 1 - column;
    return ((glyph >> static_cast<unsigned>(bit)) & 1U) != 0;
}

} // namespace

std::vector<std::string> WrapText(std::string_view text, std::size_t columns)
{
    std::vector<std::string> lines;
    while (text.size() > columns) {
        // The line ends before its last blank or behind its last underscore.
        const std::size_t blank = text.substr(0, columns + 1).find_last_of(' ');
        const std::size_t mark = text.substr(0, columns).find_last_of('_');
        const bool atBlank = blank != std::string_view::npos && blank > 0 &&
                             (mark == std::string_view::npos || blank > mark);
        const std::size_t end = atBlank                          ? blank
                                : mark != std::string_view::npos ? mark + 1
                                                                 : columns;
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(atBlank ? end + 1 : end);
    }
    if (!text.empty() || lines.empty())
        lines.emplace_back(text);
    return lines;
}

void DrawLine(Picture& picture, std::int32_t x, std::int32_t y, std::string_view text,
              Colour colour)
{
    for (const char character : text) {
        const std::uint64_t glyph = GlyphOf(character);
        for (std::int32_t row = 0; row < kGlyphRows; ++row)
            for (std::int32_t column = 0; column < kGlyphColumns; ++column) {
                const std::int32_t left = x + column;
                const std::int32_t top = y + row;
                if (IsInk(glyph, column, row) && left >= 0 && left < picture.Width && top >= 0 &&
                    top < picture.Height)
                    picture.Pixels[picture.At(left, top)] = colour;
            }
        x += kLetterWidth;
    }
}

} // namespace morlik
