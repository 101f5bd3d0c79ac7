#pragma once

#include "gltf/Atlas.h"
#include "gltf/Axes.h"
#include "gltf/Materials.h"
#include "model/MeshGeometry.h"

#include <array>
#include <compare>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace morlik
{

/// What the primitives of all meshes of a file need.
struct MeshContext
{
    const ObjectSet& Set;
    const Atlas& Textures;
    const GltfAxes& Axes;
    Document& File;
    Materials& Finishes;
};

/// A glTF mesh while it is made: a primitive for each material of its faces. Corners of faces share
/// a vertex where they have the same one of the mesh and show the same pixel; but not all corners
/// with another triangle, such as the other side of a leaf, which some programs would drop then.
class Primitives
{
public:
    explicit Primitives(const MeshContext& context) : context_(context) {}

    /// Adds the faces of a mesh, moved by `shift`. With `joint` they are bound to that bone.
    void Add(const MeshGeometry& mesh, const Point& shift = {},
             std::optional<std::uint16_t> joint = {});
    bool IsEmpty() const { return parts_.empty(); }
    /// Puts the mesh into the file and gives its number.
    int Finish(std::string name);

private:
    struct Kind
    {
        morlik::Finish Finish;
        bool HasNormals;
        bool HasLights;

        auto operator<=>(const Kind&) const = default; // NOLINT(modernize-use-nullptr)
    };
    struct Part
    {
        std::vector<std::array<float, 3>> Positions;
        std::vector<std::array<float, 3>> Normals;
        std::vector<std::array<float, 2>> Corners;
        std::vector<std::array<std::uint16_t, 4>> Lights;
        std::vector<std::array<std::uint16_t, 4>> Joints;
        std::vector<std::uint32_t> Indices;
        std::set<std::array<std::uint32_t, 3>> Triangles; ///< their vertices in rising order
        /// Vertices of the mesh at hand that are there, by their number and the pixel they show.
        std::map<std::pair<std::uint16_t, std::array<float, 2>>, std::uint32_t> Shared;
    };
    struct Source
    {
        const MeshGeometry& Mesh;
        const Point& Shift;
        std::optional<std::uint16_t> Joint;
    };
    std::uint32_t VertexOf(Part& part, const Source& source, std::uint16_t vertex,
                           const std::array<float, 2>& corner);
    static void AddTriangle(Part& part, std::array<std::uint32_t, 3> corners);
    tinygltf::Primitive Write(const Kind& kind, const Part& part);

    const MeshContext& context_;
    std::map<Kind, Part> parts_;
};

} // namespace morlik
