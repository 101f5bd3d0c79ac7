#pragma once

#include "samples/Textures.h"

#include <utility>

namespace morlik::samples
{

/// The bytes of a mesh in the form of its game, without padding.
std::vector<std::byte> EncodeMesh(const MeshContent& mesh, VersionCode game);

/// Colour word of a coloured face. Tomb Raider I keeps the palette index in the low byte; II and
/// III have it there for `Palette` and in the high byte for `Palette16`.
std::int16_t ColourWord(VersionCode game, std::uint8_t index);

/// Angles of a mesh in a frame, 1024 to a full turn.
struct Rotation
{
    int X = 0;
    int Y = 0;
    int Z = 0;
};

/// A frame: bounding box (least and greatest X, Y, Z), place of the first mesh, a rotation for
/// each mesh.
struct FrameContent
{
    std::array<std::int16_t, 6> Box{};
    Vertex Offset{};
    std::vector<Rotation> Rotations{};
};

/// Where a mesh hangs in the tree of its moveable. The first mesh has no joint.
struct Joint
{
    std::int32_t Stack = 0; ///< bit 0: back to the pushed mesh; bit 1: push the last one
    std::int32_t X = 0;     ///< from the mesh that it hangs on
    std::int32_t Y = 0;
    std::int32_t Z = 0;
};

/// Animations count from the moveable's own first one here.
struct AnimationContent
{
    /// Rate, state, speeds, successor, number of commands; all else is worked out.
    Animation Record{.FrameRate = 1};
    std::vector<FrameContent> Frames{};
    std::vector<std::pair<std::int16_t, AnimDispatch>> Ways{}; ///< a state and the way to it
    std::vector<std::int16_t> Commands{};                      ///< their words
};

struct MoveableContent
{
    std::int32_t ObjectID = 0;
    std::vector<std::size_t> Meshes{}; ///< indices into `LevelContent::Meshes`, may repeat
    std::vector<Joint> Joints{};       ///< for all meshes but the first
    std::vector<AnimationContent> Animations{};
};

/// Adds a moveable with its mesh pointers, mesh tree, animations and frames.
void AddMoveable(LevelContent& level, const MoveableContent& moveable);

/// Adds a static mesh with a pointer to a mesh of its own; its boxes surround the mesh.
void AddStaticMesh(LevelContent& level, std::int32_t objectID, std::size_t mesh);

/// Each of these adds a part to a mesh. Faces run clockwise for the viewer that they face, from
/// the top left corner for rectangles.

/// Six rectangles: front (whose viewer looks along Z, X to the right), right, back, left, top,
/// bottom.
void AddBox(MeshContent& mesh, const Vertex& least, const Vertex& greatest, std::int16_t texture);

/// Eight triangles from a tip to a rim of that radius, seen from above or from below. Their first
/// corner is at the tip; their textures have the numbers from `texture` on, `step` apart.
void AddCone(MeshContent& mesh, std::int16_t radius, std::int16_t tip, std::int16_t rim, bool above,
             std::int16_t texture, int step = 0);

/// An upright rectangle that is seen from both sides, from its top left corner to its bottom right
/// one for its front viewer.
void AddBoard(MeshContent& mesh, const Vertex& from, const Vertex& to, std::int16_t front,
              std::int16_t back);

/// Moves all faces of the textured lists to the coloured ones, with this colour word.
void PaintFaces(MeshContent& mesh, std::int16_t colourWord);

enum class Shading : std::uint8_t
{
    Normals, ///< for objects that the game lights
    Lights   ///< for static meshes, which bring their light along
};

/// Adds the mesh with its centre, its radius and a normal or light for each vertex, and gives its
/// index in `Meshes`.
std::size_t AddShape(LevelContent& level, MeshContent mesh, Shading shading = Shading::Normals);

/// Lara: fifteen meshes, left and right limbs the same ones, standing and walking. Her steps are
/// heard.
void AddLara(LevelContent& level, const ArtTextures& textures);
constexpr std::int16_t kStepSound = 17;

} // namespace morlik::samples
