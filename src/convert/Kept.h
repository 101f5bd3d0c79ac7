#pragma once

#include "base/Narrow.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace morlik
{

/// What stays of a table. Elements keep their order, so runs stay runs, also those that share
/// elements.
class Kept
{
public:
    explicit Kept(std::size_t size) : size_(static_cast<std::int64_t>(size)), places_(size + 1) {}

    /// Keeps the elements of a run that the table has.
    void Keep(std::int64_t first, std::int64_t count)
    {
        const auto begin = std::clamp<std::int64_t>(first, 0, size_);
        const auto end = std::clamp<std::int64_t>(first + count, begin, size_);
        ++places_[static_cast<std::size_t>(begin)];
        --places_[static_cast<std::size_t>(end)];
    }

    /// To be called between the last `Keep` and all that follows. Up to here an entry of `places_`
    /// says by how many more runs its element is kept than the one before it.
    void Number()
    {
        std::int32_t runs = 0;
        std::int32_t place = 0;
        isKept_.resize(places_.size());
        for (std::size_t i = 0; i < places_.size(); ++i) {
            runs += places_[i];
            isKept_[i] = runs > 0;
            places_[i] = std::exchange(place, place + (runs > 0 ? 1 : 0));
        }
    }

    bool Has(std::int64_t element) const
    {
        return element >= 0 && element < size_ && isKept_[static_cast<std::size_t>(element)];
    }

    /// Where an element stands now, or where the next that stays does. What is outside of the table
    /// stays outside.
    template <class Index>
    Index PlaceOf(Index element) const
    {
        if (element < 0)
            return element;
        return narrow<Index>(
            places_[static_cast<std::size_t>(std::min<std::int64_t>(element, size_))]);
    }

    /// The elements that stay.
    template <class Element>
    void Take(std::vector<Element>& table) const
    {
        std::size_t taken = 0;
        for (std::size_t i = 0; i < table.size(); ++i)
            if (isKept_[i])
                table[taken++] = table[i];
        table.resize(taken);
    }

private:
    std::int64_t size_;
    std::vector<std::int32_t> places_;
    std::vector<bool> isKept_;
};

} // namespace morlik
