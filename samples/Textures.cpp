#include "samples/Textures.h"

#include "base/Narrow.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

namespace morlik::samples
{

namespace
{

/// Marks the triangles among the textures of Tomb Raider IV and V.
constexpr std::int16_t kTriangleBit = Word(0x8000);

/// A corner as the games' own tools write it: the last pixel still belongs to the texture.
TextureCorner CornerAt(const TextureBox& box, BoxCorner corner)
{
    const bool right = (corner & kTopRight) != 0;
    const bool bottom = (corner & kBottomLeft) != 0;
    const auto side = [](bool far) { return static_cast<std::uint8_t>(far ? 0xff : 1); };
    return {.XCoord = side(right),
            .XPixel = narrow<std::uint8_t>(right ? box.X + box.Width - 1 : box.X),
            .YCoord = side(bottom),
            .YPixel = narrow<std::uint8_t>(bottom ? box.Y + box.Height - 1 : box.Y)};
}

std::array<TextureCorner, 4> RectangleCorners(const TextureBox& box, bool mirrored)
{
    const std::array<TextureCorner, 4> plain{CornerAt(box, kTopLeft), CornerAt(box, kTopRight),
                                             CornerAt(box, kBottomRight),
                                             CornerAt(box, kBottomLeft)};
    if (!mirrored)
        return plain;
    return {plain[1], plain[0], plain[3], plain[2]};
}

/// The fourth corner stays zero: that is what tells a triangle in the older games.
std::array<TextureCorner, 4> TriangleCorners(const TextureBox& box, std::uint16_t cornerCode)
{
    const auto corners = CornersOf(cornerCode);
    return {CornerAt(box, corners[0]), CornerAt(box, corners[1]), CornerAt(box, corners[2]), {}};
}

ObjectTextureTR45 WideTexture(const TextureBox& box)
{
    ObjectTextureTR45 texture;
    texture.Attribute = box.Attribute;
    texture.Tile = box.Tile;
    texture.Width = box.Width - 1;
    texture.Height = box.Height - 1;
    return texture;
}

} // namespace

std::array<BoxCorner, 3> CornersOf(std::uint16_t cornerCode)
{
    switch (cornerCode) {
    case 0x0000:
        return {kTopLeft, kTopRight, kBottomLeft};
    case 0x2000:
        return {kTopRight, kBottomRight, kTopLeft};
    case 0x4000:
        return {kBottomRight, kBottomLeft, kTopRight};
    case 0x6000:
        return {kBottomLeft, kTopLeft, kBottomRight};
    case 0x8000:
        return {kTopRight, kTopLeft, kBottomRight};
    case 0xa000:
        return {kTopLeft, kBottomLeft, kTopRight};
    case 0xc000:
        return {kBottomLeft, kBottomRight, kTopLeft};
    case 0xe000:
        return {kBottomRight, kTopRight, kBottomLeft};
    default:
        throw std::invalid_argument("no corner code");
    }
}

ObjectTexture RectangleTexture(const TextureBox& box, bool mirrored)
{
    return {box.Attribute, box.Tile, RectangleCorners(box, mirrored)};
}

ObjectTexture TriangleTexture(const TextureBox& box, std::uint16_t cornerCode)
{
    return {box.Attribute, box.Tile, TriangleCorners(box, cornerCode)};
}

ObjectTextureTR45 RectangleTextureTR45(const TextureBox& box, bool mirrored)
{
    ObjectTextureTR45 texture = WideTexture(box);
    texture.Corners = RectangleCorners(box, mirrored);
    return texture;
}

ObjectTextureTR45 TriangleTextureTR45(const TextureBox& box, std::uint16_t cornerCode)
{
    ObjectTextureTR45 texture = WideTexture(box);
    texture.Tile = Word(texture.Tile | kTriangleBit);
    texture.Corners = TriangleCorners(box, cornerCode);
    return texture;
}

std::int16_t AddRectangleTexture(LevelContent& level, const TextureBox& box, bool mirrored)
{
    if (IsOlderGame(level.Game)) {
        level.ObjectTextures.push_back(RectangleTexture(box, mirrored));
        return narrow<std::int16_t>(level.ObjectTextures.size() - 1);
    }
    level.ObjectTexturesTR45.push_back(RectangleTextureTR45(box, mirrored));
    return narrow<std::int16_t>(level.ObjectTexturesTR45.size() - 1);
}

std::int16_t AddTriangleTexture(LevelContent& level, const TextureBox& box,
                                std::uint16_t cornerCode)
{
    if (IsOlderGame(level.Game)) {
        level.ObjectTextures.push_back(TriangleTexture(box, cornerCode));
        return narrow<std::int16_t>(level.ObjectTextures.size() - 1);
    }
    level.ObjectTexturesTR45.push_back(TriangleTextureTR45(box, cornerCode));
    return narrow<std::int16_t>(level.ObjectTexturesTR45.size() - 1);
}

void MakeFractional(LevelContent& level)
{
    const auto place = [](std::array<TextureCorner, 4>& corners, std::size_t used,
                          std::size_t turn) {
        const auto end = corners.begin() + static_cast<std::ptrdiff_t>(used);
        std::rotate(corners.begin(), corners.begin() + static_cast<std::ptrdiff_t>(turn % used),
                    end);
        for (auto corner = corners.begin(); corner != end; ++corner)
            corner->XCoord = corner->YCoord = 0x7f;
    };
    std::size_t turn = 0;
    for (ObjectTexture& texture : level.ObjectTextures) {
        const TextureCorner& last = texture.Corners[3];
        const bool triangle = last.XCoord == 0 && last.YCoord == 0;
        place(texture.Corners, triangle ? 3 : 4, turn++);
    }
    const auto asFloat = [](std::int32_t pixels) {
        return std::bit_cast<std::int32_t>(static_cast<float>(pixels * 256));
    };
    for (ObjectTextureTR45& texture : level.ObjectTexturesTR45) {
        place(texture.Corners, texture.Tile < 0 ? 3 : 4, turn++);
        texture.Width = asFloat(texture.Width);
        texture.Height = asFloat(texture.Height);
    }
}

} // namespace morlik::samples
