#pragma once

#include "base/Reporter.h"
#include "convert/UsedTextures.h"
#include "level/LevelData.h"
#include "set/WadMesh.h"

#include <string>
#include <vector>

namespace morlik
{

/// Turns every mesh of the level into a record of the editor; mesh numbers stay those of the level.
/// Of the horizon, if the level has one, faces are repainted; `info` gets the lines that tell what
/// was done to it. Faults end the program.
WadMeshSet ConvertMeshes(const LevelData& level, const UsedTextures& textures, bool updateHorizon,
                         std::vector<std::string>& info, Reporter& report);

} // namespace morlik
