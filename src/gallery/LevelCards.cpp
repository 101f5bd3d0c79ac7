#include "gallery/LevelCards.h"

#include "audio/AnimationSounds.h"
#include "audio/PlainWave.h"
#include "audio/WaveInfo.h"
#include "base/SampleLookup.h"
#include "base/Text.h"
#include "gallery/Pictures.h"
#include "gltf/MakeGltf.h"
#include "gltf/SaveGltf.h"
#include "model/Animations.h"
#include "model/Damage.h"
#include "set/Sounds.h"
#include "shell/ShownObjects.h"
#include "shell/Sounds.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace morlik::gallery
{

namespace
{

/// What all objects of a level may have together; damaged tables may lead to the same parts again
/// and again. Intact ones come to a tenth of it.
constexpr std::size_t kMostAnimations = std::size_t{1} << 18U;
constexpr std::size_t kMostCommands = std::size_t{1} << 22U; ///< of these
constexpr std::size_t kMostParts = std::size_t{1} << 22U;    ///< vertices and faces

/// Takes so many of what is left for all objects.
void Take(std::size_t& left, std::size_t count, const char* what)
{
    if (count > left)
        FailDamaged("objects: they share their ", what, " again and again");
    left -= count;
}

std::size_t CountParts(const Model& model)
{
    std::size_t parts = 1;
    for (const MeshGeometry& mesh : model.Meshes)
        parts += mesh.Positions.size() + mesh.Faces.size();
    return parts;
}

/// Makes the cards of the objects, one after the other.
class ObjectCards
{
public:
    ObjectCards(Session& session, const CardOptions& options, Store& store)
        : session_(session),
          options_(options),
          store_(store),
          pictures_(store, budget_),
          shown_(session.Level, session.Names)
    {
    }

    std::vector<ObjectCard> Make()
    {
        const LevelData& level = session_.Level;
        std::vector<ObjectCard> cards;
        for (std::size_t i = 0; i < level.Moveables.size(); ++i) {
            GiveTurn(cards.size());
            cards.push_back(MoveableCard(i));
        }
        for (std::size_t i = 0; i < level.StaticMeshes.size(); ++i) {
            GiveTurn(cards.size());
            cards.push_back(StaticCard(i));
        }
        AddSprites(cards);
        return cards;
    }

    std::string Strip()
    {
        std::ranges::sort(strip_, {}, &StripPicture::Number);
        std::vector<Picture> pictures;
        for (StripPicture& picture : strip_)
            pictures.push_back(std::move(picture.Shown));
        return pictures_.Strip(pictures);
    }

private:
    /// A candidate for the strip.
    struct StripPicture
    {
        std::size_t Number = 0; ///< by which they stand in it
        std::size_t Faces = 0;  ///< those with the most are taken
        Picture Shown;
    };

    void GiveTurn(std::size_t done)
    {
        Host& host = session_.Report.TheHost();
        const std::size_t all =
            session_.Level.Moveables.size() + session_.Level.StaticMeshes.size();
        constexpr float kPercent = 100;
        host.SetProg(kPercent * static_cast<float>(done) / static_cast<float>(all));
        host.GiveTurn();
        if (host.StopRequested())
            throw Interrupted();
    }

    ObjectCard MoveableCard(std::size_t index)
    {
        const LevelData& level = session_.Level;
        const Moveable& moveable = level.Moveables[index];
        const ObjectNames& names = session_.Names;
        ObjectCard card{.Kind = CardKind::Moveable,
                        .ID = moveable.ObjectID,
                        .Name = FromLatin1(names.Moveable(level.Version, moveable.ObjectID)),
                        .EditorName = FromLatin1(names.Moveable(kTR4, moveable.ObjectID)),
                        .Meshes = moveable.NumMeshes,
                        .Sounds = SoundsOf(index)};
        Show(card, {.IsStatic = false, .Index = index});
        return card;
    }

    ObjectCard StaticCard(std::size_t index)
    {
        const StaticMesh& mesh = session_.Level.StaticMeshes[index];
        const std::string name = FromLatin1(session_.Names.Static(mesh.ObjectID));
        ObjectCard card{.Kind = CardKind::StaticMesh,
                        .ID = mesh.ObjectID,
                        .Name = name,
                        .EditorName = name,
                        .Meshes = 1};
        Show(card, {.IsStatic = true, .Index = index});
        return card;
    }

    void AddSprites(std::vector<ObjectCard>& cards)
    {
        const ObjectSet* const whole = shown_.Whole();
        if (whole == nullptr || !whole->Sprites)
            return;
        TexturePixels textures(whole->Sprites->Tiles);
        const ObjectNames& names = session_.Names;
        for (const SpriteSequence& sequence : whole->Sprites->SpriteSequences) {
            ObjectCard card{
                .Kind = CardKind::Sprites,
                .ID = sequence.ObjectID,
                .Name = FromLatin1(names.Moveable(session_.Level.Version, sequence.ObjectID)),
                .EditorName = FromLatin1(names.Moveable(kTR4, sequence.ObjectID)),
                .Meshes = -std::int64_t{sequence.NegatedCount}};
            Try(card, [&] { card.Still = pictures_.Sprites(*whole->Sprites, sequence, textures); });
            cards.push_back(std::move(card));
        }
    }

    /// Does a part of the work for a card; a damaged object costs that part alone.
    template <class Work>
    static void Try(ObjectCard& card, const Work& work)
    {
        try {
            work();
        } catch (const ReadFailure& failure) {
            if (card.Fault.empty())
                card.Fault = failure.what();
        }
    }

    void Show(ObjectCard& card, const ObjectPlace& place)
    {
        Try(card, [&] {
            const ShownObject shown = shown_.Find(place);
            const Model model = place.IsStatic ? ModelOfStaticMesh(shown.In->Set, shown.Place)
                                               : ModelOfMoveable(shown.In->Set, shown.Place);
            Take(partsLeft_, CountParts(model), "meshes");
            Try(card, [&] { AddTiles(card, model, shown); });
            if (!place.IsStatic)
                Try(card, [&] { AddAnimations(card, shown); });
            Try(card, [&] { AddViews(card, model, shown, place.IsStatic); });
            if (options_.HasModels)
                Try(card, [&] { AddModel(card, shown, place); });
        });
    }

    void AddTiles(ObjectCard& card, const Model& model, const ShownObject& shown)
    {
        using Box = std::tuple<std::uint8_t, std::uint8_t, std::uint8_t, std::uint8_t>;
        std::map<std::int32_t, std::map<Box, TextInfo>> boxes; // by their tiles, from the top on
        for (const MeshGeometry& mesh : model.Meshes)
            for (const GeometryFace& face : mesh.Faces)
                if (!face.IsColour) {
                    const TextInfo& box = shown.In->Set.Textures[face.Texture];
                    boxes[box.Tile].try_emplace({box.Y, box.X, box.Height, box.Width}, box);
                }
        for (const auto& [tile, ofTile] : boxes) {
            card.Textures += ofTile.size();
            shown.In->Textures.Need({tile});
            TileCard& made = card.Tiles.emplace_back();
            made.Picture = pictures_.Tile(tile, shown.In->Textures);
            for (const auto& [order, box] : ofTile)
                made.Boxes.push_back(box);
        }
    }

    void AddAnimations(ObjectCard& card, const ShownObject& shown)
    {
        const AnimationRange range = AnimationsOf(shown.In->Set, shown.Place);
        Take(animationsLeft_, range.Count, "animations");
        for (std::size_t i = 0; i < range.Count; ++i) {
            const Animation& record = shown.In->Set.Animations[range.First + i];
            const int frames = record.FrameEnd - record.FrameStart + 1;
            AnimationCard& made = card.Animations.emplace_back();
            made.Frames = static_cast<std::size_t>(std::max(frames, 1));
            if (i < options_.Animations)
                Try(card, [&] {
                    made.Moving =
                        pictures_.Moving(shown.In->Set, shown.Place, i, shown.In->Textures);
                });
        }
    }

    void AddViews(ObjectCard& card, const Model& model, const ShownObject& shown, bool isStatic)
    {
        const Scene scene =
            SceneOf(shown.In->Set, model,
                    isStatic ? std::vector<Transform>(model.Meshes.size())
                             : TransformsAt(shown.In->Set, shown.Place, model.Joints, {}));
        card.Still = pictures_.Still(scene, shown.In->Textures);
        if (card.Still.empty())
            return;
        card.Turning = pictures_.Turning(scene, shown.In->Textures);
        if (const bool isNew = onStrip_.insert(card.Still).second; isNew)
            OfferToStrip(scene, shown.In->Textures);
    }

    void OfferToStrip(const Scene& scene, TexturePixels& textures)
    {
        const auto least = std::ranges::min_element(strip_, {}, &StripPicture::Faces);
        if (strip_.size() == kStripObjects) {
            if (least->Faces >= scene.Faces.size())
                return;
            strip_.erase(least);
        }
        strip_.push_back(
            {onStrip_.size(), scene.Faces.size(), Pictures::ForStrip(scene, textures)});
    }

    void AddModel(ObjectCard& card, const ShownObject& shown, const ObjectPlace& place)
    {
        const GltfObject object{
            .IsStatic = place.IsStatic, .Place = shown.Place, .ID = card.ID, .Name = NameOf(place)};
        const DecodedObject decoded = Decode(shown.In->Set, object, allowance_);
        const auto file =
            MakeGltf(shown.In->Set, std::span(&decoded, 1), "", {}, shown.In->Textures);
        const std::string name = GltfFiles(std::span(&object, 1), "", true, {})[0];
        constexpr std::string_view kEnding = ".glb";
        card.Model = store_.Keep(kModels, std::as_bytes(std::span(file.Main)), std::string(kEnding),
                                 name.substr(0, name.size() - kEnding.size()));
    }

    /// Its 8-bit name, as glTF takes it.
    std::string NameOf(const ObjectPlace& place) const
    {
        const LevelData& level = session_.Level;
        return place.IsStatic
                   ? session_.Names.Static(level.StaticMeshes[place.Index].ObjectID)
                   : session_.Names.Moveable(level.Version, level.Moveables[place.Index].ObjectID);
    }

    std::vector<std::int32_t> SoundsOf(std::size_t moveable)
    {
        const LevelData& level = session_.Level;
        const std::int32_t first = level.Moveables[moveable].Animation;
        std::set<std::int32_t> slots;
        const std::int32_t count =
            first < 0 ? 0 : CountAnimations(level.Moveables, level.NumAnimations, moveable);
        for (std::int32_t i = first; i < first + count; ++i) {
            const Animation* const animation = FindIn(level.Animations, i);
            const int commands = animation != nullptr ? animation->NumAnimCommands : 0;
            const auto cost = static_cast<std::size_t>(std::max(commands, 0)) + 1;
            if (cost > commandsLeft_)
                break; // the further ones are left out, as in all that tells of sounds
            commandsLeft_ -= cost;
            for (const SoundAt& sound :
                 SoundsOfAnimation(level, session_.MainSFX, static_cast<std::size_t>(i)))
                slots.insert(sound.Sound);
        }
        return {slots.begin(), slots.end()};
    }

    Session& session_;
    const CardOptions& options_;
    Store& store_;
    MovingBudget budget_;
    Pictures pictures_;
    ShownObjects shown_;
    std::vector<StripPicture> strip_;
    std::set<std::string> onStrip_; ///< pictures of objects that were offered
    Allowance allowance_;           ///< of all models
    std::size_t animationsLeft_ = kMostAnimations;
    std::size_t commandsLeft_ = kMostCommands;
    std::size_t partsLeft_ = kMostParts;
};

/// The sounds by their slots, those with a sample that is there.
std::vector<SoundCard> MakeSounds(const Session& session, Store& store)
{
    std::vector<SoundCard> cards;
    std::size_t bytes = 0;
    const std::size_t numSlots = SlotsInUse(session.Level).size();
    for (std::size_t i = 0; i < numSlots; ++i) {
        SoundCard card{.Slot = static_cast<std::int32_t>(i), .Samples = {}};
        for (const auto wave : SamplesOfSound(session.Level, session.MainSFX, card.Slot)) {
            bytes += wave.size();
            LimitWaveBytes(bytes);
            SampleCard& sample = card.Samples.emplace_back();
            try {
                sample.Facts = Describe(ReadWaveInfo(wave));
                sample.File = store.Keep(kSounds, PlainWave(wave), ".wav");
            } catch (const ReadFailure& failure) {
                sample.Facts = failure.what();
            }
        }
        if (!card.Samples.empty())
            cards.push_back(std::move(card));
    }
    return cards;
}

} // namespace

LevelCards MakeCards(Session& session, const CardOptions& options, Store& store)
{
    LevelCards cards{.Title = session.LevelTitle,
                     .Game = session.Level.Version,
                     .Rooms = session.State.RoomCount,
                     .Textures = session.Level.NumTextInfo,
                     .Objects = {},
                     .Sounds = {},
                     .Strip = {}};
    ObjectCards objects(session, options, store);
    cards.Objects = objects.Make();
    cards.Strip = objects.Strip();
    try {
        cards.Sounds = MakeSounds(session, store);
    } catch (const SoundsDamaged& failure) {
        session.Report.Message(kSoundsDamaged, kAppTitle, failure.what());
    }
    return cards;
}

} // namespace morlik::gallery
