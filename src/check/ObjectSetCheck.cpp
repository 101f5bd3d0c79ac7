#include "check/ObjectSetCheck.h"

#include "check/WadCheck.h"

#include <algorithm>
#include <set>

namespace morlik::check
{

namespace
{

constexpr std::size_t kPaletteTextures = 258;
constexpr std::size_t kMostLevelTextures = 2047;
constexpr std::size_t kMostStaticMeshes = 60;

/// Squares of 4 by 4 pixels, 64 to a row: the 256 colours, one black, and one that is transparent
/// (magenta) where the game has such a colour. The rest of the tile is black.
void CheckPaletteTile(WadCheck& check)
{
    const std::size_t tile = check.Wad.Pixels.size() / kSetTileBytes - 1;
    const std::span pixels =
        std::span(check.Wad.Pixels).subspan(tile * kSetTileBytes, kSetTileBytes);
    std::vector<std::uint8_t> wanted(kSetTileBytes);
    for (std::size_t i = 0; i < kPaletteTextures; ++i) {
        const WadTexture square{static_cast<std::uint8_t>(i % 64 * 4),
                                static_cast<std::uint8_t>(i / 64 * 4),
                                static_cast<std::int16_t>(tile),
                                0xff,
                                3,
                                0xff,
                                3};
        if (check.Wad.Textures[check.ColourBase + i] != square)
            check.Add("Texture ", check.ColourBase + i, " is not palette square ", i);
        const std::size_t corner = (square.Y * std::size_t{256} + square.X) * 3;
        std::array<std::uint8_t, 3> colour{};
        if (i < 256)
            std::copy_n(pixels.begin() + static_cast<std::ptrdiff_t>(corner), 3, colour.begin());
        else if (i == 257 && check.Game != 1)
            colour = {255, 0, 255};
        for (std::size_t byte = 0; byte < 48; ++byte)
            wanted[corner + byte / 12 * 768 + byte % 12] = colour[byte % 3];
    }
    const auto wrong = std::mismatch(wanted.begin(), wanted.end(), pixels.begin()).first;
    if (wrong != wanted.end())
        check.Add("The palette tile has a wrong pixel at byte ", wrong - wanted.begin());
}

/// The tiles begin with the first one that a texture lies on and end with the last one, or with
/// the palette tile behind it. So both ends are in use.
void CheckTextures(WadCheck& check)
{
    const WadFile& wad = check.Wad;
    if (wad.Pixels.size() % kSetTileBytes != 0)
        check.Add(wad.Pixels.size(), " tile bytes are no whole tiles");
    auto tiles = static_cast<std::int64_t>(wad.Pixels.size() / kSetTileBytes);
    if (check.Paletted()) {
        if (wad.Textures.size() < kPaletteTextures || tiles == 0)
            return check.Add("The palette is missing");
        check.ColourBase -= kPaletteTextures;
        CheckPaletteTile(check);
        --tiles;
    }
    if (check.ColourBase > kMostLevelTextures)
        check.Add(check.ColourBase, " textures are more than the editor takes");
    std::set<std::int64_t> used;
    for (std::size_t i = 0; i < check.ColourBase; ++i) {
        const WadTexture& texture = wad.Textures[i];
        used.insert(texture.Tile);
        if (texture.X + texture.Width > 255 || texture.Y + texture.Height > 255)
            check.Add("Texture ", i, " leaves its tile");
    }
    if (used.empty() ? tiles != 0 : *used.begin() != 0 || *used.rbegin() != tiles - 1)
        check.Add("The textures don't take up the ", tiles, " tiles from the first to the last");
}

/// Triangles of games 1 to 3 keep their flips at 0; all other textures have 0xff. A colour square
/// is neither turned nor mirrored.
void CheckFace(WadCheck& check, const WadMeshFace& face, const std::string& name)
{
    const auto number = static_cast<std::size_t>(face.TextureNumber());
    if (number >= check.Wad.Textures.size())
        return check.Add(name, " has texture ", number, " of ", check.Wad.Textures.size());
    const bool coloured = number >= check.ColourBase;
    const int flip = face.Type == 8 && check.Paletted() && !coloured ? 0 : 0xff;
    const WadTexture& texture = check.Wad.Textures[number];
    if (texture.FlipX != flip || texture.FlipY != flip)
        check.Add(name, " has texture ", number, " with flips of the other kind");
    if (coloured && face.Texture != face.TextureNumber())
        check.Add(name, " turns a colour square");
    if (check.Paletted() && face.Flags != 0 && (face.Flags != 1 || coloured))
        check.Add(name, " has the flags ", face.Flags);
}

/// Each record has a pointer, and the pointers meet the records in their order, repeats aside.
/// Textures that no face uses are left out of the file.
void CheckMeshes(WadCheck& check)
{
    const auto meshes = WadMeshes(check.Wad);
    auto next = meshes.begin();
    for (std::size_t i = 0; i < check.Wad.MeshPointers.size(); ++i) {
        const std::size_t pointer = check.Wad.MeshPointers[i];
        if (next != meshes.end() && pointer == next->first)
            ++next;
        else if (!meshes.contains(pointer) || (next != meshes.end() && pointer > next->first))
            check.Add("Mesh pointer ", i, " leads to ", pointer, ", not to the next record");
    }
    if (next != meshes.end())
        check.Add("The mesh record at ", next->first, " has no pointer in its turn");

    std::vector<bool> used(check.Wad.Textures.size());
    for (const auto& [offset, mesh] : meshes) {
        if (mesh.Normals.size() + mesh.Lights.size() != mesh.Vertices.size())
            check.Add("The mesh at ", offset, " has ", mesh.Vertices.size(), " vertices and ",
                      mesh.Normals.size() + mesh.Lights.size(), " normals or lights");
        for (std::size_t i = 0; i < mesh.Faces.size(); ++i) {
            const WadMeshFace& face = mesh.Faces[i];
            const auto name =
                "Face " + std::to_string(i) + " of the mesh at " + std::to_string(offset);
            for (const std::int16_t vertex : face.Vertices)
                if (!Inside(vertex, 1, mesh.Vertices.size()))
                    check.Add(name, " has vertex ", vertex, " of ", mesh.Vertices.size());
            CheckFace(check, face, name);
            if (const auto number = static_cast<std::size_t>(face.TextureNumber());
                number < used.size())
                used[number] = true;
        }
    }
    for (std::size_t i = 0; i < check.ColourBase; ++i)
        if (!used[i])
            check.Add("No face uses texture ", i);
}

/// The tree of n meshes has n - 1 nodes of four words: flags and an offset. Flag 1 takes the
/// position from the stack, then flag 2 puts it there. There are levels whose first node takes from
/// the stack, which holds nothing yet; the trees go to the set as they are, so that is let pass.
void CheckMeshTree(WadCheck& check, const WadMoveable& moveable, const std::string& name)
{
    const std::int64_t words = (std::int64_t{moveable.NumMeshes} - 1) * 4;
    if (words <= 0)
        return;
    if (!Inside(moveable.MeshTree, words, check.Wad.MeshTrees.size()))
        return check.Add(name, " has its mesh tree outside the mesh trees");
    int depth = 0;
    for (std::int64_t i = 0; i < words; i += 4) {
        const auto flags = check.Wad.MeshTrees[static_cast<std::size_t>(moveable.MeshTree + i)];
        if ((flags & ~3) != 0)
            check.Add(name, " has the flags ", flags, " at mesh ", i / 4 + 1);
        if ((flags & 1) != 0 && i > 0 && --depth < 0)
            return check.Add(name, " takes from the empty stack at mesh ", i / 4 + 1);
        depth += (flags & 2) / 2;
    }
}

/// Each object has an ID of its own, in game 5 its number. What a moveable without animations holds
/// as its `FrameOffset` means nothing.
void CheckObjects(WadCheck& check)
{
    const WadFile& wad = check.Wad;
    const auto checkID = [&](const char* kind, std::size_t i, std::int32_t id,
                             std::set<std::int32_t>& ids) {
        if (check.Game == 5 && id != static_cast<std::int64_t>(i))
            check.Add(kind, i, " has the ID ", id);
        if (!ids.insert(id).second)
            check.Add(kind, i, " has the ID of another, ", id);
    };
    std::set<std::int32_t> moveables;
    std::set<std::int32_t> statics;
    for (std::size_t i = 0; i < wad.Moveables.size(); ++i) {
        const WadMoveable& moveable = wad.Moveables[i];
        const auto name = "Moveable " + std::to_string(i);
        checkID("Moveable ", i, moveable.ObjectID, moveables);
        if (!Inside(moveable.StartingMesh, moveable.NumMeshes, wad.MeshPointers.size()))
            check.Add(name, " has its meshes outside the mesh pointers");
        CheckMeshTree(check, moveable, name);
        if (moveable.Animation == -1)
            continue;
        if (!Inside(moveable.Animation, 1, wad.Animations.size()))
            check.Add(name, " has animation ", moveable.Animation, " of ", wad.Animations.size());
        if (moveable.FrameOffset % 2 != 0 ||
            !Inside(moveable.FrameOffset, 1, wad.Frames.size() * 2))
            check.Add(name, " has its frames at ", moveable.FrameOffset);
    }
    if (wad.StaticMeshes.size() > kMostStaticMeshes)
        check.Add(wad.StaticMeshes.size(), " static meshes are more than the editor takes");
    for (std::size_t i = 0; i < wad.StaticMeshes.size(); ++i) {
        checkID("Static mesh ", i, wad.StaticMeshes[i].ObjectID, statics);
        if (!Inside(wad.StaticMeshes[i].Mesh, 1, wad.MeshPointers.size()))
            check.Add("Static mesh ", i, " has mesh ", wad.StaticMeshes[i].Mesh);
    }
}

} // namespace

Complaints CheckWad(const WadFile& wad, int game)
{
    WadCheck check(wad, game);
    CheckTextures(check);
    try {
        CheckMeshes(check);
    } catch (const ReadFailure& failure) {
        check.Add("The mesh data can't be walked: ", failure.what());
    }
    CheckObjects(check);
    CheckAnimations(check);
    return check.Take();
}

} // namespace morlik::check
