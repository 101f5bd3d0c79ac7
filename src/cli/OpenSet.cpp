#include "cli/OpenSet.h"

#include "base/FileIdentity.h"
#include "base/Files.h"
#include "base/Text.h"
#include "cli/NearNames.h"
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

/// A name of the level's own game stands before one of the editor's.
NamedObject Named(std::size_t place, std::int32_t id, std::string gameName, std::string editorName)
{
    if (gameName.empty())
        std::swap(gameName, editorName);
    return {place, id, {std::move(gameName), std::move(editorName)}};
}

/// The objects of a table by what the list of the set says, from its line `firstLine` on.
template <class Object>
std::vector<NamedObject> ListedObjects(const ObjectSet& set, const std::vector<Object>& objects,
                                       std::size_t firstLine)
{
    std::vector<NamedObject> named;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const std::size_t line = firstLine + i;
        const ListedObject names = line < set.Listed.size() ? set.Listed[line] : ListedObject{};
        named.push_back(Named(i, objects[i].ObjectID, names.GameName, names.EditorName));
    }
    return named;
}

/// The objects with the ids and names that they have in their level.
void NameByLevel(OpenedSet& opened, const LevelData& level, const ObjectNames& names)
{
    for (const Moveable& moveable : level.Moveables) {
        const std::int32_t id = moveable.ObjectID;
        opened.Moveables.push_back(Named(opened.Moveables.size(), id,
                                         names.Moveable(level.Version, id),
                                         names.Moveable(kTR4, id)));
    }
    for (const StaticMesh& mesh : level.StaticMeshes)
        opened.StaticMeshes.push_back(
            {opened.StaticMeshes.size(), mesh.ObjectID, {names.Static(mesh.ObjectID)}});
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

OpenedSet OpenList(const std::string& file, const ObjectNames& names)
{
    OpenedSet opened;
    opened.Objects = std::make_unique<ShownObjects>(ReadSet(file));
    const ObjectSet& set = opened.Whole();
    opened.Moveables = ListedObjects(set, set.Moveables, 0);
    opened.StaticMeshes = ListedObjects(set, set.StaticMeshes, set.Moveables.size());
    opened.Sprites = NamedSprites(set, names);
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

const ObjectSet& OpenedSet::Whole() const
{
    const ObjectSet* set = Objects->Whole();
    if (set == nullptr)
        throw ReadFailure(Objects->Messages().back());
    return *set;
}

OpenedSet OpenSet(Session& session, const std::string& file)
{
    LoadObjectIDs("", session.Names, session.Report);
    if (EndsWithNoCase(file, ".was"))
        return OpenList(file, session.Names);
    LoadLevel(session, file);
    OpenedSet opened;
    opened.Objects = std::make_unique<ShownObjects>(session.Level, session.Names);
    ShownObjects& objects = *opened.Objects;
    const bool isWhole = objects.Whole() != nullptr;
    if (isWhole || !objects.HasTooManyTextures())
        for (const std::string& message : objects.Messages())
            session.Report.Message(message);
    if (!isWhole && !objects.HasTooManyTextures())
        throw ProgramEnd("the level does not convert"); // its message is there
    NameByLevel(opened, session.Level, session.Names);
    if (isWhole)
        opened.Sprites = NamedSprites(*objects.Whole(), session.Names);
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
