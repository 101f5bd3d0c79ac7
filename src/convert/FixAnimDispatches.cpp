#include "convert/FixAnimDispatches.h"

#include <algorithm>

namespace morlik
{

namespace
{

/// Dispatches that one save may look at, far more than any intact level has.
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

void FixAnimDispatches(ObjectSet& set, Reporter& report)
{
    const auto numAnimations = static_cast<std::int32_t>(set.Animations.size());
    std::int64_t visitsLeft = kMostVisits;
    const auto spend = [&] {
        if (--visitsLeft < 0)
            report.Stop("The animations are damaged - can't continue!", kAppTitle,
                        "dispatches: the animations share them again and again");
    };
    for (std::size_t m = 0; m < set.Moveables.size(); ++m) {
        const std::int16_t first = set.Moveables[m].Animation;
        if (first < 0 || first >= numAnimations)
            continue;
        const std::int32_t end = first + CountAnimations(set.Moveables, numAnimations, m);
        const auto startFrame = set.Animations[static_cast<std::size_t>(first)].FrameStart;
        const auto fix = [&](AnimDispatch& dispatch) {
            spend();
            if (dispatch.NextAnimation < first || dispatch.NextAnimation >= end) {
                dispatch.NextAnimation = first;
                dispatch.NextFrame = startFrame;
            }
        };
        ForRun(set.Animations, first, end - first, [&](const Animation& animation) {
            spend();
            ForRun(set.StateChanges, animation.StateChange, animation.NumStateChanges,
                   [&](const StateChange& change) {
                       spend();
                       ForRun(set.AnimDispatches, change.AnimDispatch, change.NumAnimDispatches,
                              fix);
                   });
        });
    }
}

} // namespace morlik
