#pragma once

#include "base/Registry.h"
#include "shell/Session.h"

#include <optional>
#include <string>

namespace morlik
{

/// The batch command line is one text, handed over whole and never split, so that paths may hold
/// blanks and quotes mean nothing:
///
///   /makewas LEVEL /export OUT.was
///
/// The first "/export" ends the level path, with one character before it and one behind it.
struct BatchPaths
{
    std::string Level;
    std::string LevelWithBlank; ///< the level path and the character behind it
    std::string Output;
};

/// Whether a command line begins with the switch, in any mix of letters.
bool IsBatch(const std::string& commandLine);

/// Cuts a batch command line; nothing where it names no level or no output.
std::optional<BatchPaths> CutBatchLine(const std::string& commandLine);

/// Name of a file from its path with one character behind it: what follows the last folder, less
/// its last character.
std::string GetTitle(const std::string& path);

/// Reads one level, saves one object set, shows one message. Gives whether the set is complete.
bool RunBatch(Session& session, Registry& registry, const std::string& commandLine);

} // namespace morlik
