#pragma once

#include "picture/Render.h"

#include <functional>

namespace morlik
{

/// An animation of a moveable as scenes, one for each of its frames, 30 to a second: those of the
/// set, and between them the way that the games show.
class AnimatedScene
{
public:
    /// By the number among the moveable's own. A moveable without animations has one, and an
    /// animation without frames has one frame: at rest, unturned. `ReadFailure` if there is no such
    /// moveable or animation, it is damaged, or it is more than `kMostAnimationParts`.
    AnimatedScene(const ObjectSet& set, std::size_t moveable, std::size_t animation);

    std::size_t NumFrames() const { return numFrames_; }
    /// `ReadFailure` if the frame is damaged.
    Scene Frame(std::size_t number) const;

private:
    const ObjectSet& set_;
    std::size_t moveable_;
    std::size_t animation_;
    Model model_;
    std::size_t numFrames_;
};

/// Meshes, vertices and faces, added up over all frames, that an animation may have. Those of real
/// levels have up to two thirds of it.
constexpr std::size_t kMostAnimationParts = std::size_t{3} << 20U;
/// Pixels of all pictures of an animation, with `kFrameCost` for each of them.
constexpr std::size_t kMostAnimationPixels = std::size_t{1} << 28U;
constexpr std::size_t kFrameCost = std::size_t{1} << 15U;
/// Samples that the faces of all pictures may cover, hidden ones too.
constexpr std::int64_t kMostAnimationSamples = std::int64_t{3} << 28U;

/// Draws each frame in turn, seen by one camera: turned and zoomed as `view`, and framed to all
/// frames together. `take` gets the pictures. `ReadFailure` as for a picture, or beyond the limits
/// for all of them together.
void DrawAnimation(const AnimatedScene& animated, const Camera& view, const RenderOptions& options,
                   TexturePixels& textures, const std::function<void(const Picture&)>& take);

} // namespace morlik
