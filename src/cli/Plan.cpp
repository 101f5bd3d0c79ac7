#include "cli/Plan.h"

#include "base/Text.h"
#include "cli/MainSFX.h"
#include "platform/Platform.h"

#include <algorithm>
#include <map>
#include <set>
#include <system_error>

namespace morlik::cli
{

namespace
{

/// The set in a folder that is named after its level.
std::string SetIn(const std::string& folder, const std::string& level)
{
    auto set = ToPath(folder) / ToPath(level).stem();
    return FromPath(set += ".was");
}

/// What a conversion writes, but for the WAV files in their own folder.
std::vector<std::string> ResultsOf(const Job& job)
{
    std::vector<std::string> results;
    for (const char* ending : {".was", ".wad", ".swd", ".sam", ".sfx", " Info.txt"})
        results.push_back(job.Set.substr(0, job.Set.size() - 4) + ending);
    return results;
}

/// Files that the conversions read, by their titles in small letters.
class Inputs
{
public:
    explicit Inputs(const std::vector<Job>& jobs)
    {
        for (const Job& job : jobs) {
            Add(job.Level);
            if (!job.MainSFX.empty())
                Add(job.MainSFX);
        }
        for (const char* name : {"TR4Objects.dat", "morlik.sam", "morlik.sfx", "morlik.swd"})
            Add(FromPath(ProgramFolder() / name));
    }

    bool Contain(const std::string& file) const
    {
        const auto [first, last] = byTitle_.equal_range(ToLower(FileTitle(file)));
        return std::any_of(first, last,
                           [&](const auto& input) { return IsSameFile(input.second, file); });
    }

private:
    void Add(const std::string& file) { byTitle_.emplace(ToLower(FileTitle(file)), file); }

    std::multimap<std::string, std::string> byTitle_;
};

/// The first file that a conversion would read and replace; empty where there is none.
std::string ReplacedInput(const ConvertOptions& options, const std::vector<Job>& jobs)
{
    const Inputs inputs(jobs);
    if (!options.Log.empty() && inputs.Contain(options.Log))
        return options.Log;
    for (const Job& job : jobs)
        for (const std::string& result : ResultsOf(job))
            if (inputs.Contain(result))
                return result;
    return {};
}

} // namespace

std::vector<Job> Plan(const ConvertOptions& options)
{
    const bool look = ToLower(options.MainSFX) == "auto";
    std::vector<Job> jobs;
    for (const std::string& level : options.Levels)
        jobs.push_back({level,
                        options.Output.empty() ? SetIn(options.Folder, level) : options.Output,
                        look ? FindMainSFX(level) : options.MainSFX});
    return jobs;
}

std::string FaultOf(const ConvertOptions& options, const std::vector<Job>& jobs)
{
    if (options.Output.empty() == options.Folder.empty())
        return "Say where the set goes, with one of -o OUT.was and -d FOLDER";
    if (!options.Output.empty() && !EndsWithNoCase(options.Output, ".was"))
        return "The name of the set must end in .was";
    if (jobs.size() > 1 && !options.Output.empty())
        return "Several levels need a folder, -d FOLDER";
    if (jobs.size() > 1 && !options.Log.empty())
        return "A log is for a single level";
    std::set<std::string> sets; // in one case of letters, as on systems that don't tell them apart
    for (const Job& job : jobs)
        if (!sets.insert(ToLower(job.Set)).second)
            return "Two levels would write the set " + job.Set;
    if (!options.Log.empty())
        for (const std::string& result : ResultsOf(jobs[0]))
            if (ToLower(FileTitle(result)) == ToLower(FileTitle(options.Log)))
                return "The log has the name of a file of the set, " + result;
    if (const auto replaced = ReplacedInput(options, jobs); !replaced.empty())
        return "The conversion reads " + replaced + " and would replace it";
    return {};
}

bool IsSameFile(const std::string& one, const std::string& other)
{
    std::error_code missing;
    return std::filesystem::equivalent(ToPath(one), ToPath(other), missing);
}

void MakeFolder(const std::filesystem::path& folder)
{
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
}

} // namespace morlik::cli
