#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/TrMainState.h"

namespace morlik
{

/// Turns `state.ObjectTextures` of a Tomb Raider I to III level into boxes in a tile: fills
/// `level.Textures`, one entry for each of them. A texture turned the wrong way gives a message
/// with its number; some of these end the program.
void ConvertTextInfo(LevelData& level, const TrMainState& state, Reporter& report);

} // namespace morlik
