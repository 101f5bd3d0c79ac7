#include "base/Narrow.h"
#include "convert/Faces.h"
#include "convert/Horizon.h"

#include <algorithm>

namespace morlik
{

namespace
{

/// Object textures with this attribute blend; their faces carry it as flag 1.
constexpr std::int16_t kBlendAttribute = 2;

/// Builds the face list of one mesh.
class FaceBuilder
{
public:
    FaceBuilder(const RawMesh& raw, const FaceTables& tables, bool isHorizon, Reporter& report)
        : raw_(raw), tables_(tables), report_(report)
    {
        if (isHorizon)
            horizon_.emplace(tables.Version, tables.State, tables.ColourBase, report);
    }

    std::vector<WadFace> Build()
    {
        const auto count = raw_.Rectangles.size() + raw_.Triangles.size() +
                           raw_.ColouredRectangles.size() + raw_.ColouredTriangles.size();
        narrow<std::int16_t>(count); // what a mesh record can count
        faces_.reserve(count);
        for (const RawFace& face : raw_.Rectangles)
            AddRectangle(face);
        for (const RawFace& face : raw_.Triangles)
            AddTriangle(face);
        for (const RawFace& face : raw_.ColouredRectangles) {
            WadFace& added = Add(kFaceRectangle, face, Colour(face), 0);
            if (horizon_)
                horizon_->Rectangle(raw_, face, added);
        }
        for (const RawFace& face : raw_.ColouredTriangles) {
            WadFace& added = Add(kFaceTriangle, face, Colour(face), 0);
            if (horizon_)
                horizon_->Triangle(raw_, face, added);
        }
        if (horizon_)
            horizon_->Finish();
        return std::move(faces_);
    }

private:
    void AddRectangle(const RawFace& face)
    {
        const auto texture = static_cast<std::uint16_t>(face.Texture);
        const auto flip = tables_.State.TextureFlip[texture];
        if (flip != 1 && flip != -1)
            report_.Stop("Triangle texture used on rectangle!");
        Add(kFaceRectangle, Turned<4>(face), flip * Number(texture), Flags(face));
    }

    void AddTriangle(const RawFace& face)
    {
        const auto texture = static_cast<std::uint16_t>(face.Texture);
        const auto flip = tables_.State.TextureFlip[texture];
        if (flip == 1 || flip == -1)
            report_.Stop("Rectangle texture used on triangle!");
        Add(kFaceTriangle, Turned<3>(face), flip + Number(texture), Flags(face));
    }

    WadFace& Add(std::int16_t type, const RawFace& face, std::int32_t texture, std::int16_t flags)
    {
        return faces_.emplace_back(WadFace{type, face.Vertices, Word(texture), flags});
    }

    /// The face with its vertices turned as its texture needs it.
    template <std::size_t Corners>
    RawFace Turned(const RawFace& face) const
    {
        const auto texture = static_cast<std::uint16_t>(face.Texture);
        RawFace turned = face;
        std::rotate(turned.Vertices.begin(),
                    turned.Vertices.begin() + tables_.State.TextureTurn[texture],
                    turned.Vertices.begin() + Corners);
        return turned;
    }

    std::int32_t Number(std::uint16_t texture) const
    {
        const auto shared = static_cast<std::size_t>(tables_.State.TextureRemap[texture]);
        return tables_.TextureNumbers[shared];
    }

    std::int16_t Flags(const RawFace& face) const
    {
        if (!IsClassic(tables_.Version))
            return face.Attribute;
        const auto texture = static_cast<std::uint16_t>(face.Texture);
        return tables_.State.ObjectTextures[texture].Attribute == kBlendAttribute ? 1 : 0;
    }

    /// Tomb Raider I has its palette index in the low byte of the colour word; the high byte of
    /// II and III indexes their 16-bit palette.
    std::int32_t Colour(const RawFace& face) const
    {
        const auto word = static_cast<std::uint16_t>(face.Texture);
        return tables_.ColourBase + (tables_.Version == kTR1 ? word & 0xff : word >> 8);
    }

    const RawMesh& raw_;
    const FaceTables& tables_;
    Reporter& report_;
    std::optional<HorizonUpdate> horizon_;
    std::vector<WadFace> faces_;
};

} // namespace

WadMesh ConvertRawMesh(RawMesh mesh, const FaceTables& tables, bool isHorizon, Reporter& report)
{
    WadMesh wad;
    wad.Faces = FaceBuilder(mesh, tables, isHorizon, report).Build();
    wad.Centre = mesh.Centre;
    wad.Radius = mesh.Radius;
    wad.Vertices = std::move(mesh.Vertices);
    wad.NumNormals = mesh.NumNormals;
    wad.Normals = std::move(mesh.Normals);
    wad.Lights = std::move(mesh.Lights);
    return wad;
}

} // namespace morlik
