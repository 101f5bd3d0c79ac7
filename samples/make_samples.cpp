#include "base/OutputFile.h"
#include "base/Text.h"
#include "platform/Platform.h"
#include "samples/LevelWriter.h"
#include "samples/MainSfx.h"
#include "samples/Project.h"

#include <array>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

namespace
{

using namespace morlik;

struct SampleLevel
{
    const char* File;
    VersionCode Game;
};

constexpr std::array<SampleLevel, 6> kLevels{{{"tr1.phd", kTR1},
                                              {"tr1gold.tub", kTR1Gold},
                                              {"tr2.tr2", kTR2},
                                              {"tr3.tr2", kTR3},
                                              {"tr4.tr4", kTR4},
                                              {"tr5.trc", kTR5}}};

void WriteFile(const std::filesystem::path& path, const std::vector<std::byte>& bytes)
{
    WriteWholeFile(FromPath(path), bytes);
    std::cout << FromPath(path.filename()) << ": " << bytes.size() << " bytes\n";
}

void WriteAll(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    for (const SampleLevel& level : kLevels)
        WriteFile(folder / level.File, WriteLevel(samples::MakeRichLevel(level.Game)).Bytes);
    WriteFile(folder / "main.sfx", samples::WriteMainSfx(samples::SampleSounds()).Bytes);
    WriteFile(folder / "sample.prj", samples::WriteProject(samples::MakeProject()).Bytes);
}

} // namespace

/// Writes a sample level of every game, a main.sfx and a project into the folder named.
int main(int argc, char** argv)
{
    const ConsoleTexts console;
    const auto arguments = Arguments(argc, argv);
    if (arguments.size() != 1) {
        std::cerr << "usage: morlik-samples FOLDER\n";
        return 2;
    }
    try {
        WriteAll(ToPath(arguments[0]));
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
