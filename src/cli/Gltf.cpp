// morlik-cli gltf: objects of a level or a set for other programs.

#include "base/FileIdentity.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/ObjectList.h"
#include "cli/OpenSet.h"
#include "cli/QuietHost.h"
#include "picture/PNG.h"
#include "shell/SaveObjects.h"

namespace morlik::cli
{

namespace
{

/// What keeps a command from being carried out; empty where nothing does.
std::string FaultOf(const GltfCommand& command)
{
    if (command.Output.empty() == command.Folder.empty())
        return "Say where the files go, with one of -o OUT.glb and -d FOLDER";
    if (!command.Output.empty() &&
        !EndsWithNoCase(command.Output, command.Look.InParts ? ".gltf" : ".glb"))
        return command.Look.InParts ? "With --gltf the file must end in .gltf"
                                    : "The file must end in .glb or .gltf";
    return HasPNG() ? "" : "This build of the program can't write PNG files, which glTF takes";
}

void AddChosen(const std::vector<NamedObject>& objects, const std::vector<bool>& marks,
               bool isStatic, std::vector<GltfObject>& chosen)
{
    for (const NamedObject& object : objects)
        if (marks[object.Place])
            chosen.push_back({.IsStatic = isStatic,
                              .Place = object.Place,
                              .ID = object.ObjectID,
                              .Name = object.Names[0]});
}

std::vector<GltfObject> ChosenObjects(const OpenedSet& opened, const GltfCommand& command)
{
    const auto items = [](const std::string& list) {
        return list.empty() ? ObjectItems() : ReadItems(list);
    };
    const ObjectChoice choice =
        ChooseByItems(opened, items(command.Objects), items(command.Without));
    std::vector<GltfObject> chosen;
    AddChosen(opened.Moveables, choice.Moveables, false, chosen);
    AddChosen(opened.StaticMeshes, choice.StaticMeshes, true, chosen);
    return chosen;
}

} // namespace

int SaveGltfFiles(GltfCommand command, const Streams& streams)
{
    command.Look.InParts = command.Look.InParts || EndsWithNoCase(command.Output, ".gltf");
    if (const std::string fault = FaultOf(command); !fault.empty()) {
        streams.Errors << fault << '\n';
        return kWrongUse;
    }
    std::string wrongUse;
    const int status = RunQuietly(streams, [&](Session& session) {
        const OpenedSet opened = OpenSet(session, command.File);
        const bool isFolder = command.Output.empty();
        const std::string& path = isFolder ? command.Folder : command.Output;
        std::vector<GltfObject> chosen;
        try {
            chosen = ChosenObjects(opened, command);
            auto inputs = InputsOf(command.File);
            const auto lists = FilesOfLists({command.Objects, command.Without});
            inputs.insert(inputs.end(), lists.begin(), lists.end());
            GuardInputs(inputs, GltfFiles(chosen, path, isFolder, command.Look));
        } catch (const std::runtime_error& fault) { // of a list, or of an output
            wrongUse = fault.what();
            return false;
        }
        return SaveObjects(*opened.Objects, chosen, path, isFolder, command.Look, session.Report);
    });
    if (wrongUse.empty())
        return status;
    streams.Errors << wrongUse << '\n';
    return kWrongUse;
}

} // namespace morlik::cli
