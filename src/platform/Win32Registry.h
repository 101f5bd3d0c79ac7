#pragma once

#ifdef _WIN32

#include "base/Registry.h"

namespace morlik
{

/// The system's own registry. Its 8-bit calls are used: values are bytes here.
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
