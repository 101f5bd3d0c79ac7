#include "cli/Shapes.h"

#include "base/Narrow.h"
#include "convert/RawMesh.h"
#include "model/MeshGeometry.h"

#include <algorithm>
#include <memory>
#include <span>

namespace morlik::cli
{

namespace
{

using Corners = std::vector<std::int16_t>;

/// Faces begin with another vertex in a set than in their level, as their textures want it.
Corners FromLeast(Corners corners)
{
    std::rotate(corners.begin(), std::ranges::min_element(corners), corners.end());
    return corners;
}

MeshShape ShapeOf(const std::vector<Vertex>& vertices, std::vector<Corners> faces)
{
    MeshShape shape;
    for (const Vertex& vertex : vertices)
        shape.insert(shape.end(), {vertex.X, vertex.Y, vertex.Z});
    std::ranges::sort(faces);
    for (const Corners& corners : faces) {
        shape.push_back(static_cast<std::int16_t>(corners.size()));
        shape.insert(shape.end(), corners.begin(), corners.end());
    }
    return shape;
}

void AddFaces(std::vector<Corners>& faces, const std::vector<RawFace>& list, std::ptrdiff_t corners)
{
    for (const RawFace& face : list)
        faces.push_back(FromLeast({face.Vertices.begin(), face.Vertices.begin() + corners}));
}

MeshShape ShapeOf(const RawMesh& mesh)
{
    std::vector<Corners> faces;
    AddFaces(faces, mesh.Rectangles, 4);
    AddFaces(faces, mesh.Triangles, 3);
    AddFaces(faces, mesh.ColouredRectangles, 4);
    AddFaces(faces, mesh.ColouredTriangles, 3);
    return ShapeOf(mesh.Vertices, std::move(faces));
}

MeshShape ShapeOf(const MeshGeometry& mesh)
{
    std::vector<Corners> faces;
    for (const GeometryFace& face : mesh.Faces) {
        Corners corners;
        for (const FaceCorner& corner : face.Used())
            corners.push_back(static_cast<std::int16_t>(corner.Vertex));
        faces.push_back(FromLeast(std::move(corners)));
    }
    return ShapeOf(mesh.Positions, std::move(faces));
}

} // namespace

Shapes::Shapes(const LevelData& level)
    : make_(
          [&level, budget = std::make_shared<MeshBudget>(level.MeshData.size())](std::size_t mesh) {
              const RawMesh raw =
                  ReadRawMesh(level.MeshData, level.MeshPointers[mesh], IsOlderGame(level.Version));
              budget->Spend(raw.SourceBytes);
              return ShapeOf(raw);
          }),
      made_(level.MeshPointers.size())
{
}

Shapes::Shapes(const ObjectSet& set)
    : make_([&set](std::size_t mesh) { return ShapeOf(GeometryOf(set, mesh)); }),
      made_(set.Meshes.MeshPointers.size())
{
}

Shape Shapes::Of(std::int64_t first, std::int64_t count)
{
    Shape shape;
    for (std::int64_t mesh = first; mesh < first + count; ++mesh)
        shape.push_back(Mesh(mesh));
    return shape;
}

bool Shapes::AreLike(const Shape& shape, std::int64_t first, std::int64_t count)
{
    if (std::cmp_not_equal(shape.size(), count) || !Inside(first, count, made_.size()))
        return false;
    return std::ranges::all_of(shape, [&, mesh = first](const MeshShape& wanted) mutable {
        return Mesh(mesh++) == wanted;
    });
}

const MeshShape& Shapes::Mesh(std::int64_t number)
{
    if (!Inside(number, 1, made_.size()))
        throw ReadFailure("mesh " + std::to_string(number) + " of " + std::to_string(made_.size()));
    auto& made = made_[static_cast<std::size_t>(number)];
    if (!made)
        made = make_(static_cast<std::size_t>(number));
    return *made;
}

} // namespace morlik::cli
