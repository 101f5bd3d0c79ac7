#ifdef _WIN32

#include "platform/Win32Registry.h"

#include <windows.h>

namespace morlik
{

namespace
{

/// The system sign-extends the number of a root to the width of a handle.
HKEY HandleOf(RootKey root)
{
    return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(root)));
}

/// An open key, closed at the end of its life.
class OpenKey
{
public:
    OpenKey(RootKey root, const std::string& key, REGSAM access)
        : isOpen_(RegOpenKeyExA(HandleOf(root), key.c_str(), 0, access, &handle_) == ERROR_SUCCESS)
    {
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey()
    {
        if (isOpen_)
            RegCloseKey(handle_);
    }

    bool IsOpen() const { return isOpen_; }
    HKEY Handle() const { return handle_; }

private:
    HKEY handle_ = nullptr;
    bool isOpen_;
};

} // namespace

bool Win32Registry::CreateKey(RootKey root, const std::string& key)
{
    HKEY created = nullptr;
    const auto status =
        RegCreateKeyExA(HandleOf(root), key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_CREATE_SUB_KEY, nullptr, &created, nullptr);
    if (status == ERROR_SUCCESS)
        RegCloseKey(created);
    return status == ERROR_SUCCESS;
}

bool Win32Registry::SetValue(RootKey root, const std::string& key, const std::string& name,
                             const RegistryValue& value)
{
    const OpenKey open(root, key, KEY_SET_VALUE);
    const DWORD type = value.Type == RegistryType::Text ? REG_SZ : REG_BINARY;
    return open.IsOpen() && RegSetValueExA(open.Handle(), name.c_str(), 0, type,
                                           reinterpret_cast<const BYTE*>(value.Bytes.data()),
                                           static_cast<DWORD>(value.Bytes.size())) == ERROR_SUCCESS;
}

std::optional<RegistryValue> Win32Registry::QueryValue(RootKey root, const std::string& key,
                                                       const std::string& name)
{
    const OpenKey open(root, key, KEY_QUERY_VALUE);
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (!open.IsOpen() || RegQueryValueExA(open.Handle(), name.c_str(), nullptr, &type, nullptr,
                                           &size) != ERROR_SUCCESS)
        return std::nullopt;
    RegistryValue value;
    value.Bytes.resize(size);
    if (RegQueryValueExA(open.Handle(), name.c_str(), nullptr, &type,
                         reinterpret_cast<BYTE*>(value.Bytes.data()), &size) != ERROR_SUCCESS)
        return std::nullopt;
    value.Bytes.resize(size); // the size of a text is known only now
    value.Type = type == REG_BINARY ? RegistryType::Binary : RegistryType::Text;
    return value;
}

} // namespace morlik

#endif
