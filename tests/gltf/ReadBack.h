#pragma once

#include "gltf/Document.h"
#include "model/Quaternion.h"
#include "model/Transform.h"
#include "picture/Picture.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace morlik::test
{

/// A glTF file as the library reads it back, with its picture.
struct ReadGltf
{
    tinygltf::Model Tables;
    Picture Image;
};

/// Reads a `.glb` or `.gltf` file; a fault is one of the test.
ReadGltf ReadGltfFile(const std::string& path);

/// All values of an accessor, as floats; shares are 0 to 1.
std::vector<std::vector<double>> ValuesOf(const tinygltf::Model& tables, int accessor);

/// A colour, but none where it is a hole.
inline Colour Shown(Colour colour)
{
    return colour >> 24U == 0 ? 0 : colour;
}

/// A triangle as it is shown: its places, in the game's axes and units, and the colours there.
struct ShownTriangle
{
    std::array<std::array<std::int32_t, 3>, 3> Places{};
    std::array<Colour, 3> Colours{};

    auto operator<=>(const ShownTriangle&) const = default;
    /// Begins at its least corner.
    void TurnToFirst();
};

/// The triangles of a mesh, in order; places are rounded to units of a sector of 2 metres.
std::vector<ShownTriangle> TrianglesOf(const ReadGltf& file, int mesh);

/// Where the nodes of an animation stand, `frame` thirtieths of a second after its start, by their
/// numbers, in metres and the axes of glTF.
std::vector<Transform> NodesAt(const tinygltf::Model& tables, std::optional<std::size_t> animation,
                               double frame);

} // namespace morlik::test
