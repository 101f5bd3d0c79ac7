#include "cli/FindFiles.h"

#include "base/Files.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

namespace morlik::cli
{

namespace
{

namespace fs = std::filesystem;

bool IsLevel(std::string_view name)
{
    constexpr std::array<std::string_view, 5> kEndings{".phd", ".tub", ".tr2", ".tr4", ".trc"};
    return std::ranges::any_of(
        kEndings, [&](std::string_view ending) { return EndsWithNoCase(name, ending); });
}

void AddBelow(const std::string& folder, Wanted wanted, std::vector<FoundFile>& found)
{
    std::vector<FoundFile> here;
    std::error_code fault;
    const fs::path root = ToPath(folder);
    fs::recursive_directory_iterator entry(root, fault);
    for (; !fault && entry != fs::recursive_directory_iterator(); entry.increment(fault)) {
        const std::string name = FromPath(entry->path().filename());
        std::error_code none;
        if (entry->is_directory(none) && NameBegins(entry->path().filename(), ".morlik-"))
            entry.disable_recursion_pending(); // a set that is being written
        else if (IsWanted(name, wanted) && entry->is_regular_file(none))
            here.push_back({FromPath(entry->path()),
                            FromPath(entry->path().parent_path().lexically_relative(root))});
    }
    if (fault)
        throw FileFailure("read the folder", folder, fault.default_error_condition().message());
    std::ranges::sort(here, {}, &FoundFile::Path);
    for (FoundFile& file : here) {
        if (file.Below == ".")
            file.Below.clear();
        found.push_back(std::move(file));
    }
}

} // namespace

bool IsWanted(std::string_view name, Wanted wanted)
{
    switch (wanted) {
    case Wanted::Levels:
        return IsLevel(name);
    case Wanted::Sets:
        return EndsWithNoCase(name, ".was");
    case Wanted::LevelsAndSets:
        return IsLevel(name) || EndsWithNoCase(name, ".was");
    case Wanted::AllToTell: // the other .sfx files belong to sets
        return IsLevel(name) || EndsWithNoCase(name, ".prj") || ToLower(name) == "main.sfx";
    }
    return false;
}

std::vector<FoundFile> FindFiles(const std::vector<std::string>& words, bool recursive,
                                 Wanted wanted)
{
    std::vector<FoundFile> found;
    for (const std::string& word : words) {
        std::error_code none;
        if (recursive && fs::is_directory(ToPath(word), none))
            AddBelow(word, wanted, found);
        else
            found.push_back({word, {}});
    }
    if (found.empty())
        throw FileFailure("find a file in", words[0], "none there is one for this command");
    return found;
}

std::vector<std::string> FindPaths(const std::vector<std::string>& words, bool recursive,
                                   Wanted wanted)
{
    std::vector<std::string> paths;
    for (FoundFile& file : FindFiles(words, recursive, wanted))
        paths.push_back(std::move(file.Path));
    return paths;
}

} // namespace morlik::cli
