#pragma once

#include "level/ObjectNames.h"
#include "set/ObjectSet.h"

#include <cstdint>
#include <string>
#include <vector>

namespace morlik
{

/// The editor takes no more static meshes than this.
constexpr std::size_t kMostStaticMeshes = 60;

/// Where the objects of a set stand in the tables of their level.
struct ObjectPlaces
{
    std::vector<std::int32_t> Moveables;
    std::vector<std::int32_t> StaticMeshes;
};

/// Brings the moveables and static meshes of a set, which are those of its level, under the numbers
/// that the editor knows them by, no more static meshes than it takes, and makes the list of them.
/// Without `places` no object of the level is left out.
void ConvertObjects(ObjectSet& set, const ObjectNames& names, const std::string& levelTitle,
                    const ObjectPlaces* places);

} // namespace morlik
