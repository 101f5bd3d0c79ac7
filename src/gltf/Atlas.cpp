#include "gltf/Atlas.h"

#include "model/Damage.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace morlik
{

namespace
{

constexpr Colour kColourBits = ~kOpaque;
constexpr std::uint32_t kFull = 255;

std::uint32_t Part(Colour colour, unsigned part)
{
    return (colour >> (8 * part)) & kFull;
}

/// A pixel that is added to what lies behind, for blending by alpha.
Colour Glow(Colour colour)
{
    const std::uint32_t alpha = std::max({Part(colour, 0), Part(colour, 1), Part(colour, 2)});
    Colour glow = alpha << 24U;
    for (unsigned part = 0; alpha > 0 && part < 3; ++part)
        glow |= (Part(colour, part) * kFull + alpha / 2) / alpha << (8 * part);
    return glow;
}

bool IsHole(Colour colour)
{
    return (colour & kOpaque) == 0;
}

/// Gives holes the colours of the pixels that lie nearest, by rows and columns; they stay holes.
void FillHoles(std::vector<Colour>& pixels, std::size_t width)
{
    std::vector<std::size_t> reached;
    std::vector<bool> isReached(pixels.size());
    const auto reach = [&](std::size_t at, Colour colour) {
        if (isReached[at])
            return;
        isReached[at] = true;
        if (IsHole(pixels[at]))
            pixels[at] = colour & kColourBits;
        reached.push_back(at);
    };
    for (std::size_t at = 0; at < pixels.size(); ++at)
        if (!IsHole(pixels[at]))
            reach(at, 0);
    std::size_t next = 0;
    while (next < reached.size()) { // which grows
        const std::size_t at = reached[next++];
        if (at % width > 0)
            reach(at - 1, pixels[at]);
        if (at % width + 1 < width)
            reach(at + 1, pixels[at]);
        if (at >= width)
            reach(at - width, pixels[at]);
        if (at + width < pixels.size())
            reach(at + width, pixels[at]);
    }
}

std::int32_t PowerOfTwo(std::int32_t least)
{
    return static_cast<std::int32_t>(std::bit_ceil(static_cast<std::uint32_t>(least)));
}

} // namespace

Atlas::Patch Atlas::PatchOf(const ObjectSet& set, const GeometryFace& face)
{
    const TextInfo& box = set.Textures[face.Texture];
    return {.Tile = box.Tile,
            .Adds = face.Blends(),
            .X = box.X,
            .Y = box.Y,
            .Width = face.IsColour ? 1 : box.Width + 1,
            .Height = face.IsColour ? 1 : box.Height + 1};
}

void Atlas::Need(const ObjectSet& set, const GeometryFace& face)
{
    places_.try_emplace(PatchOf(set, face));
}

/// The height that the patches take on shelves of this width, the highest ones first; puts them
/// there if `place` says so.
std::int32_t Atlas::HeightAt(std::int32_t width, bool place)
{
    std::vector<std::pair<const Patch, Place>*> order;
    for (auto& entry : places_)
        order.push_back(&entry);
    std::stable_sort(order.begin(), order.end(), [](const auto* one, const auto* other) {
        return one->first.Height > other->first.Height;
    });
    std::int32_t x = 0;
    std::int32_t top = 0;
    std::int32_t bottom = 0;
    for (auto* const entry : order) {
        const std::int32_t wide = entry->first.Width + 2;
        if (x + wide > width) {
            top = bottom;
            x = 0;
        }
        if (place) {
            entry->second.X = x + 1;
            entry->second.Y = top + 1;
        }
        x += wide;
        bottom = std::max(bottom, top + entry->first.Height + 2);
    }
    return bottom;
}

void Atlas::Lay(TexturePixels& textures)
{
    if (places_.empty())
        return;
    std::int32_t widest = 0;
    for (const auto& [patch, place] : places_)
        widest = std::max(widest, patch.Width + 2);
    std::int64_t smallest = std::int64_t{kMostAtlasSide} * kMostAtlasSide + 1;
    for (std::int32_t width = PowerOfTwo(widest); width <= kMostAtlasSide; width *= 2) {
        const std::int32_t height = PowerOfTwo(HeightAt(width, false));
        const std::int64_t size = std::int64_t{width} * height;
        const bool isSquarer = size == smallest && width <= height;
        if (height <= kMostAtlasSide && (size < smallest || isSquarer)) {
            smallest = size;
            image_ = {.Width = width, .Height = height, .Pixels = {}};
        }
    }
    if (image_.Width == 0)
        FailDamaged("the textures don't fit in a picture of ", kMostAtlasSide, " by ",
                    kMostAtlasSide, " pixels");
    HeightAt(image_.Width, true);
    image_.Pixels.resize(image_.At(0, image_.Height));
    for (auto& [patch, place] : places_) {
        textures.Need({patch.Tile});
        Paint(patch, place, textures.Tile(patch.Tile));
    }
}

/// Copies a patch and its border out of its tile.
void Atlas::Paint(const Patch& patch, Place& place, const Colour* tile)
{
    std::vector<Colour> pixels;
    const auto row = [&](std::int32_t y) { return tile + std::ptrdiff_t{y} * kTileSide + patch.X; };
    for (std::int32_t y = patch.Y; y < patch.Y + patch.Height; ++y)
        pixels.insert(pixels.end(), row(y), row(y) + patch.Width);
    if (patch.Adds)
        std::transform(pixels.begin(), pixels.end(), pixels.begin(), Glow);
    place.HasHoles = std::any_of(pixels.begin(), pixels.end(), IsHole);
    if (place.HasHoles)
        FillHoles(pixels, static_cast<std::size_t>(patch.Width));
    for (std::int32_t y = -1; y <= patch.Height; ++y)
        for (std::int32_t x = -1; x <= patch.Width; ++x) {
            const std::int32_t fromX = std::clamp(x, 0, patch.Width - 1);
            const std::int32_t fromY = std::clamp(y, 0, patch.Height - 1);
            image_.Pixels[image_.At(place.X + x, place.Y + y)] =
                pixels[static_cast<std::size_t>(std::int64_t{fromY} * patch.Width + fromX)];
        }
}

std::array<float, 2> Atlas::MiddleOf(const ObjectSet& set, const GeometryFace& face,
                                     const FaceCorner& corner) const
{
    const Patch patch = PatchOf(set, face);
    const Place& place = places_.at(patch);
    const auto share = [](std::int32_t pixel, std::int32_t side) {
        return (static_cast<float>(pixel) + 0.5F) / static_cast<float>(side);
    };
    const std::int32_t x = std::min(corner.X - patch.X, patch.Width - 1);
    const std::int32_t y = std::min(corner.Y - patch.Y, patch.Height - 1);
    return {share(place.X + x, image_.Width), share(place.Y + y, image_.Height)};
}

bool Atlas::HasHoles(const ObjectSet& set, const GeometryFace& face) const
{
    return places_.at(PatchOf(set, face)).HasHoles;
}

} // namespace morlik
