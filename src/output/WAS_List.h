#pragma once

#include "base/TextLines.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"

#include <string>

namespace morlik
{

/// Writes the list of an object set: a line for each moveable, then for each static mesh, in the
/// order of the WAD file: the object's name in Tomb Raider IV, ":", the source path and its name
/// in its own game. The source path is "Z:\TOMB" + version + "\" + `levelTitle` in capitals + "\".
void WriteWAS(TextLines& file, const LevelData& level, const ObjectNames& names,
              const std::string& levelTitle);

} // namespace morlik
