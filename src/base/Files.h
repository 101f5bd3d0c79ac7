#pragma once

#include "base/Bytes.h"
#include "base/Text.h"
#include "base/Uninitialised.h"

#include <stdexcept>
#include <string>
#include <system_error>

namespace morlik
{

/// A file that can't be opened, read or written; `what()` is the message for the user.
class FileFailure : public std::runtime_error
{
public:
    FileFailure(const std::string& doing, const std::string& path, const std::string& reason)
        : std::runtime_error("Can't " + doing + " " + Printable(path) + ": " + reason)
    {
    }
};

/// Why the last call of the system failed, in its words.
std::string LastReason();

/// The whole content of a file in memory.
class FileBytes
{
public:
    /// Reads the file at `path`. A file that can't be opened or is larger than `most`, and anything
    /// that is no plain file, is a `FileFailure`.
    static FileBytes Load(const std::string& path, std::size_t most = kMostBytes);

    /// No input of this program comes near this size; it keeps a wrong pick from filling the
    /// memory.
    static constexpr std::size_t kMostBytes = std::size_t{512} << 20U;

    std::span<const std::byte> Bytes() const { return data_; }

private:
    UninitialisedVector<std::byte> data_;
};

} // namespace morlik
