#include "convert/RawMesh.h"

#include "base/Narrow.h"

#include <algorithm>

namespace morlik
{

namespace
{

template <std::size_t Corners>
std::vector<RawFace> ReadFaces(ByteReader& reader, std::size_t words)
{
    const auto count = reader.Read<std::int16_t>();
    const auto bytes = reader.TakeTable(count, words * sizeof(std::int16_t));
    std::vector<RawFace> faces(static_cast<std::size_t>(count));
    const std::byte* at = bytes.data();
    for (RawFace& face : faces) {
        std::array<std::int16_t, Corners + 2> record{};
        std::memcpy(record.data(), at, words * sizeof(std::int16_t));
        std::copy_n(record.begin(), Corners, face.Vertices.begin());
        face.Texture = record[Corners];
        face.Attribute = record[Corners + 1];
        at += words * sizeof(std::int16_t);
    }
    return faces;
}

} // namespace

RawMesh ReadRawMesh(std::span<const std::byte> meshData, std::int32_t offset, bool isOlderGame)
{
    RawMesh mesh;
    ByteReader reader(meshData);
    reader.Section("mesh");
    const auto start = narrow<std::size_t>(offset);
    reader.Seek(start);
    mesh.Centre = reader.Read<Vertex>();
    mesh.Radius = reader.Read<std::int32_t>();
    mesh.Vertices = reader.Table<Vertex>(reader.Read<std::int16_t>());
    mesh.NumNormals = reader.Read<std::int16_t>();
    if (mesh.NumNormals > 0)
        mesh.Normals = reader.Table<Vertex>(mesh.NumNormals);
    else
        mesh.Lights = reader.Table<std::int16_t>(-std::int64_t{mesh.NumNormals});
    mesh.Rectangles = ReadFaces<4>(reader, TexturedFaceWords(4, isOlderGame));
    mesh.Triangles = ReadFaces<3>(reader, TexturedFaceWords(3, isOlderGame));
    if (isOlderGame) {
        mesh.ColouredRectangles = ReadFaces<4>(reader, 5);
        mesh.ColouredTriangles = ReadFaces<3>(reader, 4);
    }
    mesh.SourceBytes = reader.Position() - start;
    return mesh;
}

} // namespace morlik
