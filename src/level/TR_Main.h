#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/TrMainState.h"

#include <string>

namespace morlik
{

/// Reads a finished level of any game, its object textures already converted.
/// Ends the program, after its message, when the file can't be opened or is no good.
/// The caller makes the result the current level and writes its `Version`.
LevelData ReadTR(const std::string& fileName, TrMainState& state, Reporter& report);

} // namespace morlik
