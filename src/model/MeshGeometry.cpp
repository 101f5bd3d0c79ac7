#include "model/MeshGeometry.h"

#include "base/CornerCode.h"
#include "base/Narrow.h"
#include "model/Damage.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace morlik
{

namespace
{

/// The bits of a triangle's texture word that hold its corner code.
constexpr std::int32_t kTriangleCode = 0xe000;

/// Where a face stands, for the start of a failure.
struct FacePlace
{
    std::size_t Mesh, Face;
};

std::ostream& operator<<(std::ostream& out, const FacePlace& place)
{
    return out << "mesh " << place.Mesh << ", face " << place.Face;
}

std::int32_t CodeOf(const WadFace& face)
{
    if (face.Type == kFaceTriangle)
        return face.Texture & kTriangleCode;
    return face.Texture < 0 ? -1 : 1;
}

const TextInfo& TextureOf(const ObjectSet& set, const WadFace& face, const FacePlace& place)
{
    const std::size_t number = face.TextureNumber();
    if (number >= set.Textures.size())
        FailDamaged(place, ": texture ", number, " of ", set.Textures.size());
    const TextInfo& texture = set.Textures[number];
    if (texture.Tile < 0 || texture.Tile >= set.Tiles.Count())
        FailDamaged(place, ": texture ", number, " lies on tile ", texture.Tile, " of ",
                    set.Tiles.Count());
    if (texture.X + texture.Width >= kTileSide || texture.Y + texture.Height >= kTileSide)
        FailDamaged(place, ": texture ", number, " leaves its tile");
    return texture;
}

GeometryFace FaceOf(const ObjectSet& set, const WadFace& face, std::size_t numPositions,
                    const FacePlace& place)
{
    const TextInfo& texture = TextureOf(set, face, place);
    GeometryFace made;
    made.NumCorners = static_cast<std::uint8_t>(face.NumVertices());
    made.Texture = static_cast<std::uint16_t>(face.TextureNumber());
    made.IsColour = made.Texture >= set.ColourBase();
    made.Flags = static_cast<std::uint16_t>(face.Flags);
    const auto corners = CornersOfCode(CodeOf(face));
    for (std::size_t i = 0; i < made.NumCorners; ++i) {
        if (!Inside(face.Vertices[i], 1, numPositions))
            FailDamaged(place, ": vertex ", face.Vertices[i], " of ", numPositions);
        made.Corners[i] = {
            .Vertex = static_cast<std::uint16_t>(face.Vertices[i]),
            .X = static_cast<std::uint8_t>(texture.X + (corners[i].Right ? texture.Width : 0)),
            .Y = static_cast<std::uint8_t>(texture.Y + (corners[i].Bottom ? texture.Height : 0)),
        };
    }
    return made;
}

} // namespace

double ShownLight(std::int16_t light)
{
    constexpr double kNeutral = 4096;
    constexpr double kDarkest = 8192;
    return std::clamp((kDarkest - light) / (kDarkest - kNeutral), 0.0, 1.0);
}

MeshGeometry GeometryOf(const ObjectSet& set, std::size_t mesh)
{
    WadMesh record = WadMeshOf(set.Meshes, mesh);
    const std::size_t shades = record.Normals.size() + record.Lights.size();
    if (shades != 0 && shades != record.Vertices.size())
        FailDamaged("mesh ", mesh, ": ", shades, " normals or lights for ", record.Vertices.size(),
                    " vertices");
    MeshGeometry geometry{.Centre = record.Centre,
                          .Radius = record.Radius,
                          .Positions = std::move(record.Vertices),
                          .Normals = std::move(record.Normals),
                          .Lights = std::move(record.Lights),
                          .Faces = {}};
    geometry.Faces.reserve(record.Faces.size());
    for (std::size_t i = 0; i < record.Faces.size(); ++i)
        geometry.Faces.push_back(
            FaceOf(set, record.Faces[i], geometry.Positions.size(), {mesh, i}));
    return geometry;
}

} // namespace morlik
