#include "model/Between.h"

#include "model/Damage.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace morlik
{

namespace
{

/// A turn as a quaternion of length 1. It and its negative are the same turn.
struct Quaternion
{
    double W = 1;
    double X = 0;
    double Y = 0;
    double Z = 0;
};

constexpr std::array kParts{&Quaternion::W, &Quaternion::X, &Quaternion::Y, &Quaternion::Z};

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

/// In the order that `TurnOf` has.
Quaternion QuaternionOf(const Rotation& rotation)
{
    return About(&Quaternion::Y, rotation.Y) * About(&Quaternion::X, rotation.X) *
           About(&Quaternion::Z, rotation.Z);
}

/// On the arc between two turns, the shorter of both.
Quaternion Between(const Quaternion& from, const Quaternion& to, double share)
{
    double cosine = 0;
    for (double Quaternion::*const part : kParts)
        cosine += from.*part * to.*part;
    const double side = cosine < 0 ? -1 : 1;
    const double angle = std::acos(std::min(1.0, cosine * side));
    constexpr double kTiny = 1e-4; // of an angle: there the arc is a line
    const double whole = angle < kTiny ? 1 : std::sin(angle);
    const double first = angle < kTiny ? 1 - share : std::sin((1 - share) * angle);
    const double second = angle < kTiny ? share : std::sin(share * angle);
    Quaternion between;
    for (double Quaternion::*const part : kParts)
        between.*part = (from.*part * first + side * to.*part * second) / whole;
    return between;
}

Transform TurnOf(const Quaternion& q)
{
    return {.Turn = {{{1 - 2 * (q.Y * q.Y + q.Z * q.Z), 2 * (q.X * q.Y - q.W * q.Z),
                       2 * (q.X * q.Z + q.W * q.Y)},
                      {2 * (q.X * q.Y + q.W * q.Z), 1 - 2 * (q.X * q.X + q.Z * q.Z),
                       2 * (q.Y * q.Z - q.W * q.X)},
                      {2 * (q.X * q.Z - q.W * q.Y), 2 * (q.Y * q.Z + q.W * q.X),
                       1 - 2 * (q.X * q.X + q.Y * q.Y)}}},
            .Shift = {}};
}

} // namespace

std::vector<Transform> TransformsBetween(const Skeleton& skeleton, const Pose& from, const Pose& to,
                                         double share)
{
    const std::size_t meshes = skeleton.size();
    for (const Pose* const pose : {&from, &to})
        if (pose->Rotations.size() != meshes)
            FailDamaged("a pose of ", pose->Rotations.size(), " rotations for ", meshes, " meshes");
    std::vector<Transform> turns;
    turns.reserve(meshes);
    for (std::size_t mesh = 0; mesh < meshes; ++mesh)
        turns.push_back(TurnOf(
            Between(QuaternionOf(from.Rotations[mesh]), QuaternionOf(to.Rotations[mesh]), share)));
    const Point start = PointOf(from.Offset);
    const Point end = PointOf(to.Offset);
    return Hang(skeleton, std::move(turns),
                {.X = start.X + (end.X - start.X) * share,
                 .Y = start.Y + (end.Y - start.Y) * share,
                 .Z = start.Z + (end.Z - start.Z) * share});
}

} // namespace morlik
