#pragma once

#include "base/Files.h"
#include "base/Reporter.h"
#include "convert/ChooseObjects.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"
#include "side/MainSFX_Mod.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace morlik
{

/// What became of a save.
struct SaveResult
{
    bool IsWritten = false;               ///< the files have taken their places
    bool LacksMainSFX = false;            ///< none was chosen, so there are no WAV files
    std::size_t NumSamples = 0;           ///< that the set has, where they were written
    std::size_t MissingSamples = 0;       ///< of these, how many do not exist
    std::optional<FileFailure> Refusal{}; ///< of the system, where a file can't be written
};

/// What a save works with beside the level.
struct SaveContext
{
    const ObjectNames& Names;
    MainSFXState& MainSFX;
    const std::string& LevelTitle; ///< file name of the level, for the list
    Reporter& Report;
    const std::optional<ObjectChoice>& Objects; ///< which to take; else all
    SaveResult& Result;
    std::function<std::string()> AskForMainSFX; ///< gives its name; empty where none is chosen
};

/// Saves the object set of a level: WAD, SAM, SFX and SWD file, WAS list, sounds and Info file.
/// `fileName` ends in ".was" and names them all. Gives whether the set is complete; if not, the
/// user has got the message. Faults of the level end the program. The files appear
/// together at the end: whatever stops the save, a set that is there stays as it was.
bool SaveWAD(const std::string& fileName, const LevelData& level, const SaveContext& context);

} // namespace morlik
