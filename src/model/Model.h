#pragma once

#include "model/MeshGeometry.h"
#include "model/Transform.h"

#include <optional>
#include <span>
#include <vector>

namespace morlik
{

/// An object of a set: its meshes, and how they hang on each other. A static mesh is an object of
/// one mesh.
struct Model
{
    std::vector<MeshGeometry> Meshes;
    Skeleton Joints; ///< one for each mesh
};

/// Vertices and faces, together, that an object may have. No object of a level comes near that;
/// records that lead to the same mesh again and again could fill memory.
constexpr std::size_t kMostModelParts = std::size_t{1} << 18U;

/// `ReadFailure` if there is no such object, it is damaged, or it has more than `kMostModelParts`.
Model ModelOfMoveable(const ObjectSet& set, std::size_t moveable);
Model ModelOfStaticMesh(const ObjectSet& set, std::size_t staticMesh);

/// The space that an object takes.
struct Bounds
{
    Point Least;
    Point Greatest;
};

/// Bounds of all faces, with the meshes where `transforms` leads them, one for each. None for an
/// object without faces.
std::optional<Bounds> BoundsOf(const Model& model, std::span<const Transform> transforms);

} // namespace morlik
