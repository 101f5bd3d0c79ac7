#include "cli/PictureLook.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace morlik::cli
{

namespace
{

/// A whole number from 1 to the most pixels of a side; 0 for another text.
std::int32_t SideOf(std::string_view text)
{
    std::int32_t side = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, side);
    const bool isGood = error == std::errc() && stop == end && side <= kMostPictureSide;
    return isGood ? std::max(side, 0) : 0;
}

/// Takes "800x600".
bool TakeSize(const std::string& text, RenderOptions& options)
{
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos)
        return false;
    options.Width = SideOf(std::string_view(text).substr(0, cross));
    options.Height = SideOf(std::string_view(text).substr(cross + 1));
    return options.Width > 0 && options.Height > 0;
}

/// Takes "none" or six hexadecimal digits: red, green, blue.
bool TakeBackground(const std::string& text, RenderOptions& options)
{
    if (text == "none")
        return true;
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, 16);
    options.Background = Opaque(value >> 16U, (value >> 8U) & 0xffU, value & 0xffU);
    return text.size() == 6 && error == std::errc() && stop == end;
}

} // namespace

std::optional<RenderOptions> LookOf(const PictureOptions& options, const Streams& streams)
{
    RenderOptions made{.Filter = options.IsSmooth ? Filter::Linear : Filter::Nearest,
                       .Wireframe = options.Wireframe};
    if (!TakeSize(options.Size, made)) {
        streams.Errors << "The size must be WIDTHxHEIGHT, each 1 to " << kMostPictureSide << '\n';
        return {};
    }
    if (!TakeBackground(options.Background, made)) {
        streams.Errors << "The background must be none or six digits such as 20a0ff\n";
        return {};
    }
    return made;
}

Camera CameraOf(const PictureOptions& options)
{
    return {.Target = {}, .Yaw = options.Yaw, .Pitch = options.Pitch, .Zoom = options.Zoom};
}

} // namespace morlik::cli
