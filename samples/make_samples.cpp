#include "base/OutputFile.h"
#include "base/Text.h"
#include "platform/Platform.h"
#include "samples/LevelWriter.h"
#include "samples/MainSfx.h"
#include "samples/Project.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

namespace
{

using namespace morlik;

void WriteAll(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    const auto write = [&](const std::string& name, const std::vector<std::byte>& bytes) {
        WriteWholeFile(FromPath(folder / name), bytes);
        std::cout << name << ": " << bytes.size() << " bytes\n";
    };
    using Level = std::pair<const char*, VersionCode>;
    for (const auto& [name, game] :
         {Level{"tr1.phd", kTR1}, Level{"tr1gold.tub", kTR1Gold}, Level{"tr2.tr2", kTR2},
          Level{"tr3.tr2", kTR3}, Level{"tr4.tr4", kTR4}, Level{"tr5.trc", kTR5}})
        write(name, WriteLevel(samples::MakeRichLevel(game)).Bytes);
    auto extended = samples::MakeRichLevel(kTR4);
    samples::MakeExtended(extended, 2048, false);
    write("extended.tr4", WriteLevel(extended).Bytes);
    samples::MakeExtended(extended, 1024, true); // its samples are those of the main.sfx
    write("outside.tr4", WriteLevel(extended).Bytes);
    write("main.sfx", samples::WriteMainSfx(samples::SampleSounds()).Bytes);
    write("sample.prj", samples::WriteProject(samples::MakeProject()).Bytes);
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
