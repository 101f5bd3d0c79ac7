#pragma once

#include "base/OutputFile.h"
#include "system/FileCalls.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace morlik
{

/// Files of one folder, and of folders below it, that appear together or not at all: the files of
/// an object set, or a single file. Until then they stand, under their own names, in a hidden
/// folder beside their places, ".morlik-" and a number that follows from the group's name. A file
/// ".morlik-held" in it keeps others away that write the same group.
///
/// Once all are whole the held file gets a note of it, and they take their places one by one. A
/// process that dies before the note leaves what stood there; one that dies behind it leaves work
/// that whoever comes next finishes: another writer, or a reader through `FinishGroup`.
class FileGroup
{
public:
    /// `name` is the path of the file that the group goes by. `FileFailure` if the folder can't be
    /// written, or somebody else is writing the group and doesn't end within `patience`.
    explicit FileGroup(const std::string& name, std::chrono::milliseconds patience = {});
    FileGroup(const FileGroup&) = delete;
    FileGroup& operator=(const FileGroup&) = delete;
    /// Without `TakePlaces` nothing is left of the group; behind one that failed in the middle the
    /// rest of it waits for the next one, as if the process had died.
    ~FileGroup();

    /// Where the file that is to appear at `path` is written meanwhile. The path lies in the
    /// group's folder or in one that was added. `FileFailure` for a place that no file can take.
    std::string DraftOf(const std::string& path);

    /// Adds a folder of the group's folder, which may be there already.
    void AddFolder(const std::string& path);

    /// Writes a whole file of the group. One that holds these very bytes already stays as it is.
    void Write(const std::string& path, std::span<const std::byte> bytes);

    /// Puts all files, which are closed, in their places, after a last look at these. Those that
    /// stood in a folder and aren't of the group stay.
    void TakePlaces();

private:
    struct Folder
    {
        std::string Path; ///< with its end
        bool IsThere;     ///< so that its files may be, too
    };
    /// The added folder that a file lies in; null for the group's own.
    const Folder* FolderOf(const std::string& path) const;

    std::string name_;
    std::string place_;                 ///< the group's folder, with its end
    std::filesystem::path draftFolder_; ///< the hidden one
    std::string draft_;                 ///< the same, with its end
    std::vector<Folder> folders_;
    std::unique_ptr<HeldFile> held_;
    bool isHalfDone_ = false; ///< some places are taken, others not
};

/// Finishes what a writer of the group that died has left behind, or clears it up. To be called
/// before the group is read. `FileFailure` if somebody is writing it.
void FinishGroup(const std::string& name);

} // namespace morlik
