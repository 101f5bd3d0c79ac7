// Reads catalogues of object names.

#include "fuzz/LevelInput.h"
#include "shell/ObjectID_Mod.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    const auto path = run.Write(morlik::kCatalogueName, {data, size});
    run.Try([&] { morlik::LoadObjectIDs(path, run.Program.Names, run.Program.Report); });
    return 0;
}
