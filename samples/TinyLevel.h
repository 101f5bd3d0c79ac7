#pragma once

#include "samples/LevelContent.h"

namespace morlik::samples
{

/// A level of the game with nothing in it but its first word, and all slots of the sound map free.
LevelContent EmptyLevel(VersionCode game);

} // namespace morlik::samples
