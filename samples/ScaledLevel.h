#pragma once

#include "samples/LevelContent.h"

namespace morlik::samples
{

/// The full sample level of a game with everything that an object set is made of, but for sounds,
/// static meshes and sprites, as many times. What a conversion costs must grow as this does.
LevelContent MakeScaledLevel(VersionCode game, std::size_t times);

} // namespace morlik::samples
