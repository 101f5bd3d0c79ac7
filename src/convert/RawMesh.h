#pragma once

#include "base/Bytes.h"
#include "base/Records.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace morlik
{

/// A face of a level's mesh; a triangle uses the first three vertices.
struct RawFace
{
    std::array<std::int16_t, 4> Vertices{};
    std::int16_t Texture = 0;   ///< object texture number, or colour word of a coloured face
    std::int16_t Attribute = 0; ///< Tomb Raider IV and V; 0 in the others
};

/// A mesh in the game's own form. In the file its fields follow each other without gaps, 16-bit
/// words unless told otherwise:
///
///   centre X, Y, Z; radius (32 bits); vertex count, vertices;
///   normal count, as many normals, or, where it is negative, that many light words;
///   textured rectangles, textured triangles, and, for Tomb Raider I to III, coloured rectangles
///   and coloured triangles: each list a count, then for each face its vertex indices and its
///   texture or colour word; Tomb Raider IV and V add an attribute word to each face.
struct RawMesh
{
    Vertex Centre;
    std::int32_t Radius = 0;
    std::vector<Vertex> Vertices;
    std::int16_t NumNormals = 0; ///< below 0: the negated count of `Lights`
    std::vector<Vertex> Normals;
    std::vector<std::int16_t> Lights;
    std::vector<RawFace> Rectangles;
    std::vector<RawFace> Triangles;
    std::vector<RawFace> ColouredRectangles;
    std::vector<RawFace> ColouredTriangles;
    std::size_t SourceBytes = 0; ///< size of the mesh in the level
    std::size_t Number = 0;      ///< of the mesh in the level, for messages
};

/// Bytes of centre and radius, which stand before the vertex count.
constexpr std::size_t kMeshHeadBytes = 10;

/// Words of a textured face of `corners` corners: vertices, texture and, outside Tomb Raider I to
/// III, the attribute.
constexpr std::size_t TexturedFaceWords(std::size_t corners, bool isOlderGame)
{
    return corners + (isOlderGame ? 1 : 2);
}

/// Meshes of an intact level stand side by side. Damaged ones that all cover the same bytes would
/// multiply the work and the output without bounds, so their sum is limited, against their data and
/// for a whole level: a small block may inflate to mesh data without an end.
class MeshBudget
{
public:
    /// Of the meshes of a level.
    static constexpr std::size_t kMostBytes = std::size_t{32} << 20U;

    explicit MeshBudget(std::size_t meshDataBytes)
        : left_(std::min(kMostOverlap * meshDataBytes, kMostBytes))
    {
    }

    /// Takes the bytes of one mesh; a `ReadFailure` when the meshes overlap too much.
    void Spend(std::size_t meshBytes)
    {
        if (meshBytes > left_)
            throw ReadFailure(
                "mesh: the meshes lie one over the other, or are more than any level has");
        left_ -= meshBytes;
    }

private:
    static constexpr std::size_t kMostOverlap = 4;
    std::size_t left_;
};

/// The mesh at byte `offset` of the level's `meshData`; `isOlderGame` for Tomb Raider I to III.
/// `ReadFailure` for an offset outside the data, a negative count or a mesh that runs past the end.
RawMesh ReadRawMesh(std::span<const std::byte> meshData, std::int32_t offset, bool isOlderGame);

} // namespace morlik
