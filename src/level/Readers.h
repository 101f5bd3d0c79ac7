#pragma once

#include "level/Sections.h"

namespace morlik
{

/// The readers of the games, each from behind the four version bytes on. Damage is `ReadFailure`.

/// Tomb Raider I, and I Gold where `State.LevelVersion` is `kTR1Gold`. With `hasOtherPalette` the
/// palette stands where the other of the two has it, as in levels of demos.
void ReadTR1(LevelReading& reading, bool hasOtherPalette = false);
void ReadTR2(LevelReading& reading);
void ReadTR3(LevelReading& reading);
void ReadTR4(LevelReading& reading);
/// Leaves `State.LevelVersion` at 5, also where a demo's name had made it 51.
void ReadTR5(LevelReading& reading);

} // namespace morlik
