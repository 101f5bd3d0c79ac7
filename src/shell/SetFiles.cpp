#include "shell/SetFiles.h"

#include "base/FileIdentity.h"
#include "base/Files.h"
#include "base/Text.h"
#include "set/ReadSet.h"
#include "side/MainSFX_Mod.h"

#include <algorithm>

namespace morlik
{

namespace
{

namespace fs = std::filesystem;

/// A question names so many files; of more it tells the number.
constexpr std::size_t kMostNamed = 8;

/// Links that lead nowhere count too: they are replaced as well.
bool IsThere(const std::string& file)
{
    std::error_code fault;
    return fs::exists(fs::symlink_status(ToPath(file), fault));
}

/// The WAV files in a folder under names that a set gives.
void AddWaves(const std::string& folder, VersionCode game, std::vector<std::string>& files)
{
    const std::string start = game == kNoLevel ? "TR" : SampleNameStart(game);
    std::error_code fault; // a folder that can't be read has none
    const auto first = files.size();
    for (fs::directory_iterator entry(ToPath(folder), fault), end; !fault && entry != end;
         entry.increment(fault))
        if (NameBegins(entry->path().filename(), start))
            files.push_back(folder + "/" + FromPath(entry->path().filename()));
    std::sort(files.begin() + static_cast<std::ptrdiff_t>(first), files.end());
}

} // namespace

std::vector<std::string> FilesOfSet(const std::string& fileName, VersionCode game)
{
    const SetNames names(fileName);
    std::vector<std::string> files;
    for (const char* extension : {"was", "wad", "swd", "sam", "sfx"})
        files.push_back(names.With(extension));
    files.push_back(names.Info());
    if (game != kTR5) // which has none
        AddWaves(names.SoundFolder(), game, files);
    return files;
}

void GuardMainSFX(const std::string& fileName)
{
    const auto path = ToPath(SetNames(fileName).With("sfx"));
    if (!IsNamedMainSFX(path.filename()))
        return;
    const auto folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    if (const auto found = FindMainSFXIn(folder); !found.empty())
        throw FileFailure("write", FromPath(path),
                          FromPath(found.filename()) +
                              " holds the sounds of a game; give the set another name");
}

std::string QuestionToReplace(const std::vector<std::string>& files, const std::string& asked)
{
    std::vector<std::string> there;
    for (const std::string& file : files)
        if (IsThere(file) && file != asked && !IsSameFile(file, asked))
            there.push_back(file);
    if (there.empty())
        return {};
    const auto folder = asked.substr(0, LastFolderEnd(asked));
    std::string question = "These files are there already and would be replaced:\n";
    for (std::size_t i = 0; i < std::min(there.size(), kMostNamed); ++i)
        question +=
            "\n" + (there[i].starts_with(folder) ? there[i].substr(folder.size()) : there[i]);
    if (there.size() > kMostNamed)
        question += "\nand " + std::to_string(there.size() - kMostNamed) + " more";
    return question + "\n\nReplace them?";
}

} // namespace morlik
