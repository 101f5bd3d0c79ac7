#include "convert/ObjectNeeds.h"

#include "base/AnimCommands.h"
#include "base/Narrow.h"
#include "convert/RawMesh.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace morlik
{

namespace
{

void SortUnique(TextureList& numbers)
{
    std::ranges::sort(numbers);
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

/// The textures of each mesh, read once.
class MeshTextures
{
public:
    explicit MeshTextures(const LevelData& level)
        : level_(level), budget_(level.MeshData.size()), textures_(level.MeshPointers.size())
    {
    }

    void AddTo(TextureList& numbers, std::int64_t mesh)
    {
        if (!Inside(mesh, 1, textures_.size()))
            return;
        auto& textures = textures_[static_cast<std::size_t>(mesh)];
        if (!textures)
            textures = Read(static_cast<std::size_t>(mesh));
        if (textures->size() > left_)
            throw ReadFailure("objects: they share their meshes again and again");
        left_ -= textures->size();
        numbers.insert(numbers.end(), textures->begin(), textures->end());
    }

private:
    TextureList Read(std::size_t mesh)
    {
        const auto raw =
            ReadRawMesh(level_.MeshData, level_.MeshPointers[mesh], IsOlderGame(level_.Version));
        budget_.Spend(raw.SourceBytes);
        TextureList numbers;
        for (const auto* faces : {&raw.Rectangles, &raw.Triangles})
            for (const RawFace& face : *faces) {
                const std::size_t texture = static_cast<std::uint16_t>(face.Texture);
                if (texture < level_.Textures.size())
                    numbers.push_back(level_.Textures[texture].TextureRemap);
            }
        SortUnique(numbers);
        return numbers;
    }

    /// Textures that are added up, far more than any intact level has.
    static constexpr std::size_t kMostAdded = std::size_t{1} << 22U;

    const LevelData& level_;
    std::size_t left_ = kMostAdded;
    MeshBudget budget_;
    std::vector<std::optional<TextureList>> textures_; ///< by mesh number
};

/// Calls `visit` with each chosen object and its textures.
template <class Visit>
void ForChosen(const ObjectNeeds& needs, const ObjectChoice& choice, Visit visit)
{
    for (std::size_t i = 0; i < needs.Moveables.size(); ++i)
        if (choice.Moveables[i])
            visit(ObjectPlace{false, i}, needs.Moveables[i]);
    for (std::size_t i = 0; i < needs.StaticMeshes.size(); ++i)
        if (choice.StaticMeshes[i])
            visit(ObjectPlace{true, i}, needs.StaticMeshes[i]);
}

/// By texture, how many of the chosen objects use it.
std::vector<std::size_t> CountUsers(const ObjectNeeds& needs, const ObjectChoice& choice)
{
    std::vector<std::size_t> users;
    ForChosen(needs, choice, [&users](const ObjectPlace&, const TextureList& textures) {
        if (!textures.empty() && users.size() <= static_cast<std::size_t>(textures.back()))
            users.resize(static_cast<std::size_t>(textures.back()) + 1);
        for (const auto texture : textures)
            ++users[static_cast<std::size_t>(texture)];
    });
    return users;
}

std::size_t CountUsed(const std::vector<std::size_t>& users)
{
    return users.size() - static_cast<std::size_t>(std::ranges::count(users, std::size_t{0}));
}

} // namespace

ObjectNeeds NeedsOf(const LevelData& level)
{
    MeshTextures meshes(level);
    ObjectNeeds needs;
    for (const Moveable& moveable : level.Moveables) {
        TextureList& numbers = needs.Moveables.emplace_back();
        for (int i = 0; i < moveable.NumMeshes; ++i)
            meshes.AddTo(numbers, std::int64_t{moveable.StartingMesh} + i);
        SortUnique(numbers);
    }
    for (const StaticMesh& mesh : level.StaticMeshes)
        meshes.AddTo(needs.StaticMeshes.emplace_back(), mesh.Mesh);
    return needs;
}

std::vector<AnimationNeeds> AnimationNeedsOf(const LevelData& level)
{
    std::vector<AnimationNeeds> needs;
    std::int64_t commandsLeft = kMostCommands;
    std::int64_t animationsLeft = kMostCommands;
    for (std::size_t i = 0; i < level.Moveables.size(); ++i) {
        AnimationNeeds& own = needs.emplace_back();
        const auto size = narrow<std::int32_t>(level.Animations.size());
        const std::int32_t first = level.Moveables[i].Animation;
        if (first < 0 || first >= size)
            continue;
        own.Animations = CountAnimations(level.Moveables, size, i);
        std::set<std::size_t> sounds;
        for (auto a = first; a < std::clamp(first + own.Animations, first, size); ++a) {
            const Animation& animation = level.Animations[static_cast<std::size_t>(a)];
            if (--animationsLeft < 0)
                break;
            if (animation.FrameRate > 0 && animation.FrameEnd >= animation.FrameStart)
                own.Frames += (animation.FrameEnd - animation.FrameStart) / animation.FrameRate + 1;
            WalkCommands(animation, level.AnimCommands, commandsLeft,
                         [&](std::size_t sound) { sounds.insert(sound); });
        }
        own.Sounds = sounds.size();
    }
    return needs;
}

std::size_t CountTextures(const ObjectNeeds& needs, const ObjectChoice& choice)
{
    return CountUsed(CountUsers(needs, choice));
}

std::size_t CountTiles(const ObjectNeeds& needs, const ObjectChoice& choice, const LevelData& level)
{
    const auto users = CountUsers(needs, choice);
    std::set<std::int16_t> tiles;
    for (std::size_t texture = 0; texture < users.size(); ++texture)
        if (users[texture] > 0)
            tiles.insert(level.Textures[texture].Info.Tile);
    return tiles.size() + (IsOlderGame(level.Version) ? 1 : 0);
}

std::vector<ObjectPlace> FitChoice(const ObjectNeeds& needs, ObjectChoice& choice,
                                   std::size_t mostTextures)
{
    std::vector<ObjectPlace> leftOut;
    for (auto users = CountUsers(needs, choice); CountUsed(users) > mostTextures;
         users = CountUsers(needs, choice)) {
        ObjectPlace largest;
        std::pair<std::size_t, std::size_t> most; // own textures, then all
        ForChosen(needs, choice, [&](const ObjectPlace& place, const TextureList& textures) {
            const auto own = std::ranges::count_if(textures, [&](std::int32_t texture) {
                return users[static_cast<std::size_t>(texture)] == 1;
            });
            const std::pair weight{static_cast<std::size_t>(own), textures.size()};
            if (weight > most) {
                most = weight;
                largest = place;
            }
        });
        (largest.IsStatic ? choice.StaticMeshes : choice.Moveables)[largest.Index] = false;
        leftOut.push_back(largest);
    }
    return leftOut;
}

} // namespace morlik
