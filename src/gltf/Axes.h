#pragma once

#include "model/Quaternion.h"
#include "model/Transform.h"

#include <array>

namespace morlik
{

/// World units of a sector of a level.
constexpr double kSectorUnits = 1024;

/// The one way from the axes of the games to those of glTF. Objects of the games look along Z, with
/// X to their right and Y downward; those of glTF look along Z too, with Y upward and X to their
/// left. That is half a turn about Z and mirrors nothing. Faces go clockwise there and
/// counter-clockwise here, as seen from outside: their order is turned where they are written.
class GltfAxes
{
public:
    explicit GltfAxes(double sectorMetres) : unit_(sectorMetres / kSectorUnits) {}

    /// World units to metres.
    std::array<float, 3> Place(const Point& point) const
    {
        return {Float(-point.X * unit_), Float(-point.Y * unit_), Float(point.Z * unit_)};
    }
    static std::array<float, 3> Direction(const Point& point)
    {
        return {Float(-point.X), Float(-point.Y), Float(point.Z)};
    }
    /// X, Y, Z, W.
    static std::array<float, 4> Turn(const Quaternion& turn)
    {
        return {Float(-turn.X), Float(-turn.Y), Float(turn.Z), Float(turn.W)};
    }

private:
    /// Without a 0 below 0, which some readers show.
    static float Float(double value) { return static_cast<float>(value) + 0.0F; }

    double unit_; ///< metres
};

} // namespace morlik
