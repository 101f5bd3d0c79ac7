#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace morlik
{

/// Memory of that many bytes, in large pages where the system has them and much is asked for. The
/// system gives fresh memory page by page, and with small ones that takes longer than to fill them.
void* TakeMemory(std::size_t bytes);
/// Gives back what `TakeMemory` gave for as many bytes.
void GiveBackMemory(void* memory, std::size_t bytes) noexcept;

/// For the start of a main that does one job: takes at once what such a job needs from the system,
/// where that is possible. Else it comes page by page, each when it is first touched, which was a
/// tenth to a sixth of the time of a conversion.
void TakeFirstMemory();

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

    Element* allocate(std::size_t count)
    {
        if (count > std::allocator_traits<std::allocator<Element>>::max_size(*this))
            throw std::bad_alloc();
        return static_cast<Element*>(TakeMemory(count * sizeof(Element)));
    }
    void deallocate(Element* elements, std::size_t count) noexcept
    {
        GiveBackMemory(elements, count * sizeof(Element));
    }

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
