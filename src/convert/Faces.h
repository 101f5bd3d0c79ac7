#pragma once

#include "base/Reporter.h"
#include "convert/Horizon.h"
#include "convert/RawMesh.h"
#include "convert/UsedTextures.h"
#include "level/LevelData.h"
#include "set/WadMesh.h"

#include <optional>
#include <vector>

namespace morlik
{

/// Walks the meshes of the level face by face and gives the indices of the textures that their
/// textured faces use, ascending. A texture that the level does not have gives a message and
/// nothing; a damaged mesh ends the program. What comes first in the meshes is what is told.
std::optional<std::vector<std::int32_t>> CountTextInfos(const LevelData& level, Reporter& report);

/// Message of a mesh that can't be read; the program ends.
[[noreturn]] void StopAtMesh(std::size_t number, const ReadFailure& failure, Reporter& report);

/// What the faces of a level are converted with.
struct FaceTables
{
    const LevelData& Level;
    const UsedTextures& Textures;
};

/// A mesh in the editor's form: the four face lists become one, plain colours become squares of
/// the palette tile, and where there is a `horizon` it repaints its faces. A texture of the wrong
/// kind for its face ends the program with a message; more faces than a record can count are a
/// `ReadFailure`. The mesh has been through `CountTextInfos`, so its textures are known to exist.
WadMesh ConvertRawMesh(RawMesh mesh, const FaceTables& tables,
                       std::optional<HorizonUpdate>& horizon, Reporter& report);

} // namespace morlik
