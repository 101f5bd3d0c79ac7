#pragma once

#include "base/Records.h"
#include "picture/Picture.h"

#include <array>
#include <cstdint>
#include <vector>

namespace morlik
{

/// Samples of a pixel in each direction.
constexpr std::int32_t kSamples = 2;

/// Steps in which corners lie on the grid of samples. The middle of sample n is at
/// `kGridSteps` n + `kGridSteps` / 2.
constexpr std::int32_t kGridShift = 4;
constexpr std::int32_t kGridSteps = 1 << kGridShift;

/// Corners lie less than this many samples from the picture's first one.
constexpr std::int32_t kMostGridSamples = 1 << 17;

/// A corner on the picture.
struct ScreenCorner
{
    std::int32_t X = 0; ///< in grid steps
    std::int32_t Y = 0;
    double Nearness = 0; ///< 1 / distance: this, unlike the distance, is even over a face
    double U = 0;        ///< place in the tile in pixels, times nearness
    double V = 0;
    double Light = 0; ///< 0 to `kFullLight`
};

/// The light that leaves a colour as it is.
constexpr std::int32_t kFullLight = 256;

/// How a triangle is coloured.
enum class Paint : std::uint8_t
{
    Nearest,
    Linear,
    AddNearest, ///< added to what lies behind
    AddLinear,
    Plain, ///< one colour, which may be none
};

/// What all triangles of a face share.
struct Surface
{
    morlik::Paint Paint = Paint::Plain;
    const Colour* Tile = nullptr;
    TextInfo Box{};
    Colour Plain = 0;
};

/// A value that is even over a triangle.
struct Gradient
{
    double Start = 0; ///< at the first corner
    double PerX = 0;  ///< growth for each grid step
    double PerY = 0;

    double At(std::int32_t x, std::int32_t y) const { return Start + PerX * x + PerY * y; }
};

/// A triangle that is ready to be drawn, with its corners clockwise.
struct Triangle
{
    std::array<std::array<std::int32_t, 2>, 3> Corners{}; ///< X and Y
    std::int32_t Top = 0;                                 ///< first row of samples
    std::int32_t Bottom = 0;                              ///< behind the last one
    Gradient Nearness{}, U{}, V{}, Light{};
    morlik::Surface Surface;
};

/// Some rows of the picture while they are drawn: colours, multiplied by their alpha, and depths of
/// all samples.
class Band
{
public:
    Band(std::int32_t width, Colour background);

    static constexpr std::int32_t kRows = 8; ///< of the picture

    /// Draws what of a triangle falls on the band whose first row of samples is `top`.
    void Draw(const Triangle& triangle, std::int32_t top);
    /// Puts `rows` rows into the picture from row `y` on and empties the band.
    void Resolve(Picture& picture, std::int32_t y, std::int32_t rows);

private:
    Colour PixelAt(std::int32_t x, std::int32_t row) const;

    std::int32_t width_; ///< in samples
    Colour background_;
    std::vector<Colour> colours_;
    std::vector<float> nearness_;
    // The samples that may have been drawn on, of all rows.
    std::int32_t left_;
    std::int32_t right_ = 0;
};

} // namespace morlik
