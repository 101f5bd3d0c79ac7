#pragma once

#include "model/Model.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace morlik
{

/// A place that faces meet at, in world units; Y grows downward.
struct SceneVertex
{
    Point Position;
    std::optional<Point> Normal; ///< outward, of length 1; light falls on it from the camera
    double Light = 1;            ///< without a normal, the light that is there: 0 to 1
};

/// A corner of a face, and where it lies in the tile, in pixels from the left and from the top. A
/// texture reaches from the outer edges of its first pixels to those of its last ones, so that all
/// its pixels are of one size.
struct SceneCorner
{
    std::uint32_t Vertex = 0;
    std::uint16_t U = 0;
    std::uint16_t V = 0;
};

/// A triangle or a rectangle; its corners go around it clockwise as seen from outside, and it shows
/// from there alone: the sets know no faces with two sides.
struct SceneFace
{
    std::uint8_t NumCorners = 3;
    std::array<SceneCorner, 4> Corners{};
    TextInfo Texture; ///< nothing outside of its box is seen
    bool Blends = false;
};

/// Meshes in a pose, ready for the camera.
struct Scene
{
    std::vector<SceneVertex> Vertices;
    std::vector<SceneFace> Faces;
};

/// The meshes of a model where `transforms` leads them, one for each.
Scene SceneOf(const ObjectSet& set, const Model& model, std::span<const Transform> transforms);

/// A frame of a moveable: `Number` counts from the first frame of the animation, 30 to a second.
struct FrameChoice
{
    std::size_t Animation = 0; ///< among the moveable's own
    std::size_t Number = 0;
};

/// Where the meshes of a moveable lie in a frame, between two of those that the set holds too, or
/// at rest, unturned, for one without frames. `ReadFailure` if the moveable or the animation is
/// damaged, or there is no such frame.
std::vector<Transform> TransformsAt(const ObjectSet& set, std::size_t moveable,
                                    const Skeleton& joints, const FrameChoice& frame);

/// A moveable in a frame, and a static mesh. `ReadFailure` if there is no such object or frame, or
/// it is damaged.
Scene SceneOfMoveable(const ObjectSet& set, std::size_t moveable, const FrameChoice& frame = {});
Scene SceneOfStaticMesh(const ObjectSet& set, std::size_t staticMesh);

} // namespace morlik
