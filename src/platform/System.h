#pragma once

#include "platform/Platform.h"

namespace morlik
{

/// The few calls that each system answers in a file of its own.

std::filesystem::path ExecutablePath();

/// Value of an environment variable, empty where it is not set.
std::string Environment(const char* name);

} // namespace morlik
