#pragma once

#include "base/VersionCode.h"

#include <ostream>
#include <string>

namespace morlik
{

/// For the messages of failed tests.
inline std::ostream& operator<<(std::ostream& out, VersionCode version)
{
    return out << NumberOf(version);
}

namespace test
{

/// For `EXPECT_PRED2`, which prints both texts where the first lacks the second.
inline bool Has(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace test

} // namespace morlik
