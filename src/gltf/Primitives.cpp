#include "gltf/Primitives.h"

#include "base/Narrow.h"

#include <algorithm>
#include <cmath>

namespace morlik
{

namespace
{

constexpr double kWhole = 65535; ///< a share of 1, in 16 bits

/// The normal of a vertex with a length of 1. One that has no length looks away from the middle of
/// the mesh.
Point NormalOf(const MeshGeometry& mesh, std::size_t vertex)
{
    const Point position = PointOf(mesh.Positions[vertex]);
    const Point centre = PointOf(mesh.Centre);
    const Point outward{position.X - centre.X, position.Y - centre.Y, position.Z - centre.Z};
    for (const Point& normal : {PointOf(mesh.Normals[vertex]), outward})
        if (const double length = Length(normal); length > 0)
            return {normal.X / length, normal.Y / length, normal.Z / length};
    return {.X = 0, .Y = -1, .Z = 0};
}

/// The games multiply colours as they are shown; glTF multiplies the light that they stand for.
std::array<std::uint16_t, 4> LightOf(std::int16_t light)
{
    const double shown = ShownLight(light);
    constexpr double kLinearTo = 0.04045;
    const double linear =
        shown <= kLinearTo ? shown / 12.92 : std::pow((shown + 0.055) / 1.055, 2.4);
    const auto share = static_cast<std::uint16_t>(std::lround(linear * kWhole));
    return {share, share, share, static_cast<std::uint16_t>(kWhole)};
}

} // namespace

void Primitives::Add(const MeshGeometry& mesh, const Point& shift,
                     std::optional<std::uint16_t> joint)
{
    for (auto& [kind, part] : parts_)
        part.Shared.clear();
    const Source source{.Mesh = mesh, .Shift = shift, .Joint = joint};
    for (const GeometryFace& face : mesh.Faces) {
        const bool adds = face.Blends();
        Part& part =
            parts_[{.Finish = {.Adds = adds,
                               .HasHoles = !adds && context_.Textures.HasHoles(context_.Set, face),
                               .Shine = face.Shine()},
                    .HasNormals = !mesh.Normals.empty(),
                    .HasLights = mesh.Normals.empty() && !mesh.Lights.empty()}];
        std::array<std::uint32_t, 4> corners{};
        for (std::size_t i = 0; i < face.NumCorners; ++i)
            corners[i] = VertexOf(part, source, face.Corners[i].Vertex,
                                  context_.Textures.MiddleOf(context_.Set, face, face.Corners[i]));
        // A rectangle is cut from its first corner to its third one, as the games do; turned, for
        // here the corners go counter-clockwise.
        for (std::size_t third = 2; third < face.NumCorners; ++third)
            AddTriangle(part, {corners[0], corners[third], corners[third - 1]});
    }
}

void Primitives::AddTriangle(Part& part, std::array<std::uint32_t, 3> corners)
{
    std::array<std::uint32_t, 3> sorted = corners;
    std::sort(sorted.begin(), sorted.end());
    if (!part.Triangles.insert(sorted).second) {
        for (std::uint32_t& corner : corners) {
            const std::size_t vertex = corner;
            corner = narrow<std::uint32_t>(part.Positions.size());
            const auto repeat = [vertex](auto& values) {
                if (!values.empty())
                    values.push_back(values[vertex]);
            };
            repeat(part.Positions);
            repeat(part.Normals);
            repeat(part.Corners);
            repeat(part.Lights);
            repeat(part.Joints);
        }
    }
    part.Indices.insert(part.Indices.end(), corners.begin(), corners.end());
}

std::uint32_t Primitives::VertexOf(Part& part, const Source& source, std::uint16_t vertex,
                                   const std::array<float, 2>& corner)
{
    const auto [entry, isNew] =
        part.Shared.try_emplace({vertex, corner}, narrow<std::uint32_t>(part.Positions.size()));
    if (!isNew)
        return entry->second;
    const MeshGeometry& mesh = source.Mesh;
    const Vertex& position = mesh.Positions[vertex];
    part.Positions.push_back(context_.Axes.Place({.X = position.X + source.Shift.X,
                                                  .Y = position.Y + source.Shift.Y,
                                                  .Z = position.Z + source.Shift.Z}));
    part.Corners.push_back(corner);
    if (!mesh.Normals.empty())
        part.Normals.push_back(GltfAxes::Direction(NormalOf(mesh, vertex)));
    else if (!mesh.Lights.empty())
        part.Lights.push_back(LightOf(mesh.Lights[vertex]));
    if (source.Joint)
        part.Joints.push_back({*source.Joint, 0, 0, 0});
    return entry->second;
}

int Primitives::Finish(std::string name)
{
    tinygltf::Mesh mesh;
    mesh.name = std::move(name);
    for (const auto& [kind, part] : parts_)
        mesh.primitives.push_back(Write(kind, part));
    auto& meshes = context_.File.Tables.meshes;
    meshes.push_back(std::move(mesh));
    return narrow<int>(meshes.size() - 1);
}

tinygltf::Primitive Primitives::Write(const Kind& kind, const Part& part)
{
    Document& file = context_.File;
    tinygltf::Primitive primitive;
    primitive.mode = TINYGLTF_MODE_TRIANGLES;
    primitive.material = context_.Finishes.NumberOf(kind.Finish);
    primitive.indices = file.AddIndices(part.Indices);
    auto& attributes = primitive.attributes;
    attributes["POSITION"] = file.Add(ValueKind::Positions, part.Positions, true);
    attributes["TEXCOORD_0"] = file.Add(ValueKind::Corners, part.Corners);
    if (kind.HasNormals)
        attributes["NORMAL"] = file.Add(ValueKind::Normals, part.Normals);
    if (kind.HasLights)
        attributes["COLOR_0"] = file.Add(ValueKind::Lights, part.Lights);
    if (!part.Joints.empty()) {
        constexpr std::array<std::uint8_t, 4> kOneBone{255, 0, 0, 0};
        const std::vector<std::array<std::uint8_t, 4>> weights(part.Joints.size(), kOneBone);
        attributes["JOINTS_0"] = file.Add(ValueKind::Joints, part.Joints);
        attributes["WEIGHTS_0"] = file.Add(ValueKind::Weights, weights);
    }
    return primitive;
}

} // namespace morlik
