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

/// Writes a picture as a PNG file with alpha. `FileFailure` where it can't be written.
void WritePNG(const std::string& fileName, const Picture& picture);

} // namespace morlik
