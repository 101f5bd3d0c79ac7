#include "samples/Models.h"

#include "base/Narrow.h"

#include <algorithm>
#include <utility>

namespace morlik::samples
{

namespace
{

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

constexpr int kAngleMask = 0x3ff; ///< angles have 10 bits

/// The 30 bits of a rotation as two words: X in the bits 4 to 13 of the higher, then Y, then Z.
void PutWide(std::vector<std::int16_t>& words, const Rotation& rotation, bool lowerFirst)
{
    const int x = rotation.X & kAngleMask;
    const int y = rotation.Y & kAngleMask;
    const int z = rotation.Z & kAngleMask;
    std::array<std::int16_t, 2> pair{Word((x << 4) | (y >> 6)), Word(((y & 0x3f) << 10) | z)};
    if (lowerFirst)
        std::swap(pair[0], pair[1]);
    words.insert(words.end(), pair.begin(), pair.end());
}

void PutRotation(std::vector<std::int16_t>& words, const Rotation& rotation, bool fineAngles)
{
    const std::array<int, 3> angles{rotation.X, rotation.Y, rotation.Z};
    if (std::count(angles.begin(), angles.end(), 0) != 2) {
        PutWide(words, rotation, false);
        return;
    }
    for (int axis = 0; axis < 3; ++axis) {
        const int angle = angles[static_cast<std::size_t>(axis)] & kAngleMask;
        if (angle != 0)
            words.push_back(Word(((axis + 1) << 14) | (fineAngles ? angle * 4 : angle)));
    }
}

std::vector<std::int16_t> EncodeFrame(VersionCode game, const FrameContent& frame)
{
    std::vector<std::int16_t> words(frame.Box.begin(), frame.Box.end());
    words.insert(words.end(), {frame.Offset.X, frame.Offset.Y, frame.Offset.Z});
    if (IsFirstGame(game))
        words.push_back(narrow<std::int16_t>(frame.Rotations.size()));
    for (const Rotation& rotation : frame.Rotations) {
        if (IsFirstGame(game))
            PutWide(words, rotation, true);
        else
            PutRotation(words, rotation, !IsOlderGame(game));
    }
    return words;
}

/// Six words: least and greatest X, Y, Z of the vertices.
std::array<std::int16_t, 6> BoundsOf(const MeshContent& mesh)
{
    std::array<std::int16_t, 6> box{};
    const auto widen = [&box](std::size_t at, std::int16_t value) {
        box[at] = std::min(box[at], value);
        box[at + 1] = std::max(box[at + 1], value);
    };
    for (const Vector3& vertex : mesh.Vertices) {
        widen(0, vertex.X);
        widen(2, vertex.Y);
        widen(4, vertex.Z);
    }
    return box;
}

/// A state change with one dispatch for each transition.
void AddTransitions(LevelContent& level, const AnimationContent& content, int firstAnimation)
{
    for (const Transition& transition : content.Transitions) {
        level.StateChanges.push_back(
            {transition.ToState, 1, narrow<std::int16_t>(level.AnimDispatches.size())});
        level.AnimDispatches.push_back({transition.Low, transition.High,
                                        narrow<std::int16_t>(firstAnimation + transition.Animation),
                                        transition.Frame});
    }
}

/// Adds one animation whose frames are numbered from `frameStart` on; gives the number behind its
/// last frame.
int AddAnimation(LevelContent& level, const AnimationContent& content, int firstAnimation,
                 int frameStart)
{
    std::size_t frameWords = 0;
    const auto words = EncodeFrames(level.Game, content.Frames, frameWords);
    const int frameEnd =
        frameStart + (static_cast<int>(content.Frames.size()) - 1) * content.FrameRate;
    level.Animations.push_back({
        .FrameOffset = narrow<std::int32_t>(level.Frames.size() * sizeof(std::int16_t)),
        .FrameRate = content.FrameRate,
        .FrameSize = narrow<std::uint8_t>(frameWords),
        .State = content.State,
        .Speed = content.Speed,
        .Accel = content.Accel,
        .FrameStart = narrow<std::int16_t>(frameStart),
        .FrameEnd = narrow<std::int16_t>(frameEnd),
        .NextAnimation = narrow<std::int16_t>(firstAnimation + content.Next),
        .NumStateChanges = narrow<std::int16_t>(content.Transitions.size()),
        .StateChange = narrow<std::int16_t>(level.StateChanges.size()),
        .NumAnimCommands = content.NumCommands,
        .AnimCommand = narrow<std::int16_t>(level.AnimCommands.size()),
    });
    level.Frames.insert(level.Frames.end(), words.begin(), words.end());
    level.AnimCommands.insert(level.AnimCommands.end(), content.Commands.begin(),
                              content.Commands.end());
    AddTransitions(level, content, firstAnimation);
    return frameEnd + content.FrameRate;
}

/// The animations of one moveable; each of them goes on with the first frame of its next one.
void AddAnimations(LevelContent& level, const std::vector<AnimationContent>& animations)
{
    const std::size_t first = level.Animations.size();
    int frameStart = 0;
    for (const AnimationContent& content : animations)
        frameStart = AddAnimation(level, content, static_cast<int>(first), frameStart);
    for (std::size_t a = first; a < level.Animations.size(); ++a) {
        Animation& animation = level.Animations[a];
        const auto next = static_cast<std::size_t>(animation.NextAnimation);
        if (next < level.Animations.size())
            animation.NextFrame = level.Animations[next].FrameStart;
    }
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

std::vector<std::int16_t> EncodeFrames(VersionCode game, const std::vector<FrameContent>& frames,
                                       std::size_t& frameWords)
{
    std::vector<std::vector<std::int16_t>> encoded;
    frameWords = 0;
    for (const FrameContent& frame : frames) {
        encoded.push_back(EncodeFrame(game, frame));
        frameWords = std::max(frameWords, encoded.back().size());
    }
    std::vector<std::int16_t> words;
    for (auto& frame : encoded) {
        frame.resize(frameWords);
        words.insert(words.end(), frame.begin(), frame.end());
    }
    return words;
}

std::size_t AddMesh(LevelContent& level, MeshContent mesh)
{
    level.Meshes.push_back(std::move(mesh));
    return level.Meshes.size() - 1;
}

std::size_t AddMoveable(LevelContent& level, const MoveableContent& moveable)
{
    const bool animated = !moveable.Animations.empty();
    level.Moveables.push_back({
        .ObjectID = moveable.ObjectID,
        .NumMeshes = narrow<std::int16_t>(moveable.Meshes.size()),
        .StartingMesh = narrow<std::int16_t>(level.MeshTable.size()),
        .MeshTree = narrow<std::int32_t>(level.MeshTrees.size()),
        .FrameOffset =
            animated ? narrow<std::int32_t>(level.Frames.size() * sizeof(std::int16_t)) : 0,
        .Animation = animated ? narrow<std::int16_t>(level.Animations.size()) : Word(-1),
    });
    level.MeshTable.insert(level.MeshTable.end(), moveable.Meshes.begin(), moveable.Meshes.end());
    for (const Joint& joint : moveable.Joints)
        level.MeshTrees.insert(level.MeshTrees.end(), {joint.Stack, joint.X, joint.Y, joint.Z});
    AddAnimations(level, moveable.Animations);
    return level.Moveables.size() - 1;
}

void AddStaticMesh(LevelContent& level, std::int32_t objectID, std::size_t mesh)
{
    const auto bounds = BoundsOf(level.Meshes.at(mesh));
    constexpr std::int16_t kVisible = 2;
    level.StaticMeshes.push_back({.ObjectID = objectID,
                                  .Mesh = narrow<std::int16_t>(level.MeshTable.size()),
                                  .VisibilityBox = bounds,
                                  .CollisionBox = bounds,
                                  .Flags = kVisible});
    level.MeshTable.push_back(mesh);
}

} // namespace morlik::samples
