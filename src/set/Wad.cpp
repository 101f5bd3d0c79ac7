#include "set/Wad.h"

#include "set/Tables.h"

namespace morlik
{

namespace
{

constexpr std::int32_t kWadVersion = 129;

/// The blocks in file order. `Io` writes or reads.
template <class Io, class Set>
void WadBlocks(Io& io, Set& set)
{
    const auto& empty = set.EmptyCounts;
    io.Version(kWadVersion);
    io.Table("textures", set.Textures);
    io.Done(WadBlock::Textures);
    io.Tiles("tiles", set.Tiles);
    io.Done(WadBlock::Tiles);
    io.Table("mesh pointers", set.Meshes.MeshPointers);
    io.Done(WadBlock::MeshPointers);
    io.WordTable("mesh data", set.Meshes.MeshData);
    io.Done(WadBlock::MeshData);
    io.Table("animations", set.Animations);
    io.Done(WadBlock::Animations);
    io.Table("state changes", set.StateChanges, empty.StateChanges);
    io.Done(WadBlock::StateChanges);
    io.Table("dispatches", set.AnimDispatches, empty.AnimDispatches);
    io.Done(WadBlock::Dispatches);
    io.Table("commands", set.AnimCommands, empty.AnimCommands);
    io.Done(WadBlock::Commands);
    io.Table("mesh trees", set.MeshTrees);
    io.Done(WadBlock::MeshTrees);
    io.Table("frames", set.Frames);
    io.Done(WadBlock::Frames);
    io.template FieldTable<MoveableFields>("moveables", set.Moveables);
    io.Done(WadBlock::Moveables);
    io.Table("static meshes", set.StaticMeshes, empty.StaticMeshes);
    io.Done(WadBlock::StaticMeshes);
}

class WadWriter : public TableWriter
{
public:
    WadWriter(ByteSink& out, WadProgress& progress)
        : TableWriter(out, &progress), progress_(progress)
    {
    }
    void Done(WadBlock block) { progress_.Written(block); }

private:
    WadProgress& progress_;
};

class WadReader : public TableReader
{
public:
    using TableReader::TableReader;
    static void Done(WadBlock /*block*/) {}
};

} // namespace

void WriteWad(ByteSink& out, const ObjectSet& set, WadProgress& progress)
{
    WadWriter io(out, progress);
    WadBlocks(io, set);
}

void ReadWad(std::span<const std::byte> bytes, std::shared_ptr<const void> owner, ObjectSet& set)
{
    WadReader io(bytes, std::move(owner));
    WadBlocks(io, set);
    io.ExpectEnd();
}

} // namespace morlik
