#pragma once

#include "picture/Picture.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <png.h>
#include <span>

namespace morlik::test
{

/// The picture of a PNG file; a fault of the file is one of the test.
inline Picture DecodePNG(std::span<const std::byte> file)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_memory(&image, file.data(), file.size()), 0);
    image.format = PNG_FORMAT_RGBA;
    Picture picture{.Width = static_cast<std::int32_t>(image.width),
                    .Height = static_cast<std::int32_t>(image.height),
                    .Pixels = {}};
    picture.Pixels.resize(picture.At(0, picture.Height));
    EXPECT_NE(png_image_finish_read(&image, nullptr, picture.Pixels.data(), 0, nullptr), 0);
    return picture;
}

} // namespace morlik::test
