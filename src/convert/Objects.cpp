#include "convert/Objects.h"

#include "base/Narrow.h"
#include "base/Text.h"

namespace morlik
{

namespace
{

/// Objects of Tomb Raider V are known to the editor by their place in the tables of the level.
template <class Object>
void NumberByPlace(std::vector<Object>& objects, const std::vector<std::int32_t>* places)
{
    for (std::size_t i = 0; i < objects.size(); ++i)
        objects[i].ObjectID = places != nullptr ? (*places)[i] : narrow<std::int32_t>(i);
}

} // namespace

void ConvertObjects(ObjectSet& set, const ObjectNames& names, const std::string& levelTitle,
                    const ObjectPlaces* places)
{
    if (set.StaticMeshes.size() > kMostStaticMeshes)
        set.StaticMeshes.resize(kMostStaticMeshes);
    if (set.Game == kTR5) {
        NumberByPlace(set.Moveables, places != nullptr ? &places->Moveables : nullptr);
        NumberByPlace(set.StaticMeshes, places != nullptr ? &places->StaticMeshes : nullptr);
    }
    set.SourceTitle = ToUpper(ToLatin1(levelTitle)); // as the names in the list
    for (const Moveable& moveable : set.Moveables)
        set.Listed.push_back(
            {names.Moveable(kTR4, moveable.ObjectID), names.Moveable(set.Game, moveable.ObjectID)});
    for (const StaticMesh& mesh : set.StaticMeshes)
        set.Listed.push_back({names.Static(mesh.ObjectID), names.Static(mesh.ObjectID)});
}

} // namespace morlik
