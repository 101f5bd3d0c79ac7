#pragma once

#include "base/Reporter.h"
#include "convert/TextureTiles.h"
#include "level/LevelData.h"
#include "set/ObjectSet.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace morlik
{

/// The most textures that the editor takes. The numbers of triangles share their word with a corner
/// code in the top bits, and the colour squares follow behind.
constexpr std::size_t kMostTextures = 2047;

/// The textures that an object set needs, and the numbers that they have there.
struct UsedTextures
{
    std::vector<std::int32_t> InOrder;        ///< indices in the level, by their numbers in the set
    std::vector<std::int32_t> TextureNumbers; ///< by index in the level; -1 for unused ones

    /// Number of the first palette square.
    std::int32_t ColourBase() const { return static_cast<std::int32_t>(InOrder.size()); }
};

/// The sign of a rectangle's texture number mirrors it, and 0 has none: a mirrored first texture
/// would lie the wrong way.
enum class FirstTexture : std::uint8_t
{
    AsItComes,    ///< the order of the level
    PlainIfAny,   ///< one that nothing mirrors takes the number 0, where there is one
    PlainOrSpare, ///< where there is none, the first one stands there twice, and 0 is not used
};

/// How a level is numbered that nothing was left out of: those of the games' own tools keep the
/// order of their textures all the same.
FirstTexture FirstTextureOf(const LevelData& level);

/// Walks the meshes and numbers the textures that their textured faces use. Gives nothing when a
/// face's texture is unknown, after the message; damaged meshes end the program.
std::optional<UsedTextures> NumberTextures(const LevelData& level, FirstTexture first,
                                           Reporter& report);

/// Ends the program where a set has more textures than the editor takes, after the message and a
/// hint at what helps.
void LimitTextures(std::size_t count, Reporter& report);

/// The tiles that the used textures lie on, and those between them.
TileRange TilesOf(const LevelData& level, const UsedTextures& textures);

/// Texture records of a set: the used ones, tiles counted from the first of `tiles`, then the
/// palette squares of the older games. A record that leaves its tile ends the program with a
/// message; tiles that no set can hold are told and give nothing.
std::optional<std::vector<TextInfo>> TextureRecords(const LevelData& level,
                                                    const UsedTextures& textures,
                                                    const TileRange& tiles, Reporter& report);

} // namespace morlik
