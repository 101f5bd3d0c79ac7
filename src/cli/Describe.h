#pragma once

#include "cli/Json.h"
#include "shell/Session.h"

#include <string>

namespace morlik::cli
{

/// What is in a level, a `main.sfx` or a project; docs/formats.md tells its members. A failure that
/// ends the program, which is told, where there is none.
Json Describe(const std::string& file, Session& session);

} // namespace morlik::cli
