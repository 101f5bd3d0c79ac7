#include "shell/window/QtRegistry.h"

namespace morlik
{

namespace
{

/// Entry that tells that a key exists.
constexpr const char* kKeyMark = "key";
constexpr const char* kTextMark = "text:";
constexpr const char* kBinaryMark = "binary:";

/// Any bytes may be stored and must come back, so each is a character of its own.
QString FromBytes(const std::string& bytes)
{
    return QString::fromLatin1(QByteArrayView(bytes));
}

/// The group of a key: its root's handle in hexadecimal, then the steps of its path.
QString GroupOf(RootKey root, const std::string& key)
{
    QString group = "registry/" + QString::number(root, 16);
    if (!key.empty())
        group += '/' + FromBytes(key).toLower().replace('\\', '/');
    return group + '/';
}

QString EntryOf(RootKey root, const std::string& key, const std::string& name)
{
    return GroupOf(root, key) + "values/" + FromBytes(name).toLower();
}

} // namespace

bool QtRegistry::CreateKey(RootKey root, const std::string& key)
{
    bool stored = true;
    for (auto end = key.find('\\'); end != std::string::npos; end = key.find('\\', end + 1))
        stored = stored && Store(GroupOf(root, key.substr(0, end)) + kKeyMark, true);
    return stored && Store(GroupOf(root, key) + kKeyMark, true);
}

bool QtRegistry::SetValue(RootKey root, const std::string& key, const std::string& name,
                          const RegistryValue& value)
{
    if (!key.empty() && !store_.contains(GroupOf(root, key) + kKeyMark))
        return false;
    const bool text = value.Type == RegistryType::Text;
    return Store(EntryOf(root, key, name),
                 text ? kTextMark + FromBytes(value.Bytes)
                      : kBinaryMark + QString(QByteArray::fromStdString(value.Bytes).toHex()));
}

std::optional<RegistryValue> QtRegistry::QueryValue(RootKey root, const std::string& key,
                                                    const std::string& name)
{
    const QString stored = store_.value(EntryOf(root, key, name)).toString();
    if (stored.startsWith(kTextMark))
        return RegistryValue{RegistryType::Text, stored.mid(5).toLatin1().toStdString()};
    if (stored.startsWith(kBinaryMark))
        return RegistryValue{RegistryType::Binary,
                             QByteArray::fromHex(stored.mid(7).toLatin1()).toStdString()};
    return std::nullopt;
}

bool QtRegistry::Store(const QString& entry, const QVariant& value)
{
    // The file is written once, when the event loop comes to it: a start stores about twenty
    // values, and the window would wait for the disk twice for each.
    store_.setValue(entry, value);
    return store_.isWritable() && store_.status() == QSettings::NoError;
}

} // namespace morlik
