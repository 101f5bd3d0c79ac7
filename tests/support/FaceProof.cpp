#include "tests/support/FaceProof.h"

#include "convert/RawMesh.h"

#include <cstdlib>

namespace morlik::test
{

namespace
{

/// Corners of the box in the order of a face's vertices: 0 top left, 1 top right, 2 bottom right,
/// 3 bottom left. What the editor's game makes of a code, written down once more on its own.
constexpr std::array<std::array<int, 4>, 2> kRectangles{{{0, 1, 2, 3}, {1, 0, 3, 2}}};
constexpr std::array<std::array<int, 3>, 8> kTriangles{
    {{0, 1, 3}, {1, 2, 0}, {2, 3, 1}, {3, 0, 2}, {1, 0, 2}, {0, 3, 1}, {3, 2, 0}, {2, 1, 3}}};

bool Near(const TextInfo& box, int place, const TextureCorner& corner)
{
    const int x = box.X + (place == 1 || place == 2 ? box.Width : 0);
    const int y = box.Y + (place >= 2 ? box.Height : 0);
    return std::abs(x - corner.XPixel) <= 1 && std::abs(y - corner.YPixel) <= 1;
}

/// Whether the faces agree with the set's vertices being those of the level, turned by any number
/// of places.
bool Agrees(const RawFace& face, const std::array<TextureCorner, 4>& corners,
            const WadFace& wadFace, const TextInfo& box)
{
    const std::size_t n = wadFace.NumVertices();
    for (std::size_t turn = 0; turn < n; ++turn) {
        bool good = true;
        for (std::size_t k = 0; k < n && good; ++k) {
            const std::size_t j = (k + turn) % n;
            const int place = n == 4 ? kRectangles.at(wadFace.Texture < 0 ? 1 : 0).at(k)
                                     : kTriangles.at((wadFace.Texture & 0xe000) >> 13).at(k);
            good = wadFace.Vertices[k] == face.Vertices.at(j) && Near(box, place, corners.at(j));
        }
        if (good)
            return true;
    }
    return false;
}

} // namespace

FaceShare ProveFaces(const LevelData& level, const TrMainState& state, const ObjectSet& wad)
{
    FaceShare share;
    const bool isOlder = IsOlderGame(level.Version);
    for (std::size_t m = 0; m < level.MeshPointers.size(); ++m) {
        const RawMesh raw = ReadRawMesh(level.MeshData, level.MeshPointers[m], isOlder);
        const WadMesh record = WadMeshOf(wad.Meshes, m);
        std::size_t next = 0;
        for (const auto* list : {&raw.Rectangles, &raw.Triangles}) {
            for (const RawFace& face : *list) {
                const WadFace& wadFace = record.Faces.at(next++);
                const auto texture = static_cast<std::uint16_t>(face.Texture);
                const auto& corners = isOlder ? state.ObjectTextures.at(texture).Corners
                                              : state.ObjectTexturesTR45.at(texture).Corners;
                const auto number = wadFace.TextureNumber();
                ++share.Faces;
                share.Agreeing += Agrees(face, corners, wadFace, wad.Textures.at(number)) ? 1U : 0U;
            }
        }
    }
    return share;
}

} // namespace morlik::test
