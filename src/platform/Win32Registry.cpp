#ifdef _WIN32

#include "platform/Win32Registry.h"

#include "platform/Win32Text.h"

#include <cstring>
#include <windows.h>

namespace morlik
{

namespace
{

/// The system sign-extends the number of a root to the width of a handle.
HKEY HandleOf(RootKey root)
{
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(root)));
}

/// An open key, closed at the end of its life.
class OpenKey
{
public:
    OpenKey(RootKey root, const std::string& key, REGSAM access)
        : isOpen_(RegOpenKeyExW(HandleOf(root), ToWide(key).c_str(), 0, access, &handle_) ==
                  ERROR_SUCCESS)
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

    bool Set(const std::string& name, DWORD type, const void* data, std::size_t size) const
    {
        return RegSetValueExW(handle_, ToWide(name).c_str(), 0, type,
                              static_cast<const BYTE*>(data),
                              static_cast<DWORD>(size)) == ERROR_SUCCESS;
    }

    /// The type and the stored bytes of a value; `data` of null asks for the size alone.
    bool Query(const std::string& name, DWORD& type, void* data, DWORD& size) const
    {
        return RegQueryValueExW(handle_, ToWide(name).c_str(), nullptr, &type,
                                static_cast<BYTE*>(data), &size) == ERROR_SUCCESS;
    }

private:
    HKEY handle_ = nullptr;
    bool isOpen_;
};

bool IsText(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

std::string TextOf(const std::string& stored)
{
    std::wstring wide(stored.size() / sizeof(wchar_t), L'\0');
    std::memcpy(wide.data(), stored.data(), wide.size() * sizeof(wchar_t));
    return FromWide(wide);
}

} // namespace

bool Win32Registry::CreateKey(RootKey root, const std::string& key)
{
    HKEY created = nullptr;
    const auto status =
        RegCreateKeyExW(HandleOf(root), ToWide(key).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_CREATE_SUB_KEY, nullptr, &created, nullptr);
    if (status == ERROR_SUCCESS)
        RegCloseKey(created);
    return status == ERROR_SUCCESS;
}

bool Win32Registry::SetValue(RootKey root, const std::string& key, const std::string& name,
                             const RegistryValue& value)
{
    const OpenKey open(root, key, KEY_SET_VALUE);
    if (!open.IsOpen())
        return false;
    if (value.Type == RegistryType::Binary)
        return open.Set(name, REG_BINARY, value.Bytes.data(), value.Bytes.size());
    // The system counts a zero behind the text as part of it; there must be something else.
    const std::wstring text = ToWide(value.Bytes);
    const std::wstring guarded = text + L'.';
    return open.Set(name, REG_SZ, guarded.data(), text.size() * sizeof(wchar_t));
}

std::optional<RegistryValue> Win32Registry::QueryValue(RootKey root, const std::string& key,
                                                       const std::string& name)
{
    const OpenKey open(root, key, KEY_QUERY_VALUE);
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (!open.IsOpen() || !open.Query(name, type, nullptr, size))
        return std::nullopt;
    std::string stored(size, '\0');
    if (!open.Query(name, type, stored.data(), size))
        return std::nullopt;
    stored.resize(size);
    if (IsText(type))
        return RegistryValue{RegistryType::Text, TextOf(stored)};
    return RegistryValue{RegistryType::Binary, std::move(stored)};
}

} // namespace morlik

#endif
