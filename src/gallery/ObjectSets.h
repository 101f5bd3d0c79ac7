#pragma once

#include "gallery/LevelCards.h"

#include <string>
#include <vector>

namespace morlik::gallery
{

/// Saves a set of each moveable and static mesh of the session's level alone, below the folder of
/// its page: "sets/91-DOG/91-DOG.was" and the files of the same name. The cards get the names of
/// theirs, or why there are none. `FileFailure`, `Interrupted`.
void SaveObjectSets(Session& session, const std::string& folder, std::vector<ObjectCard>& cards);

} // namespace morlik::gallery
