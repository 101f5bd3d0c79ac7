#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace morlik
{

/// The few calls of the system that the standard library lacks and files need.

/// Gives the file `fresh` the name `place` in one step: at any moment the one or the other file
/// bears it. What bore it before is gone; where the process ends in between it may bear the name
/// `fresh`, which its number tells. A link there is replaced, not followed.
std::error_code TakePlace(const std::filesystem::path& fresh, const std::filesystem::path& place);

/// A number that a file keeps under all its names, and that no other one has at the time. 0 where
/// there is none, and on systems where `TakePlace` never leaves the old file under the new name.
std::uint64_t FileNumber(const std::filesystem::path& path);

/// Whether another file may take the place of the one at `path`: the old one may be written, as its
/// owner or a mode tells, and no program holds it in a way that forbids it. A missing one may.
std::error_code MayWrite(const std::filesystem::path& path);

/// Makes a folder that people don't see in their lists; its name begins with a point. One that is
/// there is good, but not a link to one.
std::error_code MakeHiddenFolder(const std::filesystem::path& folder);

/// The form that all spellings of a name have in common which are one file to the system.
std::filesystem::path FoldedName(const std::filesystem::path& name);

/// Whether `path` names no file but what the system has instead: standard output, the sink of all.
bool IsStream(std::string_view path);

/// A file that one holder at a time has, in this process or another. The system takes it back from
/// a process that ends, whatever way; the file stays then, and what is in it.
class HeldFile
{
public:
    /// Opens or creates the file at `path`, no link, and holds it. Null where that can't be done:
    /// with `std::errc::device_or_resource_busy` somebody else holds it.
    static std::unique_ptr<HeldFile> Hold(const std::filesystem::path& path,
                                          std::error_code& error);

    HeldFile() = default;
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    virtual ~HeldFile() = default;

    /// What the file holds: the note of this holder or of one before; empty at first.
    virtual std::string Note() const = 0;
    virtual std::error_code SetNote(std::string_view note) = 0;
    /// Removes the file; it is held until the end of this object all the same.
    virtual void Remove() = 0;
};

} // namespace morlik
