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
    explicit SaveHost(const Host& host) : host_(host) {}

    bool StopRequested() const override { return host_.StopRequested(); }
    std::filesystem::path ProgramFolder() const override { return host_.ProgramFolder(); }
    std::string ShortDate() const override { return host_.ShortDate(); }

private:
    const Host& host_;
};

/// "91-DOG", as the model of the object is called.
std::string TitleOf(const ObjectCard& card)
{
    const GltfObject object{.IsStatic = card.Kind == CardKind::StaticMesh,
                            .Place = 0,
                            .ID = card.ID,
                            .Name = card.Name};
    return FromPath(ToPath(GltfFiles(std::span(&object, 1), "", true, {})[0]).stem());
}

/// Saves a set of one object. Gives its files below `folder`.
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
                 {session.Names, session.MainSFX, session.FMLoad, session.LevelTitle, report,
                  objects, result}))
        throw ProgramEnd(host.Texts.empty() ? "There is no set" : host.Texts.back());
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
                TitleOf(card));
        } catch (const ProgramEnd& end) {
            card.Fault += card.Fault.empty() ? "" : "; ";
            card.Fault += std::string("no set: ") + end.what();
        }
    }
}

} // namespace morlik::gallery
