#include "cli/Commands.h"
#include "shell/MORLIK_Main.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace morlik::cli
{

namespace
{

constexpr const char* kExamples =
    "Examples:\n"
    "  morlik-cli convert level.phd -o sets/level.was\n"
    "  morlik-cli convert levels/*.tr2 -d sets --main-sfx auto --jobs 4\n"
    "  morlik-cli info level.tr4 --json\n"
    "  morlik-cli sheet level.trc sheet.png\n"
    "  morlik-cli sounds main.sfx waves\n"
    "  morlik-cli check sets/level.was\n"
    "\n"
    "Results go to standard output, messages to standard error.\n"
    "Exit status: 0 all good, 1 something failed, 2 wrong use.";

void AddConvert(CLI::App& app, ConvertOptions& options)
{
    CLI::App& convert = *app.add_subcommand("convert", "convert levels to object sets");
    convert.add_option("LEVEL", options.Levels, "level files")->required()->type_name("");
    convert.add_option("-o", options.Output, "name of the set, for a single level")
        ->type_name("OUT.was");
    convert.add_option("-d", options.Folder, "folder for the sets, each named after its level")
        ->type_name("FOLDER");
    convert
        .add_option("--main-sfx", options.MainSFX,
                    "take the sounds of Tomb Raider II and III levels from this main.sfx; with "
                    "\"auto\" from the one in the level's folder or the folder above")
        ->type_name("FILE");
    convert.add_flag("--update-horizon", options.UpdateHorizon,
                     "make the clouds visible behind a Tomb Raider II or III horizon");
    convert.add_flag("--export-sprites", options.ExportSprites,
                     "take the sprites of Tomb Raider I to III levels along");
    convert.add_option("--jobs", options.Jobs, "levels at a time; else one a processor")
        ->check(CLI::Range(1, 256))
        ->type_name("N");
    convert.add_option("--log", options.Log, "write a log of the run, for a single level")
        ->type_name("FILE");
    convert.add_flag("--timings", options.Timings, "tell where the time went");
    convert.add_flag("--json", options.Json, "tell the results as JSON");
}

/// What the other commands are called with.
struct OtherOptions
{
    std::string File;
    std::string Target;
    bool Json = false;
    int Game = 0;
};

void AddOthers(CLI::App& app, OtherOptions& options)
{
    CLI::App& info = *app.add_subcommand("info", "tell what is in a level, main.sfx or project");
    info.add_option("FILE", options.File, "LEVEL, main.sfx or PROJECT.prj")
        ->required()
        ->type_name("");
    info.add_flag("--json", options.Json, "as JSON");

    CLI::App& sheet = *app.add_subcommand("sheet", "write the texture sheet of a level");
    sheet.add_option("LEVEL", options.File, "level file")->required()->type_name("");
    sheet.add_option("OUT", options.Target, "OUT.tga or OUT.png")->required()->type_name("");

    CLI::App& sounds = *app.add_subcommand("sounds", "write the sounds as WAV files");
    sounds.add_option("FILE", options.File, "LEVEL or main.sfx")->required()->type_name("");
    sounds.add_option("FOLDER", options.Target, "where they go")->required()->type_name("");

    CLI::App& check = *app.add_subcommand("check", "read an object set back and verify it");
    check.add_option("SET", options.File, "SET.was")->required()->type_name("");
    check.add_option("--game", options.Game, "game of the set, 1 to 5, if its list names none")
        ->check(CLI::Range(1, 5))
        ->type_name("N");
}

} // namespace

int RunCommandLine(std::vector<std::string> arguments, const Streams& streams)
{
    CLI::App app("Makes object sets for the level editor from Tomb Raider I to V levels.",
                 "morlik-cli");
    app.allow_windows_style_options(false); // a word that begins with "/" is a path there too
    app.set_version_flag("--version", BuildVersionString({}));
    app.require_subcommand(1);
    app.footer(kExamples);
    ConvertOptions convert;
    OtherOptions other;
    AddConvert(app, convert);
    AddOthers(app, other);
    for (std::string& argument : arguments) // the parser would take "[a]" for a list of arguments
        if (argument.starts_with('[') && argument.ends_with(']'))
            argument.insert(0, "./");
    const auto isCalled = [&](const CLI::App* command) {
        return command->get_name() == arguments[0];
    };
    if (!arguments.empty() && !arguments[0].starts_with('-') &&
        app.get_subcommands(isCalled).empty()) {
        streams.Errors << "There is no command " << arguments[0]
                       << "\nRun with --help for more information.\n";
        return kWrongUse;
    }
    try {
        std::reverse(arguments.begin(), arguments.end()); // the parser takes them from the back
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& stop) { // also what --help and --version end in
        return app.exit(stop, streams.Out, streams.Errors) == 0 ? kGood : kWrongUse;
    }
    if (app.got_subcommand("convert"))
        return Convert(convert, streams);
    if (app.got_subcommand("info"))
        return Info(other.File, other.Json, streams);
    if (app.got_subcommand("sheet"))
        return SaveSheet(other.File, other.Target, streams);
    if (app.got_subcommand("sounds"))
        return SaveSounds(other.File, other.Target, streams);
    return Check(other.File, other.Game, streams);
}

} // namespace morlik::cli
