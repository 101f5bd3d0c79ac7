#include "convert/WadMesh.h"

#include "base/Narrow.h"

namespace morlik
{

namespace
{

/// Centre, radius and the three counts.
constexpr std::int32_t kFixedBytes = 16;
constexpr std::int32_t kTriangleBytes = 12;
constexpr std::int32_t kRectangleBytes = 14;

void PutFace(ByteWriter& writer, const WadFace& face, std::size_t number, Reporter& report)
{
    const auto& v = face.Vertices;
    if (face.Type == kFaceTriangle)
        writer.Put(std::array{face.Type, v[0], v[1], v[2], face.Texture, face.Flags});
    else if (face.Type == kFaceRectangle)
        writer.Put(std::array{face.Type, v[0], v[1], v[2], v[3], face.Texture, face.Flags});
    else
        report.Stop("Unknown face type - Face " + std::to_string(number));
}

} // namespace

std::int32_t WadMeshSize(const WadMesh& mesh)
{
    auto size = kFixedBytes + static_cast<std::int32_t>(mesh.Vertices.size() * sizeof(Vertex));
    size += mesh.NumNormals < 0 ? 2 * -mesh.NumNormals : 6 * mesh.NumNormals;
    for (const WadFace& face : mesh.Faces) {
        if (face.Type == kFaceTriangle)
            size += kTriangleBytes;
        else if (face.Type == kFaceRectangle)
            size += kRectangleBytes;
    }
    return size;
}

void AppendWadMesh(WadMeshSet& set, const WadMesh& mesh, std::int32_t padding, Reporter& report)
{
    ByteWriter& writer = set.MeshData;
    const auto start = narrow<std::int32_t>(writer.Size());
    writer.Put(mesh.Centre);
    writer.Put(mesh.Radius);
    writer.Put(static_cast<std::int16_t>(mesh.Vertices.size()));
    writer.PutTable(mesh.Vertices);
    writer.Put(mesh.NumNormals);
    writer.PutTable(mesh.Normals);
    writer.PutTable(mesh.Lights);
    writer.Put(static_cast<std::int16_t>(mesh.Faces.size()));
    for (std::size_t i = 0; i < mesh.Faces.size(); ++i)
        PutFace(writer, mesh.Faces[i], i, report);
    writer.PutZeros(static_cast<std::size_t>(padding));
    AppendMeshPointer(set, start);
    set.NumMeshWords = static_cast<std::int32_t>(writer.Size() / 2);
}

void AppendMeshPointer(WadMeshSet& set, std::int32_t offset)
{
    set.MeshPointers.push_back(offset);
    ++set.NumMeshPointers;
}

} // namespace morlik
