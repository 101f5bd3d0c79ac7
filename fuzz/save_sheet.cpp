// Reads levels of all games and saves their texture sheets.

#include "fuzz/LevelInput.h"
#include "picture/TGA_Mod.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    const auto level = run.WriteLevel({data, size});
    run.Try([&] {
        morlik::LoadLevel(run.Program, level);
        morlik::SaveTGA(run.File("sheet.tga"), run.Program.Level, run.Program.Report);
    });
    return 0;
}
