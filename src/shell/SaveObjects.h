#pragma once

#include "gltf/SaveGltf.h"
#include "shell/ShownObjects.h"

namespace morlik
{

/// Writes objects as glTF 2.0, as `SaveGltf` does, by their places in their level: also of a level
/// that does not convert as a whole. Of such a level a file of several objects takes no more than a
/// set does; `ReadFailure` where they are more.
bool SaveObjects(ShownObjects& shown, const std::vector<GltfObject>& objects,
                 const std::string& path, bool isFolder, const GltfOptions& options,
                 Reporter& report);

} // namespace morlik
