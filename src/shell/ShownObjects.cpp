#include "shell/ShownObjects.h"

#include "base/SilentHost.h"
#include "convert/ConvertLevel.h"

namespace morlik
{

std::unique_ptr<ShownObjects::Made> ShownObjects::Make(const std::optional<ObjectChoice>& objects)
{
    SilentHost host;
    Reporter report(host);
    why_ = "The level does not convert";
    try {
        auto set =
            ConvertLevel(level_, names_, "", {.ExportSprites = true, .Objects = objects}, report);
        if (set) {
            TexturePixels textures(set->Tiles);
            return std::make_unique<Made>(Made{std::move(*set), std::move(textures)});
        }
    } catch (const ProgramEnd&) {
        // its message is there
    } catch (const ReadFailure& damage) {
        why_ = damage.what();
    }
    if (!host.Texts.empty())
        why_ = host.Texts.back();
    return nullptr;
}

const ObjectSet* ShownObjects::Whole()
{
    if (!wasTried_)
        whole_ = Make({});
    wasTried_ = true;
    return whole_ ? &whole_->Set : nullptr;
}

ShownObject ShownObjects::Find(const ObjectPlace& place)
{
    const ObjectSet* whole = Whole();
    const auto count = [&](const ObjectSet& set) {
        return place.IsStatic ? set.StaticMeshes.size() : set.Moveables.size();
    };
    if (whole != nullptr && place.Index < count(*whole)) // of static meshes a set holds some alone
        return {*whole, place.Index, whole_->Textures};
    if (!single_ || place != singlePlace_) {
        ObjectChoice choice{.Moveables = std::vector<bool>(level_.Moveables.size()),
                            .StaticMeshes = std::vector<bool>(level_.StaticMeshes.size())};
        (place.IsStatic ? choice.StaticMeshes : choice.Moveables).at(place.Index) = true;
        single_ = Make(choice);
        singlePlace_ = place;
    }
    if (!single_)
        throw ReadFailure(why_);
    return {single_->Set, 0, single_->Textures};
}

} // namespace morlik
