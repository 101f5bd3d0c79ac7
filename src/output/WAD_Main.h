#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"
#include "level/TR_Main.h"

#include <string>

namespace morlik {

/// What a save works with beside the level.
struct SaveContext
{
    const TrMainState& State;
    const ObjectNames& Names;
    const std::string& LevelTitle; ///< file name of the level, for the list
    Reporter& Report;
};

/// Saves the object set of a level: WAD file, Info file and WAS list. `fileName` ends in ".was"
/// and names them all. The save changes the level: frames, dispatches, static meshes beyond 60,
/// object ids of Tomb Raider V.
/// Gives whether the set is complete; if not, the user has got the message. Faults of the level
/// end the program.
bool SaveWAD(const std::string& fileName, LevelData& level, const SaveContext& context);

} // namespace morlik
