#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/TrMainState.h"

namespace morlik
{

/// Turns `state.ObjectTexturesTR45` of a Tomb Raider IV or V level into boxes in a tile: fills
/// `level.Textures`, one entry for each of them.
/// In these games odd or even pixel values tell the side of a corner: even for left and top.
/// Textures that cover the same box of the same tile are mapped to the first of them.
/// A box that leaves its tile, or a tile that the level doesn't have, ends the program with a
/// message; sizes that no box can have are a `ReadFailure`.
void ConvertTR5TextInfo(LevelData& level, const TrMainState& state, Reporter& report);

} // namespace morlik
