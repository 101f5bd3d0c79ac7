#pragma once

#include "model/Skeleton.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace morlik
{

/// Angles of all rotations: steps of a full turn. They are 0 to one less.
constexpr std::int32_t kFullTurn = 4096;

/// The rotation of a mesh: about Y, then about the turned X, then about the Z that both turned.
/// Each angle turns the first of two axes into the second: Z into X for Y, Y into Z for X, X into Y
/// for Z.
struct Rotation
{
    std::int16_t X = 0;
    std::int16_t Y = 0;
    std::int16_t Z = 0;

    bool operator==(const Rotation&) const = default;
};

/// How an object stands in one frame, in world units.
struct Pose
{
    std::array<std::int16_t, 6> Box{}; ///< around the object: least and greatest X, then Y, then Z
    Vertex Offset;                     ///< of the first mesh from the object's place
    std::vector<Rotation> Rotations;   ///< of each mesh
    std::size_t NumWords = 0; ///< that the frame takes; what is left of its size is filling

    bool operator==(const Pose&) const = default;
};

/// Decodes a frame: nine words of box and offset, then a rotation for each mesh. It is one word
/// where bit 14 or 15 is set, else two:
///
///   one: bits 14 and 15, the axis (1 X, 2 Y, 3 Z); bits 0 to 11, its angle, 4096 to a full turn
///   two, the higher one first: bits 20 to 29 X, 10 to 19 Y, 0 to 9 Z, 1024 to a full turn
///
/// `ReadFailure` if the words don't suffice.
Pose ReadPose(std::span<const std::int16_t> frame, std::size_t numMeshes);

/// The pose of an object that has no animations: nothing is turned, the box is empty.
Pose RestPose(std::size_t numMeshes);

} // namespace morlik
