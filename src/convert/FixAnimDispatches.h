#pragma once

#include "base/Reporter.h"
#include "set/ObjectSet.h"

namespace morlik
{

/// Keeps every transition of a moveable inside its own animations, since the editor copies objects
/// one by one: a dispatch that leads elsewhere leads to the first animation instead.
/// Damaged tables that would take hours to walk end the program with a message.
void FixAnimDispatches(ObjectSet& set, Reporter& report);

} // namespace morlik
