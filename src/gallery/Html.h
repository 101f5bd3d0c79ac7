#pragma once

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>

namespace morlik::gallery
{

/// A text for people that may come from a file, as valid UTF-8: bytes that are none count as
/// letters of Latin-1, and control characters show as U+FFFD.
std::string PlainText(std::string_view text);

/// The same for HTML, as text and as value of an attribute between quotes. All texts of a page go
/// through it; `Html` does that.
std::string EscapeHtml(std::string_view text);

/// A path below the gallery as a relative URL: what has a meaning there stands as %XX.
std::string EncodeUrl(std::string_view path);

/// Markup, which only a literal of this program can be.
class Markup
{
public:
    template <std::size_t N>
    consteval Markup(const char (&text)[N]) // NOLINT: converts literals; an array keeps its size
        : text_(text, N - 1)
    {
    }

    std::string_view Text() const { return text_; }

private:
    std::string_view text_;
};

template <class Text>
concept PlainString = std::same_as<Text, std::string> || std::same_as<Text, std::string_view>;

/// A piece of a page that grows by its pieces: literals are markup, texts are escaped.
class Html
{
public:
    Html& operator<<(const Markup& markup)
    {
        text_ += markup.Text();
        return *this;
    }
    Html& operator<<(const PlainString auto& text)
    {
        text_ += EscapeHtml(text);
        return *this;
    }
    Html& operator<<(std::integral auto number)
    {
        text_ += std::to_string(number);
        return *this;
    }
    Html& operator<<(const Html& piece)
    {
        text_ += piece.text_;
        return *this;
    }

    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

/// The head of a page up to its body: only files of the gallery itself are loaded and run.
/// `root` leads from the page to the gallery's folder, empty or "../../".
Html PageHead(const std::string& title, const std::string& root, bool hasData);

} // namespace morlik::gallery
