#pragma once

#include "model/Transform.h"

namespace morlik
{

/// Where the meshes of an object lie on the way from one pose to another: at `share` of it, 0 to 1.
/// The first mesh moves straight, each mesh turns about its joint on the shortest way.
/// `ReadFailure` if one of the poses has not one rotation for each joint.
std::vector<Transform> TransformsBetween(const Skeleton& skeleton, const Pose& from, const Pose& to,
                                         double share);

} // namespace morlik
