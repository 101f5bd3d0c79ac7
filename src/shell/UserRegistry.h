#pragma once

#include "base/Registry.h"

#include <memory>
#include <utility>

namespace morlik
{

/// A registry whose keys of the whole machine (HKEY_LOCAL_MACHINE) are those of the user
/// (HKEY_CURRENT_USER) where the system lets only its administrator write them. Reading looks there
/// first. A value of the user's is kept up with the machine's where that can be written: it would
/// hide the new one.
class UserRegistry : public Registry
{
public:
    explicit UserRegistry(std::unique_ptr<Registry> system) : system_(std::move(system)) {}

    bool CreateKey(RootKey root, const std::string& key) override;
    bool SetValue(RootKey root, const std::string& key, const std::string& name,
                  const RegistryValue& value) override;
    std::optional<RegistryValue> QueryValue(RootKey root, const std::string& key,
                                            const std::string& name) override;

private:
    std::unique_ptr<Registry> system_;
};

} // namespace morlik
