#include "set/WadMesh.h"

#include "base/Narrow.h"

#include <cstdlib>

namespace morlik
{

namespace
{

/// Records begin at multiples of this.
constexpr std::size_t kAlignment = 4;

/// The bits of a triangle's texture word that hold the number.
constexpr std::int16_t kTriangleNumber = 0x1fff;

bool IsFaceType(std::int16_t type)
{
    return type == kFaceTriangle || type == kFaceRectangle;
}

/// The fields of a face in their order. `io` reads or writes.
template <class Io, class Face>
void FaceFields(Io& io, Face& face)
{
    io.Value(face.Type);
    io.CheckType(face.Type);
    io.Values(std::span(face.Vertices).first(face.NumVertices()));
    io.Value(face.Texture);
    io.Value(face.Flags);
}

/// The fields of a record in their order.
template <class Io, class Mesh>
void MeshFields(Io& io, Mesh& mesh)
{
    io.Value(mesh.Centre);
    io.Value(mesh.Radius);
    io.ShortTable(mesh.Vertices);
    io.Value(mesh.NumNormals);
    io.Table(mesh.NumNormals > 0 ? mesh.NumNormals : 0, mesh.Normals);
    io.Table(mesh.NumNormals < 0 ? -std::int64_t{mesh.NumNormals} : 0, mesh.Lights);
    for (auto& face : io.Faces(mesh.Faces))
        FaceFields(io, face);
}

class MeshWriter
{
public:
    explicit MeshWriter(std::byte* at) : at_(at) {}

    template <Packed T>
    void Value(const T& value)
    {
        PutBytes(&value, sizeof(T));
    }
    static void CheckType(std::int16_t /*type*/) {}
    void Values(std::span<const std::int16_t> values)
    {
        PutBytes(values.data(), values.size_bytes());
    }
    template <Packed T>
    void Table(std::int64_t /*count*/, const std::vector<T>& table)
    {
        PutBytes(table.data(), table.size() * sizeof(T));
    }
    template <class T>
    void ShortTable(const std::vector<T>& table)
    {
        Value(static_cast<std::int16_t>(table.size()));
        Table(0, table);
    }
    const std::vector<WadFace>& Faces(const std::vector<WadFace>& faces)
    {
        Value(static_cast<std::int16_t>(faces.size()));
        return faces;
    }

private:
    void PutBytes(const void* from, std::size_t size)
    {
        if (size != 0)
            std::memcpy(at_, from, size);
        at_ += size;
    }

    std::byte* at_;
};

class MeshReader
{
public:
    explicit MeshReader(ByteReader& reader) : reader_(reader) {}

    template <Packed T>
    void Value(T& value)
    {
        value = reader_.Read<T>();
    }
    void CheckType(std::int16_t type) const
    {
        if (!IsFaceType(type))
            reader_.Fail("a face of type " + std::to_string(type));
    }
    void Values(std::span<std::int16_t> values)
    {
        const auto bytes = reader_.Take(values.size_bytes());
        std::memcpy(values.data(), bytes.data(), bytes.size());
    }
    template <Packed T>
    void Table(std::int64_t count, std::vector<T>& table)
    {
        table = reader_.Table<T>(count);
    }
    template <Packed T>
    void ShortTable(std::vector<T>& table)
    {
        table = reader_.Table<T>(reader_.Read<std::int16_t>());
    }
    std::vector<WadFace>& Faces(std::vector<WadFace>& faces)
    {
        constexpr std::size_t kLeastBytes = 12; // of a triangle
        const std::int64_t count = reader_.Read<std::int16_t>();
        if (count < 0 || static_cast<std::size_t>(count) > reader_.Left() / kLeastBytes)
            reader_.Fail("a count of " + std::to_string(count) + " faces");
        faces.resize(static_cast<std::size_t>(count));
        return faces;
    }

private:
    ByteReader& reader_;
};

WadMesh ReadMesh(ByteReader& reader)
{
    reader.Section("mesh record");
    WadMesh mesh;
    MeshReader io(reader);
    MeshFields(io, mesh);
    return mesh;
}

} // namespace

std::size_t WadFace::TextureNumber() const
{
    return static_cast<std::size_t>(Type == kFaceTriangle ? Texture & kTriangleNumber
                                                          : std::abs(int{Texture}));
}

std::size_t WadMeshSize(const WadMesh& mesh)
{
    constexpr std::size_t kFixedBytes = 16; // centre, radius and the three counts
    constexpr std::size_t kFaceWords = 3;   // type, texture and flags
    std::size_t words = 3 * (mesh.Vertices.size() + mesh.Normals.size()) + mesh.Lights.size();
    for (const WadFace& face : mesh.Faces)
        words += kFaceWords + face.NumVertices();
    return kFixedBytes + 2 * words;
}

void AppendWadMesh(WadMeshSet& set, const WadMesh& mesh, Reporter& report)
{
    for (std::size_t i = 0; i < mesh.Faces.size(); ++i)
        if (!IsFaceType(mesh.Faces[i].Type))
            report.Stop("Unknown face type - Face " + std::to_string(i));
    const auto start = set.MeshData.size();
    const auto size = WadMeshSize(mesh);
    set.MeshData.resize(start + (size + kAlignment - 1) / kAlignment * kAlignment);
    MeshWriter io(set.MeshData.data() + start);
    MeshFields(io, mesh);
    AppendMeshPointer(set, narrow<std::int32_t>(start));
}

void AppendMeshPointer(WadMeshSet& set, std::int32_t offset)
{
    set.MeshPointers.push_back(offset);
}

WadMesh WadMeshOf(const WadMeshSet& set, std::size_t mesh)
{
    ByteReader reader(set.MeshData);
    reader.Section("mesh pointer");
    if (mesh >= set.MeshPointers.size())
        reader.Fail("there is no mesh " + std::to_string(mesh));
    const std::int32_t at = set.MeshPointers[mesh];
    if (at < 0)
        reader.Fail("mesh " + std::to_string(mesh) + " can't stand at " + std::to_string(at));
    reader.Seek(static_cast<std::size_t>(at));
    return ReadMesh(reader);
}

void ForEachWadMesh(const WadMeshSet& set,
                    const std::function<void(std::size_t, const WadMesh&)>& visit)
{
    ByteReader reader(set.MeshData);
    while (reader.Left() != 0) {
        const std::size_t offset = reader.Position();
        visit(offset, ReadMesh(reader));
        if (reader.Position() % kAlignment != 0 && reader.Read<std::int16_t>() != 0)
            reader.Fail("the bytes that fill up the record at " + std::to_string(offset) +
                        " are not zero");
    }
}

} // namespace morlik
