#include "convert/ChooseObjects.h"

#include "base/AnimCommands.h"
#include "base/Narrow.h"
#include "convert/Kept.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>

namespace morlik
{

namespace
{

constexpr std::int64_t kWordBytes = sizeof(std::int16_t);

/// Brings a count after its table. The count of a table that was empty before stays as it was read.
template <class Count, class Element>
void Recount(Count& count, const std::vector<Element>& table)
{
    if (count > 0)
        count = narrow<Count>(table.size());
}

/// Keeps chosen objects and tells where they stood.
template <class Object>
std::vector<std::int32_t> TakeObjects(std::vector<Object>& objects, const std::vector<bool>& chosen)
{
    std::vector<std::int32_t> places;
    std::vector<Object> taken;
    for (std::size_t i = 0; i < objects.size(); ++i)
        if (i < chosen.size() && chosen[i]) {
            places.push_back(narrow<std::int32_t>(i));
            taken.push_back(objects[i]);
        }
    objects = std::move(taken);
    return places;
}

/// The work on one level: first all that stays is marked, from the objects down, then each table
/// is cut and what counts in it renumbered.
class Chooser
{
public:
    Chooser(const LevelData& level, const ObjectChoice& choice)
        : whole_(level),
          allSounds_(choice.AllSounds),
          meshes_(level.MeshPointers.size()),
          trees_(level.MeshTrees.size()),
          animations_(level.Animations.size()),
          changes_(level.StateChanges.size()),
          dispatches_(level.AnimDispatches.size()),
          commands_(level.AnimCommands.size()),
          frames_(level.Frames.size() / kWordBytes),
          firstOfOwner_(level.Animations.size(), -1),
          soundIsNamed_(level.SoundMap.size())
    {
        chosen_.Level = level;
        MarkObjects(choice);
        MarkAnimations();
        for (Kept* kept : {&dispatches_, &commands_, &frames_})
            kept->Number();
        chosen_.Places.Moveables = TakeObjects(chosen_.Level.Moveables, choice.Moveables);
        chosen_.Places.StaticMeshes = TakeObjects(chosen_.Level.StaticMeshes, choice.StaticMeshes);
    }

    ChosenLevel Run()
    {
        LevelData& level = chosen_.Level;
        TakeObjectTables();
        TakeAnimations();
        TakeFrames();
        if (!allSounds_)
            TakeSounds();
        Recount(level.NumMoveables, level.Moveables);
        Recount(level.NumStaticMeshes, level.StaticMeshes);
        Recount(level.NumMeshPointers, level.MeshPointers);
        Recount(level.NumMeshTrees, level.MeshTrees);
        Recount(level.NumAnimations, level.Animations);
        Recount(level.NumStateChanges, level.StateChanges);
        Recount(level.NumAnimDispatches, level.AnimDispatches);
        Recount(level.NumAnimCommands, level.AnimCommands);
        level.NumFrames = narrow<std::int32_t>(chosen_.Frames.size() / kWordBytes);
        return std::move(chosen_);
    }

private:
    void MarkObjects(const ObjectChoice& choice)
    {
        for (std::size_t i = 0; i < whole_.StaticMeshes.size(); ++i)
            if (i < choice.StaticMeshes.size() && choice.StaticMeshes[i])
                meshes_.Keep(whole_.StaticMeshes[i].Mesh, 1);
        for (std::size_t i = 0; i < whole_.Moveables.size(); ++i)
            if (i < choice.Moveables.size() && choice.Moveables[i])
                MarkMoveable(i);
        for (Kept* kept : {&meshes_, &trees_, &animations_})
            kept->Number();
    }

    void MarkMoveable(std::size_t index)
    {
        constexpr std::int64_t kNodeWords = 4;
        const Moveable& moveable = whole_.Moveables[index];
        meshes_.Keep(moveable.StartingMesh, moveable.NumMeshes);
        trees_.Keep(moveable.MeshTree, kNodeWords * (moveable.NumMeshes - std::int64_t{1}));
        const auto size = narrow<std::int32_t>(whole_.Animations.size());
        const std::int32_t first = moveable.Animation;
        if (first < 0 || first >= size)
            return;
        const auto end =
            std::clamp(first + CountAnimations(whole_.Moveables, size, index), first, size);
        animations_.Keep(first, end - first);
        // In a damaged level many objects can have the same animations; the first one is enough.
        for (auto a = first; a < end && firstOfOwner_[static_cast<std::size_t>(a)] == -1; ++a)
            firstOfOwner_[static_cast<std::size_t>(a)] = first;
    }

    void MarkAnimations()
    {
        std::int64_t commandsLeft = kMostCommands;
        for (std::size_t a = 0; a < whole_.Animations.size(); ++a) {
            if (!animations_.Has(static_cast<std::int64_t>(a)))
                continue;
            const Animation& animation = whole_.Animations[a];
            changes_.Keep(animation.StateChange, animation.NumStateChanges);
            MarkCommands(animation, commandsLeft);
            const auto start = animation.FrameOffset / kWordBytes;
            frames_.Keep(start, FramesEnd(a) - start);
        }
        changes_.Number();
        for (std::size_t i = 0; i < whole_.StateChanges.size(); ++i)
            if (changes_.Has(static_cast<std::int64_t>(i)))
                dispatches_.Keep(whole_.StateChanges[i].AnimDispatch,
                                 whole_.StateChanges[i].NumAnimDispatches);
    }

    /// The word where the frames of an animation end: where those of the next one begin.
    std::int64_t FramesEnd(std::size_t animation) const
    {
        if (animation + 1 == whole_.Animations.size())
            return static_cast<std::int64_t>(whole_.Frames.size()) / kWordBytes;
        return whole_.Animations[animation + 1].FrameOffset / kWordBytes;
    }

    void MarkCommands(const Animation& animation, std::int64_t& commandsLeft)
    {
        const auto words = WalkCommands(animation, whole_.AnimCommands, commandsLeft,
                                        [this](std::size_t sound) { NameSound(sound); });
        commands_.Keep(animation.AnimCommand, static_cast<std::int64_t>(words));
    }

    void NameSound(std::size_t sound)
    {
        if (sound < soundIsNamed_.size())
            soundIsNamed_[sound] = true;
    }

    void TakeObjectTables()
    {
        LevelData& level = chosen_.Level;
        for (Moveable& moveable : level.Moveables) {
            moveable.StartingMesh = meshes_.PlaceOf(moveable.StartingMesh);
            moveable.MeshTree = trees_.PlaceOf(moveable.MeshTree);
            moveable.FrameOffset = NewOffset(moveable.FrameOffset);
            moveable.Animation = animations_.PlaceOf(moveable.Animation);
        }
        for (StaticMesh& mesh : level.StaticMeshes)
            mesh.Mesh = meshes_.PlaceOf(mesh.Mesh);
        meshes_.Take(level.MeshPointers);
        trees_.Take(level.MeshTrees);
    }

    void TakeAnimations()
    {
        LevelData& level = chosen_.Level;
        for (std::size_t a = 0; a < level.Animations.size(); ++a) {
            Animation& animation = level.Animations[a];
            const std::int16_t next = animation.NextAnimation;
            if (IsLost(next) && firstOfOwner_[a] != -1) {
                const auto first = static_cast<std::size_t>(firstOfOwner_[a]);
                animation.NextAnimation = animations_.PlaceOf(narrow<std::int16_t>(first));
                animation.NextFrame = whole_.Animations[first].FrameStart;
            } else {
                animation.NextAnimation = animations_.PlaceOf(next);
            }
            animation.FrameOffset = NewOffset(animation.FrameOffset);
            animation.StateChange = changes_.PlaceOf(animation.StateChange);
            animation.AnimCommand = commands_.PlaceOf(animation.AnimCommand);
        }
        for (StateChange& change : level.StateChanges)
            change.AnimDispatch = dispatches_.PlaceOf(change.AnimDispatch);
        // One that leads outside of its object is put right later, as in a whole level.
        for (AnimDispatch& dispatch : level.AnimDispatches)
            dispatch.NextAnimation = IsLost(dispatch.NextAnimation)
                                         ? std::int16_t{-1}
                                         : animations_.PlaceOf(dispatch.NextAnimation);
        animations_.Take(level.Animations);
        changes_.Take(level.StateChanges);
        dispatches_.Take(level.AnimDispatches);
        commands_.Take(level.AnimCommands);
    }

    /// Whether an animation was one of the level and is none of the choice.
    bool IsLost(std::int16_t animation) const
    {
        return Inside(animation, 1, whole_.Animations.size()) && !animations_.Has(animation);
    }

    void TakeFrames()
    {
        for (std::size_t word = 0; word < whole_.Frames.size() / kWordBytes; ++word)
            if (frames_.Has(static_cast<std::int64_t>(word))) {
                const auto bytes = whole_.Frames.subspan(word * kWordBytes, kWordBytes);
                chosen_.Frames.insert(chosen_.Frames.end(), bytes.begin(), bytes.end());
            }
        chosen_.Level.Frames = chosen_.Frames;
    }

    /// Of a byte in the frames.
    std::int32_t NewOffset(std::int32_t offset) const
    {
        if (offset < 0)
            return offset;
        return narrow<std::int32_t>(kWordBytes * frames_.PlaceOf(offset / kWordBytes) +
                                    offset % kWordBytes);
    }

    void TakeSounds()
    {
        LevelData& level = chosen_.Level;
        Kept details(level.SoundDetails.size());
        for (std::size_t slot = 0; slot < level.SoundMap.size(); ++slot) {
            if (soundIsNamed_[slot])
                details.Keep(level.SoundMap[slot], level.SoundMap[slot] < 0 ? 0 : 1);
            else
                level.SoundMap[slot] = -1;
        }
        details.Number();
        for (std::int16_t& detail : level.SoundMap)
            detail = details.PlaceOf(detail);
        details.Take(level.SoundDetails);
        Kept samples(std::max(
            {level.SampleIndices.size(), level.Samples.size(), level.SamplePlaces.size()}));
        for (const SoundDetail& detail : level.SoundDetails)
            samples.Keep(detail.Sample, detail.NumSamples());
        samples.Number();
        for (SoundDetail& detail : level.SoundDetails)
            detail.Sample = samples.PlaceOf(detail.Sample);
        samples.Take(level.SampleIndices);
        samples.Take(level.Samples);
        samples.Take(level.SamplePlaces);
        Recount(level.NumSoundDetails, level.SoundDetails);
        Recount(level.NumSampleIndices, level.SampleIndices);
        Recount(level.NumSamples, level.Samples);
    }

    const LevelData& whole_;
    bool allSounds_;
    Kept meshes_;
    Kept trees_;
    Kept animations_;
    Kept changes_;
    Kept dispatches_;
    Kept commands_;
    Kept frames_;                            ///< words
    std::vector<std::int32_t> firstOfOwner_; ///< by animation; -1 where no chosen object has it
    std::vector<bool> soundIsNamed_;         ///< by sound number
    ChosenLevel chosen_;
};

/// Rows of some of the tiles of another source.
class SomeTiles : public TileRows
{
public:
    SomeTiles(SetTiles all, std::vector<std::int64_t> some)
        : all_(std::move(all)), some_(std::move(some))
    {
    }

    void CopyRow(std::int64_t row, std::byte* out) const override
    {
        const auto tile = some_[static_cast<std::size_t>(row / kTileSide)];
        all_.CopyRow(tile * kTileSide + row % kTileSide, out);
    }

private:
    SetTiles all_;
    std::vector<std::int64_t> some_;
};

} // namespace

bool ObjectChoice::IsAll() const
{
    return Count() == Moveables.size() + StaticMeshes.size();
}

std::size_t ObjectChoice::Count() const
{
    return static_cast<std::size_t>(std::ranges::count(Moveables, true) +
                                    std::ranges::count(StaticMeshes, true));
}

ObjectChoice ChooseAll(const LevelData& level)
{
    return {.Moveables = std::vector<bool>(level.Moveables.size(), true),
            .StaticMeshes = std::vector<bool>(level.StaticMeshes.size(), true)};
}

std::optional<ChosenLevel> ChooseObjects(const LevelData& level,
                                         const std::optional<ObjectChoice>& choice)
{
    if (!choice || choice->IsAll())
        return std::nullopt;
    return Chooser(level, *choice).Run();
}

void DropUnusedTiles(ObjectSet& set)
{
    Kept tiles(static_cast<std::size_t>(set.Tiles.Count()));
    for (const TextInfo& texture : set.Textures)
        tiles.Keep(texture.Tile, 1);
    tiles.Number();
    std::vector<std::int64_t> some;
    for (std::int64_t tile = 0; tile < set.Tiles.Count(); ++tile)
        if (tiles.Has(tile))
            some.push_back(tile);
    for (TextInfo& texture : set.Textures)
        texture.Tile = tiles.PlaceOf(texture.Tile);
    const auto numBytes = static_cast<std::int64_t>(some.size()) * kTileBytes;
    set.Tiles = {numBytes, std::make_shared<SomeTiles>(set.Tiles, std::move(some))};
}

} // namespace morlik
