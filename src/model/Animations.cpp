#include "model/Animations.h"

#include "base/Narrow.h"
#include "model/Damage.h"

namespace morlik
{

namespace
{

constexpr std::int64_t kWordBytes = sizeof(std::int16_t);

/// Where the frames of animation `index` end: where those of the next one begin. In bytes.
std::int64_t FramesEnd(const ObjectSet& set, std::size_t index)
{
    return index + 1 == set.Animations.size()
               ? static_cast<std::int64_t>(set.Frames.size()) * kWordBytes
               : std::int64_t{set.Animations[index + 1].FrameOffset};
}

/// Fails unless the numbers of the frames go upward from 0 or above by steps of at least 1.
void ExpectNumbers(const Animation& animation, std::size_t index)
{
    if (animation.FrameRate == 0 || animation.FrameStart < 0 ||
        animation.FrameEnd < animation.FrameStart)
        FailDamaged("animation ", index, ": runs from frame ", animation.FrameStart, " to ",
                    animation.FrameEnd, " in steps of ", int{animation.FrameRate});
}

/// Number of stored frames; an animation that has none has the size 0, or no room for one.
std::size_t CountFrames(const ObjectSet& set, std::size_t index)
{
    const Animation& animation = set.Animations[index];
    const std::int64_t start = animation.FrameOffset;
    const std::int64_t bytes = FramesEnd(set, index) - start;
    const std::int64_t size = animation.FrameSize * kWordBytes;
    if (start % kWordBytes != 0 ||
        !Inside(start / kWordBytes, bytes / kWordBytes, set.Frames.size()))
        FailDamaged("animation ", index, ": ", bytes, " bytes of frames at ", start, " of ",
                    set.Frames.size() * sizeof(std::int16_t));
    if (size == 0 ? bytes != 0 : bytes % size != 0)
        FailDamaged("animation ", index, ": frames of ", size, " bytes in ", bytes, " bytes");
    const std::int64_t count = size == 0 ? 0 : bytes / size;
    if (count > 0 && animation.FrameEnd < animation.FrameStart)
        FailDamaged("animation ", index, ": frames ", animation.FrameStart, " to ",
                    animation.FrameEnd);
    const std::int64_t needed =
        (animation.FrameEnd - animation.FrameStart) / animation.FrameRate + 1;
    if (size != 0 && count < needed)
        FailDamaged("animation ", index, ": ", count, " frames for ", needed);
    return static_cast<std::size_t>(count);
}

} // namespace

AnimationRange AnimationsOf(const ObjectSet& set, std::size_t moveable)
{
    AnimationRange range{.NumMeshes = NumMeshesOf(set, moveable)};
    const std::int64_t first = set.Moveables[moveable].Animation;
    if (first == -1)
        return range;
    const std::int64_t count =
        CountAnimations(set.Moveables, narrow<std::int32_t>(set.Animations.size()), moveable);
    if (count <= 0 || !Inside(first, count, set.Animations.size()))
        FailDamaged("moveable ", moveable, ": ", count, " animations from ", first, " on of ",
                    set.Animations.size());
    range.First = static_cast<std::size_t>(first);
    range.Count = static_cast<std::size_t>(count);
    return range;
}

ModelAnimation AnimationOf(const ObjectSet& set, const AnimationRange& range, std::size_t number)
{
    const std::size_t index = range.First + number;
    if (number >= range.Count)
        FailDamaged("animation ", number, ": the object has ", range.Count, ", counted from 0");
    if (index >= set.Animations.size())
        FailDamaged("animation ", number, " of an object: there are ", set.Animations.size(),
                    " in all");
    ModelAnimation animation{.Record = set.Animations[index], .NumMeshes = range.NumMeshes};
    ExpectNumbers(animation.Record, index);
    animation.NumFrames = CountFrames(set, index);
    animation.FirstWord = static_cast<std::size_t>(animation.Record.FrameOffset / kWordBytes);
    const std::int64_t next =
        animation.Record.NextAnimation - static_cast<std::int64_t>(range.First);
    if (Inside(next, 1, range.Count))
        animation.Next = static_cast<std::size_t>(next);
    return animation;
}

Pose PoseOf(const ObjectSet& set, const ModelAnimation& animation, std::size_t frame)
{
    const std::size_t size = animation.Record.FrameSize;
    const std::size_t word = animation.FirstWord + frame * size;
    if (frame >= animation.NumFrames || !Inside(static_cast<std::int64_t>(word),
                                                static_cast<std::int64_t>(size), set.Frames.size()))
        FailDamaged("frame ", frame, " of ", animation.NumFrames, " of an animation");
    return ReadPose(std::span(set.Frames).subspan(word, size), animation.NumMeshes);
}

} // namespace morlik
