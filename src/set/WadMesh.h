#pragma once

#include "base/Bytes.h"
#include "base/Records.h"
#include "base/Reporter.h"

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

namespace morlik
{

constexpr std::int16_t kFaceTriangle = 8;
constexpr std::int16_t kFaceRectangle = 9;

/// A face in the editor's form.
struct WadFace
{
    std::int16_t Type = 0;                  ///< `kFaceTriangle` or `kFaceRectangle`
    std::array<std::int16_t, 4> Vertices{}; ///< a triangle has three
    /// Number in the texture table: negative for a mirrored rectangle; a triangle has its corner
    /// code in the top three bits.
    std::int16_t Texture = 0;
    std::int16_t Flags = 0;

    std::size_t NumVertices() const { return Type == kFaceTriangle ? 3 : 4; }
    /// The number alone.
    std::size_t TextureNumber() const;

    bool operator==(const WadFace&) const = default;
};

/// A mesh in the editor's form. Its record, without gaps:
///
///   offset      size
///   0           6            centre X, Y, Z
///   6           4            radius
///   10          2            vertex count V
///   12          6 V          vertices
///   12 + 6 V    2            normal count N; negative: lights
///   14 + 6 V    6 N or 2 -N  normals or light words
///               2            face count
///                            faces: type, 3 or 4 vertices, texture, flags, 2 bytes each
///               0 or 2       zeros up to a multiple of 4 bytes
struct WadMesh
{
    Vertex Centre;
    std::int32_t Radius = 0;
    std::vector<Vertex> Vertices;
    std::int16_t NumNormals = 0; ///< below 0: the negated count of `Lights`
    std::vector<Vertex> Normals;
    std::vector<std::int16_t> Lights;
    std::vector<WadFace> Faces;

    bool operator==(const WadMesh&) const = default;
};

/// All mesh records of an object set, back to back.
struct WadMeshSet
{
    std::vector<std::int32_t> MeshPointers; ///< byte offset in `MeshData` by mesh number
    std::vector<std::byte> MeshData;

    bool operator==(const WadMeshSet&) const = default;
};

/// Size of the mesh's record in bytes, without padding.
std::size_t WadMeshSize(const WadMesh& mesh);

/// Stores the record of `mesh` with its padding, and its pointer. The mesh has no more vertices,
/// normals and faces than their 16-bit counts can tell. A face of another type ends the program
/// with a message.
void AppendWadMesh(WadMeshSet& set, const WadMesh& mesh, Reporter& report);

/// Adds a pointer alone, for a mesh that is stored already.
void AppendMeshPointer(WadMeshSet& set, std::int32_t offset);

/// The record that a mesh number's pointer leads to; `ReadFailure` if there is none.
WadMesh WadMeshOf(const WadMeshSet& set, std::size_t mesh);

/// Hands over the records as they stand back to back, with their offsets. `ReadFailure` if the walk
/// doesn't end exactly at the end of the data, or the bytes between two records aren't zero.
void ForEachWadMesh(const WadMeshSet& set,
                    const std::function<void(std::size_t offset, const WadMesh&)>& visit);

} // namespace morlik
