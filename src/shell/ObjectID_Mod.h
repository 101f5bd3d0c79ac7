#pragma once

#include "base/Reporter.h"
#include "level/ObjectNames.h"

#include <string>

namespace morlik
{

/// Name of the catalogue file in the program's folder. It holds no header, only six sections:
/// moveables of Tomb Raider IV, static meshes, moveables of III, II, I and V. A section is a 32-bit
/// count and that many entries, by object id from 0 on; an entry is the 32-bit length of a name and
/// its 8-bit characters, in all but the first two sections followed by a 32-bit value that nothing
/// uses.
inline constexpr const char* kCatalogueName = "TR4Objects.dat";

/// Reads the catalogue at `path`, or the one in the program's folder where that is empty. Names of
/// Tomb Raider III become upper case. A catalogue that is missing or damaged ends the program.
void LoadObjectIDs(const std::string& path, ObjectNames& names, Reporter& report);

} // namespace morlik
