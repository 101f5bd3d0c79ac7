#pragma once

#include "set/ObjectSet.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace morlik
{

/// A corner of a face, and the pixel of the tile that it shows. X and Y are the pixel's column and
/// row; the corner lies on its centre, which is at ((X + 0.5) / 256, (Y + 0.5) / 256) of the tile.
/// So a texture reaches from the centres of its first pixels to those of its last ones, and none of
/// its neighbours shows at its borders.
struct FaceCorner
{
    std::uint16_t Vertex = 0; ///< index in `Positions`
    std::uint8_t X = 0;
    std::uint8_t Y = 0;

    bool operator==(const FaceCorner&) const = default;
};

/// A triangle or a rectangle. Its vertices go around it clockwise as seen from outside: the vector
/// product of the way to the second and the way to the third one, from the first, leads inward.
struct GeometryFace
{
    std::uint8_t NumCorners = 3; ///< 3 or 4
    std::array<FaceCorner, 4> Corners{};
    std::uint16_t Texture = 0; ///< number in the set's `Textures`, whose box and tile are good
    bool IsColour = false;     ///< the texture is a palette square: the face has one plain colour
    /// As in the set: bit 0 for additive blending, in Tomb Raider IV and V above it how the face
    /// shines.
    std::uint16_t Flags = 0;

    std::span<const FaceCorner> Used() const { return std::span(Corners).first(NumCorners); }
    bool Blends() const { return (Flags & 1U) != 0; }
    /// The bits that tell how the face shines as they stand, from bit 0 on; 0 in the older games.
    std::uint16_t Shine() const { return static_cast<std::uint16_t>(Flags >> 1U); }

    bool operator==(const GeometryFace&) const = default;
};

/// The geometry of a mesh, in world units; Y grows downward.
struct MeshGeometry
{
    Vertex Centre; ///< of the sphere around the mesh
    std::int32_t Radius = 0;
    std::vector<Vertex> Positions;
    /// Outward, about 16300 long where it is not 0; one for each position, or none.
    std::vector<Vertex> Normals;
    /// Without normals, the light at each position: from 0, the brightest, to 8191; or none.
    std::vector<std::int16_t> Lights;
    std::vector<GeometryFace> Faces;
};

/// What a light of `Lights` leaves of a colour, as the games show it: 1 down to 0. From 4096 on it
/// takes from it; a brighter light leaves it as it is.
double ShownLight(std::int16_t light);

/// Decodes a mesh of the set. All its indices are good then: those of the vertices, and those of
/// the textures, whose boxes lie inside their tiles and these in the set. `ReadFailure` if one is
/// not, if there is no such mesh, or if some but not all of its positions have normals or lights.
MeshGeometry GeometryOf(const ObjectSet& set, std::size_t mesh);

} // namespace morlik
