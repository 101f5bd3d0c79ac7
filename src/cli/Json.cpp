#include "cli/Json.h"

#include <string>

namespace morlik::cli
{

namespace
{

/// The next control character that the library leaves as it is: DEL and, in UTF-8, those from 0x80
/// to 0x9f.
std::size_t FindControl(const std::string& text, std::size_t from)
{
    for (auto at = from; (at = text.find_first_of("\x7f\xc2", at)) != std::string::npos; ++at)
        if (text[at] == '\x7f' || static_cast<unsigned char>(text[at + 1]) < 0xa0)
            return at;
    return std::string::npos;
}

void Print(const Json& description, int indent, std::ostream& out)
{
    auto text = description.dump(indent, ' ', false, Json::error_handler_t::replace);
    for (auto at = FindControl(text, 0); at != std::string::npos; at = FindControl(text, at)) {
        const bool isDel = text[at] == '\x7f';
        const auto code = static_cast<unsigned char>(text[isDel ? at : at + 1]);
        const char* digits = "0123456789abcdef";
        text.replace(at, isDel ? 1 : 2,
                     std::string("\\u00") + digits[code >> 4U] + digits[code & 15U]);
    }
    out << text << std::endl;
}

} // namespace

void PrintJson(const Json& description, std::ostream& out)
{
    constexpr int kIndent = 2;
    Print(description, kIndent, out);
}

void PrintJsonLine(const Json& description, std::ostream& out)
{
    constexpr int kOneLine = -1;
    Print(description, kOneLine, out);
}

} // namespace morlik::cli
