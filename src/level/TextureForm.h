#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/TrMainState.h"

#include <cstdint>
#include <span>

namespace morlik
{

/// A corner of an object texture is two fixed-point numbers: a pixel with a fraction, X and Y. The
/// games' own tools write only the fractions 1 and 0xff, which tell the side of the corner, and the
/// classic conversions go by them. Newer level compilers write true fractions, mostly 0x7f, half a
/// pixel: there only the place of the corners tells how a texture lies.
enum class TextureForm : std::uint8_t
{
    Classic,
    Fractional,
};

/// The form of a Tomb Raider I to III level, decided once for all its textures.
TextureForm FormOf(std::span<const ObjectTexture> textures);
/// The same for Tomb Raider IV and V, where it shows in the sizes too: they are floats then, the
/// extent in pixels times 256. A level whose sizes are whole pixels, and whose boxes all begin at
/// even and end at odd pixels, is classic whatever its fractions: nothing else there reads them.
TextureForm FormOf(std::span<const ObjectTextureTR45> textures);

/// Keeps the form of the level that is being loaded, and logs it unless it is classic.
void TakeForm(TextureForm form, LevelData& level, Reporter& report);

/// Whether all sizes are whole pixels, 0 to 255.
bool HasClassicSizes(std::span<const ObjectTextureTR45> textures);
/// Whether all sizes, their bits read as floats, are extents in pixels times 256.
bool HasFloatSizes(std::span<const ObjectTextureTR45> textures);

} // namespace morlik
