#pragma once

#include "set/ObjectSet.h"

#include <memory>
#include <span>

namespace morlik
{

/// The WAD file of an object set. Blocks follow each other without a gap, numbers are
/// little-endian, counts 32-bit, and each block is found by the counts before it:
///
///   version, 129
///   textures: count, records of 8 bytes (`TextInfo`, tiles counted from the file's first)
///   tiles: byte count, rows of 256 pixels of 3 bytes, R, G, B
///   mesh pointers: count, 32-bit byte offsets into the mesh data
///   mesh data: count of 16-bit words, the mesh records (`WadMesh`)
///   animations: count, records of 40 bytes (`Animation`)
///   state changes: count, records of 6 bytes
///   dispatches: count, records of 8 bytes
///   commands: count, 16-bit words
///   mesh trees: count, 32-bit words
///   frames: count of 16-bit words, the frames
///   moveables: count, records of 18 bytes (`MoveableFields`)
///   static meshes: count, records of 32 bytes
enum class WadBlock : std::uint8_t
{
    Textures,
    Tiles,
    MeshPointers,
    MeshData,
    Animations,
    StateChanges,
    Dispatches,
    Commands,
    MeshTrees,
    Frames,
    Moveables,
    StaticMeshes,
};

/// Told how the writing of a WAD file goes on.
class WadProgress : public TileProgress
{
public:
    /// Behind each block.
    virtual void Written(WadBlock /*block*/) {}
};

void WriteWad(ByteSink& out, const ObjectSet& set, WadProgress& progress);

/// Fills the part of a set that its WAD file holds. `owner` keeps the bytes alive, which the tiles
/// are views into. Another version, a block that runs past the end and bytes behind the last one
/// are `ReadFailure`s; what the records say is not looked at.
void ReadWad(std::span<const std::byte> bytes, std::shared_ptr<const void> owner, ObjectSet& set);

} // namespace morlik
