#pragma once

#include "samples/LevelContent.h"

namespace morlik::samples
{

/// The bytes of a mesh in the form of its game, without padding.
std::vector<std::byte> EncodeMesh(const MeshContent& mesh, VersionCode game);

/// Colour word of a coloured face. Tomb Raider I keeps the palette index in the low byte; II and
/// III have it there for `Palette` and in the high byte for `Palette16`.
std::int16_t ColourWord(VersionCode game, std::uint8_t index);

/// Angles of a mesh in a frame, 1024 to a full turn.
struct Rotation
{
    int X = 0;
    int Y = 0;
    int Z = 0;
};

/// A frame: bounding box (least and greatest X, Y, Z), place of the first mesh, a rotation for
/// each mesh.
struct FrameContent
{
    std::array<std::int16_t, 6> Box{};
    Vector3 Offset{};
    std::vector<Rotation> Rotations{};
};

/// The words of one animation's frames, all of the same size. Behind the 9 header words stand the
/// rotations: in Tomb Raider I a count and two words for each mesh, the lower word first; in the
/// others the higher word first, and a rotation about one axis as a single word, with the axis in
/// its top two bits and an angle of 10 bits (II, III) or 12 bits (IV, V).
/// `frameWords` is the size of a frame.
std::vector<std::int16_t> EncodeFrames(VersionCode game, const std::vector<FrameContent>& frames,
                                       std::size_t& frameWords);

/// Where a mesh hangs in the tree of its moveable. The first mesh has no joint.
struct Joint
{
    std::int32_t Stack = 0; ///< bit 0: back to the pushed mesh; bit 1: push the last one
    std::int32_t X = 0;     ///< from the mesh that it hangs on
    std::int32_t Y = 0;
    std::int32_t Z = 0;
};

/// A way out of an animation; animations count from the moveable's own first one.
struct Transition
{
    std::int16_t ToState = 0;
    std::int16_t Low = 0; ///< frames in which it is open
    std::int16_t High = 0;
    std::int16_t Animation = 0;
    std::int16_t Frame = 0;
};

struct AnimationContent
{
    std::int16_t State = 0;
    std::uint8_t FrameRate = 1;
    std::vector<FrameContent> Frames{};
    std::int16_t Next = 0; ///< animation that follows, from the moveable's own first one
    std::vector<Transition> Transitions{};
    /// Words of the commands; `NumCommands` tells how many commands they are.
    std::vector<std::int16_t> Commands{};
    std::int16_t NumCommands = 0;
    std::int32_t Speed = 0;
    std::int32_t Accel = 0;
};

struct MoveableContent
{
    std::int32_t ObjectID = 0;
    std::vector<std::size_t> Meshes{}; ///< indices into `LevelContent::Meshes`, may repeat
    std::vector<Joint> Joints{};       ///< for all meshes but the first
    std::vector<AnimationContent> Animations{};
};

/// Adds a mesh and gives its index in `Meshes`.
std::size_t AddMesh(LevelContent& level, MeshContent mesh);

/// Adds a moveable with its mesh pointers, mesh tree, animations and frames; gives its index.
std::size_t AddMoveable(LevelContent& level, const MoveableContent& moveable);

/// Adds a static mesh with a pointer to a mesh of its own; its boxes surround the mesh.
void AddStaticMesh(LevelContent& level, std::int32_t objectID, std::size_t mesh);

} // namespace morlik::samples
