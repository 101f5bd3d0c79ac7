#pragma once

#include "convert/ObjectNeeds.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"
#include "picture/TexturePixels.h"
#include "set/ObjectSet.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morlik
{

/// A set to look at, and the pixels of its tiles.
struct ShownSet
{
    explicit ShownSet(ObjectSet set) : Set(std::move(set)), Textures(Set.Tiles) {}

    ObjectSet Set;
    TexturePixels Textures;
};

/// An object as it can be drawn: its place in a set.
struct ShownObject
{
    std::shared_ptr<ShownSet> In;
    std::size_t Place = 0;
};

/// The objects of a level or a set in the editor's form, to look at. The set of a level is made
/// when an object is first asked for. A level that does not convert as a whole gives its objects in
/// sets of some: one of too many textures in sets of as many objects as fit, a damaged one each
/// object by itself.
class ShownObjects
{
public:
    /// The level must stay as long as this.
    ShownObjects(const LevelData& level, const ObjectNames& names)
        : level_(&level), names_(&names), places_(ChooseAll(level))
    {
    }
    explicit ShownObjects(ObjectSet set);

    /// `ReadFailure`, which tells why, for an object that does not convert by itself either.
    ShownObject Find(const ObjectPlace& place);
    /// The same of several, all in one set. `ReadFailure` also where no set takes them all.
    std::vector<ShownObject> FindTogether(const std::vector<ObjectPlace>& places);

    /// The set of the whole level, with its sprites; nothing where it does not convert.
    const ObjectSet* Whole();
    /// Whether objects stand in that set: of static meshes it takes some alone.
    bool AreInWhole(const std::vector<ObjectPlace>& places);
    /// What the conversion of the whole level had to say; the last of it is why it failed, if so.
    const std::vector<std::string>& Messages() const { return messages_; }
    /// Whether more textures are used than a set takes.
    bool HasTooManyTextures();

private:
    /// Gives nothing where the level does not convert; why is the last message.
    std::shared_ptr<ShownSet> Make(const std::optional<ObjectChoice>& objects,
                                   std::vector<std::string>& messages) const;
    const ObjectNeeds* Needs();
    ObjectChoice NoObject() const;
    /// The object and those behind it, as many as a set takes.
    ObjectChoice GroupFrom(const ObjectPlace& place);
    bool MakePart(const ObjectChoice& objects, std::vector<std::string>& messages);

    const LevelData* level_ = nullptr; ///< none of a set that was read
    const ObjectNames* names_ = nullptr;
    ObjectChoice places_; ///< all of the level
    bool wasTried_ = false;
    std::shared_ptr<ShownSet> whole_;
    std::shared_ptr<ShownSet> part_; ///< the last one of a level that does not convert as a whole
    ObjectChoice inPart_;
    bool hasDamagedGroup_ = false;
    std::optional<ObjectNeeds> needs_;
    std::vector<std::string> messages_;
};

} // namespace morlik
