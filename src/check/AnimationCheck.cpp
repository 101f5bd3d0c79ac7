#include "base/AnimCommands.h"
#include "check/WadCheck.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace morlik::check
{

namespace
{

/// Tells whether a walk along the transitions and commands stays inside their tables.
bool CheckRanges(WadCheck& check)
{
    const ObjectSet& wad = check.Wad;
    const std::size_t before = check.Total();
    for (std::size_t i = 0; i < wad.Animations.size(); ++i) {
        const Animation& animation = wad.Animations[i];
        if (!Inside(animation.StateChange, animation.NumStateChanges, wad.StateChanges.size()))
            check.Add("Animation ", i, " has its state changes outside their table");
        if (!Inside(animation.AnimCommand, animation.NumAnimCommands, wad.AnimCommands.size()))
            check.Add("Animation ", i, " has its commands outside their table");
    }
    for (std::size_t i = 0; i < wad.StateChanges.size(); ++i) {
        const StateChange& change = wad.StateChanges[i];
        if (!Inside(change.AnimDispatch, change.NumAnimDispatches, wad.AnimDispatches.size()))
            check.Add("State change ", i, " has its dispatches outside their table");
    }
    return check.Total() == before;
}

/// The moveable of an animation, and its own animations.
struct Owner
{
    std::size_t Moveable = 0;
    std::int64_t First = 0, End = 0;
};

/// The animations of a moveable are those from its first one to the first one of the next moveable
/// that has any, so the first ones ascend and leave none out. Gives the owners of all animations,
/// or none where that doesn't hold.
std::vector<Owner> OwnersOf(WadCheck& check)
{
    std::vector<Owner> owners;
    const auto size = static_cast<std::int64_t>(check.Wad.Animations.size());
    const auto& moveables = check.Wad.Moveables;
    const auto close = [&](std::int64_t end) {
        if (owners.empty())
            return;
        owners.back().End = end;
        owners.resize(static_cast<std::size_t>(end), owners.back());
    };
    for (std::size_t i = 0; i < moveables.size(); ++i) {
        const std::int64_t first = moveables[i].Animation;
        if (first == -1)
            continue;
        if (first < static_cast<std::int64_t>(owners.size()) || first >= size) {
            check.Add("Moveable ", i, " has its first animation, ", first,
                      ", not behind those of the moveables before");
            return {};
        }
        if (owners.empty() && first != 0)
            check.Add("Animations 0 to ", first - 1, " belong to no moveable");
        if (owners.empty())
            owners.resize(static_cast<std::size_t>(first), {i, 0, first});
        close(first);
        owners.push_back({i, first, size});
    }
    close(size);
    return owners;
}

/// Transitions stay inside their moveable. Two moveables can share a dispatch: it was put right
/// for each in turn, so the last that reaches it finds it inside.
void CheckDispatches(WadCheck& check, const std::vector<Owner>& owners)
{
    const ObjectSet& wad = check.Wad;
    Budget budget(wad.StateChanges.size() + wad.AnimDispatches.size());
    std::vector<std::optional<std::size_t>> outsideOf(wad.AnimDispatches.size());
    for (std::size_t a = 0; a < owners.size(); ++a) {
        const Owner& owner = owners[a];
        for (std::size_t s = 0; std::cmp_less(s, wad.Animations[a].NumStateChanges); ++s) {
            const auto at = static_cast<std::size_t>(wad.Animations[a].StateChange) + s;
            const StateChange& change = wad.StateChanges[at];
            if (!budget.Spend(1 + static_cast<std::size_t>(change.NumAnimDispatches)))
                return check.Add("The state changes or dispatches overlap too often");
            for (std::size_t d = 0; std::cmp_less(d, change.NumAnimDispatches); ++d) {
                const auto dispatch = static_cast<std::size_t>(change.AnimDispatch) + d;
                const std::int64_t next = wad.AnimDispatches[dispatch].NextAnimation;
                const bool inside = next >= owner.First && next < owner.End;
                outsideOf[dispatch] = inside ? std::nullopt : std::optional(owner.Moveable);
            }
        }
    }
    for (std::size_t i = 0; i < outsideOf.size(); ++i) {
        const AnimDispatch& dispatch = wad.AnimDispatches[i];
        if (outsideOf[i])
            check.Add("Dispatch ", i, " leads from moveable ", *outsideOf[i], " to animation ",
                      dispatch.NextAnimation, " of another");
        if (dispatch.Low < 0 || dispatch.Low > dispatch.High)
            check.Add("Dispatch ", i, " holds from frame ", dispatch.Low, " to ", dispatch.High);
    }
}

void CheckCommands(WadCheck& check)
{
    const auto& animations = check.Wad.Animations;
    Budget budget(check.Wad.AnimCommands.size());
    for (std::size_t a = 0; a < animations.size(); ++a) {
        auto at = static_cast<std::size_t>(animations[a].AnimCommand);
        for (int command = 0; command < animations[a].NumAnimCommands; ++command) {
            if (!budget.Spend(1))
                return check.Add("The commands of the animations overlap too often");
            const auto length = CommandLength(check.Wad.AnimCommands, at);
            if (length == 0) {
                check.Add("Command ", command, " of animation ", a, " at word ", at,
                          " is not known or runs past the last word");
                break;
            }
            at += length;
        }
    }
}

/// The animation that follows is one of the same moveable.
void CheckSuccessors(WadCheck& check, const std::vector<Owner>& owners)
{
    const auto& animations = check.Wad.Animations;
    for (std::size_t a = 0; a < animations.size(); ++a) {
        const std::int64_t next = animations[a].NextAnimation;
        if (!Inside(next, 1, animations.size()))
            check.Add("Animation ", a, " is followed by ", next, " of ", animations.size());
        else if (a < owners.size() && (next < owners[a].First || next >= owners[a].End))
            check.Add("Animation ", a, " is followed by ", next, " of another moveable");
    }
}

/// A frame from word `start` to `end`: 9 words of header, then the rotations of all meshes, of two
/// words each unless one of the top two bits of the first is set. Returns what is wrong.
const char* FrameFault(const WadCheck& check, std::size_t start, std::size_t end, int meshes)
{
    const auto& frames = check.Wad.Frames;
    std::size_t at = start + 9;
    bool isPair = false;
    for (int i = 0; i < meshes; ++i) {
        if (at >= end)
            return "is too short for its rotations";
        const unsigned word = static_cast<std::uint16_t>(frames[at]);
        isPair = (word & 0xc000U) == 0;
        // The conversion drops bits 12 and 13, and its factor of 4 leaves the lowest two clear.
        if (check.HasPalette() && !isPair && (word & 0x3003U) != 0)
            return "has an angle of 10 bits";
        at += isPair ? 2 : 1;
    }
    if (at > end)
        return "is too short for its rotations";
    // The pairs of game 1 have moved up by the word of their count. The last word stayed, so it
    // repeats the first one of the last pair (unless that was an angle to rescale).
    if (check.Wad.Game == kTR1 && isPair && frames[end - 1] != frames[end - 3])
        return "doesn't have the form of a rebuilt frame";
    return nullptr;
}

/// Where the frames of animation `a` end: where those of the next one begin. In bytes.
std::int64_t FramesEnd(const ObjectSet& wad, std::size_t a)
{
    return a + 1 == wad.Animations.size() ? static_cast<std::int64_t>(wad.Frames.size() * 2)
                                          : std::int64_t{wad.Animations[a + 1].FrameOffset};
}

/// Whole frames of `FrameSize` words, one for each `FrameRate` of those from `FrameStart` to
/// `FrameEnd`; there may be some more. An animation without frames has the size 0 (which game 1
/// never keeps).
void CheckExtent(WadCheck& check, std::size_t a)
{
    const Animation& animation = check.Wad.Animations[a];
    const std::int64_t start = animation.FrameOffset;
    const std::int64_t bytes = FramesEnd(check.Wad, a) - start;
    const std::int64_t frame = 2 * std::int64_t{animation.FrameSize};
    const int last = animation.FrameEnd - animation.FrameStart;
    if (animation.FrameRate == 0 || animation.FrameStart < 0 || last < 0)
        check.Add("Animation ", a, " runs from frame ", animation.FrameStart, " to ",
                  animation.FrameEnd, " in steps of ", int{animation.FrameRate});
    else if (start < 0 || start % 2 != 0 || bytes < 0)
        check.Add("Animation ", a, " has its frames at ", start, ", the next ones at ",
                  start + bytes);
    else if (bytes != 0 && (frame == 0 || bytes % frame != 0))
        check.Add("Animation ", a, " has frames of ", int{animation.FrameSize}, " words in ",
                  bytes / 2, " words");
    else if (frame != 0 && bytes / frame <= last / animation.FrameRate)
        check.Add("Animation ", a, " has ", bytes / frame, " frames for ",
                  last / animation.FrameRate + 1);
}

void CheckFrames(WadCheck& check, const std::vector<Owner>& owners)
{
    const ObjectSet& wad = check.Wad;
    const std::size_t before = check.Total();
    for (std::size_t a = 0; a < wad.Animations.size(); ++a)
        CheckExtent(check, a);
    if (check.Total() != before)
        return;
    for (std::size_t a = 0; a < owners.size(); ++a) {
        const std::size_t size = wad.Animations[a].FrameSize;
        const int meshes = wad.Moveables[owners[a].Moveable].NumMeshes;
        const auto end = static_cast<std::size_t>(FramesEnd(wad, a)) / 2;
        auto at = static_cast<std::size_t>(wad.Animations[a].FrameOffset) / 2;
        if (check.Wad.Game == kTR1 && at != end && std::cmp_not_equal(size, 10 + 2 * meshes)) {
            check.Add("Animation ", a, " has frames of ", size, " words for ", meshes, " meshes");
            continue;
        }
        const char* fault = nullptr;
        for (; at < end && fault == nullptr; at += size)
            fault = FrameFault(check, at, at + size, meshes);
        if (fault != nullptr)
            check.Add("The frame of animation ", a, " at word ", at - size, " ", fault);
    }
}

} // namespace

void CheckAnimations(WadCheck& check)
{
    const auto owners = OwnersOf(check);
    if (CheckRanges(check)) {
        CheckDispatches(check, owners);
        CheckCommands(check);
    }
    CheckSuccessors(check, owners);
    CheckFrames(check, owners);
}

} // namespace morlik::check
