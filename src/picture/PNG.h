#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "picture/Picture.h"

#include <cstddef>
#include <string>
#include <vector>

namespace morlik
{

/// Whether this build can write PNG files.
bool HasPNG();
/// The library that does it, and its version; empty without.
std::string PNGLibrary();

/// Writes the texture sheet of a level as a PNG file, upright, 3 bytes a pixel. Gives whether the
/// file is complete; if not, the user has got the message. `FileFailure` where it can't be written.
bool SavePNG(const std::string& fileName, const LevelData& level, Reporter& report);

/// A picture as the bytes of a PNG file with alpha; none where this build can't write such files.
std::vector<std::byte> EncodePNG(const Picture& picture);

/// A part of a picture, in pixels.
struct PictureArea
{
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
};

/// A PNG file with alpha of an area inside of a picture, as one of many: made in less than half of
/// the time, and a quarter larger. In a build without PNG no bytes.
std::vector<std::byte> QuickPNG(const Picture& picture, const PictureArea& area);

/// Writes a picture as a PNG file with alpha. `FileFailure` where it can't be written.
void WritePNG(const std::string& fileName, const Picture& picture);

} // namespace morlik
