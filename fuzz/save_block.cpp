// Reads and saves Tomb Raider IV levels whose level block is the input: the changes reach the
// reader without a way through zlib.

#include "base/OutputFile.h"
#include "fuzz/LevelMutator.h"
#include "samples/LevelWriter.h"

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed)
{
    return morlik::fuzz::MutateTables(data, size, most, morlik::kTR4, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace morlik;
    static const auto frame = samples::MakeSmallestLevel(kTR4);
    const auto file = samples::WrapTR4(frame, std::as_bytes(std::span(data, size))).Bytes;
    fuzz::Run run;
    WriteWholeFile(run.File("block.tr4"), file);
    run.Try([&] {
        LoadLevel(run.Program, run.File("block.tr4"));
        SaveLevel(run.Program, run.File("set.was"));
    });
    return 0;
}
