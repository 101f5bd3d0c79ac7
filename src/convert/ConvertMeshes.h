#pragma once

#include "base/Reporter.h"
#include "convert/WadMesh.h"
#include "level/LevelData.h"
#include "level/TR_Main.h"

#include <optional>
#include <vector>

namespace morlik
{

/// Turns every mesh of the level into a record of the editor; mesh numbers stay those of the level.
/// Settles on the way which textures the object set needs: `textureNumbers` (one -1 for each
/// texture on entry) gets their numbers in the texture table, `numWadTextures` (0) their count.
/// Gives nothing when a face's texture is unknown, after the message; other faults end the program.
std::optional<WadMeshSet> ConvertMeshes(const LevelData& level, const TrMainState& state,
                                        std::int32_t& numWadTextures,
                                        std::vector<std::int32_t>& textureNumbers,
                                        Reporter& report);

} // namespace morlik
