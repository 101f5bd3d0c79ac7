#include "shell/UserRegistry.h"

#include "shell/Register_Mod.h"

namespace morlik
{

bool UserRegistry::CreateKey(RootKey root, const std::string& key)
{
    return system_->CreateKey(root, key) ||
           (root == kLocalMachine && system_->CreateKey(kCurrentUser, key));
}

bool UserRegistry::SetValue(RootKey root, const std::string& key, const std::string& name,
                            const RegistryValue& value)
{
    const bool stored = system_->SetValue(root, key, name, value);
    if (root != kLocalMachine || (stored && !system_->QueryValue(kCurrentUser, key, name)))
        return stored;
    // The key may be there for the machine alone, made by an administrator or another program.
    return system_->CreateKey(kCurrentUser, key) &&
           system_->SetValue(kCurrentUser, key, name, value);
}

std::optional<RegistryValue> UserRegistry::QueryValue(RootKey root, const std::string& key,
                                                      const std::string& name)
{
    if (root == kLocalMachine) {
        if (auto own = system_->QueryValue(kCurrentUser, key, name))
            return own;
    }
    return system_->QueryValue(root, key, name);
}

} // namespace morlik
