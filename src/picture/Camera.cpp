#include "picture/Camera.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace morlik
{

namespace
{

/// The camera's axes in the world, as the rows of a turn. A figure looks along Z, so that the
/// camera in front of it looks against Z, with X to its left.
Transform TurnOf(const Camera& camera)
{
    const double yaw = camera.Yaw * std::numbers::pi / 180;
    const double pitch = camera.Pitch * std::numbers::pi / 180;
    const Transform around{.Turn = {{{-std::cos(yaw), 0, std::sin(yaw)},
                                     {0, 1, 0},
                                     {-std::sin(yaw), 0, -std::cos(yaw)}}},
                           .Shift = {}};
    const Transform over{.Turn = {{{1, 0, 0},
                                   {0, std::cos(pitch), -std::sin(pitch)},
                                   {0, std::sin(pitch), std::cos(pitch)}}},
                         .Shift = {}};
    return over * around;
}

/// The transform back, of one that only turns.
Transform Inverse(const Transform& turn)
{
    Transform back;
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            back.Turn[row][column] = turn.Turn[column][row];
    return back;
}

} // namespace

Transform ViewOf(const Camera& camera)
{
    Transform view = TurnOf(camera);
    const Point target = view.Apply(camera.Target);
    view.Shift = {.X = -target.X, .Y = -target.Y, .Z = camera.Distance - target.Z};
    return view;
}

void FrameTo(Camera& camera, const std::vector<SceneVertex>& vertices, double aspect)
{
    constexpr double kRim = 1.04;
    if (vertices.empty())
        return;
    const Transform turn = TurnOf(camera);
    constexpr double kFar = std::numeric_limits<double>::max();
    Bounds seen{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};
    for (const SceneVertex& vertex : vertices) {
        const Point point = turn.Apply(vertex.Position);
        for (double Point::*const axis : {&Point::X, &Point::Y, &Point::Z}) {
            seen.Least.*axis = std::min(seen.Least.*axis, point.*axis);
            seen.Greatest.*axis = std::max(seen.Greatest.*axis, point.*axis);
        }
    }
    const Point middle{.X = (seen.Least.X + seen.Greatest.X) / 2,
                       .Y = (seen.Least.Y + seen.Greatest.Y) / 2,
                       .Z = (seen.Least.Z + seen.Greatest.Z) / 2};
    camera.Target = Inverse(turn).Apply(middle);
    // Not too near to what is deep, such as a bridge seen along its length.
    double distance = seen.Greatest.Z - seen.Least.Z + 1;
    for (const SceneVertex& vertex : vertices) {
        const Point point = turn.Apply(vertex.Position);
        const double half =
            std::max(std::abs(point.X - middle.X) / aspect, std::abs(point.Y - middle.Y));
        distance = std::max(distance, half * kRim / kViewSlope - (point.Z - middle.Z));
    }
    camera.Distance = distance;
}

} // namespace morlik
