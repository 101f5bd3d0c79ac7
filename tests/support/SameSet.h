#pragma once

#include "set/ObjectSet.h"

#include <string>

namespace morlik::test
{

/// Names the first part in which two sets differ, pixels and WAV files included; empty for equal
/// ones.
std::string DifferenceOf(const ObjectSet& one, const ObjectSet& other);

} // namespace morlik::test
