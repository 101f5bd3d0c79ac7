#include "shell/Register_Mod.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace morlik
{

namespace
{

constexpr std::string_view kRootPrefix = "HKEY_";

/// Places of the buffer that a text is read into, its terminator included.
constexpr std::size_t kTextBuffer = 255;

struct RootName
{
    std::string_view Name;
    RootKey Root;
};

/// The numbers are those of the system's registry.
constexpr std::array<RootName, 7> kRoots{{
    {"HKEY_CLASSES_ROOT", 0x80000000},
    {"HKEY_CURRENT_USER", kCurrentUser},
    {"HKEY_LOCAL_MACHINE", kLocalMachine},
    {"HKEY_USERS", 0x80000003},
    {"HKEY_PERFORMANCE_DATA", 0x80000004},
    {"HKEY_CURRENT_CONFIG", 0x80000005},
    {"HKEY_DYN_DATA", 0x80000006},
}};

/// Splits `key` in place and gives its root; 0 where the text names none.
RootKey RootOf(std::string& key, Reporter& report)
{
    RootKey root = 0;
    SplitKeyPath(key, root, report);
    return root;
}

std::string TrimBlanks(const std::string& text)
{
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool FitsTextBuffer(const std::string& bytes)
{
    const bool terminated = !bytes.empty() && bytes.back() == '\0';
    return bytes.size() + (terminated ? 0 : 1) <= kTextBuffer;
}

} // namespace

void SplitKeyPath(std::string& key, RootKey& root, Reporter& report)
{
    if (!key.starts_with(kRootPrefix) || key.ends_with('\\')) {
        report.Message("Incorrect Format:\n\n" + key);
        return;
    }
    const auto rootEnd = std::min(key.find('\\'), key.size());
    root = RootKeyFromName(key.substr(0, rootEnd));
    key.erase(0, rootEnd + 1);
}

RootKey RootKeyFromName(const std::string& name)
{
    const auto* const found = std::find_if(kRoots.begin(), kRoots.end(),
                                           [&](const RootName& root) { return root.Name == name; });
    return found == kRoots.end() ? 0 : found->Root;
}

void RegCreateKey(Registry& registry, std::string key, Reporter& report)
{
    if (const RootKey root = RootOf(key, report))
        registry.CreateKey(root, key);
}

void RegWriteBinary(Registry& registry, std::string key, const std::string& name,
                    const std::string& data, Reporter& report)
{
    const RootKey root = RootOf(key, report);
    if (root != 0 && !registry.SetValue(root, key, name, {RegistryType::Binary, data}))
        // "Error when writing the registry": users know the box as it is.
        report.Message("Fout bij het schrijven van het register");
}

void RegWriteText(Registry& registry, std::string key, const std::string& name,
                  const std::string& data, Reporter& report)
{
    if (const RootKey root = RootOf(key, report))
        registry.SetValue(root, key, name, {RegistryType::Text, data});
}

std::string RegReadValue(Registry& registry, std::string key, const std::string& name,
                         Reporter& report)
{
    const RootKey root = RootOf(key, report);
    if (root == 0)
        return {};
    const auto value = registry.QueryValue(root, key, name);
    return value ? value->Bytes : kRegError;
}

std::string RegReadText(Registry& registry, std::string key, const std::string& name,
                        Reporter& report)
{
    const RootKey root = RootOf(key, report);
    if (root == 0)
        return {};
    const auto value = registry.QueryValue(root, key, name);
    if (!value || !FitsTextBuffer(value->Bytes))
        return kRegError;
    auto text = TrimBlanks(value->Bytes);
    if (!text.empty())
        text.pop_back();
    return text;
}

} // namespace morlik
