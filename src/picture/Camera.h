#pragma once

#include "picture/Scene.h"

namespace morlik
{

/// Half of the height that a camera sees, for each unit of distance.
constexpr double kViewSlope = 0.25;

/// A camera that looks at a target from outside.
struct Camera
{
    Point Target;
    double Distance = 1024; ///< from the target, in world units
    double Yaw = 0;   ///< degrees; 0 sees the front of a figure, more goes around to its right
    double Pitch = 0; ///< degrees; above 0 it looks down
    double Zoom = 1;  ///< of the picture about its middle, `kLeastZoom` to `kMostZoom`
    // How far the picture is moved, in parts of its height; -2 to 2.
    double PanX = 0;
    double PanY = 0;
};

constexpr double kLeastZoom = 0.01;
constexpr double kMostZoom = 100;

/// How objects are shown where nobody chose: from a little aside and above.
constexpr double kObliqueYaw = 30;
constexpr double kObliquePitch = 15;
inline Camera ObliqueCamera()
{
    Camera camera;
    camera.Yaw = kObliqueYaw;
    camera.Pitch = kObliquePitch;
    return camera;
}

/// From the world to what the camera sees: X to the right, Y down, Z away from it.
Transform ViewOf(const Camera& camera);

/// What a camera has to hold: the faces of a scene, or of several, such as all frames of an
/// animation, which it then holds without a move. Vertices without a face, which many objects have,
/// count for nothing.
class Framing
{
public:
    /// For a camera that looks that way, and pictures of that width for their height.
    Framing(const Camera& camera, double aspect);

    void Add(const Scene& scene);

    /// Sets target and distance so that a picture holds all faces, with a narrow rim. Without faces
    /// the camera stays.
    void FrameIn(Camera& camera) const;

private:
    void Add(const Point& position);

    Transform turn_;
    double slopeX_, slopeY_; ///< distance that a unit beside the middle takes
    Bounds seen_;
    // The greatest distances that a vertex takes were the middle at 0: of those on each side.
    double left_, right_, above_, below_;
};

/// Frames one scene.
void FrameTo(Camera& camera, const Scene& scene, double aspect);

} // namespace morlik
