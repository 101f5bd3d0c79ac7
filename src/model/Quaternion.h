#pragma once

#include "model/Pose.h"

#include <array>

namespace morlik
{

/// A turn as a quaternion of length 1. It and its negative are the same turn.
struct Quaternion
{
    double W = 1;
    double X = 0;
    double Y = 0;
    double Z = 0;
};
inline constexpr std::array kQuaternionParts{&Quaternion::W, &Quaternion::X, &Quaternion::Y,
                                             &Quaternion::Z};

/// The turn of a mesh about its own origin, the same as `TurnOf(rotation)`.
Quaternion QuaternionOf(const Rotation& rotation);

/// The cosine of half the angle between two turns; below 0 if the way from one to the other is the
/// longer one, so that the negative of one of them is meant.
double CosineBetween(const Quaternion& from, const Quaternion& to);

/// On the arc between two turns, the shorter of both.
Quaternion Between(const Quaternion& from, const Quaternion& to, double share);

} // namespace morlik
