#include "output/AnimDispatches.h"

#include <algorithm>

namespace morlik
{

namespace
{

/// Dispatches that one save may look at, far more than any sound level has.
constexpr std::int64_t kMostVisits = std::int64_t{1} << 22;

/// Calls `visit` for each of `count` records of `table` from `first` on that the table has.
template <class Record, class Visit>
void ForRun(std::vector<Record>& table, std::int64_t first, std::int64_t count, Visit visit)
{
    const auto end = std::min<std::int64_t>(first + count, static_cast<std::int64_t>(table.size()));
    for (auto i = std::max<std::int64_t>(first, 0); i < end; ++i)
        visit(table[static_cast<std::size_t>(i)]);
}

} // namespace

std::int32_t CountAnimations(const LevelData& level, std::size_t index)
{
    const auto& moveables = level.Moveables;
    const std::int32_t first = moveables[index].Animation;
    if (index + 1 == moveables.size())
        return level.NumAnimations - first;
    if (first == -1)
        return 0;
    for (auto next = index + 1; next < moveables.size(); ++next)
        if (moveables[next].Animation != -1)
            return moveables[next].Animation - first;
    return level.NumAnimations - first;
}

void FixAnimDispatches(LevelData& level, Reporter& report)
{
    std::int64_t visitsLeft = kMostVisits;
    const auto spend = [&] {
        if (--visitsLeft < 0)
            report.Stop("The animations are damaged - can't continue!");
    };
    for (std::size_t m = 0; m < level.Moveables.size(); ++m) {
        const std::int16_t first = level.Moveables[m].Animation;
        if (first < 0 || first >= level.NumAnimations)
            continue;
        const std::int32_t end = first + CountAnimations(level, m);
        const auto startFrame = level.Animations[static_cast<std::size_t>(first)].FrameStart;
        const auto fix = [&](AnimDispatch& dispatch) {
            spend();
            if (dispatch.NextAnimation < first || dispatch.NextAnimation >= end) {
                dispatch.NextAnimation = first;
                dispatch.NextFrame = startFrame;
            }
        };
        ForRun(level.Animations, first, end - first, [&](const Animation& animation) {
            spend();
            ForRun(level.StateChanges, animation.StateChange, animation.NumStateChanges,
                   [&](const StateChange& change) {
                       spend();
                       ForRun(level.AnimDispatches, change.AnimDispatch, change.NumAnimDispatches,
                              fix);
                   });
        });
    }
}

} // namespace morlik
