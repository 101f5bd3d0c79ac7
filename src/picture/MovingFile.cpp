#include "picture/MovingFile.h"

#include "model/Damage.h"

#include <algorithm>
#include <span>

namespace morlik
{

namespace
{

/// What of a picture differs from the one before it, at least one pixel, as a file needs one; all
/// of it where there is none before.
PictureArea ChangeBetween(const Picture& before, const Picture& picture)
{
    if (before.Pixels.empty())
        return {.X = 0, .Y = 0, .Width = picture.Width, .Height = picture.Height};
    PictureArea area{.X = picture.Width, .Y = picture.Height, .Width = 0, .Height = 0};
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    for (std::int32_t y = 0; y < picture.Height; ++y) {
        const auto row = [y](const Picture& of) {
            return std::span(of.Pixels).subspan(of.At(0, y), static_cast<std::size_t>(of.Width));
        };
        const auto old = row(before);
        const auto now = row(picture);
        const auto first = std::mismatch(old.begin(), old.end(), now.begin()).first;
        if (first == old.end())
            continue;
        const auto last = std::mismatch(old.rbegin(), old.rend(), now.rbegin()).first;
        area.X = std::min(area.X, static_cast<std::int32_t>(first - old.begin()));
        right = std::max(right, static_cast<std::int32_t>(old.rend() - last));
        area.Y = std::min(area.Y, y);
        bottom = y + 1;
    }
    if (bottom == 0)
        return {.X = 0, .Y = 0, .Width = 1, .Height = 1};
    area.Width = right - area.X;
    area.Height = bottom - area.Y;
    return area;
}

} // namespace

PictureArea MovingFile::TakeChange(const Picture& picture)
{
    const PictureArea area = ChangeBetween(last_, picture);
    const auto pixels =
        static_cast<std::size_t>(area.Width) * static_cast<std::size_t>(area.Height);
    if (pixels > pixelsLeft_)
        FailDamaged("an animation in which more than ", kMostMovingPixels, " pixels change");
    pixelsLeft_ -= pixels;
    last_ = picture;
    return area;
}

void MovingFile::TakeBytes(std::size_t bytes)
{
    if (bytes > bytesLeft_)
        FailDamaged("an animation whose file takes more than ", kMostMovingBytes >> 20U, " MiB");
    bytesLeft_ -= bytes;
}

} // namespace morlik
