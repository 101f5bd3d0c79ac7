#pragma once

#include <string>
#include <vector>

namespace morlik::cli
{

/// Of some names those that were maybe meant by a text, the nearest first, with commas between:
/// those that hold it, then those of which few letters have to be changed, taken out or put in. All
/// are in capitals; empty names are none.
std::string NearNames(const std::string& text, const std::vector<std::string>& names);

} // namespace morlik::cli
