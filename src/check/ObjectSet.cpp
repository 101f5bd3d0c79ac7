#include "check/ObjectSet.h"

#include "base/Files.h"

#include <cstdlib>
#include <utility>

namespace morlik::check
{

namespace
{

constexpr std::uint32_t kVersion = 129;
constexpr std::size_t kMoveableBytes = 18;
/// Limits of what is held in memory: more than any set has.
constexpr std::size_t kMostBytes = std::size_t{128} << 20U;
constexpr std::size_t kMostListBytes = std::size_t{4} << 20U;
constexpr std::size_t kMostLines = std::size_t{1} << 16U;

static_assert(sizeof(WadTexture) == 8 && sizeof(WadAnimation) == 40 && sizeof(WadStaticMesh) == 32);
static_assert(sizeof(WadStateChange) == 6 && sizeof(WadAnimDispatch) == 8);
static_assert(sizeof(SwdSpriteTexture) == 16 && sizeof(SwdSpriteSequence) == 8);
static_assert(sizeof(SfxSoundDetail) == 8);

/// A level that counts less than nothing has its count in the set too.
std::int64_t Count(ByteReader& reader)
{
    const auto count = reader.Read<std::int32_t>();
    if (count < 0)
        reader.Fail("a count of " + std::to_string(count));
    return count;
}

/// A table behind its count.
template <class Record>
std::vector<Record> Counted(ByteReader& reader, const char* section, std::int64_t perCount = 1)
{
    reader.Section(section);
    return reader.Table<Record>(perCount * Count(reader));
}

/// A list behind its i16 count, as inside a mesh record.
template <class Record>
std::vector<Record> ShortCounted(ByteReader& reader)
{
    return reader.Table<Record>(reader.Read<std::int16_t>());
}

std::vector<WadMoveable> Moveables(ByteReader& reader)
{
    reader.Section("moveables");
    const std::int64_t count = Count(reader);
    ByteReader records(reader.TakeTable(count, kMoveableBytes));
    std::vector<WadMoveable> moveables(static_cast<std::size_t>(count));
    for (WadMoveable& moveable : moveables) {
        moveable.ObjectID = records.Read<std::int32_t>();
        moveable.NumMeshes = records.Read<std::int16_t>();
        moveable.StartingMesh = records.Read<std::int16_t>();
        moveable.MeshTree = records.Read<std::int32_t>();
        moveable.FrameOffset = records.Read<std::int32_t>();
        moveable.Animation = records.Read<std::int16_t>();
    }
    return moveables;
}

void ExpectVersion(ByteReader& reader)
{
    reader.Section("version");
    const auto version = reader.Read<std::uint32_t>();
    if (version != kVersion)
        reader.Fail("the version is " + std::to_string(version) + ", not 129");
}

void ExpectEnd(ByteReader& reader)
{
    reader.Section("end of the file");
    if (reader.Left() != 0)
        reader.Fail(std::to_string(reader.Left()) + " bytes stand behind the last block");
}

WadMeshFace ReadFace(ByteReader& reader)
{
    WadMeshFace face{};
    face.Type = reader.Read<std::int16_t>();
    if (face.Type != 8 && face.Type != 9)
        reader.Fail("a face of type " + std::to_string(face.Type));
    face.Vertices = reader.Table<std::int16_t>(face.Type == 8 ? 3 : 4);
    face.Texture = reader.Read<std::int16_t>();
    face.Flags = reader.Read<std::int16_t>();
    return face;
}

WadMeshRecord ReadMesh(ByteReader& reader)
{
    reader.Section("mesh record");
    WadMeshRecord mesh{};
    mesh.Centre = reader.Read<WadPoint>();
    mesh.Radius = reader.Read<std::int32_t>();
    mesh.Vertices = ShortCounted<WadPoint>(reader);
    mesh.NumNormals = reader.Read<std::int16_t>();
    if (mesh.NumNormals > 0)
        mesh.Normals = reader.Table<WadPoint>(mesh.NumNormals);
    else
        mesh.Lights = reader.Table<std::int16_t>(-std::int64_t{mesh.NumNormals});
    const auto faces = reader.Read<std::int16_t>();
    if (faces < 0)
        reader.Fail("a count of " + std::to_string(faces) + " faces");
    for (int i = 0; i < faces; ++i)
        mesh.Faces.push_back(ReadFace(reader));
    return mesh;
}

} // namespace

int WadMeshFace::TextureNumber() const
{
    return Type == 8 ? Texture & 0x1fff : std::abs(int{Texture});
}

WadFile ReadWad(std::span<const std::byte> bytes)
{
    ByteReader reader(bytes);
    ExpectVersion(reader);
    WadFile wad;
    wad.Textures = Counted<WadTexture>(reader, "textures");
    wad.Pixels = Counted<std::uint8_t>(reader, "tiles");
    wad.MeshPointers = Counted<std::uint32_t>(reader, "mesh pointers");
    wad.MeshData = Counted<std::byte>(reader, "mesh data", 2);
    wad.Animations = Counted<WadAnimation>(reader, "animations");
    wad.StateChanges = Counted<WadStateChange>(reader, "state changes");
    wad.AnimDispatches = Counted<WadAnimDispatch>(reader, "dispatches");
    wad.AnimCommands = Counted<std::int16_t>(reader, "commands");
    wad.MeshTrees = Counted<std::int32_t>(reader, "mesh trees");
    wad.Frames = Counted<std::int16_t>(reader, "frames");
    wad.Moveables = Moveables(reader);
    wad.StaticMeshes = Counted<WadStaticMesh>(reader, "static meshes");
    ExpectEnd(reader);
    return wad;
}

WadFile ReadWad(const std::string& path)
{
    return ReadWad(FileBytes::Load(path, kMostBytes).Bytes());
}

void ForEachWadMesh(const WadFile& wad,
                    const std::function<void(std::size_t, const WadMeshRecord&)>& visit)
{
    ByteReader reader(wad.MeshData);
    while (reader.Left() != 0) {
        const std::size_t offset = reader.Position();
        visit(offset, ReadMesh(reader));
        if (reader.Position() % 4 != 0 && reader.Read<std::int16_t>() != 0)
            reader.Fail("the bytes that fill up the record at " + std::to_string(offset) +
                        " are not zero");
    }
}

WadMeshRecord WadMeshOf(const WadFile& wad, std::size_t mesh)
{
    ByteReader reader(wad.MeshData);
    reader.Section("mesh pointer");
    if (mesh >= wad.MeshPointers.size())
        reader.Fail("there is no mesh " + std::to_string(mesh));
    reader.Seek(wad.MeshPointers[mesh]);
    return ReadMesh(reader);
}

SwdFile ReadSwd(std::span<const std::byte> bytes)
{
    ByteReader reader(bytes);
    ExpectVersion(reader);
    SwdFile swd;
    swd.SpriteTextures = Counted<SwdSpriteTexture>(reader, "sprite textures");
    swd.Pixels = Counted<std::uint8_t>(reader, "sprite tiles");
    swd.SpriteSequences = Counted<SwdSpriteSequence>(reader, "sprite sequences");
    ExpectEnd(reader);
    return swd;
}

SfxFile ReadSfx(std::span<const std::byte> bytes)
{
    ByteReader reader(bytes);
    reader.Section("sound map");
    SfxFile sfx;
    sfx.SoundMap = reader.Read<decltype(sfx.SoundMap)>();
    sfx.SoundDetails = Counted<SfxSoundDetail>(reader, "sound details");
    sfx.SampleIndices = Counted<std::int32_t>(reader, "sample indices");
    ExpectEnd(reader);
    return sfx;
}

std::vector<std::byte> ReadFile(const std::string& path)
{
    const auto file = FileBytes::Load(path, kMostBytes);
    return {file.Bytes().begin(), file.Bytes().end()};
}

std::vector<std::string> ReadLines(std::span<const std::byte> bytes)
{
    ByteReader reader(bytes);
    reader.Section("text");
    std::vector<std::string> lines;
    std::string line;
    while (reader.Left() != 0) {
        const char letter = reader.Read<char>();
        if (letter == '\n' ||
            (letter == '\r' && (reader.Left() == 0 || reader.Read<char>() != '\n')))
            reader.Fail("line " + std::to_string(lines.size() + 1) + " doesn't end in CR LF");
        if (lines.size() == kMostLines)
            reader.Fail("more lines than any list has");
        if (letter == '\r')
            lines.push_back(std::exchange(line, {}));
        else
            line += letter;
    }
    if (!line.empty())
        reader.Fail("the last line doesn't end in CR LF");
    return lines;
}

std::vector<std::string> ReadLines(const std::string& path)
{
    return ReadLines(FileBytes::Load(path, kMostListBytes).Bytes());
}

} // namespace morlik::check
