#pragma once

#include "level/ObjectNames.h"
#include "set/ObjectSet.h"

#include <string>

namespace morlik
{

/// Brings the moveables and static meshes of a set, which are those of its level, under the numbers
/// that the editor knows them by, no more static meshes than it takes, and makes the list of them.
void ConvertObjects(ObjectSet& set, const ObjectNames& names, const std::string& levelTitle);

} // namespace morlik
