#pragma once

#include <cstddef>

namespace morlik::test
{

/// The most bytes that were allocated at one time since `ResetHeapPeak`, beyond those that were
/// allocated at that moment. Counts what `new` gives, which is all that the program asks for
/// itself.
std::size_t HeapPeak();
void ResetHeapPeak();

} // namespace morlik::test
