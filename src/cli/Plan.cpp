#include "cli/Plan.h"

#include "base/FileIdentity.h"
#include "base/Files.h"
#include "base/Text.h"
#include "cli/FindFiles.h"
#include "cli/MainSFX.h"
#include "cli/ObjectList.h"
#include "platform/Platform.h"
#include "shell/DataFiles.h"
#include "shell/SetFiles.h"

#include <map>
#include <string_view>

namespace morlik::cli
{

namespace
{

constexpr std::string_view kExtension = ".was";

/// The set in a folder that is named after its level; below it, where the level was found so.
std::string SetIn(const std::string& folder, const FoundFile& level)
{
    auto set = ToPath(folder) / ToPath(level.Below) / ToPath(level.Path).stem();
    return FromPath(set += ".was");
}

/// The name of a set as its list is written, which ends in small letters.
std::string ListOf(const std::string& output)
{
    return EndsWithNoCase(output, kExtension)
               ? output.substr(0, output.size() - kExtension.size()) + std::string(kExtension)
               : output;
}

/// Files that the conversions read.
std::vector<std::string> InputsOf(const ConvertOptions& options, const std::vector<Job>& jobs)
{
    auto inputs = DataFiles(ProgramFolder());
    for (const Job& job : jobs) {
        inputs.push_back(job.Level);
        if (!job.MainSFX.empty())
            inputs.push_back(job.MainSFX);
    }
    const auto lists = FilesOfLists({options.Objects, options.Without});
    inputs.insert(inputs.end(), lists.begin(), lists.end());
    return inputs;
}

/// A `FileFailure` where a file would be replaced that none may replace.
void GuardFiles(const ConvertOptions& options, const std::vector<Job>& jobs)
{
    std::vector<std::string> outputs;
    if (!options.Log.empty())
        outputs.push_back(options.Log);
    for (const Job& job : jobs) {
        const auto files = FilesOfSet(job.Set);
        outputs.insert(outputs.end(), files.begin(), files.end());
    }
    GuardInputs(InputsOf(options, jobs), outputs);
    for (const Job& job : jobs)
        GuardMainSFX(job.Set);
}

} // namespace

std::vector<Job> Plan(const ConvertOptions& options)
{
    const bool look = ToLower(options.MainSFX) == "auto";
    std::vector<Job> jobs;
    for (const FoundFile& level : FindFiles(options.Files, options.Recursive, Wanted::Levels))
        jobs.push_back(
            {level.Path,
             options.Output.empty() ? SetIn(options.Folder, level) : ListOf(options.Output),
             look ? FindMainSFX(level.Path) : options.MainSFX});
    return jobs;
}

std::string FaultOf(const ConvertOptions& options, const std::vector<Job>& jobs)
{
    if (options.Output.empty() == options.Folder.empty())
        return "Say where the set goes, with one of -o OUT.was and -d FOLDER";
    if (!options.Output.empty() && !EndsWithNoCase(options.Output, kExtension))
        return "The name of the set must end in .was";
    if (ToLower(FileTitle(options.Output)) == kExtension)
        return "The set needs a name before its .was";
    if (jobs.size() > 1 && !options.Output.empty())
        return "Several levels need a folder, -d FOLDER";
    if (jobs.size() > 1 && !options.Log.empty())
        return "A log is for a single level";
    // By sets in one case of letters, as on systems that don't tell them apart.
    std::map<std::string, std::string> levels;
    for (const Job& job : jobs)
        if (const auto [other, isNew] = levels.emplace(ToLower(job.Set), job.Level); !isNew)
            return other->second + " and " + job.Level + " would both be saved as " + job.Set;
    if (!options.Log.empty())
        for (const std::string& result : FilesOfSet(jobs[0].Set))
            if (ToLower(FileTitle(result)) == ToLower(FileTitle(options.Log)))
                return "The log has the name of a file of the set, " + result;
    try {
        GuardFiles(options, jobs);
    } catch (const FileFailure& failure) {
        return failure.what();
    }
    return {};
}

} // namespace morlik::cli
