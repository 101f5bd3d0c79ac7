#include "gallery/ObjectSets.h"

#include "base/Folders.h"
#include "base/SilentHost.h"
#include "base/Text.h"
#include "convert/ObjectNeeds.h"
#include "gltf/SaveGltf.h"
#include "shell/SetFiles.h"
#include "shell/WAD_Main.h"

#include <filesystem>

namespace morlik::gallery
{

namespace
{

/// Keeps the messages of a save; all else is as the run has it.
class SaveHost : public SilentHost
{
public:
    explicit SaveHost(Host& host) : host_(host) {}

    bool StopRequested() const override { return host_.StopRequested(); }
    std::filesystem::path ProgramFolder() const override { return host_.ProgramFolder(); }
    std::string ShortDate() const override { return host_.ShortDate(); }

private:
    Host& host_;
};

/// The names of the sets, "91-DOG", as the models of the objects are called; each is of its own.
std::vector<std::string> TitlesOf(const std::vector<ObjectCard>& cards)
{
    std::vector<GltfObject> objects;
    objects.reserve(cards.size());
    for (const ObjectCard& card : cards)
        objects.push_back({.IsStatic = card.Kind == CardKind::StaticMesh,
                           .Place = 0,
                           .ID = card.ID,
                           .Name = card.Name});
    auto titles = GltfFiles(objects, "", true, {});
    for (std::string& title : titles)
        title = FromPath(ToPath(title).stem());
    return titles;
}

/// Saves a set of one object. Gives its files below `folder`. `ProgramEnd` where the level is at
/// fault.
std::vector<std::string> SaveOne(Session& session, const std::string& folder,
                                 const ObjectPlace& place, const std::string& title)
{
    const LevelData& level = session.Level;
    ObjectChoice choice{.Moveables = std::vector<bool>(level.Moveables.size()),
                        .StaticMeshes = std::vector<bool>(level.StaticMeshes.size())};
    (place.IsStatic ? choice.StaticMeshes : choice.Moveables).at(place.Index) = true;
    const std::string below = "sets/" + title;
    MakeFolder(ToPath(folder) / ToPath(below));
    const std::string set = folder + "/" + below + "/" + title + ".was";
    SaveHost host(session.Report.TheHost()); // what is wrong is told by the card
    Reporter report(host);
    const std::optional<ObjectChoice> objects = choice;
    SaveResult result;
    if (!SaveWAD(set, level,
                 {session.Names, session.MainSFX, session.LevelTitle, report, objects, result,
                  [&] { return AskForMainSFX(session); }})) {
        if (result.Refusal)
            throw FileFailure(*result.Refusal);
        if (host.StopRequested())
            throw Interrupted();
        throw ProgramEnd(host.Texts.empty() ? "There is no set" : host.Texts.back());
    }
    std::vector<std::string> files;
    std::error_code none;
    for (const std::string& file : FilesOfSet(set, level.Version))
        if (std::filesystem::exists(ToPath(file), none))
            files.push_back(file.substr(folder.size() + 1));
    return files;
}

} // namespace

void SaveObjectSets(Session& session, const std::string& folder, std::vector<ObjectCard>& cards)
{
    const std::size_t numMoveables = session.Level.Moveables.size();
    const auto titles = TitlesOf(cards);
    for (std::size_t i = 0; i < cards.size(); ++i) {
        ObjectCard& card = cards[i];
        if (card.Kind == CardKind::Sprites)
            continue;
        if (session.Report.TheHost().StopRequested())
            throw Interrupted();
        const bool isStatic = card.Kind == CardKind::StaticMesh;
        try {
            card.SetFiles = SaveOne(
                session, folder, {.IsStatic = isStatic, .Index = i - (isStatic ? numMoveables : 0)},
                titles[i]);
        } catch (const ProgramEnd& end) {
            card.Fault += card.Fault.empty() ? "" : "; ";
            card.Fault += std::string("no set: ") + end.what();
        }
    }
}

} // namespace morlik::gallery
