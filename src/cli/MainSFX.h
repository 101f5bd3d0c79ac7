#pragma once

#include "shell/Session.h"

#include <string>

namespace morlik::cli
{

/// Whether a file is taken for a `main.sfx`: by its ending.
bool MayBeMainSFX(const std::string& file);

/// The `main.sfx` in the level's folder or the one above it. Empty where there is none.
std::string FindMainSFX(const std::string& level);

/// Reads a `main.sfx` that is what a command is about; one without a sound is told.
bool LoadMainSFX(Session& session, const std::string& file);

/// What is to be said of the sounds of a converted level that are in `main.sfx`; empty where they
/// are all there. `wasLookedFor`: and not chosen.
std::string NoteOnSounds(const Session& session, const std::string& mainSFX, bool wasLookedFor);

} // namespace morlik::cli
