#pragma once

#include "platform/Platform.h"

namespace morlik
{

/// Of a terminal that does not tell its own.
constexpr std::size_t kUsualColumns = 80;

/// The few calls that each system answers in a file of its own.

std::filesystem::path ExecutablePath();

/// Value of an environment variable, empty where it is not set.
std::string Environment(const char* name);

} // namespace morlik
