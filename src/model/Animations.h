#pragma once

#include "model/Pose.h"

#include <optional>

namespace morlik
{

/// The animations of a moveable: `Count` of the set's from `First` on.
struct AnimationRange
{
    std::size_t NumMeshes = 0; ///< of the moveable, which is the number of rotations in a frame
    std::size_t First = 0;
    std::size_t Count = 0; ///< 0 for a moveable without any
};

/// `ReadFailure` if there is no such moveable, or its animations don't lie in their table.
AnimationRange AnimationsOf(const ObjectSet& set, std::size_t moveable);

/// One animation. Its frames have numbers at 30 to a second, from `Record.FrameStart` to
/// `Record.FrameEnd`. The set holds one for each `Record.FrameRate`, which is at least 1, of them,
/// and there may be some more behind: stored frame k stands for number FrameStart + k FrameRate.
struct ModelAnimation
{
    /// As the set has it. `NextFrame` is a number of a frame of the next animation; speeds are in
    /// world units for a frame number, accelerations their growth for each, as 16.16 fixed point.
    Animation Record;
    std::size_t NumMeshes = 0; ///< rotations in a frame
    std::size_t FirstWord = 0; ///< of its first frame, in the set's `Frames`
    std::size_t NumFrames = 0; ///< stored; 0 for an animation without frames
    /// What follows, by its number among the moveable's own. None if that is no such animation.
    std::optional<std::size_t> Next{};
};

/// The animation of a moveable by its number among the moveable's own. `ReadFailure` if there is no
/// such animation, or its frames are damaged: not at whole words inside the table, not of whole
/// frames, fewer than its numbers need, or numbered by steps of 0, downward or below 0.
ModelAnimation AnimationOf(const ObjectSet& set, const AnimationRange& range, std::size_t number);

/// The pose of stored frame `frame` of an animation. `ReadFailure` if there is no such frame, or it
/// is too short for its rotations.
Pose PoseOf(const ObjectSet& set, const ModelAnimation& animation, std::size_t frame);

} // namespace morlik
