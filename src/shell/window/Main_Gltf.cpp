// Saves of objects as glTF files: the selected one as a file, the chosen ones into a folder.

#include "base/OutputFile.h"
#include "base/Text.h"
#include "shell/SaveObjects.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/Text.h"

#include <QFileInfo>

namespace morlik
{

void Main_Frm::DoSaveGltf()
{
    if (session_.State.LevelIsLoaded == 0 || !shown_)
        Refuse("There is no level to save objects of: open one first");
    else if (session_.Objects)
        SaveChosenGltf();
    else
        SaveSelectedGltf();
}

GltfObject Main_Frm::ToSave(const ObjectPlace& place) const
{
    const LevelData& level = session_.Level;
    const std::int32_t id = place.IsStatic ? level.StaticMeshes[place.Index].ObjectID
                                           : level.Moveables[place.Index].ObjectID;
    return {.IsStatic = place.IsStatic,
            .Place = place.Index,
            .ID = id,
            .Name = place.IsStatic ? session_.Names.Static(id)
                                   : session_.Names.Moveable(level.Version, id)};
}

void Main_Frm::SaveSelectedGltf()
{
    const auto place = SelectedObject();
    if (!place) {
        Refuse(R"(Select an object, or tick some by "Choose Objects" of the menu "Edit")");
        return;
    }
    const std::vector<GltfObject> objects{ToSave(*place)};
    const auto proposed = GltfFiles(objects, "", true, {}).front();
    const std::string& path = session_.FMSave.FileName;
    if (!AskToSave("glTF files (*.glb;*.gltf)|*.glb;*.gltf", proposed, "glb") ||
        !MayReplace(GltfFiles(objects, path, false, {.InParts = EndsWithNoCase(path, ".gltf")})))
        return;
    if (SaveGltfFiles(objects, path, false))
        TellFoot("Saved " + FromPathText(path));
}

void Main_Frm::SaveChosenGltf()
{
    std::vector<GltfObject> objects;
    for (std::size_t i = 0; i < session_.Objects->Moveables.size(); ++i)
        if (session_.Objects->Moveables[i])
            objects.push_back(ToSave({.IsStatic = false, .Index = i}));
    for (std::size_t i = 0; i < session_.Objects->StaticMeshes.size(); ++i)
        if (session_.Objects->StaticMeshes[i])
            objects.push_back(ToSave({.IsStatic = true, .Index = i}));
    if (objects.empty()) {
        Refuse("No object is chosen: tick those that are to be saved");
        return;
    }
    // Where the last ones went; at first beside the level.
    constexpr const char* kFolderKey = "window/gltfFolder";
    const QFileInfo level(FromPathText(session_.LevelFile));
    FileDialog dialog{.Folder = ToPathText(store_.value(kFolderKey, level.path()).toString())};
    TellFoot("Nothing was saved");
    ShowDialog(kFolderKey, dialog, &Host::ShowFolder);
    session_.FMSave.FileName.clear(); // its question is not for these files
    if (dialog.FileName.empty() || !MayReplace(GltfFiles(objects, dialog.FileName, true, {})))
        return;
    if (SaveGltfFiles(objects, dialog.FileName, true))
        TellFoot(QString("Saved %1 objects into %2")
                     .arg(objects.size())
                     .arg(FromPathText(dialog.FileName)));
}

bool Main_Frm::SaveGltfFiles(const std::vector<GltfObject>& objects, const std::string& path,
                             bool isFolder)
{
    bool complete = false;
    try {
        const GltfOptions options{.InParts = !isFolder && EndsWithNoCase(path, ".gltf")};
        WorkToStop([&] {
            complete = SaveObjects(*shown_, objects, path, isFolder, options, session_.Report);
        });
    } catch (const FileFailure& failure) {
        session_.Report.Message(failure.what());
    } catch (const ReadFailure& failure) {
        session_.Report.Message(failure.what());
    } catch (const Interrupted&) {
        // the foot tells it
    }
    host_.SetProg(0);
    if (!complete)
        TellFoot(isFolder ? "Not all was saved" : "Nothing was saved");
    return complete;
}

} // namespace morlik
