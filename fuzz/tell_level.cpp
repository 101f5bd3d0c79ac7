// Tells what is in levels of all games, finds their objects, and writes their sounds.

#include "cli/Commands.h"
#include "fuzz/LevelInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    const auto level = run.WriteLevel({data, size});
    std::ostringstream out;
    std::ostringstream errors;
    const morlik::cli::Streams streams{out, errors};
    morlik::cli::ManyOptions options;
    options.Files = {level};
    options.Json = size % 2 == 0;
    morlik::cli::Info(options, streams);
    morlik::cli::FindOptions wish;
    wish.Files = {"*,static:*", level};
    if (size % 3 == 0)
        wish.SameAs = level + ":*";
    morlik::cli::Find(wish, streams);
    morlik::cli::SaveSounds(level, run.File("waves"), streams);
    return 0;
}
