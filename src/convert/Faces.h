#pragma once

#include "base/Reporter.h"
#include "convert/RawMesh.h"
#include "convert/WadMesh.h"
#include "level/LevelData.h"
#include "level/TR_Main.h"

#include <optional>
#include <vector>

namespace morlik
{

/// Walks the meshes of the level and gives the indices of the textures that their textured faces
/// use, ascending. A texture that the level does not have gives a message and nothing; a damaged
/// mesh ends the program.
std::optional<std::vector<std::int32_t>> CountTextInfos(const LevelData& level,
                                                        const TrMainState& state, Reporter& report);

/// Message of a mesh that can't be read; the program ends.
[[noreturn]] void StopAtMesh(std::size_t number, const ReadFailure& failure, Reporter& report);

/// What the faces of a level are converted with.
struct FaceTables
{
    std::int32_t Version;
    const TrMainState& State;
    /// Number in the object set's texture table by texture index, -1 for unused ones.
    const std::vector<std::int32_t>& TextureNumbers;
    std::int32_t ColourBase; ///< number of the first colour square
};

/// A mesh in the editor's form: the four face lists become one, plain colours become squares of
/// the palette tile. A texture of the wrong kind for its face ends the program with a message;
/// more faces than a record can count are a `ReadFailure`. The mesh has been through
/// `CountTextInfos`, so its textures are known to exist.
WadMesh ConvertRawMesh(RawMesh mesh, const FaceTables& tables, bool isHorizon, Reporter& report);

} // namespace morlik
