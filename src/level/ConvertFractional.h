#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/TrMainState.h"

namespace morlik
{

/// Converts the object textures of a level of any game whose corners have true fractions: boxes go
/// from the smallest to the largest pixel, and the places of the corners tell how each lies.
/// Fills what `ConvertTextInfo` or `ConvertTR5TextInfo` fills, with the checks of the latter for
/// Tomb Raider IV and V, and the turns. Textures whose shape no code can tell take the
/// nearest one; the log tells how many.
void ConvertFractional(LevelData& level, const TrMainState& state, Reporter& report);

} // namespace morlik
