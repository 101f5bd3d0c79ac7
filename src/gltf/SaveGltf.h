#pragma once

#include "base/Reporter.h"
#include "set/ObjectSet.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace morlik
{

/// An object to write.
struct GltfObject
{
    bool IsStatic = false; ///< a static mesh, else a moveable
    std::size_t Place = 0; ///< in its table of the set
    std::int32_t ID = 0;
    std::string Name; ///< 8-bit, may be empty
};

/// How glTF files are written.
struct GltfOptions
{
    double SectorMetres = 2;  ///< the width of a sector of a level, 1,024 units
    bool InParts = false;     ///< `.gltf` with `.bin` and `.png` beside it, in place of a `.glb`
    bool HasSkin = false;     ///< moveables as one mesh on bones, not as a tree of meshes
    bool IsLit = false;       ///< materials take light, as no object of the games does
    bool IsSmooth = false;    ///< textures ask for linear filtering, not for nearest pixels
    bool DoubleSided = false; ///< faces show from behind, too
};

/// Number and name of an object, for people.
std::string GltfLabel(const GltfObject& object);

/// The files that `SaveGltf` writes for these objects.
std::vector<std::string> GltfFiles(std::span<const GltfObject> objects, const std::string& path,
                                   bool isFolder, const GltfOptions& options);

/// Writes objects of a set as glTF 2.0: with `isFolder` into the folder `path`, which is made, each
/// as a file of its own under its number and name, else into the one file `path`, each as a scene,
/// the first one the default.
///
/// Objects that are damaged are left out, with a message. Gives whether none was. `FileFailure`
/// where a file can't be written, `Interrupted` where the user stops it, between two objects.
bool SaveGltf(const ObjectSet& set, std::span<const GltfObject> objects, const std::string& path,
              bool isFolder, const GltfOptions& options, Reporter& report);

} // namespace morlik
