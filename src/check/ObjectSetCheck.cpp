#include "check/ObjectSetCheck.h"

#include "check/WadCheck.h"

#include <algorithm>
#include <ostream>
#include <set>
#include <utility>

namespace morlik::check
{

namespace
{

constexpr std::size_t kMostLevelTextures = 2047;
constexpr std::size_t kMostStaticMeshes = 60;
/// IDs of objects lie below these in all games.
constexpr std::size_t kMoveableIDs = 501;
constexpr std::size_t kStaticIDs = 90;

/// Squares of 4 by 4 pixels, 64 to a row: the 256 colours, one black, and one that is transparent
/// (magenta) where the game has such a colour. The rest of the tile is black.
void CheckPaletteTile(WadCheck& check)
{
    constexpr std::size_t kPixel = kPixelBytes;
    const std::int64_t tile = check.Wad.Tiles.Count() - 1;
    std::vector<std::byte> pixels(kTileBytes);
    for (std::int64_t row = 0; row < kTileSide; ++row)
        check.Wad.Tiles.CopyRow(tile * kTileSide + row,
                                &pixels[static_cast<std::size_t>(row) * kRowBytes]);
    std::vector<std::byte> wanted(kTileBytes);
    for (std::size_t i = 0; i < kNumPaletteTextures; ++i) {
        const TextInfo square{static_cast<std::uint8_t>(i % 64 * 4),
                              static_cast<std::uint8_t>(i / 64 * 4),
                              static_cast<std::int16_t>(tile),
                              0xff,
                              3,
                              0xff,
                              3};
        if (check.Wad.Textures[check.ColourBase + i] != square)
            check.Add("Texture ", check.ColourBase + i, " is not palette square ", i);
        const std::size_t corner = square.Y * std::size_t{kRowBytes} + square.X * kPixel;
        std::array<std::byte, kPixel> colour{};
        if (i < 256)
            std::copy_n(pixels.begin() + static_cast<std::ptrdiff_t>(corner), kPixel,
                        colour.begin());
        else if (i == 257 && check.Wad.Game != kTR1)
            colour = {std::byte{255}, std::byte{0}, std::byte{255}};
        for (std::size_t byte = 0; byte < 48; ++byte)
            wanted[corner + byte / 12 * kRowBytes + byte % 12] = colour[byte % kPixel];
    }
    const auto wrong = std::mismatch(wanted.begin(), wanted.end(), pixels.begin()).first;
    if (wrong != wanted.end())
        check.Add("The palette tile has a wrong pixel at byte ", wrong - wanted.begin());
}

/// The tiles begin with the first one that a texture lies on and end with the last one, or with
/// the palette tile behind it. So both ends are in use.
void CheckTextures(WadCheck& check)
{
    const ObjectSet& wad = check.Wad;
    auto tiles = wad.Tiles.Count();
    if (check.HasPalette()) {
        if (wad.Textures.size() < kNumPaletteTextures || tiles == 0)
            return check.Add("The palette is missing");
        CheckPaletteTile(check);
        --tiles;
    }
    if (check.ColourBase > kMostLevelTextures)
        check.Add(check.ColourBase, " textures are more than the editor takes");
    std::set<std::int64_t> used;
    for (std::size_t i = 0; i < check.ColourBase; ++i) {
        const TextInfo& texture = wad.Textures[i];
        used.insert(texture.Tile);
        if (texture.Tile < 0 || texture.Tile >= tiles)
            check.Add("Texture ", i, " lies on tile ", texture.Tile, " of ", tiles);
        if (texture.X + texture.Width > 255 || texture.Y + texture.Height > 255)
            check.Add("Texture ", i, " leaves its tile");
    }
    if (used.empty() ? tiles != 0 : *used.begin() != 0 || *used.rbegin() != tiles - 1)
        check.Add("The textures don't reach from the first to the last of the ", tiles, " tiles");
}

/// Where a face stands, for the start of a complaint.
struct FacePlace
{
    std::size_t Face, Mesh;
};

std::ostream& operator<<(std::ostream& out, const FacePlace& place)
{
    return out << "Face " << place.Face << " of the mesh at " << place.Mesh;
}

/// Triangles of games 1 to 3 keep their flips at 0; all other textures have 0xff. A colour square
/// is neither turned nor mirrored. `used` tells which textures a face had before.
void CheckFace(WadCheck& check, const WadFace& face, const FacePlace& place,
               std::vector<bool>& used)
{
    const auto number = face.TextureNumber();
    if (number >= check.Wad.Textures.size())
        return check.Add(place, " has texture ", number, " of ", check.Wad.Textures.size());
    const bool coloured = number >= check.ColourBase;
    const int flip = face.Type == kFaceTriangle && check.HasPalette() && !coloured ? 0 : 0xff;
    const TextInfo& texture = check.Wad.Textures[number];
    if (!used[number] && (texture.FlipX != flip || texture.FlipY != flip))
        check.Add(place, " has texture ", number, " with flips of the other kind");
    used[number] = true;
    if (coloured && std::cmp_not_equal(face.Texture, number))
        check.Add(place, " turns a colour square");
    if (check.HasPalette() && face.Flags != 0 && (face.Flags != 1 || coloured))
        check.Add(place, " has the flags ", face.Flags);
}

/// Each record has a pointer, and the pointers meet the records in their order, repeats aside.
void CheckMeshPointers(WadCheck& check, const std::vector<std::size_t>& records)
{
    auto next = records.begin();
    for (std::size_t i = 0; i < check.Wad.Meshes.MeshPointers.size(); ++i) {
        const auto pointer =
            static_cast<std::size_t>(static_cast<std::uint32_t>(check.Wad.Meshes.MeshPointers[i]));
        const auto met = std::lower_bound(records.begin(), records.end(), pointer);
        if (met == records.end() || *met != pointer || met > next)
            check.Add("Mesh pointer ", i, " leads to ", pointer, ", not to the next record");
        if (met >= next && met != records.end())
            next = met + 1;
    }
    if (next != records.end())
        check.Add("The mesh record at ", *next, " has no pointer in its turn");
}

/// Textures that no face uses are left out of the file, but for a spare one in front: the sign of a
/// number mirrors a texture, and 0 has none.
void CheckMeshes(WadCheck& check)
{
    std::vector<std::size_t> records;
    std::vector<bool> used(check.Wad.Textures.size());
    ForEachWadMesh(check.Wad.Meshes, [&](std::size_t offset, const WadMesh& mesh) {
        records.push_back(offset);
        if (mesh.Normals.size() + mesh.Lights.size() != mesh.Vertices.size())
            check.Add("The mesh at ", offset, " has ", mesh.Vertices.size(), " vertices and ",
                      mesh.Normals.size() + mesh.Lights.size(), " normals or lights");
        for (std::size_t i = 0; i < mesh.Faces.size(); ++i) {
            const WadFace& face = mesh.Faces[i];
            for (const std::int16_t vertex : std::span(face.Vertices).first(face.NumVertices()))
                if (!Inside(vertex, 1, mesh.Vertices.size()))
                    check.Add(FacePlace{i, offset}, " has vertex ", vertex, " of ",
                              mesh.Vertices.size());
            CheckFace(check, face, {i, offset}, used);
        }
    });
    CheckMeshPointers(check, records);
    for (std::size_t i = 0; i < check.ColourBase; ++i)
        if (!used[i] &&
            (i != 0 || check.ColourBase == 1 || check.Wad.Textures[0] != check.Wad.Textures[1]))
            check.Add("No face uses texture ", i);
}

/// The tree of n meshes has n - 1 nodes of four words: flags and an offset. Flag 1 takes the
/// position from the stack, then flag 2 puts it there. There are levels whose first node takes from
/// the stack, which holds nothing yet; the trees go to the set as they are, so that is let pass.
void CheckMeshTree(WadCheck& check, std::size_t i, Budget& budget)
{
    const Moveable& moveable = check.Wad.Moveables[i];
    const std::int64_t words = std::max(std::int64_t{moveable.NumMeshes} - 1, std::int64_t{0}) * 4;
    if (moveable.MeshTree < 0 || moveable.MeshTree % 4 != 0 ||
        !Inside(moveable.MeshTree, words, check.Wad.MeshTrees.size()))
        return check.Add("Moveable ", i, " has its mesh tree at word ", moveable.MeshTree, " of ",
                         check.Wad.MeshTrees.size());
    int depth = 0;
    for (std::int64_t word = 0; word < words; word += 4) {
        if (!budget.Spend(1))
            return;
        const auto flags = check.Wad.MeshTrees[static_cast<std::size_t>(moveable.MeshTree + word)];
        if ((flags & ~3) != 0)
            return check.Add("Moveable ", i, " has the flags ", flags, " at mesh ", word / 4 + 1);
        if ((flags & 1) != 0 && word > 0 && --depth < 0)
            return check.Add("Moveable ", i, " takes from the empty stack at mesh ", word / 4 + 1);
        depth += (flags & 2) / 2;
    }
}

/// An ID of its own for each object, below `end`; in game 5 its place among those of its level, of
/// which some may be left out.
class ObjectIDs
{
public:
    ObjectIDs(WadCheck& check, const char* kind, std::size_t end)
        : check_(check), kind_(kind), taken_(end)
    {
    }

    void Check(std::size_t i, std::int32_t id)
    {
        if (!Inside(id, 1, taken_.size()))
            return check_.Add(kind_, i, " has the ID ", id, ", which no game has");
        if (check_.Wad.Game == kTR5 && id <= last_)
            check_.Add(kind_, i, " has the ID ", id, " behind ", last_);
        last_ = id;
        if (taken_[static_cast<std::size_t>(id)])
            check_.Add(kind_, i, " has the ID of another, ", id);
        taken_[static_cast<std::size_t>(id)] = true;
    }

private:
    WadCheck& check_;
    const char* kind_;
    std::vector<bool> taken_;
    std::int32_t last_ = -1;
};

void CheckMoveables(WadCheck& check)
{
    const ObjectSet& wad = check.Wad;
    ObjectIDs ids(check, "Moveable ", kMoveableIDs);
    Budget budget(wad.MeshTrees.size());
    for (std::size_t i = 0; i < wad.Moveables.size(); ++i) {
        const Moveable& moveable = wad.Moveables[i];
        ids.Check(i, moveable.ObjectID);
        if (moveable.NumMeshes == 0 && moveable.Animation == -1) { // it keeps its ID free
            check.Notes.Add("Moveable ", i, " has neither meshes nor animations");
            continue;
        }
        if (moveable.NumMeshes == 0 ||
            !Inside(moveable.StartingMesh, moveable.NumMeshes, wad.Meshes.MeshPointers.size()))
            check.Add("Moveable ", i, " has ", moveable.NumMeshes, " meshes from ",
                      moveable.StartingMesh, " on, of ", wad.Meshes.MeshPointers.size());
        CheckMeshTree(check, i, budget);
        // Without an animation, the offset of its frames means nothing.
        if (moveable.Animation == -1)
            continue;
        if (!Inside(moveable.Animation, 1, wad.Animations.size()))
            check.Add("Moveable ", i, " has animation ", moveable.Animation, " of ",
                      wad.Animations.size());
        else if (const auto& first = wad.Animations[static_cast<std::size_t>(moveable.Animation)];
                 moveable.FrameOffset != first.FrameOffset)
            check.Add("Moveable ", i, " has its frames at ", moveable.FrameOffset,
                      ", its first animation at ", first.FrameOffset);
    }
    if (!budget.Spend(1))
        check.Add("The mesh trees overlap too often");
}

void CheckStaticMeshes(WadCheck& check)
{
    const ObjectSet& wad = check.Wad;
    if (wad.StaticMeshes.size() > kMostStaticMeshes)
        check.Add(wad.StaticMeshes.size(), " static meshes are more than the editor takes");
    ObjectIDs ids(check, "Static mesh ", kStaticIDs);
    for (std::size_t i = 0; i < wad.StaticMeshes.size(); ++i) {
        ids.Check(i, wad.StaticMeshes[i].ObjectID);
        if (!Inside(wad.StaticMeshes[i].Mesh, 1, wad.Meshes.MeshPointers.size()))
            check.Add("Static mesh ", i, " has mesh ", wad.StaticMeshes[i].Mesh);
    }
}

} // namespace

Complaints CheckWad(const ObjectSet& set, Complaints* notes)
{
    WadCheck check(set);
    CheckTextures(check);
    try {
        CheckMeshes(check);
    } catch (const ReadFailure& failure) {
        check.Add("The mesh data can't be walked: ", failure.what());
    }
    CheckMoveables(check);
    CheckStaticMeshes(check);
    CheckAnimations(check);
    if (notes != nullptr)
        *notes = check.Notes.Take();
    return check.Take();
}

} // namespace morlik::check
