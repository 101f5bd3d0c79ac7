#include "shell/ShownObjects.h"

#include "base/SilentHost.h"
#include "convert/ConvertLevel.h"
#include "convert/UsedTextures.h"

#include <algorithm>

namespace morlik
{

namespace
{

/// The marks of a choice for the objects of a kind.
template <class Choice>
auto& MarksOf(Choice& choice, bool isStatic)
{
    return isStatic ? choice.StaticMeshes : choice.Moveables;
}

bool Has(const ObjectChoice& choice, const ObjectPlace& place)
{
    const auto& marks = MarksOf(choice, place.IsStatic);
    return place.Index < marks.size() && marks[place.Index];
}

/// The place in its table that a chosen object has in the set of the choice.
std::size_t PlaceIn(const ObjectChoice& choice, const ObjectPlace& place)
{
    const auto& marks = MarksOf(choice, place.IsStatic);
    return static_cast<std::size_t>(
        std::count(marks.begin(), marks.begin() + static_cast<std::ptrdiff_t>(place.Index), true));
}

} // namespace

ShownObjects::ShownObjects(ObjectSet set)
    : wasTried_(true), whole_(std::make_shared<ShownSet>(std::move(set)))
{
}

std::shared_ptr<ShownSet> ShownObjects::Make(const std::optional<ObjectChoice>& objects,
                                             std::vector<std::string>& messages) const
{
    SilentHost host;
    Reporter report(host);
    std::optional<ObjectSet> set;
    std::string damage = "The level does not convert";
    try {
        set =
            ConvertLevel(*level_, *names_, "", {.ExportSprites = true, .Objects = objects}, report);
    } catch (const ProgramEnd&) {
        // its message is there
    } catch (const ReadFailure& failure) {
        damage = failure.what();
        host.Texts.push_back(damage);
    }
    messages = std::move(host.Texts);
    if (set)
        return std::make_shared<ShownSet>(std::move(*set));
    if (messages.empty())
        messages.push_back(damage);
    return nullptr;
}

const ObjectSet* ShownObjects::Whole()
{
    if (!wasTried_)
        whole_ = Make({}, messages_);
    wasTried_ = true;
    return whole_ ? &whole_->Set : nullptr;
}

const ObjectNeeds* ShownObjects::Needs()
{
    try {
        if (!needs_)
            needs_ = NeedsOf(*level_);
        return &*needs_;
    } catch (const ReadFailure&) {
        return nullptr;
    }
}

bool ShownObjects::HasTooManyTextures()
{
    return level_ != nullptr && Needs() != nullptr &&
           CountTextures(*Needs(), places_) > kMostTextures;
}

bool ShownObjects::AreInWhole(const std::vector<ObjectPlace>& places)
{
    const ObjectSet* whole = Whole();
    return whole != nullptr && std::ranges::all_of(places, [whole](const ObjectPlace& place) {
               return place.Index <
                      (place.IsStatic ? whole->StaticMeshes.size() : whole->Moveables.size());
           });
}

ObjectChoice ShownObjects::NoObject() const
{
    return {.Moveables = std::vector<bool>(places_.Moveables.size()),
            .StaticMeshes = std::vector<bool>(places_.StaticMeshes.size())};
}

ObjectChoice ShownObjects::GroupFrom(const ObjectPlace& place)
{
    ObjectChoice group = NoObject();
    auto& marks = MarksOf(group, place.IsStatic);
    marks.at(place.Index) = true;
    if (hasDamagedGroup_ || Needs() == nullptr)
        return group;
    const auto& needs = place.IsStatic ? needs_->StaticMeshes : needs_->Moveables;
    TextureList used;
    for (std::size_t i = place.Index; i < needs.size(); ++i) {
        TextureList all;
        std::ranges::set_union(used, needs[i], std::back_inserter(all));
        const bool fits =
            all.size() <= kMostTextures && (!place.IsStatic || i - place.Index < kMostStaticMeshes);
        if (!fits)
            break;
        used = std::move(all);
        marks[i] = true;
    }
    return group;
}

bool ShownObjects::MakePart(const ObjectChoice& objects, std::vector<std::string>& messages)
{
    part_ = Make(objects, messages);
    inPart_ = part_ ? objects : ObjectChoice();
    return part_ != nullptr;
}

ShownObject ShownObjects::Find(const ObjectPlace& place)
{
    if (AreInWhole({place}))
        return {whole_, place.Index};
    std::vector<std::string> messages;
    if (!Has(inPart_, place) && !MakePart(GroupFrom(place), messages)) {
        hasDamagedGroup_ = true;
        if (!MakePart(GroupFrom(place), messages)) // by itself
            throw ReadFailure(messages.back());
    }
    return {part_, PlaceIn(inPart_, place)};
}

std::vector<ShownObject> ShownObjects::FindTogether(const std::vector<ObjectPlace>& places)
{
    std::vector<ShownObject> found;
    if (AreInWhole(places)) {
        for (const ObjectPlace& place : places)
            found.push_back({whole_, place.Index});
        return found;
    }
    ObjectChoice objects = NoObject();
    for (const ObjectPlace& place : places)
        MarksOf(objects, place.IsStatic).at(place.Index) = true;
    std::vector<std::string> messages;
    if (!MakePart(objects, messages))
        throw ReadFailure(messages.back());
    for (const ObjectPlace& place : places)
        found.push_back({part_, PlaceIn(inPart_, place)});
    return found;
}

} // namespace morlik
