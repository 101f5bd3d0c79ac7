#pragma once

#include "level/LevelData.h"
#include "level/TrMainState.h"

namespace morlik
{

/// What the conversions of object textures share.

inline bool IsZero(const TextureCorner& corner)
{
    return corner.XCoord == 0 && corner.XPixel == 0 && corner.YCoord == 0 && corner.YPixel == 0;
}

inline bool IsTriangle(const ObjectTexture& texture)
{
    return IsZero(texture.Corners[3]);
}

inline bool IsTriangle(const ObjectTextureTR45& texture)
{
    return texture.Tile < 0;
}

/// The tile without the mark of a triangle.
inline std::int16_t TileOf(const ObjectTextureTR45& texture)
{
    return static_cast<std::int16_t>(texture.Tile & 0x7fff);
}

} // namespace morlik
