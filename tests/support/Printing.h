#pragma once

#include "base/VersionCode.h"

#include <ostream>

namespace morlik
{

/// For the messages of failed tests.
inline std::ostream& operator<<(std::ostream& out, VersionCode version)
{
    return out << NumberOf(version);
}

} // namespace morlik
