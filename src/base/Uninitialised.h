#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>
#include <vector>

namespace morlik
{

/// Lets the new elements of a vector as they are. For buffers of many megabytes that something
/// fills at once: to clear them first takes as long as a tenth of an inflation.
template <class Element>
struct UninitialisedAllocator : std::allocator<Element>
{
    static_assert(std::is_trivial_v<Element>);

    template <class Other>
    struct rebind // NOLINT(readability-identifier-naming): the name that allocators have
    {
        using other = UninitialisedAllocator<Other>;
    };

    void construct(Element*) const noexcept {}
    template <class... Arguments>
    void construct(Element* at, Arguments&&... arguments) const
    {
        ::new (static_cast<void*>(at)) Element(std::forward<Arguments>(arguments)...);
    }
};

template <class Element>
using UninitialisedVector = std::vector<Element, UninitialisedAllocator<Element>>;

} // namespace morlik
