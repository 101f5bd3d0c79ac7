// morlik-cli gallery: pages that show all objects of levels.

#include "gallery/Gallery.h"

#include "base/Files.h"
#include "base/Text.h"
#include "cli/FindFiles.h"
#include "cli/MainSFX.h"
#include "cli/ManyFiles.h"
#include "picture/PNG.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace morlik::cli
{

namespace
{

/// A gallery and the levels that it is made of.
struct Work
{
    std::vector<FoundFile> Found;
    std::vector<std::string> Levels; ///< their paths
    std::unique_ptr<gallery::GalleryFolder> Folder;
};

bool IsLookedFor(const std::string& mainSFX)
{
    return ToLower(mainSFX) == "auto";
}

Work Begin(const GalleryCommand& command)
{
    if (!command.MainSFX.empty() && !IsLookedFor(command.MainSFX))
        FileBytes::Load(command.MainSFX); // a wrong word is told once, not of each level
    Work work;
    work.Found = FindFiles(command.Files, command.Recursive, Wanted::Levels);
    for (const FoundFile& level : work.Found)
        work.Levels.push_back(level.Path);
    gallery::GalleryOptions options;
    options.HasModels = !command.WithoutModels;
    options.HasSets = command.HasSets;
    options.Animations = command.Animations;
    work.Folder = std::make_unique<gallery::GalleryFolder>(command.Folder, options);
    return work;
}

FileOutcome OutcomeOf(const std::string& file, const gallery::LevelOutcome& made, bool isQuiet)
{
    FileOutcome outcome;
    outcome.Members = {{"event", made.IsNew ? "made" : "unchanged"},
                       {"file", file},
                       {"page", gallery::kLevels + made.Folder + "/" + gallery::kIndexFile},
                       {"objects", made.Objects},
                       {"faults", made.Faults}};
    if (!isQuiet)
        outcome.Text = Printable(file) + ": " + (made.IsNew ? "" : "unchanged, ") +
                       Grouped(made.Objects) + (made.Objects == 1 ? " object" : " objects") + "\n";
    if (made.Faults > 0)
        outcome.Told = Printable(file) + ": " + std::to_string(made.Faults) +
                       " of them can't be shown, or not wholly; their page tells why\n";
    return outcome;
}

FileOutcome MakePage(gallery::GalleryFolder& folder, const std::string& level,
                     const GalleryCommand& command, const OnProg& onProg,
                     std::optional<std::string>& page)
{
    const std::string mainSFX = IsLookedFor(command.MainSFX) ? FindMainSFX(level) : command.MainSFX;
    QuietHost host({.MainSFX = mainSFX});
    host.OnProg = onProg;
    Session session(host);
    FileOutcome outcome;
    const bool isMade = host.Try([&] {
        const MessageScope messages(session.Report);
        const auto made = folder.Make({.File = level, .MainSFX = mainSFX}, session);
        page = made.Folder;
        outcome = OutcomeOf(level, made, command.IsQuiet);
        return true;
    });
    outcome.Members["messages"] = host.Messages;
    if (isMade) {
        if (!host.Messages.empty()) // such as of sounds that it lacks
            outcome.Told += LinesOfFault(level, host.Messages);
        return outcome;
    }
    outcome.Status = kFailed;
    if (!host.StopRequested() || !host.Messages.empty())
        outcome.Told = LinesOfFault(level, host.Messages);
    outcome.Members = {{"event", "unreadable"}, {"file", level}, {"messages", host.Messages}};
    return outcome;
}

} // namespace

int MakeGallery(const GalleryCommand& command, const Streams& streams)
{
    Work work;
    try {
        if (!HasPNG())
            throw std::runtime_error("This build of the program can't write PNG files");
        work = Begin(command);
    } catch (const std::runtime_error& fault) {
        streams.Errors << PrintableLines(fault.what()) << '\n';
        return kWrongUse;
    }
    std::vector<std::optional<std::string>> pages(work.Levels.size());
    const int status =
        WorkOnFiles(work.Levels, command, streams, [&](std::size_t i, const OnProg& onProg) {
            return MakePage(*work.Folder, work.Levels[i], command, onProg, pages[i]);
        });
    if (status == kStopped || !work.Folder->IsWhole())
        return status; // the index stays the one before, and what was made is found again
    std::vector<gallery::IndexEntry> entries;
    for (std::size_t i = 0; i < pages.size(); ++i)
        if (pages[i])
            entries.push_back({.Folder = *pages[i], .Below = work.Found[i].Below});
    if (entries.empty())
        return status;
    try {
        const auto counts = work.Folder->Finish(entries);
        if (!command.IsQuiet && !command.Json && !command.JsonLines)
            streams.Out << Printable(command.Folder) << ": levels: " << Grouped(counts.Levels)
                        << ", objects: " << Grouped(counts.Objects) << '\n';
    } catch (const FileFailure& failure) {
        streams.Errors << failure.what() << '\n';
        return kFailed;
    }
    return status;
}

} // namespace morlik::cli
