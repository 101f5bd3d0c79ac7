#pragma once

#include "base/Reporter.h"
#include "convert/ChooseObjects.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"
#include "level/TrMainState.h"
#include "shell/Settings_Mod.h"
#include "shell/WAD_Main.h"
#include "side/MainSFX_Mod.h"
#include "side/PRJ_Mod.h"

#include <optional>
#include <string>
#include <vector>

namespace morlik
{

/// Everything that one run of the program holds. Made once in a main; a test makes its own.
struct Session
{
    explicit Session(Host& host) : Report(host) {}

    morlik::Reporter Report;
    morlik::Settings Settings;
    ObjectNames Names;
    TrMainState State;
    LevelData Level;                     ///< the current level
    std::optional<ObjectChoice> Objects; ///< of the level that a save takes; else all
    std::string LevelFile;  ///< where it was read from; a project loaded since leaves it
    std::string LevelTitle; ///< its file name, without the folder
    MainSFXState MainSFX;
    PRJData ProjectData;
    std::string ProjectFile; ///< the file that it was read from
    FileDialog FMLoad; ///< the open dialog, which keeps its file name from one use to the next
    FileDialog FMSave; ///< the save dialog
    SaveResult LastSave;
    std::string TitleText; ///< what window captions begin with; empty in batch mode
};

/// Gives a level that was just read its version code. A Gold level counts as Tomb Raider I.
void TakeVersion(Session& session);

/// Reads the level at `path` and makes it the current one.
void LoadLevel(Session& session, const std::string& path);

/// The files that the session has read. None of its work may write over them.
std::vector<std::string> InputsOf(const Session& session);

/// Asks with the open dialog for the `main.sfx` of a save. Gives its name, empty where none is
/// chosen; the dialog keeps it.
std::string AskForMainSFX(Session& session);

/// Saves the object set of the current level as `fileName`; see `SaveWAD`. Does nothing but tell
/// why where that would replace an input or the `main.sfx` of a game.
bool SaveLevel(Session& session, const std::string& fileName);

/// The same without that look, for a caller that has looked at the files of several saves at once.
bool SaveGuardedLevel(Session& session, const std::string& fileName);

} // namespace morlik
