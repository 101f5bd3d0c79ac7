#include "gallery/Gallery.h"

#include "base/Files.h"
#include "base/Folders.h"
#include "base/OutputFile.h"
#include "base/Text.h"
#include "gallery/LevelPage.h"
#include "gallery/ObjectSets.h"
#include "gallery/Piece.h"
#include "shell/DataFiles.h"
#include "shell/ObjectID_Mod.h"

#include <algorithm>
#include <filesystem>

namespace morlik::gallery
{

namespace
{

/// Grows when pages come out otherwise than before, so that none of the old ones is taken.
constexpr std::uint32_t kPageForm = 2;

constexpr std::size_t kMostTitleLetters = 40;

/// The folder with its end, made if it isn't there.
std::string MadeFolder(const std::string& path)
{
    const auto folder = ToPath(path);
    MakeFolder(folder);
    std::string root = FromPath(folder / "");
    const auto index = folder / kIndexFile;
    std::error_code none;
    if (!std::filesystem::exists(index, none))
        return root;
    constexpr std::size_t kHeadBytes = 2048;
    const auto file = FileBytes::Load(FromPath(index));
    const auto head = file.Bytes().first(std::min(file.Bytes().size(), kHeadBytes));
    const std::string_view text(reinterpret_cast<const char*>(head.data()), head.size());
    if (text.find(R"(name="generator" content="Morlik")") == std::string_view::npos)
        throw FileFailure("write", FromPath(index), "There is one that no gallery has made");
    return root;
}

/// The name of a file in letters that every system and URL takes.
std::string PlainName(const std::string& title)
{
    std::string plain;
    for (const char letter : title.substr(0, kMostTitleLetters)) {
        const bool isPlain = (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
                             (letter >= 'a' && letter <= 'z');
        plain += isPlain ? letter : '-';
    }
    return plain;
}

void AddFile(ContentKey& key, const std::string& path)
{
    const auto file = FileBytes::Load(path);
    key.Add(file.Bytes().size());
    key.Add(ContentName(file.Bytes()));
}

void WriteText(const std::string& path, const std::string& text)
{
    WriteWholeFile(path, std::as_bytes(std::span(text)));
}

LevelOutcome OutcomeOf(const std::string& folder, const std::vector<ObjectCard>& objects)
{
    const auto faults = std::ranges::count_if(
        objects, [](const ObjectCard& object) { return !object.Fault.empty(); });
    return {.Folder = folder,
            .IsNew = true,
            .Objects = objects.size(),
            .Faults = static_cast<std::size_t>(faults)};
}

} // namespace

GalleryFolder::GalleryFolder(const std::string& path, GalleryOptions options)
    : root_(MadeFolder(path)), options_(options), group_(root_ + kIndexFile)
{
}

std::string GalleryFolder::FolderOf(const LevelTask& task, const Host& host) const
{
    const std::string title = FileTitle(task.File);
    ContentKey key;
    key.Add(kPageForm);
    key.Add(Piece::kForm);
    key.Add(options_.HasModels);
    key.Add(options_.HasSets);
    key.Add(options_.Animations);
    key.Add(title);
    AddFile(key, task.File);
    if (!task.MainSFX.empty())
        AddFile(key, task.MainSFX);
    std::error_code none;
    if (const auto names = host.ProgramFolder() / kCatalogueName;
        std::filesystem::exists(names, none))
        AddFile(key, FromPath(names));
    return PlainName(title) + "-" + key.Name();
}

LevelOutcome GalleryFolder::Make(const LevelTask& task, Session& session)
{
    const std::string name = FolderOf(task, session.Report.TheHost());
    LevelOutcome outcome{.Folder = name, .IsNew = false, .Objects = 0, .Faults = 0};
    const auto isThere = [&] {
        const auto piece = LoadPiece(root_ + kLevels + name);
        outcome.Objects = piece ? piece->Objects.size() : 0;
        return piece.has_value();
    };
    // Two levels of one name and content have one page.
    claims_.Make(name, isThere, [&] { outcome = MakeNew(task, session, name); });
    return outcome;
}

LevelOutcome GalleryFolder::MakeNew(const LevelTask& task, Session& session,
                                    const std::string& name)
{
    LoadObjectIDs("", session.Names, session.Report);
    session.LevelTitle = FileTitle(task.File);
    LoadLevel(session, task.File);
    if (!task.MainSFX.empty() && HasMainSFX(session.Level))
        ReadMainSFX(task.MainSFX, session.MainSFX, session.Report);
    try {
        return Write(session, name);
    } catch (const FileFailure&) {
        isWhole_ = false;
        throw;
    }
}

LevelOutcome GalleryFolder::Write(Session& session, const std::string& name)
{
    const std::string folder = root_ + kLevels + name;
    Store store(root_, claims_);
    LevelCards cards = MakeCards(session, options_, store);
    MakeFolder(ToPath(folder));
    if (options_.HasSets)
        SaveObjectSets(session, folder, cards.Objects);
    WriteText(folder + "/data.js", LevelScript(cards));
    WriteText(folder + "/" + kIndexFile, LevelPage(cards));
    SavePiece(folder, PieceOf(cards, store.Used()));
    return OutcomeOf(name, cards.Objects);
}

IndexCounts GalleryFolder::Finish(const std::vector<IndexEntry>& entries)
{
    const IndexCounts counts = WriteIndex(group_, root_, entries);
    group_.TakePlaces();
    RemoveUnused(root_, entries);
    return counts;
}

} // namespace morlik::gallery
