#include "model/Skeleton.h"

#include "base/Narrow.h"
#include "model/Damage.h"

namespace morlik
{

namespace
{

constexpr std::size_t kNodeWords = 4;
constexpr std::int32_t kPop = 1;
constexpr std::int32_t kPush = 2;

} // namespace

std::size_t NumMeshesOf(const ObjectSet& set, std::size_t moveable)
{
    if (moveable >= set.Moveables.size())
        FailDamaged("moveable ", moveable, " of ", set.Moveables.size());
    const auto count = set.Moveables[moveable].NumMeshes;
    if (count <= 0)
        FailDamaged("moveable ", moveable, ": ", count, " meshes");
    return static_cast<std::size_t>(count);
}

Skeleton SkeletonOf(const ObjectSet& set, std::size_t moveable)
{
    const std::size_t meshes = NumMeshesOf(set, moveable);
    const std::int64_t first = set.Moveables[moveable].MeshTree;
    const std::size_t words = (meshes - 1) * kNodeWords;
    if (!Inside(first, static_cast<std::int64_t>(words), set.MeshTrees.size()))
        FailDamaged("moveable ", moveable, ": mesh tree of ", words, " words at word ", first,
                    " of ", set.MeshTrees.size());
    Skeleton skeleton(meshes);
    std::vector<std::size_t> stack;
    for (std::size_t mesh = 1; mesh < meshes; ++mesh) {
        const std::int32_t* node =
            &set.MeshTrees[static_cast<std::size_t>(first) + (mesh - 1) * kNodeWords];
        if ((node[0] & ~(kPop | kPush)) != 0)
            FailDamaged("moveable ", moveable, ", mesh ", mesh, ": mesh tree flags ", node[0]);
        std::size_t parent = mesh - 1;
        if ((node[0] & kPop) != 0 && mesh > 1) {
            if (stack.empty())
                FailDamaged("moveable ", moveable, ", mesh ", mesh,
                            ": mesh tree takes from the empty stack");
            parent = stack.back();
            stack.pop_back();
        }
        if ((node[0] & kPush) != 0)
            stack.push_back(parent);
        skeleton[mesh] = {.Parent = parent, .X = node[1], .Y = node[2], .Z = node[3]};
    }
    return skeleton;
}

} // namespace morlik
