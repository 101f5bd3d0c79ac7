#pragma once

#include "base/Bytes.h"

#include <concepts>
#include <cstddef>
#include <set>
#include <span>
#include <string>
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

/// The files of a gallery that levels share: pictures, sounds and models, each under a name that
/// follows from its content, so that equal ones are there once and none ever changes. A level has a
/// `Store` of its own, which knows the names that its page uses.
class Store
{
public:
    /// `root` is the gallery's folder.
    explicit Store(std::string root) : root_(std::move(root)) {}

    /// "pictures/ab/cdef....png": from here on the level uses it.
    std::string Use(const std::string& kind, const std::string& key, const std::string& ending);
    bool Has(const std::string& name) const;
    /// Where it stands or is to be written; its folder is made.
    std::string PathOf(const std::string& name) const;

    /// A file by its bytes, written where it isn't there yet. `title` stands before its digits.
    /// `FileFailure`.
    std::string Keep(const std::string& kind, std::span<const std::byte> bytes,
                     const std::string& ending, const std::string& title = {});

    const std::set<std::string>& Used() const { return used_; }

private:
    std::string root_;
    std::set<std::string> used_;
};

/// The folders of a store, below the gallery's.
inline constexpr const char* kPictures = "pictures";
inline constexpr const char* kSounds = "sounds";
inline constexpr const char* kModels = "models";

} // namespace morlik::gallery
