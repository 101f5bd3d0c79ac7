// Makes libFuzzer change levels as levels.

#include "fuzz/LevelMutator.h"

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed)
{
    return morlik::fuzz::MutateLevel(data, size, most, seed);
}
