#pragma once

#include <cstddef>

namespace morlik::test
{

/// The most bytes that were allocated at one time since `ResetHeapPeak`, beyond those that were
/// allocated at that moment. Counts what `new` gives, which is all that the program asks for
/// itself.
std::size_t HeapPeak();
void ResetHeapPeak();

/// While one lives, blocks above that size are refused, as where memory is short.
class ShortMemory
{
public:
    explicit ShortMemory(std::size_t most);
    ShortMemory(const ShortMemory&) = delete;
    ShortMemory& operator=(const ShortMemory&) = delete;
    ~ShortMemory();
};

} // namespace morlik::test
