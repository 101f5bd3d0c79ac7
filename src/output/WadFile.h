#pragma once

#include "base/Bytes.h"
#include "level/LevelData.h"

namespace morlik {

/// The WAD file of an object set. Blocks follow each other without a gap, numbers are
/// little-endian, counts 32-bit, and each block is found by the counts before it:
///
///   version, 129
///   textures: count, records of 8 bytes (`TextInfo`, tiles counted from the file's first)
///   tiles: byte count, rows of 256 pixels of 3 bytes, R, G, B
///   mesh pointers: count, 32-bit byte offsets into the mesh data
///   mesh data: count of 16-bit words, the mesh records (`WadMesh`)
///   animations: count, records of 40 bytes
///   state changes: count, records of 6 bytes
///   dispatches: count, records of 8 bytes
///   commands: count, 16-bit words
///   mesh trees: count, 32-bit words
///   frames: count of 16-bit words, the frames
///   moveables: count, records of 18 bytes
///   static meshes: count, records of 32 bytes
constexpr std::int32_t kWadVersion = 129;

/// The editor takes no more static meshes than this.
constexpr std::int32_t kMostStaticMeshes = 60;

/// A count and its table.
template <Packed Record>
void PutCounted(ByteSink& file, std::int32_t count, const std::vector<Record>& table)
{
    file.Put(count);
    file.PutTable(table);
}

} // namespace morlik
