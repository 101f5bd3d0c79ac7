#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"
#include "level/TR_Main.h"
#include "output/Samples.h"

#include <string>

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

/// What a save works with beside the level.
struct SaveContext
{
    const TrMainState& State;
    const ObjectNames& Names;
    MainSFXState& MainSFX;
    FileDialog& FMLoad;            ///< the open dialog, which asks for `main.sfx`
    const std::string& LevelTitle; ///< file name of the level, for the list
    Reporter& Report;
};

/// Saves the object set of a level: WAD, SAM, SFX and SWD file, WAS list, sounds and Info file.
/// `fileName` ends in ".was" and names them all. The save changes the level: frames, dispatches,
/// static meshes beyond 60, object ids of Tomb Raider V. Gives whether the set is complete; if not,
/// the user has got the message. Faults of the level end the program.
bool SaveWAD(const std::string& fileName, LevelData& level, const SaveContext& context);

} // namespace morlik
