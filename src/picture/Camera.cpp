#include "picture/Camera.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace morlik
{

namespace
{

constexpr double kRim = 1.04;
constexpr double kFar = std::numeric_limits<double>::max();

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

Framing::Framing(const Camera& camera, double aspect)
    : turn_(TurnOf(camera)),
      slopeX_(kRim / kViewSlope / aspect),
      slopeY_(kRim / kViewSlope),
      seen_{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}},
      left_(-kFar),
      right_(-kFar),
      above_(-kFar),
      below_(-kFar)
{
}

void Framing::Add(const Scene& scene)
{
    std::vector<bool> isUsed(scene.Vertices.size());
    for (const SceneFace& face : scene.Faces)
        for (std::size_t corner = 0; corner < face.NumCorners; ++corner)
            isUsed[face.Corners[corner].Vertex] = true;
    for (std::size_t i = 0; i < isUsed.size(); ++i)
        if (isUsed[i])
            Add(scene.Vertices[i].Position);
}

void Framing::Add(const Point& position)
{
    const Point point = turn_.Apply(position);
    for (double Point::*const axis : {&Point::X, &Point::Y, &Point::Z}) {
        seen_.Least.*axis = std::min(seen_.Least.*axis, point.*axis);
        seen_.Greatest.*axis = std::max(seen_.Greatest.*axis, point.*axis);
    }
    left_ = std::max(left_, -point.X * slopeX_ - point.Z);
    right_ = std::max(right_, point.X * slopeX_ - point.Z);
    above_ = std::max(above_, -point.Y * slopeY_ - point.Z);
    below_ = std::max(below_, point.Y * slopeY_ - point.Z);
}

void Framing::FrameIn(Camera& camera) const
{
    if (seen_.Least.X > seen_.Greatest.X)
        return;
    const Point middle{.X = (seen_.Least.X + seen_.Greatest.X) / 2,
                       .Y = (seen_.Least.Y + seen_.Greatest.Y) / 2,
                       .Z = (seen_.Least.Z + seen_.Greatest.Z) / 2};
    camera.Target = Inverse(turn_).Apply(middle);
    const double aside = std::max({left_ + middle.X * slopeX_, right_ - middle.X * slopeX_,
                                   above_ + middle.Y * slopeY_, below_ - middle.Y * slopeY_});
    // Not too near to what is deep, such as a bridge seen along its length.
    camera.Distance = std::max(seen_.Greatest.Z - seen_.Least.Z + 1, aside + middle.Z);
}

void FrameTo(Camera& camera, const Scene& scene, double aspect)
{
    Framing framing(camera, aspect);
    framing.Add(scene);
    framing.FrameIn(camera);
}

} // namespace morlik
