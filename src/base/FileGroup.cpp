#include "base/FileGroup.h"

#include "base/Text.h"

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>
#include <system_error>
#include <thread>
#include <vector>

namespace morlik
{

namespace
{

namespace fs = std::filesystem;

constexpr const char* kHeldName = ".morlik-held"; // as no output is called

/// The hidden folder of a group, by a number that follows from its name.
fs::path DraftFolderOf(const fs::path& name)
{
    std::uint64_t number = 14695981039346656037U; // FNV-1a
    const auto file = FoldedName(name.filename());
    for (const auto letter : file.native())
        number = (number ^ static_cast<std::uint64_t>(letter)) * 1099511628211U;
    const auto high = static_cast<std::uint32_t>(number >> 32U);
    const auto low = static_cast<std::uint32_t>(number);
    return name.parent_path() / (".morlik-" + Hex(high) + "-" + Hex(low));
}

[[noreturn]] void Fail(const std::string& path, const std::error_code& fault)
{
    const bool busy = fault == std::errc::device_or_resource_busy;
    throw FileFailure("write", path,
                      busy ? "Another program is writing it"
                           : fault.default_error_condition().message());
}

/// A link to a folder is none here: in the hidden folder it is not of this program, and leads to
/// files of somebody else.
bool IsFolder(const fs::path& path)
{
    std::error_code missing;
    return fs::symlink_status(path, missing).type() == fs::file_type::directory;
}

bool IsThere(const fs::path& path)
{
    std::error_code missing;
    return fs::exists(fs::symlink_status(path, missing));
}

/// A folder that is to be in a place may be there, or a link to one.
void CheckFolderPlace(const std::string& path)
{
    std::error_code missing;
    if (IsThere(ToPath(path)) && !fs::is_directory(ToPath(path), missing))
        throw FileFailure("make the folder", path, "Not a directory");
}

/// Everything in a folder, but for the held file.
std::vector<fs::directory_entry> EntriesOf(const fs::path& folder)
{
    std::vector<fs::directory_entry> entries;
    std::error_code fault;
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end;
         entry.increment(fault))
        if (entry->path().filename() != kHeldName)
            entries.push_back(*entry);
    return entries;
}

/// The numbers of files that are to take the places of others: an exchange that was cut off may
/// have left the old file under the name of the new one, and must not be done twice.
using Numbers = std::set<std::uint64_t>;

/// The numbers of the files in `draft`, and of those in its folders that `place` has too. This is
/// the last look at the places: `FileFailure` for one that can't be taken any more.
Numbers NumbersOf(const fs::path& draft, const fs::path& place)
{
    Numbers numbers;
    for (const fs::directory_entry& entry : EntriesOf(draft)) {
        const fs::path to = place / entry.path().filename();
        if (!IsFolder(entry.path())) {
            CheckPlace(FromPath(to));
            numbers.insert(FileNumber(entry.path()));
        } else if (CheckFolderPlace(FromPath(to)); IsThere(to)) {
            numbers.merge(NumbersOf(entry.path(), to));
        }
    }
    return numbers;
}

/// A note of numbers, each with a blank behind it. One that was cut off has no point at its end.
std::string NoteOf(const Numbers& numbers)
{
    std::string note;
    for (const std::uint64_t number : numbers)
        note += std::to_string(number) + " ";
    return note + ".";
}

/// Nothing for a group whose files were not whole yet.
std::optional<Numbers> NumbersIn(const std::string& note)
{
    if (!note.ends_with('.'))
        return std::nullopt;
    Numbers numbers;
    std::istringstream text(note);
    for (std::uint64_t number = 0; text >> number;)
        numbers.insert(number);
    return numbers;
}

/// A place that could not be taken.
struct Refusal
{
    fs::path Place;
    std::error_code Why;
};

/// The same as `TakePlace` where the place is on another disk, as in a folder that is a link: a
/// copy goes beside the place first. What a copy leaves that is cut off goes with the next one.
std::error_code TakePlaceAcross(const fs::path& fresh, const fs::path& place)
{
    const fs::path beside = place.parent_path() / ToPath(".morlik-" + FromPath(place.filename()));
    std::error_code fault;
    fs::remove(beside, fault); // a new file is made, and no link followed
    if (!fault)
        fs::copy_file(fresh, beside, fault);
    if (!fault)
        fault = TakePlace(beside, place);
    std::error_code ignored;
    fs::remove(fault ? beside : fresh, ignored);
    return fault;
}

/// Lets the files of `draft` take their places in `place`; a folder that isn't there yet goes as a
/// whole. With `numbers` only files of these do, all others are removed: old ones, and what
/// somebody else has put there. Gives the first refusal.
std::optional<Refusal> MoveInto(const fs::path& draft, const fs::path& place,
                                const Numbers* numbers)
{
    std::optional<Refusal> first;
    for (const fs::directory_entry& entry : EntriesOf(draft)) {
        const fs::path to = place / entry.path().filename();
        const bool isFolder = IsFolder(entry.path());
        std::optional<Refusal> refusal;
        if (isFolder && IsThere(to)) {
            refusal = MoveInto(entry.path(), to, numbers);
        } else {
            std::error_code fault;
            if (!isFolder && numbers != nullptr && !numbers->contains(FileNumber(entry.path())))
                fs::remove(entry.path(), fault);
            else
                fault = TakePlace(entry.path(), to);
            if (fault == std::errc::cross_device_link)
                fault = TakePlaceAcross(entry.path(), to);
            if (fault)
                refusal = {to, fault};
        }
        if (!first)
            first = refusal;
        std::error_code ignored;
        if (isFolder)
            fs::remove(entry.path(), ignored); // empty, or gone
    }
    return first;
}

/// The same, and throws a refusal. Until a later one succeeds the files are half old, half new.
void TakeAllPlaces(const fs::path& draft, const fs::path& place, const Numbers* numbers)
{
    if (const auto refusal = MoveInto(draft, place, numbers))
        throw FileFailure("write", FromPath(refusal->Place),
                          refusal->Why.default_error_condition().message());
}

void ClearDraft(const fs::path& draft)
{
    std::error_code ignored; // what can't be removed now is removed by the next one
    for (const fs::directory_entry& entry : EntriesOf(draft))
        fs::remove_all(entry.path(), ignored);
}

/// Holds the group and brings it to rest: what a dead writer left behind is finished or removed.
/// `FileFailure` if a place refuses that.
std::unique_ptr<HeldFile> HoldAtRest(const fs::path& draft, const fs::path& place,
                                     std::error_code& fault)
{
    auto held = HeldFile::Hold(draft / kHeldName, fault);
    if (held == nullptr)
        return nullptr;
    if (const auto numbers = NumbersIn(held->Note()))
        TakeAllPlaces(draft, place, &*numbers);
    ClearDraft(draft);
    return held;
}

bool HoldsAlready(const fs::path& path, std::span<const std::byte> bytes)
{
    std::error_code missing;
    if (fs::symlink_status(path, missing).type() != fs::file_type::regular ||
        fs::file_size(path, missing) != bytes.size() || missing)
        return false;
    try {
        return std::ranges::equal(FileBytes::Load(FromPath(path)).Bytes(), bytes);
    } catch (const FileFailure&) {
        return false;
    }
}

} // namespace

FileGroup::FileGroup(const std::string& name, std::chrono::milliseconds patience)
    : name_(name),
      place_(name.substr(0, name.size() - FromPath(ToPath(name).filename()).size())),
      draftFolder_(DraftFolderOf(ToPath(name))),
      draft_(FromPath(draftFolder_) + "/")
{
    constexpr std::chrono::milliseconds kPause(3);
    const auto end = std::chrono::steady_clock::now() + patience;
    std::error_code fault;
    for (int attempt = 0; attempt < 100;) {
        fault = MakeHiddenFolder(draftFolder_);
        if (fault) // something else in its place is told by its own name
            Fail(fault == std::errc::not_a_directory ? FromPath(draftFolder_) : name_, fault);
        held_ = HoldAtRest(draftFolder_, ToPath(name_).parent_path(), fault);
        // The holder before may have removed the folder in between.
        if (fault == std::errc::no_such_file_or_directory)
            ++attempt;
        else if (fault == std::errc::device_or_resource_busy &&
                 std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(kPause);
        else
            break;
    }
    if (fault)
        Fail(name_, fault);
    if (!held_->Note().empty()) { // of what is finished now: a note of our own comes later
        held_->Remove();
        held_.reset();
        held_ = HeldFile::Hold(draftFolder_ / kHeldName, fault);
        if (held_ == nullptr)
            Fail(name_, fault);
    }
}

FileGroup::~FileGroup()
{
    if (isHalfDone_)
        return; // whoever comes next tries again
    ClearDraft(draftFolder_);
    held_->Remove();
    held_.reset();
    std::error_code ignored; // somebody else may be in it already
    fs::remove(draftFolder_, ignored);
}

std::string FileGroup::DraftOf(const std::string& path)
{
    if (const Folder* folder = FolderOf(path); folder == nullptr || folder->IsThere)
        CheckPlace(path);
    return draft_ + path.substr(place_.size());
}

void FileGroup::AddFolder(const std::string& path)
{
    CheckFolderPlace(path);
    folders_.push_back({path + "/", IsThere(ToPath(path))});
    std::error_code fault;
    fs::create_directory(ToPath(draft_ + path.substr(place_.size())), fault);
    if (fault)
        Fail(path, fault);
}

void FileGroup::Write(const std::string& path, std::span<const std::byte> bytes)
{
    const Folder* folder = FolderOf(path);
    if ((folder == nullptr || folder->IsThere) && HoldsAlready(ToPath(path), bytes))
        return;
    OutputFile file(DraftOf(path), path);
    file.PutBytes(bytes);
    file.Close();
}

const FileGroup::Folder* FileGroup::FolderOf(const std::string& path) const
{
    const auto found = std::find_if(folders_.begin(), folders_.end(), [&](const Folder& folder) {
        return path.starts_with(folder.Path);
    });
    return found == folders_.end() ? nullptr : &*found;
}

void FileGroup::TakePlaces()
{
    const auto place = ToPath(name_).parent_path();
    const Numbers numbers = NumbersOf(draftFolder_, place);
    if (const auto fault = held_->SetNote(NoteOf(numbers)))
        Fail(name_, fault);
    isHalfDone_ = true;
    TakeAllPlaces(draftFolder_, place, nullptr);
    isHalfDone_ = false;
}

void FinishGroup(const std::string& name)
{
    const auto draft = DraftFolderOf(ToPath(name));
    if (!IsFolder(draft))
        return;
    std::error_code fault;
    auto held = HoldAtRest(draft, ToPath(name).parent_path(), fault);
    if (fault == std::errc::no_such_file_or_directory)
        return; // its writer was through with it in between
    if (fault)
        Fail(name, fault);
    held->Remove();
    held.reset(); // else it may be there still
    fs::remove(draft, fault);
}

} // namespace morlik
