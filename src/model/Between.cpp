#include "model/Between.h"

#include "model/Damage.h"
#include "model/Quaternion.h"

namespace morlik
{

namespace
{

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
