#pragma once

#include "set/ObjectSet.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace morlik
{

/// Where a mesh hangs on an earlier one of its object.
struct Joint
{
    std::optional<std::size_t> Parent; ///< number of the mesh that it hangs on; none for the first
    // Of its origin in the space of that mesh, in world units; Y grows downward. 0 for the first.
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Z = 0;

    bool operator==(const Joint&) const = default;
};

/// A joint for each mesh of an object. Parents stand before their children.
using Skeleton = std::vector<Joint>;

/// Number of meshes of a moveable, at least 1. `ReadFailure` if there are none, or no such
/// moveable.
std::size_t NumMeshesOf(const ObjectSet& set, std::size_t moveable);

/// The skeleton of a moveable, from the nodes of its mesh tree. There is one for each mesh but the
/// first, four words:
///
///   flags; X, Y, Z
///
/// A mesh hangs on the mesh before it. Flag 1 takes the mesh that it hangs on from a stack instead;
/// flag 2 then puts the mesh that it hangs on, be it from the stack or not, on the stack.
/// There are levels whose first node takes from the stack, which holds nothing yet: it hangs on the
/// first mesh, the only one there is. Later nodes that take from an empty stack, other flags and
/// nodes outside the table are `ReadFailure`s.
Skeleton SkeletonOf(const ObjectSet& set, std::size_t moveable);

} // namespace morlik
