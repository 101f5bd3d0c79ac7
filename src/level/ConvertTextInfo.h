#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/TR_Main.h"

namespace morlik
{

/// Turns `state.ObjectTextures` of a Tomb Raider I to III level into boxes in a tile: fills
/// `level.TextInfos`, `state.TextureFlip` and `state.TextureRemap`, one entry for each of the
/// `level.NumTextInfo` textures. A texture turned the wrong way gives a message with its number;
/// some of these end the program.
void ConvertTextInfo(LevelData& level, TrMainState& state, Reporter& report);

} // namespace morlik
