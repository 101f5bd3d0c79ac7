#pragma once

#include "gltf/Decode.h"
#include "gltf/Document.h"
#include "picture/TexturePixels.h"

#include <span>
#include <string>

namespace morlik
{

/// Makes a glTF file of objects, each of which is a scene.
///
/// A moveable is a tree of nodes, one for each mesh, as they hang on each other, in the first frame
/// of its first animation; with a skin they are bones, and one mesh hangs on them. A static mesh is
/// one node. `name` is what the files are called that hold its parts, empty for a `.glb`.
/// `ReadFailure` where the textures are too many for one picture.
DocumentFiles MakeGltf(const ObjectSet& set, std::span<const DecodedObject> objects,
                       const std::string& name, const GltfOptions& options,
                       TexturePixels& textures);

/// What an object is called in a file, in UTF-8.
std::string GltfName(const GltfObject& object);

} // namespace morlik
