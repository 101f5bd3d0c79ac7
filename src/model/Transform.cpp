#include "model/Transform.h"

#include "model/Damage.h"

#include <cmath>
#include <numbers>

namespace morlik
{

namespace
{

struct Turn
{
    explicit Turn(std::int16_t angle)
        : Sine(std::sin(angle * (2 * std::numbers::pi / kFullTurn))),
          Cosine(std::cos(angle * (2 * std::numbers::pi / kFullTurn)))
    {
    }

    double Sine, Cosine;
};

double RowTimes(const std::array<double, 3>& row, const Point& point)
{
    return row[0] * point.X + row[1] * point.Y + row[2] * point.Z;
}

} // namespace

double Length(const Point& point)
{
    return std::sqrt(point.X * point.X + point.Y * point.Y + point.Z * point.Z);
}

Point Transform::Apply(const Point& point) const
{
    return {.X = RowTimes(Turn[0], point) + Shift.X,
            .Y = RowTimes(Turn[1], point) + Shift.Y,
            .Z = RowTimes(Turn[2], point) + Shift.Z};
}

Transform operator*(const Transform& outer, const Transform& inner)
{
    Transform product{.Turn = {}, .Shift = outer.Apply(inner.Shift)};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            for (std::size_t i = 0; i < 3; ++i)
                product.Turn[row][column] += outer.Turn[row][i] * inner.Turn[i][column];
    return product;
}

Transform TurnOf(const Rotation& rotation)
{
    const Turn x(rotation.X);
    const Turn y(rotation.Y);
    const Turn z(rotation.Z);
    const Transform aboutX{.Turn = {{{1, 0, 0}, {0, x.Cosine, -x.Sine}, {0, x.Sine, x.Cosine}}},
                           .Shift = {}};
    const Transform aboutY{.Turn = {{{y.Cosine, 0, y.Sine}, {0, 1, 0}, {-y.Sine, 0, y.Cosine}}},
                           .Shift = {}};
    const Transform aboutZ{.Turn = {{{z.Cosine, -z.Sine, 0}, {z.Sine, z.Cosine, 0}, {0, 0, 1}}},
                           .Shift = {}};
    return aboutY * aboutX * aboutZ;
}

std::vector<Transform> Hang(const Skeleton& skeleton, std::vector<Transform> turns,
                            const Point& start)
{
    for (std::size_t mesh = 0; mesh < turns.size(); ++mesh) {
        const Joint& joint = skeleton[mesh];
        turns[mesh].Shift = joint.Parent ? PointOf(joint) : start;
        if (joint.Parent)
            turns[mesh] = turns[*joint.Parent] * turns[mesh];
    }
    return turns;
}

std::vector<Transform> TransformsOf(const Skeleton& skeleton, const Pose& pose)
{
    if (pose.Rotations.size() != skeleton.size())
        FailDamaged("a pose of ", pose.Rotations.size(), " rotations for ", skeleton.size(),
                    " meshes");
    std::vector<Transform> turns;
    turns.reserve(skeleton.size());
    for (const Rotation& rotation : pose.Rotations)
        turns.push_back(TurnOf(rotation));
    return Hang(skeleton, std::move(turns), PointOf(pose.Offset));
}

} // namespace morlik
