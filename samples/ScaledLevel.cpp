#include "samples/ScaledLevel.h"

#include "base/Narrow.h"

namespace morlik::samples
{

namespace
{

/// Appends copies of the records of a table, each changed.
template <class Record, class Change>
void Append(std::vector<Record>& table, const std::vector<Record>& more, Change change)
{
    for (Record record : more) {
        change(record);
        table.push_back(std::move(record));
    }
}

template <class Record>
void Append(std::vector<Record>& table, const std::vector<Record>& more)
{
    table.insert(table.end(), more.begin(), more.end());
}

template <class Number>
void Shift(Number& number, std::size_t by)
{
    number = narrow<Number>(number + static_cast<std::int64_t>(by));
}

void AppendTextures(LevelContent& level, const LevelContent& more)
{
    const auto tiles = (level.Tiles8.size() + level.Tiles32.size()) / kTilePixels;
    const auto shift = [tiles](auto& texture) { Shift(texture.Tile, tiles); };
    Append(level.ObjectTextures, more.ObjectTextures, shift);
    Append(level.ObjectTexturesTR45, more.ObjectTexturesTR45, shift);
    Append(level.Tiles8, more.Tiles8);
    Append(level.Tiles16, more.Tiles16);
    Append(level.Tiles32, more.Tiles32);
    if (!IsOlderGame(level.Game))
        Shift(level.NumObjectTiles, more.Tiles32.size() / kTilePixels);
}

void AppendMeshes(LevelContent& level, const LevelContent& more, std::size_t textures)
{
    const auto meshes = level.Meshes.size();
    Append(level.MeshTable, more.MeshTable, [meshes](std::size_t& mesh) { mesh += meshes; });
    Append(level.Meshes, more.Meshes, [textures](MeshContent& mesh) {
        for (auto* faces : {&mesh.Rectangles, &mesh.Triangles})
            for (MeshFace& face : *faces)
                face.Texture = static_cast<std::int16_t>(
                    (face.Texture & 0x8000) |
                    ((face.Texture & 0x7fff) + static_cast<std::int32_t>(textures)));
    });
}

void AppendAnimations(LevelContent& level, const LevelContent& more)
{
    const auto animations = level.Animations.size();
    const auto frameBytes = level.Frames.size() * 2;
    const auto changes = level.StateChanges.size();
    const auto dispatches = level.AnimDispatches.size();
    const auto commands = level.AnimCommands.size();
    const auto trees = level.MeshTrees.size();
    const auto meshes = level.MeshTable.size() - more.MeshTable.size();
    Append(level.Animations, more.Animations, [&](Animation& animation) {
        Shift(animation.FrameOffset, frameBytes);
        Shift(animation.NextAnimation, animations);
        Shift(animation.StateChange, changes);
        Shift(animation.AnimCommand, commands);
    });
    Append(level.StateChanges, more.StateChanges,
           [&](StateChange& change) { Shift(change.AnimDispatch, dispatches); });
    Append(level.AnimDispatches, more.AnimDispatches,
           [&](AnimDispatch& dispatch) { Shift(dispatch.NextAnimation, animations); });
    Append(level.AnimCommands, more.AnimCommands);
    Append(level.MeshTrees, more.MeshTrees);
    Append(level.Frames, more.Frames);
    Append(level.Moveables, more.Moveables, [&](Moveable& moveable) {
        Shift(moveable.StartingMesh, meshes);
        Shift(moveable.MeshTree, trees);
        Shift(moveable.FrameOffset, frameBytes);
        if (moveable.Animation != -1)
            Shift(moveable.Animation, animations);
    });
}

} // namespace

LevelContent MakeScaledLevel(VersionCode game, std::size_t times)
{
    const LevelContent once = MakeRichLevel(game);
    LevelContent level = once;
    for (std::size_t i = 1; i < times; ++i) {
        const auto textures = level.ObjectTextures.size() + level.ObjectTexturesTR45.size();
        AppendTextures(level, once);
        AppendMeshes(level, once, textures);
        AppendAnimations(level, once);
        Append(level.Rooms, once.Rooms);
    }
    return level;
}

} // namespace morlik::samples
