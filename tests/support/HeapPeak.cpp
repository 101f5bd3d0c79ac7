#include "tests/support/HeapPeak.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace
{

// The operators below belong to the whole process, and so does what they count.
std::atomic<std::size_t> live{0};
std::atomic<std::size_t> most{0};
std::atomic<std::size_t> base{0};

/// Each block begins with its size, in as many bytes as keep the rest aligned.
constexpr std::size_t kHead = __STDCPP_DEFAULT_NEW_ALIGNMENT__;

} // namespace

void* operator new(std::size_t size)
{
    auto* const block = static_cast<std::byte*>(std::malloc(size + kHead));
    if (block == nullptr)
        throw std::bad_alloc();
    *reinterpret_cast<std::size_t*>(block) = size;
    const auto now = live += size;
    for (auto before = most.load(); before < now && !most.compare_exchange_weak(before, now);)
        ; // another thread came in between
    return block + kHead;
}

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

} // namespace morlik::test
