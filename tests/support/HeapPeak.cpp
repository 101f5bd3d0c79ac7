#include "tests/support/HeapPeak.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace
{

// The operators below belong to the whole process, and so does what they count.
std::atomic<std::size_t> live{0};
std::atomic<std::size_t> most{0};
std::atomic<std::size_t> base{0};
std::atomic<std::size_t> largest{std::numeric_limits<std::size_t>::max()};

/// Each block begins with its size, in as many bytes as keep the rest aligned.
constexpr std::size_t kHead = __STDCPP_DEFAULT_NEW_ALIGNMENT__;

} // namespace

/// Counts a fresh block whose head is of that size.
static void* Counted(void* fresh, std::size_t size, std::size_t head)
{
    auto* const block = static_cast<std::byte*>(fresh);
    if (block == nullptr || size > largest) {
        std::free(block);
        throw std::bad_alloc();
    }
    *reinterpret_cast<std::size_t*>(block) = size;
    const auto now = live += size;
    for (auto before = most.load(); before < now && !most.compare_exchange_weak(before, now);)
        ;                                  // another thread came in between
    std::memset(block + head, 0xa5, size); // what nobody fills shows
    return block + head;
}

void* operator new(std::size_t size)
{
    return Counted(std::malloc(size + kHead), size, kHead);
}

// Of the sanitizers' own, which they have for this one alone, the `delete` below knows nothing.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

#ifndef _WIN32
void* operator new(std::size_t size, std::align_val_t alignment)
{
    const auto head = static_cast<std::size_t>(alignment);
    const auto whole = (size + 2 * head - 1) / head * head;
    return Counted(std::aligned_alloc(head, whole), size, head);
}

void operator delete(void* pointer, std::align_val_t alignment) noexcept
{
    auto* const block = static_cast<std::byte*>(pointer) - static_cast<std::size_t>(alignment);
    live -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

// The sanitizers have one of their own.
void operator delete(void* pointer, std::size_t, std::align_val_t alignment) noexcept
{
    operator delete(pointer, alignment);
}
#endif

void operator delete(void* pointer) noexcept
{
    if (pointer == nullptr)
        return;
    auto* const block = static_cast<std::byte*>(pointer) - kHead;
    live -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept
{
    operator delete(pointer);
}

namespace morlik::test
{

std::size_t HeapPeak()
{
    return most - std::min<std::size_t>(base, most);
}

void ResetHeapPeak()
{
    base = most = live.load();
}

ShortMemory::ShortMemory(std::size_t most)
{
    largest = most;
}

ShortMemory::~ShortMemory()
{
    largest = std::numeric_limits<std::size_t>::max();
}

} // namespace morlik::test
