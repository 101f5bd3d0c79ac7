#pragma once

#include "base/VersionCode.h"

#include <string>
#include <vector>

namespace morlik
{

/// What a save of a set replaces, and what it must not.

/// Files that a save as `fileName`, which ends in ".was", may write: those of the set, and of the
/// WAV files those that are there already. Of which the level has sounds is known later; with
/// `kNoLevel` the WAV files of all games count.
std::vector<std::string> FilesOfSet(const std::string& fileName, VersionCode game = kNoLevel);

/// A set "main" would put its SFX file in the place of the `main.sfx` of a game, with all its
/// sounds: a `FileFailure` where such a file is in the folder, in any case of letters.
void GuardMainSFX(const std::string& fileName);

/// The question whether files may be replaced, which names the first of them; empty where none is
/// there but `asked`, about which the user has been asked already. Names are told from its folder.
std::string QuestionToReplace(const std::vector<std::string>& files, const std::string& asked);

} // namespace morlik
