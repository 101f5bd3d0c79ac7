#pragma once

#include "base/Bytes.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace morlik::gallery
{

/// 20 hexadecimal digits that stand for some bytes. They tell contents apart, but are no proof
/// against somebody who makes two of the same.
std::string ContentName(std::span<const std::byte> bytes);

/// Values that make up what a file shows, collected to name it before it is made.
class ContentKey
{
public:
    template <class Value>
    requires std::is_arithmetic_v<Value>
    void Add(Value value) { Add(std::as_bytes(std::span(&value, 1))); }
    void Add(std::span<const std::byte> bytes)
    {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    }
    void Add(std::string_view text)
    {
        Add(text.size());
        Add(std::as_bytes(std::span(text)));
    }

    std::string Name() const { return ContentName(bytes_); }

private:
    std::vector<std::byte> bytes_;
};

/// The names that some thread makes just now: others who want the same wait for it.
class Claims
{
public:
    /// Does `make` unless `isThere` tells that it is done already, one thread at a time for a name.
    void Make(const std::string& name, const std::function<bool()>& isThere,
              const std::function<void()>& make);

private:
    std::mutex mutex_;
    std::condition_variable freed_;
    std::set<std::string> names_;
};

/// The files of a gallery that levels share: pictures, sounds and models, each under a name that
/// follows from its content, so that equal ones are there once and none ever changes. A level has a
/// `Store` of its own, which knows the names that its page uses.
class Store
{
public:
    /// `root` is the gallery's folder; `claims` are those of all levels.
    Store(std::string root, Claims& claims) : root_(std::move(root)), claims_(claims) {}

    /// "pictures/ab/cdef....png": from here on the level uses it.
    std::string Use(const std::string& kind, const std::string& key, const std::string& ending);
    /// Lets `make` write the file of that name at the path that it gets, unless it is there.
    void Make(const std::string& name, const std::function<void(const std::string& path)>& make);

    /// A file by its bytes, written where it isn't there yet. `title` stands before its digits.
    /// `FileFailure`.
    std::string Keep(const std::string& kind, std::span<const std::byte> bytes,
                     const std::string& ending, const std::string& title = {});

    const std::set<std::string>& Used() const { return used_; }

private:
    std::string root_;
    Claims& claims_;
    std::set<std::string> used_;
};

/// The folders of a store, below the gallery's.
inline constexpr const char* kPictures = "pictures";
inline constexpr const char* kSounds = "sounds";
inline constexpr const char* kModels = "models";

} // namespace morlik::gallery
