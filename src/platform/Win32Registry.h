#pragma once

#ifdef _WIN32

#include "base/Registry.h"

namespace morlik
{

/// The system's own registry. Names and texts are UTF-8 here and UTF-16 there; values of all types
/// but text are bytes.
class Win32Registry : public Registry
{
public:
    bool CreateKey(RootKey root, const std::string& key) override;
    bool SetValue(RootKey root, const std::string& key, const std::string& name,
                  const RegistryValue& value) override;
    std::optional<RegistryValue> QueryValue(RootKey root, const std::string& key,
                                            const std::string& name) override;
};

} // namespace morlik

#endif
