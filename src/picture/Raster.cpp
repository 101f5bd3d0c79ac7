#include "picture/Raster.h"

#include <algorithm>

namespace morlik
{

namespace
{

constexpr std::int32_t kHalfStep = kGridSteps / 2;
constexpr std::int32_t kBandSamples = Band::kRows * kSamples;

constexpr Colour kOddBytes = 0x00ff00ff;
constexpr Colour kGreen = 0x0000ff00;

std::uint32_t Red(Colour colour)
{
    return colour & 0xffU;
}
std::uint32_t Green(Colour colour)
{
    return (colour >> 8U) & 0xffU;
}
std::uint32_t Blue(Colour colour)
{
    return (colour >> 16U) & 0xffU;
}
std::uint32_t Alpha(Colour colour)
{
    return colour >> 24U;
}

/// An opaque colour under a light of 0 to `kFullLight`.
Colour Lit(Colour colour, std::uint32_t light)
{
    return kOpaque | ((((colour & kOddBytes) * light) >> 8U) & kOddBytes) |
           ((((colour & kGreen) * light) >> 8U) & kGreen);
}

/// Light added to a sample, which is at least as opaque then as it is bright.
Colour Added(Colour below, Colour light)
{
    const auto red = std::min(Red(below) + Red(light), 255U);
    const auto green = std::min(Green(below) + Green(light), 255U);
    const auto blue = std::min(Blue(below) + Blue(light), 255U);
    return Opaque(red, green, blue) - kOpaque + (std::max({Alpha(below), red, green, blue}) << 24U);
}

/// The pixel of a texture that a sample lies on.
class NearestTexel
{
public:
    explicit NearestTexel(const Surface& surface)
        : tile_(surface.Tile),
          left_(surface.Box.X),
          top_(surface.Box.Y),
          right_(static_cast<float>(surface.Box.X + surface.Box.Width)),
          bottom_(static_cast<float>(surface.Box.Y + surface.Box.Height))
    {
    }

    Colour operator()(float u, float v) const
    {
        const auto x = static_cast<std::int32_t>(std::min(std::max(u, left_), right_));
        const auto y = static_cast<std::int32_t>(std::min(std::max(v, top_), bottom_));
        return tile_[y * kTileSide + x];
    }

private:
    const Colour* tile_;
    float left_, top_, right_, bottom_;
};

/// The mean of the four pixels around a sample, of those that have a colour; none where these weigh
/// less than half. At the borders of the box its own pixels count twice.
class LinearTexel
{
public:
    explicit LinearTexel(const Surface& surface) : tile_(surface.Tile), box_(surface.Box) {}

    Colour operator()(float u, float v) const
    {
        const Place x = PlaceOf(u, box_.X, box_.Width);
        const Place y = PlaceOf(v, box_.Y, box_.Height);
        std::array<std::uint32_t, 3> sums{};
        std::uint32_t weight = 0;
        const auto add = [&](std::int32_t column, std::int32_t row, std::uint32_t share) {
            const Colour colour = tile_[row * kTileSide + column];
            if (colour == 0)
                return;
            weight += share;
            sums[0] += share * Red(colour);
            sums[1] += share * Green(colour);
            sums[2] += share * Blue(colour);
        };
        add(x.First, y.First, (kWhole - x.Share) * (kWhole - y.Share));
        add(x.Second, y.First, x.Share * (kWhole - y.Share));
        add(x.First, y.Second, (kWhole - x.Share) * y.Share);
        add(x.Second, y.Second, x.Share * y.Share);
        if (weight < kWhole * kWhole / 2)
            return 0;
        const auto mean = [&](std::uint32_t sum) { return (sum + weight / 2) / weight; };
        return Opaque(mean(sums[0]), mean(sums[1]), mean(sums[2]));
    }

private:
    static constexpr std::uint32_t kWhole = 256;

    /// Two neighbours, and the share of the second one.
    struct Place
    {
        std::int32_t First, Second;
        std::uint32_t Share;
    };

    static Place PlaceOf(float at, std::int32_t first, std::int32_t extent)
    {
        const auto least = static_cast<float>(first);
        const auto most = static_cast<float>(first + extent);
        const float place = std::min(std::max(at - 0.5F, least), most);
        const auto whole = static_cast<std::int32_t>(place);
        const auto share = static_cast<std::uint32_t>((place - static_cast<float>(whole)) * kWhole);
        return {whole, std::min(whole + 1, first + extent), share};
    }

    const Colour* tile_;
    TextInfo box_;
};

/// A run of samples in a row.
struct Span
{
    std::int32_t First;
    std::int32_t End;
};

/// A quotient rounded down. Both are whole numbers below 2^48, so that a double tells it from the
/// next one.
std::int64_t FloorOf(std::int64_t value, std::int64_t divisor)
{
    const double quotient = static_cast<double>(value) / static_cast<double>(divisor);
    const auto whole = static_cast<std::int64_t>(quotient);
    return whole - (quotient < static_cast<double>(whole) ? 1 : 0);
}

/// Which samples of a row lie inside a triangle. A sample on an edge belongs to the triangle below
/// it or to the right of it alone, so that none on the edge between two is drawn twice.
Span SpanOf(const Triangle& triangle, std::int32_t row, std::int32_t width)
{
    std::int64_t first = 0;
    std::int64_t last = width - 1;
    const std::int64_t y = std::int64_t{row} * kGridSteps + kHalfStep;
    for (std::size_t i = 0; i < 3; ++i) {
        const auto [fromX, fromY] = triangle.Corners[i];
        const auto [toX, toY] = triangle.Corners[(i + 1) % 3];
        const std::int64_t alongX = std::int64_t{toX} - fromX;
        const std::int64_t alongY = std::int64_t{toY} - fromY;
        const bool isTopOrLeft = alongY < 0 || (alongY == 0 && alongX > 0);
        // Above 0 to the right of the edge, seen along it: its value at sample 0, and the growth.
        const std::int64_t start =
            alongX * (y - fromY) - alongY * (kHalfStep - fromX) - (isTopOrLeft ? 0 : 1);
        const std::int64_t growth = -alongY * kGridSteps;
        if (growth > 0)
            first = std::max(first, -FloorOf(start, growth));
        else if (growth < 0)
            last = std::min(last, FloorOf(start, -growth));
        else if (start < 0)
            return {0, 0};
    }
    if (first > last)
        return {0, 0};
    return {static_cast<std::int32_t>(first), static_cast<std::int32_t>(last + 1)};
}

/// A gradient along a row of samples.
struct RowGradient
{
    RowGradient(const Gradient& gradient, std::int32_t x, std::int32_t y)
        : Start(static_cast<float>(gradient.At(x, y))),
          PerSample(static_cast<float>(gradient.PerX * kGridSteps))
    {
    }

    float At(float sample) const { return Start + PerSample * sample; }

    float Start, PerSample;
};

/// Draws a run of samples. `colours` and `nearness` begin with its first one.
template <bool kAdds, class Texel>
void DrawSpan(const Triangle& triangle, Span span, std::int32_t row, const Texel& texel,
              Colour* colours, float* nearness)
{
    const std::int32_t x = span.First * kGridSteps + kHalfStep - triangle.Corners[0][0];
    const std::int32_t y = row * kGridSteps + kHalfStep - triangle.Corners[0][1];
    const RowGradient near(triangle.Nearness, x, y);
    const RowGradient u(triangle.U, x, y);
    const RowGradient v(triangle.V, x, y);
    const RowGradient light(triangle.Light, x, y);
    for (std::int32_t i = 0; i < span.End - span.First; ++i) {
        const auto at = static_cast<float>(i);
        const float here = near.At(at);
        if (here <= nearness[i])
            continue;
        const float distance = 1 / here;
        const Colour colour = texel(u.At(at) * distance, v.At(at) * distance);
        if (colour == 0)
            continue;
        const float share = std::min(std::max(light.At(at), 0.0F), float{kFullLight});
        const Colour lit = Lit(colour, static_cast<std::uint32_t>(share));
        colours[i] = kAdds ? Added(colours[i], lit) : lit;
        if (!kAdds)
            nearness[i] = here;
    }
}

/// Draws a run of samples in one colour, or wipes it.
void DrawPlainSpan(const Triangle& triangle, Span span, std::int32_t row, Colour* colours,
                   float* nearness)
{
    const RowGradient near(triangle.Nearness,
                           span.First * kGridSteps + kHalfStep - triangle.Corners[0][0],
                           row * kGridSteps + kHalfStep - triangle.Corners[0][1]);
    for (std::int32_t i = 0; i < span.End - span.First; ++i) {
        const float here = near.At(static_cast<float>(i));
        if (here <= nearness[i])
            continue;
        colours[i] = triangle.Surface.Plain;
        nearness[i] = here;
    }
}

void DrawRow(const Triangle& triangle, Span span, std::int32_t row, Colour* colours,
             float* nearness)
{
    const Surface& surface = triangle.Surface;
    switch (surface.Paint) {
    case Paint::Nearest:
        DrawSpan<false>(triangle, span, row, NearestTexel(surface), colours, nearness);
        break;
    case Paint::Linear:
        DrawSpan<false>(triangle, span, row, LinearTexel(surface), colours, nearness);
        break;
    case Paint::AddNearest:
        DrawSpan<true>(triangle, span, row, NearestTexel(surface), colours, nearness);
        break;
    case Paint::AddLinear:
        DrawSpan<true>(triangle, span, row, LinearTexel(surface), colours, nearness);
        break;
    case Paint::Plain:
        DrawPlainSpan(triangle, span, row, colours, nearness);
        break;
    }
}

} // namespace

Band::Band(std::int32_t width, Colour background)
    : width_(width * kSamples),
      background_(background),
      colours_(static_cast<std::size_t>(width_) * kBandSamples, background),
      nearness_(colours_.size(), 0.0F),
      left_(width_)
{
}

void Band::Draw(const Triangle& triangle, std::int32_t top)
{
    const std::int32_t end = std::min(triangle.Bottom, top + kBandSamples);
    for (std::int32_t row = std::max(triangle.Top, top); row < end; ++row) {
        const Span span = SpanOf(triangle, row, width_);
        if (span.First >= span.End)
            continue;
        left_ = std::min(left_, span.First);
        right_ = std::max(right_, span.End);
        const auto at = static_cast<std::size_t>(row - top) * static_cast<std::size_t>(width_) +
                        static_cast<std::size_t>(span.First);
        DrawRow(triangle, span, row, &colours_[at], &nearness_[at]);
    }
}

/// The mean of a pixel's samples. Their colours are multiplied by alpha, that of the picture isn't.
Colour Band::PixelAt(std::int32_t x, std::int32_t row) const
{
    const auto width = static_cast<std::size_t>(width_);
    const Colour* above = &colours_[static_cast<std::size_t>(row) * kSamples * width +
                                    static_cast<std::size_t>(x) * kSamples];
    const std::array<Colour, 4> samples{above[0], above[1], above[width], above[width + 1]};
    // Two bytes of each at a time: the sums have 10 bits.
    Colour odd = 0;
    Colour even = 0;
    for (const Colour sample : samples) {
        odd += sample & kOddBytes;
        even += (sample >> 8U) & kOddBytes;
    }
    const std::uint32_t alpha = even >> 16U;
    if (alpha == 4 * 255)
        return kOpaque | (((odd + 0x20002) >> 2U) & kOddBytes) |
               ((((even + 0x2) >> 2U) & 0xffU) << 8U);
    if (alpha == 0)
        return 0;
    const auto straight = [alpha](std::uint32_t sum) { return (sum * 255 + alpha / 2) / alpha; };
    return Opaque(straight(odd & 0xffffU), straight(even & 0xffffU), straight(odd >> 16U)) -
           kOpaque + ((alpha + 2) / 4 << 24U);
}

void Band::Resolve(Picture& picture, std::int32_t y, std::int32_t rows)
{
    const std::int32_t first = left_ / kSamples;
    const std::int32_t end = (right_ + kSamples - 1) / kSamples;
    for (std::int32_t row = 0; row < rows && first < end; ++row)
        for (std::int32_t x = first; x < end; ++x)
            picture.Pixels[picture.At(x, y + row)] = PixelAt(x, row);
    for (std::int32_t row = 0; row < kBandSamples && left_ < right_; ++row) {
        const auto at = static_cast<std::ptrdiff_t>(row) * width_ + left_;
        std::fill_n(colours_.begin() + at, right_ - left_, background_);
        std::fill_n(nearness_.begin() + at, right_ - left_, 0.0F);
    }
    left_ = width_;
    right_ = 0;
}

} // namespace morlik
