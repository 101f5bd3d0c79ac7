#pragma once

#include "samples/LevelContent.h"

namespace morlik::samples
{

/// Textures of the six sides of a box. The viewer of the front looks along Z, X to the right.
struct BoxSkin
{
    std::int16_t Front = 0;
    std::int16_t Right = 0;
    std::int16_t Back = 0;
    std::int16_t Left = 0;
    std::int16_t Top = 0;
    std::int16_t Bottom = 0;

    static BoxSkin Of(std::int16_t all) { return {all, all, all, all, all, all}; }
};

/// Adds a vertex and gives its index.
std::int16_t AddVertex(MeshContent& mesh, const Vector3& vertex);

/// Each of these adds a part to a mesh. Faces run clockwise for the viewer that they face, from
/// the top left corner for rectangles.
void AddBox(MeshContent& mesh, const Vector3& least, const Vector3& greatest, const BoxSkin& skin);

/// The sides of an upright column with eight edges around the Y axis.
void AddRing(MeshContent& mesh, std::int16_t radius, std::int16_t top, std::int16_t bottom,
             std::int16_t texture);

/// Eight triangles that close such a column at its top or its bottom, `y`.
void AddLid(MeshContent& mesh, std::int16_t radius, std::int16_t y, bool top, std::int16_t texture);

/// A rectangle that is seen from both sides. `corners` as its front viewer sees them.
void AddBoard(MeshContent& mesh, const std::array<Vector3, 4>& corners, std::int16_t front,
              std::int16_t back);

/// A pyramid on the rectangle `least` to `greatest`, whose Y differ by its height.
void AddRoof(MeshContent& mesh, const Vector3& least, const Vector3& greatest,
             std::int16_t texture);

/// Eight triangles around the origin in the plane Z = 0, seen from both sides, one texture each.
/// Their first corner is at the hub.
void AddSails(MeshContent& mesh, std::int16_t radius, const std::array<std::int16_t, 8>& textures);

/// Moves all faces of the textured lists to the coloured ones, with this colour word.
void PaintFaces(MeshContent& mesh, std::int16_t colourWord);

/// Turns all faces round, for a shape that is seen from within.
void TurnInsideOut(MeshContent& mesh);

enum class Shading
{
    Normals, ///< for objects that the game lights
    Lights   ///< for static meshes, which bring their light along
};

/// Fills in centre, radius and a normal or light for each vertex.
void FinishMesh(MeshContent& mesh, Shading shading);

} // namespace morlik::samples
