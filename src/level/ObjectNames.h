#pragma once

#include "base/VersionCode.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace morlik
{

/// Names of the objects, by their ids in the level files. An id or version without an entry has an
/// empty name.
class ObjectNames
{
public:
    static constexpr std::int32_t kMoveableIDs = 501;
    static constexpr std::int32_t kStaticIDs = 90;

    ObjectNames() { moveables_.fill(std::vector<std::string>(Index(kMoveableIDs))); }

    /// Name of moveable `id` in Tomb Raider I to V.
    const std::string& Moveable(VersionCode version, std::int32_t id) const
    {
        if (!HasMoveable(version, id))
            return none_;
        return moveables_[Index(NumberOf(version) - 1)][Index(id)];
    }
    /// Name of static mesh `id`, the same in all games.
    const std::string& Static(std::int32_t id) const
    {
        if (!HasStatic(id))
            return none_;
        return statics_[Index(id)];
    }

    /// Sets a name; outside the tables that does nothing and gives false.
    bool SetMoveable(VersionCode version, std::int32_t id, std::string name)
    {
        if (HasMoveable(version, id))
            moveables_[Index(NumberOf(version) - 1)][Index(id)] = std::move(name);
        return HasMoveable(version, id);
    }
    bool SetStatic(std::int32_t id, std::string name)
    {
        if (HasStatic(id))
            statics_[Index(id)] = std::move(name);
        return HasStatic(id);
    }

private:
    static std::size_t Index(std::int32_t id) { return static_cast<std::size_t>(id); }
    static bool HasMoveable(VersionCode version, std::int32_t id)
    {
        return GameOf(NumberOf(version)) != kNoLevel && id >= 0 && id < kMoveableIDs;
    }
    static bool HasStatic(std::int32_t id) { return id >= 0 && id < kStaticIDs; }

    std::array<std::vector<std::string>, 5> moveables_; ///< game by game
    std::array<std::string, kStaticIDs> statics_;
    std::string none_;
};

} // namespace morlik
