#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace morlik
{

/// Type of a value in the registry.
enum class RegistryType : std::uint8_t
{
    Text,
    Binary,
};

struct RegistryValue
{
    RegistryType Type = RegistryType::Text;
    std::string Bytes; ///< as they are stored; a text may count its terminating zero among them

    bool operator==(const RegistryValue&) const = default;
};

/// A root of the registry, by the number of its handle; 0 is none.
using RootKey = std::uint32_t;

/// The store of the settings: keys below a root, each with named values. A key is named by the path
/// from its root, with `\` between the steps; the empty path is the root itself. Names of keys and
/// values compare without regard to the case of ASCII letters. No operation throws: each tells
/// whether it succeeded.
class Registry
{
public:
    virtual ~Registry() = default;

    /// Creates the key with what is missing above it. A key that is there already is a success.
    virtual bool CreateKey(RootKey root, const std::string& key) = 0;

    /// Sets a value of an existing key; fails where there is no such key.
    virtual bool SetValue(RootKey root, const std::string& key, const std::string& name,
                          const RegistryValue& value) = 0;

    /// The value, or nothing where the key or the value can't be read.
    virtual std::optional<RegistryValue> QueryValue(RootKey root, const std::string& key,
                                                    const std::string& name) = 0;

protected:
    Registry() = default;
    Registry(const Registry&) = default;
    Registry(Registry&&) = default;
    Registry& operator=(const Registry&) = default;
    Registry& operator=(Registry&&) = default;
};

} // namespace morlik
