#include "cli/OpenSet.h"

#include "base/FileIdentity.h"
#include "base/Files.h"
#include "base/Text.h"
#include "cli/NearNames.h"
#include "convert/ConvertLevel.h"
#include "picture/MovingFile.h"
#include "picture/PNG.h"
#include "platform/Platform.h"
#include "set/ReadSet.h"
#include "shell/DataFiles.h"
#include "shell/ObjectID_Mod.h"
#include "shell/SetFiles.h"

#include <vector>

namespace morlik::cli
{

namespace
{

/// The objects of a table by what the list of the set says, from its line `firstLine` on.
template <class Object>
std::vector<NamedObject> ListedObjects(const ObjectSet& set, const std::vector<Object>& objects,
                                       std::size_t firstLine)
{
    std::vector<NamedObject> named;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const std::size_t line = firstLine + i;
        const ListedObject names = line < set.Listed.size() ? set.Listed[line] : ListedObject{};
        const bool hasGameName = !names.GameName.empty();
        named.push_back({i,
                         objects[i].ObjectID,
                         {hasGameName ? names.GameName : names.EditorName,
                          hasGameName ? names.EditorName : names.GameName}});
    }
    return named;
}

/// Gives the objects the ids and names that they have in their level.
void NameByLevel(OpenedSet& opened, const LevelData& level, const ObjectNames& names)
{
    for (NamedObject& object : opened.Moveables) {
        object.ObjectID = level.Moveables[object.Place].ObjectID;
        object.Names = {names.Moveable(level.Version, object.ObjectID),
                        names.Moveable(kTR4, object.ObjectID)};
    }
    for (NamedObject& object : opened.StaticMeshes) {
        object.ObjectID = level.StaticMeshes[object.Place].ObjectID;
        object.Names = {names.Static(object.ObjectID)};
    }
}

/// Sprites have the ids of moveables, and no line in the list.
std::vector<NamedObject> NamedSprites(const ObjectSet& set, const ObjectNames& names)
{
    std::vector<NamedObject> named;
    if (set.Sprites)
        for (const SpriteSequence& sequence : set.Sprites->SpriteSequences)
            named.push_back(
                {named.size(), sequence.ObjectID, {names.Moveable(set.Game, sequence.ObjectID)}});
    return named;
}

OpenedSet WithNames(ObjectSet set, const ObjectNames& names)
{
    OpenedSet opened{.Set = std::move(set), .Moveables = {}, .StaticMeshes = {}, .Sprites = {}};
    opened.Moveables = ListedObjects(opened.Set, opened.Set.Moveables, 0);
    opened.StaticMeshes =
        ListedObjects(opened.Set, opened.Set.StaticMeshes, opened.Set.Moveables.size());
    opened.Sprites = NamedSprites(opened.Set, names);
    return opened;
}

} // namespace

std::vector<std::string> InputsOf(const std::string& file)
{
    auto inputs = EndsWithNoCase(file, ".was") ? FilesOfSet(file) : std::vector{file};
    const auto data = DataFiles(ProgramFolder());
    inputs.insert(inputs.end(), data.begin(), data.end());
    return inputs;
}

int CheckPictureFiles(const std::string& file, const std::string& output, const Streams& streams,
                      bool moves)
{
    const bool isWebP = moves && EndsWithNoCase(output, ".webp");
    try {
        if (!isWebP && !EndsWithNoCase(output, ".png"))
            streams.Errors << "The picture must end in .png" << (moves ? " or .webp" : "") << '\n';
        else if (isWebP ? !HasWebP() : !HasPNG())
            streams.Errors << "This build of the program can't write " << (isWebP ? "WebP" : "PNG")
                           << " files\n";
        else {
            GuardInputs(InputsOf(file), {{output}});
            return kGood;
        }
    } catch (const FileFailure& failure) {
        streams.Errors << failure.what() << '\n';
    }
    return kWrongUse;
}

OpenedSet OpenSet(Session& session, const std::string& file)
{
    LoadObjectIDs("", session.Names, session.Report);
    if (EndsWithNoCase(file, ".was"))
        return WithNames(ReadSet(file), session.Names);
    session.LevelTitle = FileTitle(file);
    LoadLevel(session, file);
    auto set = ConvertLevel(session.Level, session.Names, session.LevelTitle,
                            {.ExportSprites = true}, session.Report);
    if (!set)
        throw ProgramEnd("the level does not convert"); // its message is there
    OpenedSet opened = WithNames(std::move(*set), session.Names);
    if (opened.Set.Game == kTR5)
        NameByLevel(opened, session.Level, session.Names);
    return opened;
}

std::optional<std::size_t> FindObject(const std::vector<NamedObject>& objects,
                                      const std::string& told, Reporter& report)
{
    const std::string wanted = ToUpper(told);
    std::vector<std::string> names;
    for (const NamedObject& object : objects) {
        if (std::to_string(object.ObjectID) == told)
            return object.Place;
        for (const std::string& name : object.Names) {
            names.push_back(ToUpper(name));
            if (names.back() == wanted)
                return object.Place;
        }
    }
    const std::string near = NearNames(wanted, names);
    report.Message("There is no object \"" + Printable(told) + "\"" +
                   (near.empty() ? "" : "; near: " + near));
    return {};
}

} // namespace morlik::cli
