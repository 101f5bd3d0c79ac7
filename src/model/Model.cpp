#include "model/Model.h"

#include "model/Damage.h"

#include <algorithm>

namespace morlik
{

namespace
{

void Widen(std::optional<Bounds>& bounds, const Point& point)
{
    if (!bounds)
        bounds = {point, point};
    auto& [least, greatest] = *bounds;
    for (double Point::*const axis : {&Point::X, &Point::Y, &Point::Z}) {
        least.*axis = std::min(least.*axis, point.*axis);
        greatest.*axis = std::max(greatest.*axis, point.*axis);
    }
}

std::size_t NumberOfMesh(std::int32_t mesh)
{
    if (mesh < 0)
        FailDamaged("there is no mesh ", mesh);
    return static_cast<std::size_t>(mesh);
}

} // namespace

Model ModelOfMoveable(const ObjectSet& set, std::size_t moveable)
{
    Model model{.Meshes = {}, .Joints = SkeletonOf(set, moveable)};
    const std::size_t first = NumberOfMesh(set.Moveables[moveable].StartingMesh);
    std::size_t parts = 0;
    for (std::size_t mesh = 0; mesh < model.Joints.size(); ++mesh) {
        const MeshGeometry& made = model.Meshes.emplace_back(GeometryOf(set, first + mesh));
        parts += made.Positions.size() + made.Faces.size();
        if (parts > kMostModelParts)
            FailDamaged("moveable ", moveable, ": more than ", kMostModelParts,
                        " vertices and faces");
    }
    return model;
}

Model ModelOfStaticMesh(const ObjectSet& set, std::size_t staticMesh)
{
    if (staticMesh >= set.StaticMeshes.size())
        FailDamaged("static mesh ", staticMesh, " of ", set.StaticMeshes.size());
    const std::size_t mesh = NumberOfMesh(set.StaticMeshes[staticMesh].Mesh);
    return {.Meshes = {GeometryOf(set, mesh)}, .Joints = {Joint{}}};
}

std::optional<Bounds> BoundsOf(const Model& model, std::span<const Transform> transforms)
{
    std::optional<Bounds> bounds;
    for (std::size_t mesh = 0; mesh < std::min(model.Meshes.size(), transforms.size()); ++mesh)
        for (const GeometryFace& face : model.Meshes[mesh].Faces)
            for (const FaceCorner& corner : face.Used())
                Widen(bounds,
                      transforms[mesh].Apply(PointOf(model.Meshes[mesh].Positions[corner.Vertex])));
    return bounds;
}

} // namespace morlik
