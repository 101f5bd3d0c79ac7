#include "check/ObjectSetCheck.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace morlik::check
{

namespace
{

constexpr std::size_t kPaletteTextures = 258;
constexpr std::size_t kMostLevelTextures = 2047;
constexpr std::size_t kMostStaticMeshes = 60;

struct WadCheck : Gatherer
{
    WadCheck(const WadFile& wad, int game) : Wad(wad), Game(game) {}

    const WadFile& Wad;
    int Game;
    /// Textures that stand before the palette squares; so the number of the first square.
    std::size_t ColourBase = Wad.Textures.size();

    bool Paletted() const { return Game <= 3; }
};

/// Whether `count` elements from `first` on lie in a table of `size`. None lie anywhere.
bool Inside(std::int64_t first, std::int64_t count, std::size_t size)
{
    if (count <= 0)
        return count == 0;
    return first >= 0 && first + count <= static_cast<std::int64_t>(size);
}

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

/// Game 5 numbers its objects anew. What a moveable without animations holds as its `FrameOffset`
/// means nothing.
void CheckObjects(WadCheck& check)
{
    const WadFile& wad = check.Wad;
    const auto checkID = [&](const char* kind, std::size_t i, std::int32_t id) {
        if (check.Game == 5 && id != static_cast<std::int64_t>(i))
            check.Add(kind, i, " has the ID ", id);
    };
    for (std::size_t i = 0; i < wad.Moveables.size(); ++i) {
        const WadMoveable& moveable = wad.Moveables[i];
        const auto name = "Moveable " + std::to_string(i);
        checkID("Moveable ", i, moveable.ObjectID);
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
        checkID("Static mesh ", i, wad.StaticMeshes[i].ObjectID);
        if (!Inside(wad.StaticMeshes[i].Mesh, 1, wad.MeshPointers.size()))
            check.Add("Static mesh ", i, " has mesh ", wad.StaticMeshes[i].Mesh);
    }
}

/// Tells whether a walk along the transitions stays inside their tables.
bool CheckRanges(WadCheck& check)
{
    const WadFile& wad = check.Wad;
    const std::size_t before = check.List.size();
    for (std::size_t i = 0; i < wad.Animations.size(); ++i) {
        const WadAnimation& animation = wad.Animations[i];
        if (!Inside(animation.StateChange, animation.NumStateChanges, wad.StateChanges.size()))
            check.Add("Animation ", i, " has its state changes outside their table");
        if (!Inside(animation.AnimCommand, animation.NumAnimCommands, wad.AnimCommands.size()))
            check.Add("Animation ", i, " has its commands outside their table");
    }
    for (std::size_t i = 0; i < wad.StateChanges.size(); ++i) {
        const WadStateChange& change = wad.StateChanges[i];
        if (!Inside(change.AnimDispatch, change.NumAnimDispatches, wad.AnimDispatches.size()))
            check.Add("State change ", i, " has its dispatches outside their table");
    }
    return check.List.size() == before && before < kMostComplaints;
}

/// Animation behind the last one of a moveable: the first one of the next moveable that has any.
std::size_t AnimationsEnd(const WadFile& wad, std::size_t moveable)
{
    for (std::size_t i = moveable + 1; i < wad.Moveables.size(); ++i)
        if (wad.Moveables[i].Animation != -1)
            return static_cast<std::size_t>(wad.Moveables[i].Animation);
    return wad.Animations.size();
}

/// Transitions stay inside their moveable. Two moveables can share a dispatch: it was put right
/// for each in turn, so the last that reaches it finds it inside. Ranges that cover the same
/// records again and again, as in no sound file, would take hours to follow.
void CheckDispatches(WadCheck& check)
{
    constexpr std::size_t kMostSteps = std::size_t{1} << 22U;
    const WadFile& wad = check.Wad;
    std::size_t steps = 0;
    std::vector<std::optional<std::size_t>> outsideOf(wad.AnimDispatches.size());
    for (std::size_t m = 0; m < wad.Moveables.size(); ++m) {
        const std::int64_t first = wad.Moveables[m].Animation;
        if (first < 0)
            continue;
        const std::size_t end = std::min(AnimationsEnd(wad, m), wad.Animations.size());
        for (auto a = static_cast<std::size_t>(first); a < end; ++a) {
            const WadAnimation& animation = wad.Animations[a];
            for (std::size_t s = 0; std::cmp_less(s, animation.NumStateChanges); ++s) {
                const auto at = static_cast<std::size_t>(animation.StateChange) + s;
                const WadStateChange& change = wad.StateChanges[at];
                steps += 1 + static_cast<std::size_t>(change.NumAnimDispatches);
                if (steps > kMostSteps)
                    return check.Add("The state changes or dispatches overlap too often");
                for (std::size_t d = 0; std::cmp_less(d, change.NumAnimDispatches); ++d) {
                    const auto dispatch = static_cast<std::size_t>(change.AnimDispatch) + d;
                    const std::int64_t next = wad.AnimDispatches[dispatch].NextAnimation;
                    const bool inside = next >= first && next < static_cast<std::int64_t>(end);
                    outsideOf[dispatch] = inside ? std::nullopt : std::optional(m);
                }
            }
        }
    }
    for (std::size_t i = 0; i < outsideOf.size(); ++i)
        if (outsideOf[i])
            check.Add("Dispatch ", i, " leads from moveable ", *outsideOf[i], " to animation ",
                      wad.AnimDispatches[i].NextAnimation, " of another");
}

/// A frame from word `start` to `end`: 9 words of header, then the rotations of all meshes, of two
/// words each unless one of the top two bits of the first is set. Returns what is wrong.
const char* FrameFault(const WadCheck& check, std::size_t start, std::size_t end, int meshes)
{
    const auto& frames = check.Wad.Frames;
    std::size_t at = start + 9;
    bool isPair = false;
    for (int i = 0; i < meshes; ++i) {
        if (at >= end)
            return "is too short for its rotations";
        const unsigned word = static_cast<std::uint16_t>(frames[at]);
        isPair = (word & 0xc000U) == 0;
        // The conversion drops bits 12 and 13, and its factor of 4 leaves the lowest two clear.
        if (check.Paletted() && !isPair && (word & 0x3003U) != 0)
            return "has an angle of 10 bits";
        at += isPair ? 2 : 1;
    }
    if (at > end)
        return "is too short for its rotations";
    // The pairs of game 1 have moved up by the word of their count. The last word stayed, so it
    // repeats the first one of the last pair (unless that was an angle to rescale).
    if (check.Game == 1 && isPair && frames[end - 1] != frames[end - 3])
        return "doesn't have the form of a rebuilt frame";
    return nullptr;
}

/// The frames of animation `a` run to those of the next one. A frame size of 0 (which game 1 never
/// keeps) means no frames, and frames that begin behind the next ones have no known count.
void CheckFramesOf(WadCheck& check, std::size_t a, const WadMoveable& owner)
{
    const auto& animations = check.Wad.Animations;
    const std::size_t size = animations[a].FrameSize;
    const auto start = static_cast<std::size_t>(animations[a].FrameOffset) / 2;
    const std::size_t end = a + 1 == animations.size()
                                ? check.Wad.Frames.size()
                                : static_cast<std::size_t>(animations[a + 1].FrameOffset) / 2;
    if (check.Game == 1 && end > start && std::cmp_not_equal(size, 10 + 2 * owner.NumMeshes))
        return check.Add("Animation ", a, " has frames of ", size, " words for ", owner.NumMeshes,
                         " meshes");
    for (std::size_t at = start; size != 0 && at + size <= end; at += size)
        if (const char* fault = FrameFault(check, at, at + size, owner.NumMeshes))
            return check.Add("The frame of animation ", a, " at word ", at, " ", fault);
}

/// An animation belongs to the moveable whose animations begin at it or last before it. That can
/// be told only where the first animations of the moveables ascend; animations before all of them
/// belong to none.
void CheckFrames(WadCheck& check)
{
    const WadFile& wad = check.Wad;
    for (std::size_t a = 0; a < wad.Animations.size(); ++a)
        if (const std::int64_t at = wad.Animations[a].FrameOffset;
            at % 2 != 0 || (at != 0 && !Inside(at - 1, 1, wad.Frames.size() * 2)))
            return check.Add("Animation ", a, " has its frames at ", at);
    std::vector<const WadMoveable*> owners(wad.Animations.size());
    std::int64_t last = -1;
    for (const WadMoveable& moveable : wad.Moveables) {
        if (moveable.Animation == -1)
            continue;
        if (moveable.Animation <= last || !Inside(moveable.Animation, 1, owners.size()))
            return;
        last = moveable.Animation;
        std::fill(owners.begin() + last, owners.end(), &moveable);
    }
    for (std::size_t a = 0; a < owners.size(); ++a)
        if (owners[a] != nullptr)
            CheckFramesOf(check, a, *owners[a]);
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
    if (CheckRanges(check))
        CheckDispatches(check);
    CheckFrames(check);
    return std::move(check.List);
}

} // namespace morlik::check
