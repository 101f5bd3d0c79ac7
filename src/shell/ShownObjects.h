#pragma once

#include "convert/ObjectNeeds.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"
#include "picture/TexturePixels.h"
#include "set/ObjectSet.h"

#include <memory>
#include <optional>
#include <string>

namespace morlik
{

/// An object as it can be drawn: its place in a set, and the pixels of the set's tiles.
struct ShownObject
{
    const ObjectSet& Set;
    std::size_t Place = 0;
    TexturePixels& Textures;
};

/// The objects of a level in the editor's form, to look at. The set is made when one is first asked
/// for. A level that does not convert as a whole, such as one of too many textures, gives each of
/// its objects in a set of its own.
class ShownObjects
{
public:
    /// The level must stay as long as this.
    ShownObjects(const LevelData& level, const ObjectNames& names) : level_(level), names_(names) {}

    /// What it refers to stays until the next call. `ReadFailure`, which tells why, for an object
    /// that does not convert by itself either.
    ShownObject Find(const ObjectPlace& place);

    /// The set of the whole level, with its sprites; nothing where it does not convert.
    const ObjectSet* Whole();

private:
    struct Made
    {
        ObjectSet Set;
        TexturePixels Textures;
    };

    /// Gives nothing where the level does not convert; why is in `why_`.
    std::unique_ptr<Made> Make(const std::optional<ObjectChoice>& objects);

    const LevelData& level_;
    const ObjectNames& names_;
    bool wasTried_ = false;
    std::unique_ptr<Made> whole_;
    std::unique_ptr<Made> single_; ///< the last object of a level that does not convert
    ObjectPlace singlePlace_;
    std::string why_;
};

} // namespace morlik
