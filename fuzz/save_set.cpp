// Reads levels of all games and saves their object sets.

#include "fuzz/LevelInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    const auto level = run.WriteLevel({data, size});
    run.Try([&] {
        morlik::LoadLevel(run.Program, level);
        morlik::SaveLevel(run.Program, run.File("set.was"));
    });
    return 0;
}
