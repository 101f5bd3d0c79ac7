// Reads levels of all games and converts some of their objects.

#include "convert/ConvertLevel.h"
#include "convert/ObjectNeeds.h"
#include "fuzz/LevelInput.h"

#include <numeric>

namespace morlik::fuzz
{

namespace
{

/// Every third object or so, by what is in the file.
ObjectChoice ChoiceOf(const LevelData& level, std::span<const std::uint8_t> input)
{
    ObjectChoice choice = ChooseAll(level);
    std::uint32_t state = std::accumulate(input.begin(), input.end(), 0U);
    for (auto* marks : {&choice.Moveables, &choice.StaticMeshes})
        for (auto&& mark : *marks) {
            state = state * 1664525U + 1013904223U;
            mark = state >> 30U == 0;
        }
    choice.AllSounds = state % 2 == 0;
    return choice;
}

} // namespace

} // namespace morlik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    morlik::Session& program = run.Program;
    const auto level = run.WriteLevel({data, size});
    run.Try([&] {
        morlik::LoadLevel(program, level);
        auto choice = morlik::fuzz::ChoiceOf(program.Level, {data, size});
        try {
            morlik::FitChoice(morlik::NeedsOf(program.Level), choice, 8);
        } catch (const morlik::ReadFailure&) { // a mesh is damaged, which the conversion tells
        }
        morlik::ConvertLevel(program.Level, program.Names, "LEVEL", {.Objects = choice},
                             program.Report);
    });
    return 0;
}
