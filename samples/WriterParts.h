#pragma once

#include "samples/LevelContent.h"
#include "samples/MarkedWriter.h"

namespace morlik::samples
{

/// Sizes in bytes of the records that differ between the games.
struct RecordSizes
{
    std::size_t Box;
    std::size_t Zone; ///< for each box
    std::size_t Item;
    std::size_t SoundSlots; ///< entries of the sound map, 2 bytes each
};
RecordSizes SizesOf(VersionCode game);

/// From the mesh data to the static meshes: the same sections in every game.
void WriteModels(MarkedWriter& out, const LevelContent& level);

/// Vertices, rectangles, triangles and sprites of a room.
void WriteGeometry(MarkedWriter& out, const RoomContent& room, VersionCode game,
                   const std::string& name);

/// Portals and sectors of a room.
void WritePortalsAndSectors(MarkedWriter& out, const RoomContent& room, const std::string& name);

/// Cameras, in Tomb Raider IV and V fly-by cameras, and sound sources.
void WriteCameras(MarkedWriter& out, const LevelContent& level);

/// Boxes, overlaps, zones and animated textures.
void WriteBoxes(MarkedWriter& out, const LevelContent& level);

void WriteItems(MarkedWriter& out, const LevelContent& level);

/// Sound map and sound details.
void WriteSoundTables(MarkedWriter& out, const LevelContent& level);

} // namespace morlik::samples
