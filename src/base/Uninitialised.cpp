#include "base/Uninitialised.h"

#include <cstdlib>
#ifdef __linux__
#include <malloc.h>
#include <sys/mman.h>
#endif

namespace morlik
{

namespace
{

/// What most processors have beside pages of 4 KiB.
constexpr std::size_t kLargePageBytes = std::size_t{2} << 20U;
constexpr std::align_val_t kAlignment{kLargePageBytes};
constexpr std::size_t kLeastBytes = kLargePageBytes / 4;

/// More than the small memory of nearly all conversions.
[[maybe_unused]] constexpr int kFirstBytes = 1 << 20;
[[maybe_unused]] constexpr std::size_t kSmallPageBytes = 4096;

} // namespace

void* TakeMemory(std::size_t bytes)
{
    if (bytes < kLeastBytes)
        return ::operator new(bytes);
    const auto whole = (bytes + kLargePageBytes - 1) / kLargePageBytes * kLargePageBytes;
    void* const memory = ::operator new(whole, kAlignment);
#ifdef __linux__
    madvise(memory, whole, MADV_HUGEPAGE); // refused where there are none
#endif
    return memory;
}

void GiveBackMemory(void* memory, std::size_t bytes) noexcept
{
    if (bytes < kLeastBytes)
        ::operator delete(memory);
    else
        ::operator delete(memory, kAlignment);
}

void TakeFirstMemory()
{
#if defined(__GLIBC__) && defined(MADV_POPULATE_WRITE)
    mallopt(M_MMAP_THRESHOLD, 2 * kFirstBytes); // what is smaller comes from the heap, which stays
    mallopt(M_TRIM_THRESHOLD, 2 * kFirstBytes);
    void* const memory = std::aligned_alloc(kSmallPageBytes, kFirstBytes);
    if (memory != nullptr)
        madvise(memory, kFirstBytes, MADV_POPULATE_WRITE); // refused by older systems
    std::free(memory);
#endif
}

} // namespace morlik
