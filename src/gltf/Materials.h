#pragma once

#include "gltf/Document.h"
#include "gltf/SaveGltf.h"

#include <compare>
#include <cstdint>
#include <map>

namespace morlik
{

/// What faces of one material have in common.
struct Finish
{
    bool Adds = false;
    bool HasHoles = false;
    std::uint16_t Shine = 0;

    auto operator<=>(const Finish&) const = default; // NOLINT(modernize-use-nullptr)
};

/// The materials of a file, each once. All show the file's only picture.
class Materials
{
public:
    Materials(Document& document, const GltfOptions& options)
        : document_(document), options_(options)
    {
    }

    /// The number of a material, which is made when it is first asked for.
    int NumberOf(const Finish& finish);

private:
    void AddTexture();

    Document& document_;
    const GltfOptions& options_;
    std::map<Finish, int> numbers_;
};

} // namespace morlik
