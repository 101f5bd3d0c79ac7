// Reads project files.

#include "fuzz/LevelInput.h"
#include "side/PRJ_Mod.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    const auto path = run.Write("project.prj", {data, size});
    run.Try([&] { morlik::ReadPRJ(path, run.Program.State.LevelIsLoaded, run.Program.Report); });
    return 0;
}
