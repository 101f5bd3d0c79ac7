#include "shell/SaveObjects.h"

#include "base/Folders.h"

#include <algorithm>
#include <span>

namespace morlik
{

namespace
{

/// Saves objects that stand in one set.
bool SaveTogether(const std::vector<ShownObject>& shown, std::vector<GltfObject> objects,
                  const std::string& path, bool isFolder, const GltfOptions& options,
                  Reporter& report)
{
    for (std::size_t i = 0; i < objects.size(); ++i)
        objects[i].Place = shown[i].Place;
    return SaveGltf(shown.front().In->Set, objects, path, isFolder, options, report);
}

/// Saves objects into files of their own, each from the set that it is in.
bool SaveEach(ShownObjects& shown, const std::vector<GltfObject>& objects,
              const std::string& folder, const GltfOptions& options, Reporter& report)
{
    bool isWhole = true;
    const MessageScope messages(report);
    MakeFolder(ToPath(folder));
    const auto files = GltfFiles(objects, folder, true, options);
    const std::size_t filesOfOne = files.size() / objects.size();
    for (std::size_t i = 0; i < objects.size(); ++i) {
        try {
            const ShownObject object = shown.Find({objects[i].IsStatic, objects[i].Place});
            isWhole &=
                SaveTogether({object}, {objects[i]}, files[i * filesOfOne], false, options, report);
        } catch (const ReadFailure& failure) {
            isWhole = false;
            report.Message(GltfLabel(objects[i]) + " is left out", kAppTitle, failure.what());
        }
    }
    return isWhole;
}

} // namespace

bool SaveObjects(ShownObjects& shown, const std::vector<GltfObject>& objects,
                 const std::string& path, bool isFolder, const GltfOptions& options,
                 Reporter& report)
{
    if (objects.empty())
        return true;
    std::vector<ObjectPlace> places;
    places.reserve(objects.size());
    for (const GltfObject& object : objects)
        places.push_back({object.IsStatic, object.Place});
    if (isFolder && !shown.AreInWhole(places))
        return SaveEach(shown, objects, path, options, report);
    return SaveTogether(shown.FindTogether(places), objects, path, isFolder, options, report);
}

} // namespace morlik
