#include "level/TextureForm.h"

#include "level/Orientation.h"
#include "level/TextureCorners.h"

#include <algorithm>
#include <bit>

namespace morlik
{

namespace
{

constexpr std::uint8_t kHalfPixel = 0x7f;
constexpr std::uint8_t kNearSide = 1;
constexpr std::uint8_t kFarSide = 0xff;

/// From this count on, a level without a single classic fraction is no accident.
constexpr std::size_t kTellingCount = 64;

bool IsClassicFraction(std::uint8_t fraction)
{
    return fraction == kNearSide || fraction == kFarSide;
}

/// At least half of the corners that are used lie in the middle of their pixels.
template <class Texture>
bool MostlyHalfPixels(std::span<const Texture> textures)
{
    std::size_t corners = 0;
    std::size_t halves = 0;
    for (const Texture& texture : textures) {
        for (const TextureCorner& c : texture.Corners) {
            corners += IsZero(c) ? 0U : 1U;
            halves += c.XCoord == kHalfPixel && c.YCoord == kHalfPixel ? 1U : 0U;
        }
    }
    return corners != 0 && 2 * halves >= corners;
}

bool HasClassicFraction(const ObjectTexture& texture)
{
    return std::any_of(texture.Corners.begin(), texture.Corners.end(), [](const TextureCorner& c) {
        return IsClassicFraction(c.XCoord) || IsClassicFraction(c.YCoord);
    });
}

/// The games' own tools begin a box at an even pixel and end it at an odd one.
bool HasClassicBox(const ObjectTextureTR45& texture)
{
    const auto corners = std::span(texture.Corners).first(IsTriangle(texture) ? 3 : 4);
    const PixelBox box = BoxOf(corners);
    return box.Left % 2 == 0 && box.Top % 2 == 0 && box.Right % 2 == 1 && box.Bottom % 2 == 1;
}

bool IsClassicSize(std::int32_t size)
{
    return size >= 0 && size <= 255;
}

bool IsFloatSize(std::int32_t size)
{
    const auto extent = std::bit_cast<float>(size);
    return extent == 0.0F || (extent >= 1.0F && extent <= 65536.0F);
}

template <class Test>
bool AllSizes(std::span<const ObjectTextureTR45> textures, Test test)
{
    return std::all_of(textures.begin(), textures.end(), [test](const ObjectTextureTR45& t) {
        return test(t.Width) && test(t.Height);
    });
}

} // namespace

TextureForm FormOf(std::span<const ObjectTexture> textures)
{
    const bool fractional = MostlyHalfPixels(textures) ||
                            (textures.size() >= kTellingCount &&
                             std::none_of(textures.begin(), textures.end(), HasClassicFraction));
    return fractional ? TextureForm::Fractional : TextureForm::Classic;
}

TextureForm FormOf(std::span<const ObjectTextureTR45> textures)
{
    const bool classicSizes = HasClassicSizes(textures);
    if (classicSizes && std::all_of(textures.begin(), textures.end(), HasClassicBox))
        return TextureForm::Classic;
    const bool fractional =
        MostlyHalfPixels(textures) || (!classicSizes && HasFloatSizes(textures));
    return fractional ? TextureForm::Fractional : TextureForm::Classic;
}

void TakeForm(TextureForm form, LevelData& level, Reporter& report)
{
    level.HasFractions = form == TextureForm::Fractional;
    if (level.HasFractions)
        report.LogLine("-Texture form: fractional");
}

bool HasClassicSizes(std::span<const ObjectTextureTR45> textures)
{
    return AllSizes(textures, IsClassicSize);
}

bool HasFloatSizes(std::span<const ObjectTextureTR45> textures)
{
    return AllSizes(textures, IsFloatSize);
}

} // namespace morlik
