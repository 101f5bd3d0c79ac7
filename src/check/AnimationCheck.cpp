#include "check/WadCheck.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace morlik::check
{

namespace
{

/// What a walk may cost beyond the length of its table. Ranges that cover the same records again
/// and again, as in no sound file, would take hours to follow.
struct Budget
{
    std::size_t Left;

    explicit Budget(std::size_t table) : Left(table + (std::size_t{1} << 22U)) {}

    /// Tells whether some is left after these steps.
    bool Spend(std::size_t steps)
    {
        Left -= std::min(Left, steps);
        return Left != 0;
    }
};

/// Tells whether a walk along the transitions and commands stays inside their tables.
bool CheckRanges(WadCheck& check)
{
    const WadFile& wad = check.Wad;
    const std::size_t before = check.Total();
    for (std::size_t i = 0; i < wad.Animations.size(); ++i) {
        const WadAnimation& animation = wad.Animations[i];
        if (!Inside(animation.StateChange, animation.NumStateChanges, wad.StateChanges.size()))
            check.Add("Animation ", i, " has its state changes outside their table");
        if (!Inside(animation.AnimCommand, animation.NumAnimCommands, wad.AnimCommands.size()))
            check.Add("Animation ", i, " has its commands outside their table");
    }
    for (std::size_t i = 0; i < wad.StateChanges.size(); ++i) {
        const WadStateChange& change = wad.StateChanges[i];
        if (!Inside(change.AnimDispatch, change.NumAnimDispatches, wad.AnimDispatches.size()))
            check.Add("State change ", i, " has its dispatches outside their table");
    }
    return check.Total() == before;
}

/// Animation behind the last one of a moveable: the first one of the next moveable that has any.
std::size_t AnimationsEnd(const WadFile& wad, std::size_t moveable)
{
    for (std::size_t i = moveable + 1; i < wad.Moveables.size(); ++i)
        if (wad.Moveables[i].Animation != -1)
            return static_cast<std::size_t>(wad.Moveables[i].Animation);
    return wad.Animations.size();
}

/// Transitions stay inside their moveable. Two moveables can share a dispatch: it was put right
/// for each in turn, so the last that reaches it finds it inside.
void CheckDispatches(WadCheck& check)
{
    const WadFile& wad = check.Wad;
    Budget budget(wad.StateChanges.size() + wad.AnimDispatches.size());
    std::vector<std::optional<std::size_t>> outsideOf(wad.AnimDispatches.size());
    for (std::size_t m = 0; m < wad.Moveables.size(); ++m) {
        const std::int64_t first = wad.Moveables[m].Animation;
        if (first < 0)
            continue;
        const std::size_t end = std::min(AnimationsEnd(wad, m), wad.Animations.size());
        for (auto a = static_cast<std::size_t>(first); a < end; ++a) {
            const WadAnimation& animation = wad.Animations[a];
            budget.Spend(1);
            for (std::size_t s = 0; std::cmp_less(s, animation.NumStateChanges); ++s) {
                const auto at = static_cast<std::size_t>(animation.StateChange) + s;
                const WadStateChange& change = wad.StateChanges[at];
                if (!budget.Spend(1 + static_cast<std::size_t>(change.NumAnimDispatches)))
                    return check.Add("The state changes or dispatches overlap too often");
                for (std::size_t d = 0; std::cmp_less(d, change.NumAnimDispatches); ++d) {
                    const auto dispatch = static_cast<std::size_t>(change.AnimDispatch) + d;
                    const std::int64_t next = wad.AnimDispatches[dispatch].NextAnimation;
                    const bool inside = next >= first && next < static_cast<std::int64_t>(end);
                    outsideOf[dispatch] = inside ? std::nullopt : std::optional(m);
                }
            }
        }
    }
    for (std::size_t i = 0; i < outsideOf.size(); ++i)
        if (outsideOf[i])
            check.Add("Dispatch ", i, " leads from moveable ", *outsideOf[i], " to animation ",
                      wad.AnimDispatches[i].NextAnimation, " of another");
}

/// Words of the command at a word: its type and its operands. Type 1 is a shift by x, y and z, 2 a
/// jump's two speeds, 3 and 4 have none, 5 and 6 a frame with a sound or an effect. 0 for a command
/// that is not known or has no room.
std::size_t CommandLength(const std::vector<std::int16_t>& words, std::size_t at)
{
    constexpr std::array<std::size_t, 7> kLengths{0, 4, 3, 1, 1, 3, 3};
    if (at >= words.size() || !Inside(words[at], 1, kLengths.size()))
        return 0;
    const std::size_t length = kLengths[static_cast<std::size_t>(words[at])];
    return length <= words.size() - at ? length : 0;
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

/// The moveable of an animation, and its own animations.
struct Owner
{
    const WadMoveable* Moveable = nullptr;
    std::int64_t First = 0, End = 0;
};

/// An animation belongs to the moveable whose animations begin at it or last before it. That can
/// be told only where the first animations of the moveables ascend; animations before all of them
/// belong to none.
std::vector<Owner> OwnersOf(const WadFile& wad)
{
    std::vector<Owner> owners(wad.Animations.size());
    std::int64_t last = -1;
    for (std::size_t m = 0; m < wad.Moveables.size(); ++m) {
        const std::int64_t first = wad.Moveables[m].Animation;
        if (first == -1)
            continue;
        if (first <= last || !Inside(first, 1, owners.size()))
            return std::vector<Owner>(wad.Animations.size());
        last = first;
        const auto end = std::min(AnimationsEnd(wad, m), owners.size());
        if (std::cmp_less(first, end))
            std::fill(owners.begin() + first, owners.begin() + static_cast<std::ptrdiff_t>(end),
                      Owner{&wad.Moveables[m], first, static_cast<std::int64_t>(end)});
    }
    return owners;
}

/// The animation that follows is one of the same moveable.
void CheckSuccessors(WadCheck& check, const std::vector<Owner>& owners)
{
    const auto& animations = check.Wad.Animations;
    for (std::size_t a = 0; a < animations.size(); ++a) {
        const std::int64_t next = animations[a].NextAnimation;
        const Owner& owner = owners[a];
        if (!Inside(next, 1, animations.size()))
            check.Add("Animation ", a, " is followed by ", next, " of ", animations.size());
        else if (owner.Moveable != nullptr && (next < owner.First || next >= owner.End))
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
        if (check.Paletted() && !isPair && (word & 0x3003U) != 0)
            return "has an angle of 10 bits";
        at += isPair ? 2 : 1;
    }
    if (at > end)
        return "is too short for its rotations";
    // The pairs of game 1 have moved up by the word of their count. The last word stayed, so it
    // repeats the first one of the last pair (unless that was an angle to rescale).
    if (check.Game == 1 && isPair && frames[end - 1] != frames[end - 3])
        return "doesn't have the form of a rebuilt frame";
    return nullptr;
}

/// The frames of animation `a` run to those of the next one. A frame size of 0 (which game 1 never
/// keeps) means no frames, and frames that begin behind the next ones have no known count.
void CheckFramesOf(WadCheck& check, std::size_t a, const WadMoveable& owner, Budget& budget)
{
    const auto& animations = check.Wad.Animations;
    const std::size_t size = animations[a].FrameSize;
    const auto start = static_cast<std::size_t>(animations[a].FrameOffset) / 2;
    const std::size_t end = a + 1 == animations.size()
                                ? check.Wad.Frames.size()
                                : static_cast<std::size_t>(animations[a + 1].FrameOffset) / 2;
    if (check.Game == 1 && end > start && std::cmp_not_equal(size, 10 + 2 * owner.NumMeshes))
        return check.Add("Animation ", a, " has frames of ", size, " words for ", owner.NumMeshes,
                         " meshes");
    for (std::size_t at = start; size != 0 && at + size <= end; at += size) {
        if (!budget.Spend(size))
            return;
        if (const char* fault = FrameFault(check, at, at + size, owner.NumMeshes))
            return check.Add("The frame of animation ", a, " at word ", at, " ", fault);
    }
}

/// Frames from `FrameStart` to `FrameEnd`, one for each `FrameRate` of them.
bool HasItsFrames(const WadAnimation& animation, std::size_t words)
{
    const std::int64_t last = std::int64_t{animation.FrameEnd} - animation.FrameStart;
    const std::int64_t count = last < 0 ? 0 : last / std::max<int>(animation.FrameRate, 1) + 1;
    return Inside(animation.FrameOffset / 2, count * animation.FrameSize, words);
}

void CheckFrames(WadCheck& check, const std::vector<Owner>& owners)
{
    const WadFile& wad = check.Wad;
    const std::size_t before = check.Total();
    for (std::size_t a = 0; a < wad.Animations.size(); ++a) {
        const WadAnimation& animation = wad.Animations[a];
        const std::int64_t at = animation.FrameOffset;
        if (at % 2 != 0 || (at != 0 && !Inside(at - 1, 1, wad.Frames.size() * 2)))
            check.Add("Animation ", a, " has its frames at ", at);
        else if (!HasItsFrames(animation, wad.Frames.size()))
            check.Add("Animation ", a, " runs from frame ", animation.FrameStart, " to ",
                      animation.FrameEnd, ", past the last one of the file");
    }
    if (check.Total() != before)
        return;
    Budget budget(wad.Frames.size());
    for (std::size_t a = 0; a < owners.size(); ++a)
        if (owners[a].Moveable != nullptr)
            CheckFramesOf(check, a, *owners[a].Moveable, budget);
    if (!budget.Spend(1))
        check.Add("The frames of the animations overlap too often");
}

} // namespace

void CheckAnimations(WadCheck& check)
{
    const auto owners = OwnersOf(check.Wad);
    if (CheckRanges(check)) {
        CheckDispatches(check);
        CheckCommands(check);
    }
    CheckSuccessors(check, owners);
    CheckFrames(check, owners);
}

} // namespace morlik::check
