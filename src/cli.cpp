#include "base/Text.h"
#include "platform/ConsoleHost.h"
#include "platform/Platform.h"
#include "shell/MORLIK_Main.h"
#include "shell/ObjectID_Mod.h"
#include "shell/Session.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <span>
#include <string>

namespace
{

constexpr int kWrongUse = 2;

constexpr const char* kUsage =
    "usage: morlik-cli convert LEVEL -o OUT.was [options]\n"
    "\n"
    "Reads a Tomb Raider level and writes its object set beside OUT.was.\n"
    "\n"
    "  -o OUT.was         name of the set; all its files take their names from it\n"
    "  --main-sfx FILE    take the sounds of a Tomb Raider II or III level from this main.sfx\n"
    "  --export-sprites   take the sprites of a Tomb Raider I to III level along\n"
    "  --update-horizon   make the clouds visible behind a Tomb Raider II or III horizon\n"
    "  --log FILE         write a log of the run\n"
    "  --help             show this text\n"
    "  --version          show the version\n"
    "\n"
    "Messages go to standard error. Exit status: 0 good, 1 failed, 2 wrong use.\n";

struct Options
{
    std::string Level;
    std::string Output;
    std::string Log;
    morlik::ConsoleHost::Choices Choices;
};

/// The options of `convert`; nothing for a line that can't be understood.
std::optional<Options> Parse(std::span<const std::string> arguments)
{
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        std::string* target = nullptr;
        if (word == "-o")
            target = &options.Output;
        else if (word == "--log")
            target = &options.Log;
        else if (word == "--main-sfx")
            target = &options.Choices.MainSFX;
        if (target != nullptr) {
            if (++i == arguments.size())
                return std::nullopt;
            *target = arguments[i];
        } else if (word == "--export-sprites") {
            options.Choices.ExportSprites = true;
        } else if (word == "--update-horizon") {
            options.Choices.UpdateHorizon = true;
        } else if (!options.Level.empty() || word.empty() || word[0] == '-') {
            return std::nullopt;
        } else {
            options.Level = word;
        }
    }
    if (options.Level.empty() || options.Output.empty())
        return std::nullopt;
    return options;
}

bool Convert(morlik::Session& session, const Options& options)
{
    if (!options.Log.empty())
        morlik::OpenLogFile(options.Log, session.Report);
    session.Report.LogLine("Loading TR4Objects.dat");
    morlik::LoadObjectIDs("", session.Names, session.Report);
    session.Report.LogLine("Loading level");
    session.LevelTitle = morlik::FileTitle(options.Level);
    morlik::LoadLevel(session, options.Level);
    session.Report.LogLine("Saving WAS");
    const bool complete = morlik::SaveLevel(session, options.Output);
    session.Report.Log.Close();
    return complete;
}

int Run(std::span<const std::string> arguments)
{
    const std::string command = arguments.empty() ? "" : arguments[0];
    if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
        std::cout << kUsage;
        return EXIT_SUCCESS;
    }
    if (command == "--version") {
        std::cout << morlik::BuildVersionString({}) << '\n';
        return EXIT_SUCCESS;
    }
    const auto options = command == "convert" ? Parse(arguments.subspan(1)) : std::nullopt;
    if (!options) {
        std::cerr << kUsage;
        return kWrongUse;
    }
    morlik::ConsoleHost host(std::cerr, options->Choices);
    morlik::Session session(host);
    return Convert(session, *options) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    const morlik::ConsoleTexts console;
    try {
        return Run(morlik::Arguments(argc, argv));
    } catch (const morlik::ProgramEnd&) {
        return EXIT_FAILURE;
    } catch (const std::exception& failure) {
        std::cerr << morlik::kErrorTitle << ": " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
