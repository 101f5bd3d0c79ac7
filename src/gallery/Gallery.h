#pragma once

#include "base/FileGroup.h"
#include "gallery/Index.h"
#include "gallery/LevelCards.h"
#include "shell/Session.h"

#include <atomic>
#include <functional>
#include <string>
#include <vector>

namespace morlik::gallery
{

inline constexpr const char* kIndexFile = "index.html";
inline constexpr const char* kLevels = "levels/";

struct GalleryOptions : CardOptions
{
    bool HasSets = false; ///< a set for each object
};

/// A level that is to have a page.
struct LevelTask
{
    std::string File;
    std::string MainSFX; ///< where its sounds are; empty for none
};

/// What came of a level.
struct LevelOutcome
{
    std::string Folder; ///< of its page, below "levels/"
    bool IsNew = false; ///< it was not there already
    std::size_t Objects = 0;
    std::size_t Faults = 0; ///< objects that can't be shown, or not wholly
};

/// A gallery of levels in a folder:
///
///   index.html, search.js    all levels, and their objects; see `WriteIndex`
///   gallery.css, gallery.js  the style and the script of all pages
///   levels/NAME-DIGITS/      a page for each level, its data and its piece of the index
///   pictures/, sounds/, models/   what the levels share; see `Store`
///
/// The folder of a level is named after its content and all that its page depends on, and what it
/// shows is named after its own. So nothing that is there ever changes but the index, which takes
/// its place at the end: until then the gallery is the one before, and a run that was ended finds
/// what it had made.
class GalleryFolder
{
public:
    /// Makes the folder. `FileFailure` where it can't be written, another program is writing it, or
    /// there is an index.html that is no gallery's.
    GalleryFolder(const std::string& path, GalleryOptions options);

    /// Makes the page of a level in a session of its own, unless it is there; from several threads
    /// at a time. A failure that ends the program, `FileFailure` or `Interrupted` where there is
    /// none.
    LevelOutcome Make(const LevelTask& task, Session& session);

    /// Whether all pages could be written. Else an index would lack levels that are good.
    bool IsWhole() const { return isWhole_; }

    /// Puts the index of these levels in its place, and removes what it doesn't lead to.
    /// `FileFailure`.
    IndexCounts Finish(const std::vector<IndexEntry>& entries);

private:
    std::string FolderOf(const LevelTask& task, const Host& host) const;
    LevelOutcome MakeNew(const LevelTask& task, Session& session, const std::string& name);
    LevelOutcome Write(Session& session, const std::string& name);

    std::string root_; ///< with its end
    GalleryOptions options_;
    FileGroup group_;
    Claims claims_;
    std::atomic<bool> isWhole_ = true;
};

} // namespace morlik::gallery
