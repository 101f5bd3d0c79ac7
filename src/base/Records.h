#pragma once

#include "base/Fields.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace morlik
{

/// Records that levels and object sets have in common: the editor took them over from its game.

/// Tiles are squares of 256 by 256 pixels, one below the other as rows of 256 pixels: line y of
/// tile t is row 256 t + y.
constexpr std::int32_t kTileSide = 256;
constexpr std::int32_t kTilePixels = kTileSide * kTileSide;
/// Bytes of a pixel in an object set, and in the unit that levels measure their tiles in.
constexpr std::int32_t kPixelBytes = 3;
constexpr std::int32_t kRowBytes = kTileSide * kPixelBytes;
constexpr std::int32_t kTileBytes = kTilePixels * kPixelBytes;

/// A texture as the object set stores it, 8 bytes: a box in a tile.
struct TextInfo
{
    static constexpr std::uint8_t kFlipMark = 0xff;

    std::uint8_t X = 0;      ///< left pixel column in the tile
    std::uint8_t Y = 0;      ///< top pixel row in the tile
    std::int16_t Tile = 0;   ///< tile number, counted over the whole level or set
    std::uint8_t FlipX = 0;  ///< `kFlipMark`, but 0 for triangles of Tomb Raider I to III
    std::uint8_t Width = 0;  ///< last pixel column less first
    std::uint8_t FlipY = 0;  ///< as `FlipX`
    std::uint8_t Height = 0; ///< last pixel row less first

    bool operator==(const TextInfo&) const = default;
};
static_assert(sizeof(TextInfo) == 8);

/// A point or a direction, in world units or as a normal.
struct Vertex
{
    std::int16_t X = 0;
    std::int16_t Y = 0; ///< grows downward
    std::int16_t Z = 0;

    bool operator==(const Vertex&) const = default;
};
static_assert(sizeof(Vertex) == 6);

/// One animation; 40 bytes in memory and in the object set, 32 in Tomb Raider I to III levels,
/// which have no lateral fields.
struct Animation
{
    std::int32_t FrameOffset = 0;  ///< byte offset of the first frame in `Frames`
    std::uint8_t FrameRate = 0;    ///< ticks between two frames
    std::uint8_t FrameSize = 0;    ///< size of a frame in 16-bit words
    std::int16_t State = 0;        ///< state of the object while it runs
    std::int32_t Speed = 0;        ///< 16.16 fixed point
    std::int32_t Accel = 0;        ///< 16.16 fixed point
    std::int32_t LateralSpeed = 0; ///< Tomb Raider IV and V; 0 in the others
    std::int32_t LateralAccel = 0; ///< Tomb Raider IV and V; 0 in the others
    std::int16_t FrameStart = 0;   ///< first frame number
    std::int16_t FrameEnd = 0;     ///< last frame number
    std::int16_t NextAnimation = 0;
    std::int16_t NextFrame = 0;
    std::int16_t NumStateChanges = 0;
    std::int16_t StateChange = 0; ///< index of the first of them in `StateChanges`
    std::int16_t NumAnimCommands = 0;
    std::int16_t AnimCommand = 0; ///< index of the first word of them in `AnimCommands`

    bool operator==(const Animation&) const = default;
};
static_assert(sizeof(Animation) == 40);
/// An animation in the levels of Tomb Raider I to III, which have no lateral speeds.
using ShortAnimationFields =
    FieldList<&Animation::FrameOffset, &Animation::FrameRate, &Animation::FrameSize,
              &Animation::State, &Animation::Speed, &Animation::Accel, &Animation::FrameStart,
              &Animation::FrameEnd, &Animation::NextAnimation, &Animation::NextFrame,
              &Animation::NumStateChanges, &Animation::StateChange, &Animation::NumAnimCommands,
              &Animation::AnimCommand>;
static_assert(ShortAnimationFields::kBytes == 32);

/// The dispatches that apply when the object wants to change to a state.
struct StateChange
{
    std::int16_t StateID = 0;
    std::int16_t NumAnimDispatches = 0;
    std::int16_t AnimDispatch = 0; ///< index of the first of them in `AnimDispatches`

    bool operator==(const StateChange&) const = default;
};
static_assert(sizeof(StateChange) == 6);

/// Between the frames `Low` and `High` go on with `NextFrame` of `NextAnimation`.
struct AnimDispatch
{
    std::int16_t Low = 0;
    std::int16_t High = 0;
    std::int16_t NextAnimation = 0;
    std::int16_t NextFrame = 0;

    bool operator==(const AnimDispatch&) const = default;
};
static_assert(sizeof(AnimDispatch) == 8);

/// A moveable object; 18 bytes in every file but Tomb Raider V levels, which add two unused bytes.
struct Moveable
{
    std::int32_t ObjectID = 0;
    std::int16_t NumMeshes = 0;
    std::int16_t StartingMesh = 0; ///< index of the first of its meshes in `MeshPointers`
    std::int32_t MeshTree = 0;     ///< index of its first word in `MeshTrees`
    std::int32_t FrameOffset = 0;  ///< byte offset of its first frame in `Frames`
    std::int16_t Animation = 0;    ///< index of its first animation, -1 for none

    bool operator==(const Moveable&) const = default;
};
using MoveableFields = FieldList<&Moveable::ObjectID, &Moveable::NumMeshes, &Moveable::StartingMesh,
                                 &Moveable::MeshTree, &Moveable::FrameOffset, &Moveable::Animation>;
static_assert(MoveableFields::kBytes == 18);

/// Number of animations of moveable `index`: a moveable's animations run up to the first of the
/// next moveable that has any, or to the end of all `numAnimations`.
std::int32_t CountAnimations(std::span<const Moveable> moveables, std::int32_t numAnimations,
                             std::size_t index);

/// A static mesh.
struct StaticMesh
{
    std::int32_t ObjectID = 0;
    std::int16_t Mesh = 0; ///< index in `MeshPointers`
    std::array<std::int16_t, 6> VisibilityBox{};
    std::array<std::int16_t, 6> CollisionBox{};
    std::int16_t Flags = 0;

    bool operator==(const StaticMesh&) const = default;
};
static_assert(sizeof(StaticMesh) == 32);

/// A sprite: a box in a tile, and how far its borders are from the sprite's place in the world.
struct SpriteTexture
{
    std::int16_t Tile = 0;
    std::uint8_t X = 0;                  ///< left pixel column in the tile
    std::uint8_t Y = 0;                  ///< top pixel row in the tile
    std::uint16_t Width = 0;             ///< in 256ths of a pixel, less 1
    std::uint16_t Height = 0;            ///< as `Width`
    std::array<std::int16_t, 4> Sides{}; ///< left, top, right, bottom, in world units

    bool operator==(const SpriteTexture&) const = default;
};
static_assert(sizeof(SpriteTexture) == 16);

/// The sprite textures of an object.
struct SpriteSequence
{
    std::int32_t ObjectID = 0;
    std::int16_t NegatedCount = 0; ///< number of its textures, below 0
    std::int16_t FirstTexture = 0;

    bool operator==(const SpriteSequence&) const = default;
};
static_assert(sizeof(SpriteSequence) == 8);

/// A sound: a run of samples with its playing parameters.
struct SoundDetail
{
    /// First sample: a position in `SampleIndices`, or, where a level has its samples itself, in
    /// these.
    std::int16_t Sample = 0;
    std::array<std::int16_t, 2> Raw{};
    std::int16_t Characteristics = 0; ///< bits 2 to 6: number of samples

    /// Number of samples, 0 to 31.
    std::int32_t NumSamples() const { return (Characteristics & 0x7c) / 4; }

    bool operator==(const SoundDetail&) const = default;
};
static_assert(sizeof(SoundDetail) == 8);

} // namespace morlik
