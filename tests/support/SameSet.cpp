#include "tests/support/SameSet.h"

#include "tests/support/Conversion.h"

namespace morlik::test
{

namespace
{

bool SameWave(const SetSample& one, const SetSample& other)
{
    return one.Name == other.Name && one.Wave.has_value() == other.Wave.has_value() &&
           (!one.Wave || std::ranges::equal(*one.Wave, *other.Wave));
}

bool SameTiles(const SetTiles& one, const SetTiles& other)
{
    return one.NumBytes() == other.NumBytes() && PixelsOf(one) == PixelsOf(other);
}

bool SameSprites(const std::optional<SpriteTables>& one, const std::optional<SpriteTables>& other)
{
    if (!one || !other)
        return !one && !other;
    return one->SpriteTextures == other->SpriteTextures && SameTiles(one->Tiles, other->Tiles) &&
           one->SpriteSequences == other->SpriteSequences;
}

} // namespace

std::string DifferenceOf(const ObjectSet& one, const ObjectSet& other)
{
    const std::initializer_list<std::pair<const char*, bool>> parts{
        {"game", one.Game == other.Game},
        {"textures", one.Textures == other.Textures},
        {"tiles", SameTiles(one.Tiles, other.Tiles)},
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
        {"samples", std::ranges::equal(one.Samples, other.Samples, SameWave)},
        {"sprites", SameSprites(one.Sprites, other.Sprites)},
        {"info", one.Info == other.Info}};
    for (const auto& [name, isSame] : parts)
        if (!isSame)
            return name;
    return {};
}

} // namespace morlik::test
