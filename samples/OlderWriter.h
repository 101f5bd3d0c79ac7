#pragma once

#include "samples/LevelContent.h"
#include "samples/MarkedWriter.h"

namespace morlik::samples
{

/// A level file of Tomb Raider I, I Gold, II or III: plain sections from start to end.
LevelFile WriteOlderLevel(const LevelContent& level);

} // namespace morlik::samples
