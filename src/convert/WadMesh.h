#pragma once

#include "base/Bytes.h"
#include "base/Reporter.h"
#include "convert/RawMesh.h"

#include <array>
#include <vector>

namespace morlik
{

constexpr std::int16_t kFaceTriangle = 8;
constexpr std::int16_t kFaceRectangle = 9;

/// A face in the editor's form.
struct WadFace
{
    std::int16_t Type = 0; ///< `kFaceTriangle` or `kFaceRectangle`
    std::array<std::int16_t, 4> Vertices{};
    /// Number in the texture table: negative for a mirrored rectangle; a triangle has its corner
    /// code in the top three bits.
    std::int16_t Texture = 0;
    std::int16_t Flags = 0;
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
};

/// All mesh records of an object set, back to back.
struct WadMeshSet
{
    std::int32_t NumMeshPointers = 0;
    std::vector<std::int32_t> MeshPointers; ///< byte offset in `MeshData` by mesh number
    std::int32_t NumMeshWords = 0;          ///< size of `MeshData` in 16-bit words
    ByteWriter MeshData;
};

/// Size of the mesh's record in bytes, without padding.
std::int32_t WadMeshSize(const WadMesh& mesh);

/// Stores the record of `mesh` with `padding` zero bytes behind it, and its pointer.
/// A face of another type ends the program with a message.
void AppendWadMesh(WadMeshSet& set, const WadMesh& mesh, std::int32_t padding, Reporter& report);

/// Adds a pointer alone, for a mesh that is stored already.
void AppendMeshPointer(WadMeshSet& set, std::int32_t offset);

} // namespace morlik
