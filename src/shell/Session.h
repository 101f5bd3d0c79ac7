#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"
#include "level/TR_Main.h"
#include "side/MainSFX_Mod.h"

#include <string>

namespace morlik
{

/// Everything that one run of the program holds. Made once in a main; a test makes its own.
struct Session
{
    explicit Session(Host& host) : Report(host) {}

    Reporter Report;
    ObjectNames Names;
    TrMainState State;
    MainSFXState MainSFX;
    FileDialog FMLoad;      ///< the open dialog, which keeps its file name from one use to the next
    LevelData Level;        ///< the current level
    std::string LevelTitle; ///< its file name, without the folder
};

/// Reads the level at `path` and makes it the current one. A Gold level counts as Tomb Raider I.
void LoadLevel(Session& session, const std::string& path);

/// Saves the object set of the current level as `fileName`; see `SaveWAD`.
bool SaveLevel(Session& session, const std::string& fileName);

} // namespace morlik
