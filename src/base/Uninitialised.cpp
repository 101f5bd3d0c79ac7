#include "base/Uninitialised.h"

#ifdef __linux__
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

} // namespace morlik
