#include "samples/Models.h"

#include "base/Narrow.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace morlik::samples
{

namespace
{

using Words = std::vector<std::int16_t>;

/// A list of faces of `corners` vertices with its count.
void PutFaces(ByteWriter& out, const std::vector<MeshFace>& faces, std::size_t corners,
              bool attributes)
{
    out.Put(narrow<std::int16_t>(faces.size()));
    for (const MeshFace& face : faces) {
        out.PutBytes(std::as_bytes(std::span(face.Vertices).first(corners)));
        out.Put(face.Texture);
        if (attributes)
            out.Put(face.Attribute);
    }
}

/// The 30 bits of a rotation as two words: X in the bits 4 to 13 of the higher, then Y, then Z. All
/// games but the first have a rotation about one axis alone as a single word.
void PutRotation(Words& words, const Rotation& rotation, VersionCode game)
{
    constexpr int kAngleMask = 0x3ff; // angles have 10 bits
    const int x = rotation.X & kAngleMask;
    const int y = rotation.Y & kAngleMask;
    const int z = rotation.Z & kAngleMask;
    const std::int16_t higher = Word((x << 4) | (y >> 6));
    const std::int16_t lower = Word(((y & 0x3f) << 10) | z);
    const int single = IsOlderGame(game) ? x + y + z : (x + y + z) * 4; // finer angles
    if (IsFirstGame(game))
        words.insert(words.end(), {lower, higher});
    else if ((x != 0) + (y != 0) + (z != 0) != 1)
        words.insert(words.end(), {higher, lower});
    else
        words.push_back(Word((x != 0 ? 0x4000 : y != 0 ? 0x8000 : 0xc000) | single));
}

/// A frame: 9 words of box and place, and the rotations, in Tomb Raider I behind their count.
Words EncodeFrame(VersionCode game, const FrameContent& frame)
{
    Words words(frame.Box.begin(), frame.Box.end());
    words.insert(words.end(), {frame.Offset.X, frame.Offset.Y, frame.Offset.Z});
    if (IsFirstGame(game))
        words.push_back(narrow<std::int16_t>(frame.Rotations.size()));
    for (const Rotation& rotation : frame.Rotations)
        PutRotation(words, rotation, game);
    return words;
}

template <class T>
void Append(std::vector<T>& table, const std::vector<T>& more)
{
    table.insert(table.end(), more.begin(), more.end());
}

std::int32_t BytesOf(const Words& words)
{
    return narrow<std::int32_t>(words.size() * sizeof(std::int16_t));
}

/// Adds one animation of a moveable whose first one has the number `first`; its frames are numbered
/// on from those of the one before, all of them as long as the longest. Each way out is a state
/// change with one dispatch.
void AddAnimation(LevelContent& level, const AnimationContent& content, std::size_t first)
{
    std::vector<Words> frames;
    std::size_t size = 0;
    for (const FrameContent& frame : content.Frames) {
        frames.push_back(EncodeFrame(level.Game, frame));
        size = std::max(size, frames.back().size());
    }
    Animation record = content.Record;
    if (level.Animations.size() > first)
        record.FrameStart =
            Word(level.Animations.back().FrameEnd + level.Animations.back().FrameRate);
    record.FrameEnd =
        Word(record.FrameStart + (static_cast<int>(frames.size()) - 1) * record.FrameRate);
    record.FrameOffset = BytesOf(level.Frames);
    record.FrameSize = narrow<std::uint8_t>(size);
    const auto counted = [first](int animation) {
        return Word(static_cast<int>(first) + animation);
    };
    record.NextAnimation = counted(record.NextAnimation);
    record.NumStateChanges = narrow<std::int16_t>(content.Ways.size());
    record.StateChange = narrow<std::int16_t>(level.StateChanges.size());
    record.AnimCommand = narrow<std::int16_t>(level.AnimCommands.size());
    level.Animations.push_back(record);
    for (Words& words : frames) {
        words.resize(size);
        Append(level.Frames, words);
    }
    Append(level.AnimCommands, content.Commands);
    for (auto [state, way] : content.Ways) {
        way.NextAnimation = counted(way.NextAnimation);
        level.StateChanges.push_back({state, 1, narrow<std::int16_t>(level.AnimDispatches.size())});
        level.AnimDispatches.push_back(way);
    }
}

/// The animations of one moveable; each of them goes on with the first frame of its next one.
void AddAnimations(LevelContent& level, const std::vector<AnimationContent>& animations)
{
    const std::size_t first = level.Animations.size();
    for (const AnimationContent& content : animations)
        AddAnimation(level, content, first);
    for (std::size_t a = first; a < level.Animations.size(); ++a) {
        Animation& animation = level.Animations[a];
        const auto next = static_cast<std::size_t>(animation.NextAnimation);
        if (next < level.Animations.size())
            animation.NextFrame = level.Animations[next].FrameStart;
    }
}

std::int16_t Rounded(double value)
{
    return narrow<std::int16_t>(std::lround(value));
}

std::int16_t AddVertex(MeshContent& mesh, const Vertex& vertex)
{
    mesh.Vertices.push_back(vertex);
    return narrow<std::int16_t>(mesh.Vertices.size() - 1);
}

} // namespace

std::vector<std::byte> EncodeMesh(const MeshContent& mesh, VersionCode game)
{
    ByteWriter out;
    out.Put(mesh.Centre);
    out.Put(mesh.Radius);
    out.Put(narrow<std::int16_t>(mesh.Vertices.size()));
    out.PutTable(mesh.Vertices);
    if (mesh.Lights.empty()) {
        out.Put(narrow<std::int16_t>(mesh.Normals.size()));
        out.PutTable(mesh.Normals);
    } else {
        out.Put(narrow<std::int16_t>(-static_cast<std::int64_t>(mesh.Lights.size())));
        out.PutTable(mesh.Lights);
    }
    const bool older = IsOlderGame(game);
    PutFaces(out, mesh.Rectangles, 4, !older);
    PutFaces(out, mesh.Triangles, 3, !older);
    if (older) {
        PutFaces(out, mesh.ColouredRectangles, 4, false);
        PutFaces(out, mesh.ColouredTriangles, 3, false);
    }
    return out.Bytes();
}

std::int16_t ColourWord(VersionCode game, std::uint8_t index)
{
    return IsFirstGame(game) ? std::int16_t{index} : Word((index << 8) | index);
}

void AddMoveable(LevelContent& level, const MoveableContent& moveable)
{
    const bool animated = !moveable.Animations.empty();
    level.Moveables.push_back({
        .ObjectID = moveable.ObjectID,
        .NumMeshes = narrow<std::int16_t>(moveable.Meshes.size()),
        .StartingMesh = narrow<std::int16_t>(level.MeshTable.size()),
        .MeshTree = narrow<std::int32_t>(level.MeshTrees.size()),
        .FrameOffset = animated ? BytesOf(level.Frames) : 0,
        .Animation = animated ? narrow<std::int16_t>(level.Animations.size()) : Word(-1),
    });
    Append(level.MeshTable, moveable.Meshes);
    for (const Joint& joint : moveable.Joints)
        level.MeshTrees.insert(level.MeshTrees.end(), {joint.Stack, joint.X, joint.Y, joint.Z});
    AddAnimations(level, moveable.Animations);
}

void AddStaticMesh(LevelContent& level, std::int32_t objectID, std::size_t mesh)
{
    const Vertex& middle = level.Meshes.at(mesh).Centre;
    const std::int32_t radius = level.Meshes.at(mesh).Radius;
    const std::array bounds{Word(middle.X - radius), Word(middle.X + radius),
                            Word(middle.Y - radius), Word(middle.Y + radius),
                            Word(middle.Z - radius), Word(middle.Z + radius)};
    constexpr std::int16_t kVisible = 2;
    level.StaticMeshes.push_back({.ObjectID = objectID,
                                  .Mesh = narrow<std::int16_t>(level.MeshTable.size()),
                                  .VisibilityBox = bounds,
                                  .CollisionBox = bounds,
                                  .Flags = kVisible});
    level.MeshTable.push_back(mesh);
}

void AddBox(MeshContent& mesh, const Vertex& least, const Vertex& greatest, std::int16_t texture)
{
    // Bit 0 of a corner's number: right, bit 1: low, bit 2: far.
    std::array<std::int16_t, 8> v{};
    for (std::size_t i = 0; i < v.size(); ++i) {
        v.at(i) = AddVertex(mesh, {(i & 1U) != 0 ? greatest.X : least.X,
                                   (i & 2U) != 0 ? greatest.Y : least.Y,
                                   (i & 4U) != 0 ? greatest.Z : least.Z});
    }
    const std::array<MeshFace, 6> sides{{{{v[0], v[1], v[3], v[2]}, texture},
                                         {{v[1], v[5], v[7], v[3]}, texture},
                                         {{v[5], v[4], v[6], v[7]}, texture},
                                         {{v[4], v[0], v[2], v[6]}, texture},
                                         {{v[4], v[5], v[1], v[0]}, texture},
                                         {{v[7], v[6], v[2], v[3]}, texture}}};
    mesh.Rectangles.insert(mesh.Rectangles.end(), sides.begin(), sides.end());
}

void AddCone(MeshContent& mesh, std::int16_t radius, std::int16_t tip, std::int16_t rim, bool above,
             std::int16_t texture, int step)
{
    constexpr int kEdges = 8;
    const std::int16_t middle = AddVertex(mesh, {0, tip, 0});
    for (int edge = 0; edge < kEdges; ++edge) {
        const double angle = edge * 2 * std::numbers::pi / kEdges;
        AddVertex(mesh,
                  {Rounded(radius * std::cos(angle)), rim, Rounded(radius * std::sin(angle))});
        const std::int16_t one = Word(middle + 1 + edge);
        const std::int16_t next = Word(middle + 1 + (edge + 1) % kEdges);
        mesh.Triangles.push_back({{middle, above ? next : one, above ? one : next}, texture});
        texture = Word(texture + step);
    }
}

void AddBoard(MeshContent& mesh, const Vertex& from, const Vertex& to, std::int16_t front,
              std::int16_t back)
{
    const std::int16_t v = AddVertex(mesh, from);
    for (const Vertex& corner : {Vertex{to.X, from.Y, to.Z}, to, Vertex{from.X, to.Y, from.Z}})
        AddVertex(mesh, corner);
    mesh.Rectangles.push_back({{v, Word(v + 1), Word(v + 2), Word(v + 3)}, front});
    mesh.Rectangles.push_back({{Word(v + 1), v, Word(v + 3), Word(v + 2)}, back});
}

void PaintFaces(MeshContent& mesh, std::int16_t colourWord)
{
    const auto move = [colourWord](std::vector<MeshFace>& from, std::vector<MeshFace>& to) {
        for (const MeshFace& face : from)
            to.push_back({face.Vertices, colourWord});
        from.clear();
    };
    move(mesh.Rectangles, mesh.ColouredRectangles);
    move(mesh.Triangles, mesh.ColouredTriangles);
}

std::size_t AddShape(LevelContent& level, MeshContent mesh, Shading shading)
{
    constexpr double kUnit = 16384; // length of a normal, as the games have it
    const auto middle = [&mesh](std::int16_t Vertex::*axis) {
        const auto [least, greatest] = std::ranges::minmax(mesh.Vertices, {}, axis);
        return Word((least.*axis + greatest.*axis) / 2);
    };
    mesh.Centre = {middle(&Vertex::X), middle(&Vertex::Y), middle(&Vertex::Z)};
    for (const Vertex& vertex : mesh.Vertices) {
        const double x = vertex.X - mesh.Centre.X;
        const double y = vertex.Y - mesh.Centre.Y;
        const double z = vertex.Z - mesh.Centre.Z;
        const double length = std::max(1.0, std::hypot(x, y, z));
        const auto part = [&](double value) { return Rounded(value * kUnit / length); };
        mesh.Radius = std::max(mesh.Radius, std::int32_t{Rounded(length)});
        if (shading == Shading::Normals)
            mesh.Normals.push_back({part(x), part(y), part(z)});
        else // brighter toward the top
            mesh.Lights.push_back(Word(0x1000 + part(y) / 8));
    }
    level.Meshes.push_back(std::move(mesh));
    return level.Meshes.size() - 1;
}

} // namespace morlik::samples
