#include "base/Narrow.h"
#include "convert/Faces.h"

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
    FaceBuilder(const RawMesh& raw, const FaceTables& tables, std::optional<HorizonUpdate>& horizon,
                Reporter& report)
        : raw_(raw),
          textures_(tables.Level.Textures),
          version_(tables.Level.Version),
          used_(tables.Textures),
          horizon_(horizon),
          report_(report)
    {
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
        const LevelTexture& texture = TextureOf(face);
        if (texture.TextureFlip != 1 && texture.TextureFlip != -1)
            report_.Stop("Triangle texture used on rectangle!", kAppTitle, PlaceOf(face));
        Add(kFaceRectangle, Turned<4>(face), texture.TextureFlip * Number(texture), Flags(face));
    }

    void AddTriangle(const RawFace& face)
    {
        const LevelTexture& texture = TextureOf(face);
        if (texture.TextureFlip == 1 || texture.TextureFlip == -1)
            report_.Stop("Rectangle texture used on triangle!", kAppTitle, PlaceOf(face));
        Add(kFaceTriangle, Turned<3>(face), texture.TextureFlip + Number(texture), Flags(face));
    }

    WadFace& Add(std::int16_t type, const RawFace& face, std::int32_t texture, std::int16_t flags)
    {
        return faces_.emplace_back(WadFace{type, face.Vertices, Word(texture), flags});
    }

    /// The face with its vertices turned as its texture needs it.
    template <std::size_t Corners>
    RawFace Turned(const RawFace& face) const
    {
        RawFace turned = face;
        std::rotate(turned.Vertices.begin(), turned.Vertices.begin() + TextureOf(face).TextureTurn,
                    turned.Vertices.begin() + Corners);
        return turned;
    }

    const LevelTexture& TextureOf(const RawFace& face) const
    {
        return textures_[static_cast<std::uint16_t>(face.Texture)];
    }

    /// The next face of the list and its texture, for a message.
    std::string PlaceOf(const RawFace& face) const
    {
        return "mesh " + std::to_string(raw_.Number) + ", face " + std::to_string(faces_.size()) +
               ": texture " + std::to_string(static_cast<std::uint16_t>(face.Texture));
    }

    std::int32_t Number(const LevelTexture& texture) const
    {
        return used_.TextureNumbers[static_cast<std::size_t>(texture.TextureRemap)];
    }

    std::int16_t Flags(const RawFace& face) const
    {
        if (!IsOlderGame(version_))
            return face.Attribute;
        return TextureOf(face).Attribute == kBlendAttribute ? 1 : 0;
    }

    /// Tomb Raider I has its palette index in the low byte of the colour word; the high byte of
    /// II and III indexes their 16-bit palette.
    std::int32_t Colour(const RawFace& face) const
    {
        const auto word = static_cast<std::uint16_t>(face.Texture);
        return used_.ColourBase() + (version_ == kTR1 ? word & 0xff : word >> 8);
    }

    const RawMesh& raw_;
    const std::vector<LevelTexture>& textures_;
    VersionCode version_;
    const UsedTextures& used_;
    std::optional<HorizonUpdate>& horizon_;
    Reporter& report_;
    std::vector<WadFace> faces_;
};

} // namespace

WadMesh ConvertRawMesh(RawMesh mesh, const FaceTables& tables,
                       std::optional<HorizonUpdate>& horizon, Reporter& report)
{
    WadMesh wad;
    wad.Faces = FaceBuilder(mesh, tables, horizon, report).Build();
    wad.Centre = mesh.Centre;
    wad.Radius = mesh.Radius;
    wad.Vertices = std::move(mesh.Vertices);
    wad.NumNormals = mesh.NumNormals;
    wad.Normals = std::move(mesh.Normals);
    wad.Lights = std::move(mesh.Lights);
    return wad;
}

} // namespace morlik
