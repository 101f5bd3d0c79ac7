#include "set/Swd.h"

#include "set/Tables.h"

namespace morlik
{

namespace
{

constexpr std::int32_t kSwdVersion = 129;

/// The tables in file order. `Io` writes or reads.
template <class Io, class Sprites>
void SwdTables(Io& io, Sprites& sprites, const ObjectSet::CountsOfEmpty& empty)
{
    io.Version(kSwdVersion);
    io.Table("sprite textures", sprites.SpriteTextures, empty.SpriteTextures);
    io.Tiles("sprite tiles", sprites.Tiles);
    io.Table("sprite sequences", sprites.SpriteSequences, empty.SpriteSequences);
}

} // namespace

void WriteSwd(ByteSink& out, const ObjectSet& set, TileProgress& progress)
{
    TableWriter io(out, &progress);
    SwdTables(io, *set.Sprites, set.EmptyCounts);
}

void ReadSwd(std::span<const std::byte> bytes, std::shared_ptr<const void> owner, ObjectSet& set)
{
    TableReader io(bytes, std::move(owner));
    SwdTables(io, set.Sprites.emplace(), set.EmptyCounts);
    io.ExpectEnd();
}

} // namespace morlik
