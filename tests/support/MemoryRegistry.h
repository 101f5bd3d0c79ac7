#pragma once

#include "base/Registry.h"
#include "base/Text.h"

#include <map>
#include <string>
#include <utility>

namespace morlik::test
{

/// A registry in memory, empty at first.
class MemoryRegistry : public Registry
{
public:
    bool RefusesWrites = false; ///< new keys and values are refused
    RootKey RefusedRoot = 0;    ///< they are below this root

    bool CreateKey(RootKey root, const std::string& key) override
    {
        if (!Refuses(root))
            keys_.try_emplace({root, ToLower(key)});
        return !Refuses(root);
    }

    bool SetValue(RootKey root, const std::string& key, const std::string& name,
                  const RegistryValue& value) override
    {
        const auto found = keys_.find({root, ToLower(key)});
        if (Refuses(root) || found == keys_.end())
            return false;
        found->second[ToLower(name)] = value;
        return true;
    }

    std::optional<RegistryValue> QueryValue(RootKey root, const std::string& key,
                                            const std::string& name) override
    {
        const auto found = keys_.find({root, ToLower(key)});
        if (found == keys_.end() || !found->second.contains(ToLower(name)))
            return std::nullopt;
        return found->second[ToLower(name)];
    }

    bool IsEmpty() const { return keys_.empty(); }

private:
    bool Refuses(RootKey root) const { return RefusesWrites || root == RefusedRoot; }

    using Values = std::map<std::string, RegistryValue>;
    std::map<std::pair<RootKey, std::string>, Values> keys_; ///< names in small letters
};

} // namespace morlik::test
