#include "model/Quaternion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace morlik
{

namespace
{

Quaternion About(double Quaternion::*axis, std::int16_t angle)
{
    const double half = angle * (std::numbers::pi / kFullTurn);
    Quaternion turn{.W = std::cos(half)};
    turn.*axis = std::sin(half);
    return turn;
}

Quaternion operator*(const Quaternion& a, const Quaternion& b)
{
    return {.W = a.W * b.W - a.X * b.X - a.Y * b.Y - a.Z * b.Z,
            .X = a.W * b.X + a.X * b.W + a.Y * b.Z - a.Z * b.Y,
            .Y = a.W * b.Y - a.X * b.Z + a.Y * b.W + a.Z * b.X,
            .Z = a.W * b.Z + a.X * b.Y - a.Y * b.X + a.Z * b.W};
}

} // namespace

Quaternion QuaternionOf(const Rotation& rotation)
{
    return About(&Quaternion::Y, rotation.Y) * About(&Quaternion::X, rotation.X) *
           About(&Quaternion::Z, rotation.Z);
}

double CosineBetween(const Quaternion& from, const Quaternion& to)
{
    double cosine = 0;
    for (double Quaternion::*const part : kQuaternionParts)
        cosine += from.*part * to.*part;
    return cosine;
}

Quaternion Between(const Quaternion& from, const Quaternion& to, double share)
{
    const double cosine = CosineBetween(from, to);
    const double side = cosine < 0 ? -1 : 1;
    const double angle = std::acos(std::min(1.0, cosine * side));
    constexpr double kTiny = 1e-4; // of an angle: there the arc is a line
    const double whole = angle < kTiny ? 1 : std::sin(angle);
    const double first = angle < kTiny ? 1 - share : std::sin((1 - share) * angle);
    const double second = angle < kTiny ? share : std::sin(share * angle);
    Quaternion between;
    for (double Quaternion::*const part : kQuaternionParts)
        between.*part = (from.*part * first + side * to.*part * second) / whole;
    return between;
}

} // namespace morlik
