#include "gallery/Store.h"

#include "base/Folders.h"
#include "base/OutputFile.h"
#include "base/Text.h"

#define XXH_INLINE_ALL
#include <filesystem>
#include <xxhash.h>

namespace morlik::gallery
{

namespace
{

constexpr std::size_t kNameDigits = 20;
constexpr std::size_t kFolderDigits = 2; ///< of them, which name a folder: none gets too full

} // namespace

std::string ContentName(std::span<const std::byte> bytes)
{
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, XXH3_128bits(bytes.data(), bytes.size()));
    std::string name;
    for (const unsigned char byte : canonical.digest) {
        name += "0123456789abcdef"[byte >> 4U];
        name += "0123456789abcdef"[byte & 15U];
    }
    return name.substr(0, kNameDigits);
}

std::string Store::Use(const std::string& kind, const std::string& key, const std::string& ending)
{
    std::string name = kind;
    name.append("/").append(key, 0, kFolderDigits);
    name.append("/").append(key, kFolderDigits, std::string::npos).append(ending);
    used_.insert(name);
    return name;
}

bool Store::Has(const std::string& name) const
{
    std::error_code none;
    return std::filesystem::is_regular_file(ToPath(root_) / ToPath(name), none);
}

std::string Store::PathOf(const std::string& name) const
{
    const auto path = ToPath(root_) / ToPath(name);
    MakeFolder(path.parent_path());
    return FromPath(path);
}

std::string Store::Keep(const std::string& kind, std::span<const std::byte> bytes,
                        const std::string& ending, const std::string& title)
{
    const std::string key = ContentName(bytes);
    std::string name;
    if (title.empty()) {
        name = Use(kind, key, ending);
    } else {
        name = kind + "/" + title + "-" + key + ending;
        used_.insert(name);
    }
    if (!Has(name))
        WriteWholeFile(PathOf(name), bytes);
    return name;
}

} // namespace morlik::gallery
