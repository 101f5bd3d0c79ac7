#pragma once

#include "level/LevelData.h"
#include "set/ObjectSet.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace morlik::cli
{

/// What a mesh looks like without its textures: its vertices, then its faces, each from its least
/// vertex on, in an order of their own. The same in all games and in sets.
using MeshShape = std::vector<std::int16_t>;
/// The meshes of an object in their order.
using Shape = std::vector<MeshShape>;

/// The shapes of the meshes of a level or a set, each made once.
class Shapes
{
public:
    explicit Shapes(const LevelData& level);
    explicit Shapes(const ObjectSet& set);

    /// Of `count` meshes from `first` on. `ReadFailure` where one is damaged or there is none.
    Shape Of(std::int64_t first, std::int64_t count);
    /// Whether meshes have this shape.
    bool AreLike(const Shape& shape, std::int64_t first, std::int64_t count);

private:
    const MeshShape& Mesh(std::int64_t number);

    std::function<MeshShape(std::size_t mesh)> make_;
    std::vector<std::optional<MeshShape>> made_;
};

} // namespace morlik::cli
