#pragma once

#include "model/MeshGeometry.h"
#include "picture/Picture.h"
#include "picture/TexturePixels.h"

#include <compare>
#include <cstdint>
#include <map>

namespace morlik
{

/// Most pixels of a side of a file's picture.
constexpr std::int32_t kMostAtlasSide = 4096;

/// The texture boxes that the faces of a file use, each once, in one picture whose sides are powers
/// of two. Around each is a border of one pixel that repeats its outermost ones, so that no filter
/// finds the colours of a neighbour.
///
/// Magenta is transparent, with the colour of the nearest pixel under it. What faces with additive
/// blending show stands by itself: glTF knows no such blending, so a pixel gets the alpha of its
/// brightest part, and its colour is that much brighter. Over black that is the same.
class Atlas
{
public:
    /// Takes the box of a face along. Palette squares, of one colour, are one pixel.
    void Need(const ObjectSet& set, const GeometryFace& face);
    /// Packs and paints what was needed. `ReadFailure` where that doesn't fit in `kMostAtlasSide`.
    void Lay(TexturePixels& textures);

    bool IsEmpty() const { return places_.empty(); }
    const Picture& Image() const { return image_; }

    /// Where the pixel of a corner has its middle, as a share of the picture's sides.
    std::array<float, 2> MiddleOf(const ObjectSet& set, const GeometryFace& face,
                                  const FaceCorner& corner) const;
    /// Whether a pixel of the face's box is transparent.
    bool HasHoles(const ObjectSet& set, const GeometryFace& face) const;

private:
    /// What stands in the picture once.
    struct Patch
    {
        std::int16_t Tile;
        bool Adds;
        std::uint8_t X, Y;
        std::int32_t Width, Height; ///< in pixels

        auto operator<=>(const Patch&) const = default; // NOLINT(modernize-use-nullptr)
    };
    /// Where it stands: its first pixel, not that of its border.
    struct Place
    {
        std::int32_t X = 0;
        std::int32_t Y = 0;
        bool HasHoles = false;
    };
    static Patch PatchOf(const ObjectSet& set, const GeometryFace& face);
    std::int32_t HeightAt(std::int32_t width, bool place);
    void Paint(const Patch& patch, Place& place, const Colour* tile);

    std::map<Patch, Place> places_;
    Picture image_;
};

} // namespace morlik
