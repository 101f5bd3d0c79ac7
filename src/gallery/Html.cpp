#include "gallery/Html.h"

#include "base/Text.h"
#include "base/Utf8.h"

#include <algorithm>

namespace morlik::gallery
{

namespace
{

constexpr std::string_view kReplacement = "\xef\xbf\xbd"; ///< U+FFFD

bool IsControl(std::string_view letter)
{
    const auto code = static_cast<unsigned char>(letter.back());
    return letter.size() == 1 ? code < 0x20 || code == 0x7f
                              : letter.size() == 2 && letter[0] == '\xc2' && code < 0xa0;
}

} // namespace

std::string PlainText(std::string_view text)
{
    std::string plain;
    plain.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = Utf8Length(text);
        const auto bytes = text.substr(0, std::max<std::size_t>(length, 1));
        const std::string letter = length == 0 ? FromLatin1(bytes) : std::string(bytes);
        plain += IsControl(letter) ? kReplacement : letter;
        text.remove_prefix(bytes.size());
    }
    return plain;
}

std::string EscapeHtml(std::string_view text)
{
    std::string escaped;
    for (const char letter : PlainText(text)) {
        switch (letter) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&#39;";
            break;
        default:
            escaped += letter;
        }
    }
    return escaped;
}

std::string EncodeUrl(std::string_view path)
{
    constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string url;
    for (const char letter : path) {
        if (kPlain.find(letter) != std::string_view::npos) {
            url += letter;
            continue;
        }
        const auto code = static_cast<unsigned char>(letter);
        url += (code < 0x10 ? "%0" : "%") + Hex(code);
    }
    return url;
}

Html PageHead(const std::string& title, const std::string& root, bool hasData)
{
    Html head;
    head << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
            "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
            "script-src 'self'; style-src 'self'; img-src 'self'; media-src 'self'; "
            "base-uri 'none'; form-action 'none'\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
            "<meta name=\"color-scheme\" content=\"light dark\">\n"
            "<meta name=\"generator\" content=\"Morlik\">\n<title>"
         << title << "</title>\n<link rel=\"stylesheet\" href=\"" << root << "gallery.css\">\n";
    if (hasData)
        head << "<script src=\"data.js\" defer></script>\n";
    head << "<script src=\"" << root << "gallery.js\" defer></script>\n</head>\n";
    return head;
}

} // namespace morlik::gallery
