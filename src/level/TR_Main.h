#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"

#include <array>
#include <string>
#include <vector>

namespace morlik
{

/// Palette entry of Tomb Raider I to III levels: red, green, blue, each 0 to 63.
struct Colour6
{
    std::uint8_t R = 0;
    std::uint8_t G = 0;
    std::uint8_t B = 0;
};
static_assert(sizeof(Colour6) == 3);

/// Entry of the 16-bit palette of Tomb Raider II and III: red, green, blue, each 0 to 255.
struct Colour8
{
    std::uint8_t R = 0;
    std::uint8_t G = 0;
    std::uint8_t B = 0;
    std::uint8_t Unused = 0;
};
static_assert(sizeof(Colour8) == 4);

/// One corner of an object texture. The pixel bytes are its place in the tile; the coordinate
/// bytes tell its side: 0xff for right or bottom, 1 for left or top.
struct TextureCorner
{
    std::uint8_t XCoord = 0;
    std::uint8_t XPixel = 0;
    std::uint8_t YCoord = 0;
    std::uint8_t YPixel = 0;
};
static_assert(sizeof(TextureCorner) == 4);

/// Object texture of Tomb Raider I to III as it stands in the file.
struct ObjectTexture
{
    std::int16_t Attribute = 0; ///< 2: faces with it blend with what lies behind
    std::int16_t Tile = 0;
    std::array<TextureCorner, 4> Corners{}; ///< the fourth is all zero for a triangle
};
static_assert(sizeof(ObjectTexture) == 20);

/// Object texture of Tomb Raider IV and V: 38 and 40 bytes in the file.
struct ObjectTextureTR45
{
    std::int16_t Attribute = 0;
    std::int16_t Tile = 0; ///< bit 15 marks a triangle
    std::int16_t NewFlags = 0;
    std::array<TextureCorner, 4> Corners{};
    std::int32_t Width = 0;  ///< last pixel column less first
    std::int32_t Height = 0; ///< last pixel row less first
};

/// What the level readers leave beside the level itself. A load fills what its game has; what
/// other games had, such as their palettes, stays in place.
struct TrMainState
{
    std::int16_t LevelIsLoaded = 0; ///< -1 from the start of `ReadTR`, 0 after a project load
    std::int16_t LevelVersion = 0;  ///< see `VersionCode`
    std::int32_t NumTiles = 0;      ///< Tomb Raider I to III: tiles in the file
    std::int16_t RoomCount = 0;     ///< number of rooms, all games
    std::array<Colour6, 256> Palette{};
    std::array<Colour8, 256> Palette16{};
    std::vector<ObjectTexture> ObjectTextures;
    std::vector<ObjectTextureTR45> ObjectTexturesTR45;
    /// Corner code of each object texture: 1 or -1 (mirrored) for a rectangle; for a triangle one
    /// of 0, 0x2000, ... 0xe000, the corner that it starts from and its direction.
    std::vector<std::int32_t> TextureFlip;
    bool Fractional = false; ///< corners of the level's textures have true fractions
    /// By how many places the vertices of a face with the texture are turned before its code holds;
    /// 0 but in levels of newer compilers.
    std::vector<std::int32_t> TextureTurn;
    /// The object texture that stands for each one: itself, or the first with the same box.
    std::vector<std::int32_t> TextureRemap;
};

/// Reads a finished level of any game, its object textures already converted.
/// Ends the program, after its message, when the file can't be opened or is no good.
/// The caller makes the result the current level and writes its `Version`.
LevelData ReadTR(const std::string& fileName, TrMainState& state, Reporter& report);

} // namespace morlik
