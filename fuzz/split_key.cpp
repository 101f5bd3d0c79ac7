// Splits key paths of the registry. A key that is taken has lost its root and nothing else.

#include "fuzz/LevelInput.h"
#include "shell/Register_Mod.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    const std::string whole(data, data + size);
    std::string key = whole;
    auto root = morlik::RootKey{};
    morlik::SplitKeyPath(key, root, run.Program.Report);
    if (!whole.ends_with(key))
        std::abort();
    return 0;
}
