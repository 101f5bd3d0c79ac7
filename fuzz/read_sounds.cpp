// Reads the sounds of main.sfx. All samples together are never longer than the file.

#include "fuzz/LevelInput.h"
#include "side/MainSFX_Mod.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    const auto path = run.Write("main.sfx", {data, size});
    auto& sounds = run.Program.MainSFX;
    run.Try([&] { morlik::ReadMainSFX(path, sounds, run.Program.Report); });
    std::size_t bytes = 0;
    for (const auto& sample : sounds.MainSFXSamples)
        bytes += sample.size();
    if (bytes > size)
        std::abort();
    return 0;
}
