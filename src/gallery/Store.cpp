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

void Claims::Make(const std::string& name, const std::function<bool()>& isThere,
                  const std::function<void()>& make)
{
    {
        std::unique_lock lock(mutex_);
        freed_.wait(lock, [&] { return !names_.contains(name); });
        names_.insert(name);
    }
    struct Claim
    {
        Claims& All;
        const std::string& Name;
        ~Claim()
        {
            const std::lock_guard lock(All.mutex_);
            All.names_.erase(Name);
            All.freed_.notify_all();
        }
    };
    const Claim claim{*this, name};
    if (!isThere())
        make();
}

std::string Store::Use(const std::string& kind, const std::string& key, const std::string& ending)
{
    std::string name = kind;
    name.append("/").append(key, 0, kFolderDigits);
    name.append("/").append(key, kFolderDigits, std::string::npos).append(ending);
    used_.insert(name);
    return name;
}

void Store::Make(const std::string& name, const std::function<void(const std::string&)>& make)
{
    const auto path = ToPath(root_) / ToPath(name);
    const auto isThere = [&path] {
        std::error_code none;
        return std::filesystem::is_regular_file(path, none);
    };
    claims_.Make(name, isThere, [&] {
        MakeFolder(path.parent_path());
        make(FromPath(path));
    });
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
    Make(name, [&](const std::string& path) { WriteWholeFile(path, bytes); });
    return name;
}

} // namespace morlik::gallery
