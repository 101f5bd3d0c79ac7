#include "base/Records.h"

namespace morlik
{

std::int32_t CountAnimations(std::span<const Moveable> moveables, std::int32_t numAnimations,
                             std::size_t index)
{
    const std::int32_t first = moveables[index].Animation;
    if (index + 1 == moveables.size())
        return numAnimations - first;
    if (first == -1)
        return 0;
    for (const Moveable& next : moveables.subspan(index + 1))
        if (next.Animation != -1)
            return next.Animation - first;
    return numAnimations - first;
}

} // namespace morlik
