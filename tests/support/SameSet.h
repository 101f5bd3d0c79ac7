#pragma once

#include "tests/support/Conversion.h"

namespace morlik::test
{

/// Names the first part in which two sets differ, pixels and WAV files included; empty for equal
/// ones.
inline std::string DifferenceOf(const ObjectSet& one, const ObjectSet& other)
{
    const auto sameWave = [](const SetSample& a, const SetSample& b) {
        return a.Name == b.Name && a.Wave.has_value() == b.Wave.has_value() &&
               (!a.Wave || std::ranges::equal(*a.Wave, *b.Wave));
    };
    const auto sameTiles = [](const SetTiles& a, const SetTiles& b) {
        return a.NumBytes() == b.NumBytes() && PixelsOf(a) == PixelsOf(b);
    };
    const auto sameSprites = [&](const auto& a, const auto& b) {
        return a.has_value() == b.has_value() &&
               (!a || (a->SpriteTextures == b->SpriteTextures && sameTiles(a->Tiles, b->Tiles) &&
                       a->SpriteSequences == b->SpriteSequences));
    };
    const std::initializer_list<std::pair<const char*, bool>> parts{
        {"game", one.Game == other.Game},
        {"textures", one.Textures == other.Textures},
        {"tiles", sameTiles(one.Tiles, other.Tiles)},
        {"meshes", one.Meshes == other.Meshes},
        {"animations", one.Animations == other.Animations},
        {"state changes", one.StateChanges == other.StateChanges},
        {"dispatches", one.AnimDispatches == other.AnimDispatches},
        {"commands", one.AnimCommands == other.AnimCommands},
        {"mesh trees", one.MeshTrees == other.MeshTrees},
        {"frames", one.Frames == other.Frames},
        {"moveables", one.Moveables == other.Moveables},
        {"static meshes", one.StaticMeshes == other.StaticMeshes},
        {"source title", one.SourceTitle == other.SourceTitle},
        {"list", one.Listed == other.Listed},
        {"sounds", one.Sounds == other.Sounds},
        {"samples", std::ranges::equal(one.Samples, other.Samples, sameWave)},
        {"sprites", sameSprites(one.Sprites, other.Sprites)},
        {"info", one.Info == other.Info}};
    for (const auto& [name, isSame] : parts)
        if (!isSame)
            return name;
    return {};
}

} // namespace morlik::test
