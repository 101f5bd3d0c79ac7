#pragma once

#include "model/Pose.h"

#include <array>
#include <vector>

namespace morlik
{

/// A place or a direction, in world units; Y grows downward.
struct Point
{
    double X = 0;
    double Y = 0;
    double Z = 0;
};

double Length(const Point& point);

/// Of a vertex or the offset of a joint.
template <class Place>
Point PointOf(const Place& place)
{
    return {.X = static_cast<double>(place.X),
            .Y = static_cast<double>(place.Y),
            .Z = static_cast<double>(place.Z)};
}

/// Where a mesh lies in the space of its object: p goes to Turn p + Shift.
struct Transform
{
    std::array<std::array<double, 3>, 3> Turn{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}; ///< row by row
    Point Shift;

    Point Apply(const Point& point) const;
};

/// The transform that does `inner` first, then `outer`.
Transform operator*(const Transform& outer, const Transform& inner);

/// The turn of a mesh about its own origin: turn about Y times turn about X times turn about Z.
Transform TurnOf(const Rotation& rotation);

/// Where the meshes of an object lie that are turned so about their own origins, one turn for each
/// joint: each hangs with its joint's offset on its parent, the first at `start`.
std::vector<Transform> Hang(const Skeleton& skeleton, std::vector<Transform> turns,
                            const Point& start);

/// Where the meshes of an object lie in a pose: each hangs with its joint's offset on its parent,
/// the first with the pose's offset on the object's place, and is turned there. `ReadFailure` if
/// the pose has not one rotation for each joint.
std::vector<Transform> TransformsOf(const Skeleton& skeleton, const Pose& pose);

} // namespace morlik
