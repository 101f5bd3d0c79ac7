#include "base/Text.h"
#include "cli/Commands.h"
#include "shell/MORLIK_Main.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

namespace morlik::cli
{

namespace
{

constexpr std::string_view kExamples =
    "  morlik-cli convert level.phd -o sets/level.was\n"
    "  morlik-cli convert -r levels -d sets --main-sfx auto --skip-existing\n"
    "  morlik-cli convert level.tr4 -o lara.was --objects 'LARA*,0-9'\n"
    "  morlik-cli info level.tr4 --json\n"
    "  morlik-cli sheet level.trc sheet.png\n"
    "  morlik-cli sounds main.sfx waves\n"
    "  morlik-cli picture level.tr4 lara.png --object LARA\n"
    "  morlik-cli animate level.tr4 run.webp --object LARA --animation 0\n"
    "  morlik-cli contact sets/level.was objects.png\n"
    "  morlik-cli gltf level.tr4 -d models --objects 'LARA*'\n"
    "  morlik-cli check -r sets\n"
    "  morlik-cli find -r 'DOG*' levels\n"
    "  morlik-cli gallery -r levels -d gallery\n";

constexpr const char* kResults =
    "\n"
    "Results go to standard output, messages to standard error.\n"
    "Exit status: 0 all good, 1 something failed (nothing found, of find), 2 wrong use,\n"
    "130 stopped by Ctrl+C.";

constexpr const char* kSeeHelp = "\nRun with --help for more information.\n";

/// What follows the options of a command, with the examples of that command alone; those of all
/// commands where none is named.
std::string FooterOf(const std::string& command)
{
    std::string footer = "Examples:\n";
    for (std::string_view rest = kExamples; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n') + 1);
        rest.remove_prefix(line.size());
        if (command.empty() || line.find(" " + command + " ") != std::string_view::npos)
            footer += line;
    }
    return footer + kResults;
}

/// What a command does; gives the exit status.
using Run = std::function<int()>;

/// A command brings along what it does, so that none can be called and do nothing.
CLI::App& AddCommand(CLI::App& app, const char* name, const char* description, int& status, Run run)
{
    CLI::App& command = *app.add_subcommand(name, description);
    command.footer(FooterOf(name));
    command.callback([&status, run = std::move(run)] { status = run(); });
    return command;
}

/// An empty value is mostly a variable of a script that isn't set, and would pass for none.
std::string FaultOfValue(const std::string& text)
{
    return text.empty() ? "has an empty value" : "";
}

/// A word that the command can't do without.
void AddOperand(CLI::App& command, const char* name, std::string& value, const char* description)
{
    command.add_option(name, value, description)->required()->check(FaultOfValue)->type_name("");
}

/// Names of files, one at least. An empty one among them is a file that can't be opened.
void AddFiles(CLI::App& command, const char* name, std::vector<std::string>& files,
              const char* description)
{
    command.add_option(name, files, description)->required()->type_name("");
}

/// An option that takes one value. The parser's own words for one that is given twice are of no
/// use.
template <class Value>
CLI::Option& AddOption(CLI::App& command, const char* name, Value& value,
                       const std::string& description)
{
    CLI::Option& option = *command.add_option(name, value, description);
    option.check([times = std::make_shared<int>(0)](const std::string& text) -> std::string {
        return ++*times > 1 ? "is given more than once" : FaultOfValue(text);
    });
    return option;
}

/// What commands for many files have in common.
void AddMany(CLI::App& command, ManyOptions& options)
{
    command.add_flag("-r,--recursive", options.Recursive, "take the files below folders");
    AddOption(command, "-j,--jobs", options.Jobs, "files at a time; else one a processor")
        .check(CLI::Range(1, 256))
        ->type_name("N");
    CLI::Option* const json =
        command.add_flag("--json", options.Json, "tell the results as JSON, at the end");
    command.add_flag("--json-lines", options.JsonLines, "as JSON, a line for each file")
        ->excludes(json);
}

void AddConvert(CLI::App& app, int& status, const Streams& streams)
{
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App& convert = AddCommand(app, "convert", "convert levels to object sets", status,
                                   [options, &streams] { return Convert(*options, streams); });
    options->Kind = "levels";
    AddFiles(convert, "LEVEL", options->Files, "level files, with -r also folders of them");
    AddOption(convert, "-o", options->Output, "name of the set, for a single level")
        .type_name("OUT.was");
    AddOption(convert, "-d", options->Folder, "folder for the sets, each named after its level")
        .type_name("FOLDER");
    AddOption(convert, "--main-sfx", options->MainSFX,
              "take the sounds of Tomb Raider II and III levels, and of extended ones of IV, from "
              "this main.sfx; with \"auto\" from the one in the level's folder or the folder above")
        .type_name("FILE");
    AddOption(convert, "--objects", options->Objects,
              "take these objects alone: numbers, ranges and names with * and ?, static meshes "
              "behind \"static:\", parted by commas; @FILE for a list in a file")
        .type_name("LIST");
    AddOption(convert, "--without", options->Without, "leave these objects out").type_name("LIST");
    convert.add_flag("--fit", options->Fit,
                     "leave out what has the most textures, until the editor takes the rest");
    convert.add_flag("--all-sounds", options->AllSounds, "keep sounds that no chosen object makes");
    convert.add_flag("--update-horizon", options->UpdateHorizon,
                     "make the clouds visible behind a Tomb Raider II or III horizon");
    convert.add_flag("--export-sprites", options->ExportSprites,
                     "take the sprites of Tomb Raider I to III levels along");
    AddMany(convert, *options);
    convert.add_flag("-q,--quiet", options->IsQuiet, "tell nothing of what is good");
    convert.add_flag("--skip-existing", options->SkipExisting,
                     "leave out levels whose set is there");
    AddOption(convert, "--log", options->Log, "write a log of the run, for a single level")
        .type_name("FILE");
    convert.add_flag("--timings", options->Timings, "tell where the time went");
}

void AddInfo(CLI::App& app, int& status, const Streams& streams)
{
    const auto options = std::make_shared<ManyOptions>();
    CLI::App& info = AddCommand(app, "info", "tell what is in levels, main.sfx and projects",
                                status, [options, &streams] { return Info(*options, streams); });
    AddFiles(info, "FILE", options->Files, "LEVEL, main.sfx or PROJECT.prj, with -r also folders");
    AddMany(info, *options);
}

/// A word of a command line and what it stands for.
struct Operand
{
    const char* Name;
    const char* Description;
};

/// A command from one file to a place.
void AddExport(CLI::App& app, int& status, const Streams& streams, const Operand& name,
               const Operand& file, const Operand& target,
               int (*run)(const std::string&, const std::string&, const Streams&))
{
    struct FileOptions
    {
        std::string File;
        std::string Target;
    };
    const auto options = std::make_shared<FileOptions>();
    CLI::App& command =
        AddCommand(app, name.Name, name.Description, status, [options, run, &streams] {
            return run(options->File, options->Target, streams);
        });
    AddOperand(command, file.Name, options->File, file.Description);
    AddOperand(command, target.Name, options->Target, target.Description);
}

void AddCheck(CLI::App& app, int& status, const Streams& streams)
{
    struct CheckOptions : ManyOptions
    {
        int Game = 0;
    };
    const auto options = std::make_shared<CheckOptions>();
    options->Kind = "sets";
    CLI::App& check =
        AddCommand(app, "check", "read object sets back and verify them", status,
                   [options, &streams] { return Check(*options, options->Game, streams); });
    AddFiles(check, "SET", options->Files, "SET.was, with -r also folders");
    AddOption(check, "--game", options->Game, "game of the sets, 1 to 5, if their lists name none")
        .check(CLI::Range(1, 5))
        ->type_name("N");
    AddMany(check, *options);
    check.add_flag("-q,--quiet", options->IsQuiet, "tell nothing of what is good");
}

void AddFind(CLI::App& app, int& status, const Streams& streams)
{
    const auto options = std::make_shared<FindOptions>();
    options->ListName = "hits";
    CLI::App& find = AddCommand(app, "find", "tell which levels and sets have an object", status,
                                [options, &streams] { return Find(*options, streams); });
    find.add_option("WORDS", options->Files,
                    "PATTERN... PATHS...: objects as for --objects, then levels, sets and, with "
                    "-r, folders")
        ->type_name("");
    AddOption(find, "--sound", options->Sound, "look for a sound, by its slot").type_name("SLOT");
    AddOption(find, "--same-as", options->SameAs,
              "look for the meshes of an object of a level or set, whatever their name or game")
        .type_name("LEVEL:NAME");
    AddMany(find, *options);
    find.add_flag("-q,--quiet", options->IsQuiet, "print no hits: the status tells");
}

void AddGallery(CLI::App& app, int& status, const Streams& streams)
{
    const auto command = std::make_shared<GalleryCommand>();
    command->Kind = command->ListName = "levels";
    CLI::App& gallery =
        AddCommand(app, "gallery", "make pages that show all objects of levels, to search", status,
                   [command, &streams] { return MakeGallery(*command, streams); });
    AddFiles(gallery, "LEVEL", command->Files, "level files, with -r also folders of them");
    AddOption(gallery, "-d", command->Folder, "folder of the gallery; open its index.html")
        .required()
        ->type_name("FOLDER");
    AddOption(gallery, "--animations", command->Animations,
              "first animations of each object that get a moving picture; else 2")
        .check(CLI::Range(0, 1000))
        ->type_name("N");
    gallery.add_flag("--no-gltf", command->WithoutModels, "leave out the glTF files");
    gallery.add_flag("--sets", command->HasSets, "add an object set of each object alone");
    AddOption(gallery, "--main-sfx", command->MainSFX,
              "take the sounds that levels don't hold from this main.sfx; else from the one in the "
              "level's folder or the folder above")
        .type_name("FILE");
    AddMany(gallery, *command);
    gallery.add_flag("-q,--quiet", command->IsQuiet, "tell nothing of what is good");
}

/// What `picture` and `animate` have in common.
void AddLook(CLI::App& command, PictureOptions& options)
{
    AddOperand(command, "FILE", options.File, "LEVEL or SET.was");
    AddOption(command, "--object", options.Object, "the object, by its id or name")
        .required()
        ->type_name("NAME|ID");
    AddOption(command, "--animation", options.Animation, "number of its animation, from 0")
        .type_name("N");
    AddOption(command, "--yaw", options.Yaw,
              "degrees to go around it from its front to its right; else 30")
        .check(CLI::Range(-360.0, 360.0))
        ->type_name("DEGREES");
    AddOption(command, "--pitch", options.Pitch, "degrees to look down on it; else 15")
        .check(CLI::Range(-90.0, 90.0))
        ->type_name("DEGREES");
    AddOption(command, "--zoom", options.Zoom, "times as large; 1 fills the picture")
        .check(CLI::Range(0.01, 100.0))
        ->type_name("TIMES");
    AddOption(command, "--size", options.Size, "pixels of the picture; else " + options.Size)
        .type_name("WxH");
    AddOption(command, "--background", options.Background,
              "colour such as 20a0ff, or none, which it is without this option")
        .type_name("RRGGBB");
    command.add_flag("--smooth", options.IsSmooth, "blend the pixels of the textures");
    command.add_flag("--wireframe", options.Wireframe, "the edges of the faces alone");
}

void AddPicture(CLI::App& app, int& status, const Streams& streams)
{
    const auto options = std::make_shared<PictureOptions>();
    CLI::App& picture = AddCommand(app, "picture", "draw an object as a PNG file", status,
                                   [options, &streams] { return SavePicture(*options, streams); });
    AddLook(picture, *options);
    AddOperand(picture, "OUT", options->Output, "OUT.png");
    picture.add_flag("--static", options->IsStatic, "it is a static mesh, not a moveable");
    AddOption(picture, "--frame", options->Frame, "number of the frame, from 0, 30 to a second")
        .type_name("F");
}

void AddAnimate(CLI::App& app, int& status, const Streams& streams)
{
    const auto options = std::make_shared<PictureOptions>();
    options->Size = "400x300";
    CLI::App& animate =
        AddCommand(app, "animate", "draw an animation as an animated PNG or WebP file", status,
                   [options, &streams] { return SaveAnimation(*options, streams); });
    AddLook(animate, *options);
    AddOperand(animate, "OUT", options->Output, "OUT.png or OUT.webp");
}

void AddContact(CLI::App& app, int& status, const Streams& streams)
{
    const auto options = std::make_shared<ContactOptions>();
    CLI::App& contact =
        AddCommand(app, "contact", "draw all objects, with their names, as one PNG file", status,
                   [options, &streams] { return SaveContactSheet(*options, streams); });
    AddOperand(contact, "FILE", options->File, "LEVEL or SET.was");
    AddOperand(contact, "OUT", options->Output, "OUT.png");
    AddOption(contact, "--columns", options->Columns, "pictures in a row; else 8")
        .check(CLI::Range(1, 256))
        ->type_name("N");
    AddOption(contact, "--size", options->Side, "pixels of a picture; else 128")
        .check(CLI::Range(16, 1024))
        ->type_name("N");
    contact.add_flag("--moveables", options->Moveables, "the moveables alone");
    contact.add_flag("--statics", options->StaticMeshes, "the static meshes alone");
    contact.add_flag("--sprites", options->Sprites, "the sprites alone (Tomb Raider I to III)");
}

void AddGltf(CLI::App& app, int& status, const Streams& streams)
{
    const auto command = std::make_shared<GltfCommand>();
    CLI::App& gltf = AddCommand(app, "gltf", "write objects with their animations as glTF", status,
                                [command, &streams] { return SaveGltfFiles(*command, streams); });
    AddOperand(gltf, "FILE", command->File, "LEVEL or SET.was");
    AddOption(gltf, "-d", command->Folder, "folder for the files, one for each object")
        .type_name("FOLDER");
    AddOption(gltf, "-o", command->Output, "all objects in one file, each as a scene")
        .type_name("OUT.glb");
    AddOption(gltf, "--objects", command->Objects, "take these objects alone, as in convert")
        .type_name("LIST");
    AddOption(gltf, "--without", command->Without, "leave these objects out").type_name("LIST");
    GltfOptions& look = command->Look;
    gltf.add_flag("--gltf", look.InParts, "write .gltf, .bin and .png in place of .glb");
    gltf.add_flag("--skin", look.HasSkin, "moveables as one mesh on bones, not as a tree of parts");
    gltf.add_flag("--lit", look.IsLit, "materials that take light");
    gltf.add_flag("--smooth", look.IsSmooth, "blend the pixels of the textures");
    gltf.add_flag("--double-sided", look.DoubleSided, "show faces from behind, too");
    AddOption(gltf, "--scale", look.SectorMetres, "metres of a sector, 1,024 units; else 2")
        .check(CLI::Range(0.001, 1000000.0))
        ->type_name("METRES");
}

} // namespace

int RunCommandLine(std::vector<std::string> arguments, const Streams& streams)
{
    CLI::App app("Makes object sets for the level editor from Tomb Raider I to V levels.",
                 "morlik-cli");
    app.allow_windows_style_options(false); // a word that begins with "/" is a path there too
    app.set_version_flag("--version", BuildVersionString({}));
    app.require_subcommand(1);
    app.footer(FooterOf(""));
    app.failure_message([](const CLI::App* /*app*/, const CLI::Error& failure) {
        return Printable(failure.what()) + kSeeHelp; // it holds words, as a shell may find them
    });
    int status = kWrongUse;
    AddConvert(app, status, streams);
    AddInfo(app, status, streams);
    AddExport(app, status, streams, {"sheet", "write the texture sheet of a level"},
              {"LEVEL", "level file"}, {"OUT", "OUT.tga or OUT.png"}, SaveSheet);
    AddExport(app, status, streams, {"sounds", "write the sounds as WAV files"},
              {"FILE", "LEVEL or main.sfx"}, {"FOLDER", "where they go"}, SaveSounds);
    AddPicture(app, status, streams);
    AddAnimate(app, status, streams);
    AddContact(app, status, streams);
    AddGltf(app, status, streams);
    AddCheck(app, status, streams);
    AddFind(app, status, streams);
    AddGallery(app, status, streams);
    for (std::string& argument : arguments) // the parser would take "[a]" for a list of arguments
        if (argument.starts_with('[') && argument.ends_with(']'))
            argument.insert(0, "./");
    const auto isCalled = [&](const CLI::App* command) {
        return command->get_name() == arguments[0];
    };
    if (!arguments.empty() && !arguments[0].starts_with('-') &&
        app.get_subcommands(isCalled).empty()) {
        streams.Errors << "There is no command " << Printable(arguments[0]) << kSeeHelp;
        return kWrongUse;
    }
    try {
        std::reverse(arguments.begin(), arguments.end()); // the parser takes them from the back
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& stop) { // also what --help and --version end in
        return app.exit(stop, streams.Out, streams.Errors) == 0 ? kGood : kWrongUse;
    }
    return status;
}

} // namespace morlik::cli
