#pragma once

#include "base/Registry.h"

#include <QSettings>

namespace morlik
{

/// The registry where the system has none: the user's settings file. A key is a group that holds
/// an entry for itself; names are kept in small letters, since they compare without regard to case.
class QtRegistry : public Registry
{
public:
    explicit QtRegistry(QSettings& store) : store_(store) {}

    bool CreateKey(RootKey root, const std::string& key) override;
    bool SetValue(RootKey root, const std::string& key, const std::string& name,
                  const RegistryValue& value) override;
    std::optional<RegistryValue> QueryValue(RootKey root, const std::string& key,
                                            const std::string& name) override;

private:
    bool Store(const QString& entry, const QVariant& value);

    QSettings& store_;
};

} // namespace morlik
