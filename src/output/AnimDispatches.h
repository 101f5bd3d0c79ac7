#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"

namespace morlik
{

/// Number of animations of moveable `index`: up to the first of the next moveable that has any,
/// or to the end.
std::int32_t CountAnimations(const LevelData& level, std::size_t index);

/// Keeps every transition of a moveable inside its own animations, since the editor copies objects
/// one by one: a dispatch that leads elsewhere leads to the first animation instead.
/// Damaged tables that would take hours to walk end the program with a message.
void FixAnimDispatches(LevelData& level, Reporter& report);

} // namespace morlik
