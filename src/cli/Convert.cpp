// morlik-cli convert: one level or a folder full of them.

#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "cli/QuietHost.h"
#include "shell/MORLIK_Main.h"
#include "shell/ObjectID_Mod.h"
#include "shell/Session.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <set>
#include <thread>
#include <utility>

namespace morlik::cli
{

namespace
{

namespace fs = std::filesystem;

struct Job
{
    std::string Level;
    std::string Set;
};

struct Outcome
{
    bool IsDone = false;
    bool Complete = false;
    std::int32_t Game = 0; ///< 1 to 5; 0 where the level could not be read
    std::vector<std::string> Messages;
    PhaseTimes Times;
};

struct PhaseName
{
    Phase Which;
    const char* Name;
};

constexpr std::array<PhaseName, kNumPhases> kPhases{{{Phase::Read, "read"},
                                                     {Phase::Inflate, "inflate"},
                                                     {Phase::Convert, "convert"},
                                                     {Phase::Tiles, "tiles"},
                                                     {Phase::Write, "write"}}};

/// The set in a folder that is named after its level.
std::string SetIn(const std::string& folder, const std::string& level)
{
    auto set = ToPath(folder) / ToPath(level).stem();
    return FromPath(set += ".was");
}

std::vector<Job> Plan(const ConvertOptions& options)
{
    std::vector<Job> jobs;
    for (const std::string& level : options.Levels)
        jobs.push_back(
            {level, options.Output.empty() ? SetIn(options.Folder, level) : options.Output});
    return jobs;
}

/// What keeps a plan from being carried out; empty for a good one.
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
    std::error_code missing; // then it is no file that could be lost
    if (!options.Log.empty() && !jobs.empty() &&
        fs::equivalent(ToPath(options.Log), ToPath(jobs[0].Level), missing))
        return "The log would replace the level";
    std::set<std::string> sets; // in one case of letters, as on systems that don't tell them apart
    for (const Job& job : jobs)
        if (!sets.insert(ToLower(job.Set)).second)
            return "Two levels would write the set " + job.Set;
    return {};
}

/// The `main.sfx` in a folder; of several in different letters the one with the small letters, or
/// the first. Empty where there is none.
std::string MainSFXIn(const fs::path& folder)
{
    std::string found;
    std::error_code fault; // a folder that can't be read has none
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end;
         entry.increment(fault)) {
        const auto name = FromPath(entry->path().filename());
        std::error_code gone; // between two looks
        if (ToLower(name) != "main.sfx" || !entry->is_regular_file(gone))
            continue;
        if (const auto path = FromPath(entry->path());
            found.empty() || name == "main.sfx" || (path < found && !found.ends_with("main.sfx")))
            found = path;
    }
    return found;
}

/// The `main.sfx` in the level's folder or the one above it; empty where there is none.
std::string FindMainSFX(const std::string& level)
{
    std::error_code fault;
    const auto folder = fs::absolute(ToPath(level), fault).parent_path();
    const auto beside = MainSFXIn(folder);
    return beside.empty() ? MainSFXIn(folder.parent_path()) : beside;
}

/// What is to be said of the sounds of a converted level of II or III, which are in `main.sfx`.
std::string NoteOnSounds(const Session& session, const std::string& mainSFX, bool wasLookedFor)
{
    const auto& indices = session.Level.SampleIndices;
    if (session.Level.Version != kTR2 && session.Level.Version != kTR3)
        return {};
    if (mainSFX.empty())
        return wasLookedFor ? "No WAV files: there is no main.sfx beside the level or above it"
                            : "No WAV files: the sounds are in main.sfx, see --main-sfx";
    const auto missing = std::count_if(indices.begin(), indices.end(), [&](std::int32_t index) {
        return index < 0 || std::cmp_greater_equal(index, session.MainSFX.MainSFXSamples.size());
    });
    if (missing == 0)
        return {};
    return mainSFX + " lacks " + std::to_string(missing) + " of the " +
           std::to_string(indices.size()) + " samples of the level";
}

bool ConvertOne(const Job& job, const ConvertOptions& options, Session& session)
{
    Reporter& report = session.Report;
    if (!options.Log.empty())
        OpenLogFile(options.Log, report);
    report.LogLine("Loading TR4Objects.dat");
    LoadObjectIDs("", session.Names, report);
    report.LogLine("Loading level");
    session.LevelTitle = FileTitle(job.Level);
    LoadLevel(session, job.Level);
    report.LogLine("Saving WAS");
    const bool complete = SaveLevel(session, job.Set);
    report.Log.Close();
    return complete;
}

/// The whole work on one level. Whatever comes of it, it comes as a result.
Outcome Work(const Job& job, const ConvertOptions& options, std::function<void(float)> onProg)
{
    const bool look = options.MainSFX == "auto";
    const std::string mainSFX = look ? FindMainSFX(job.Level) : options.MainSFX;
    QuietHost host({.MainSFX = mainSFX,
                    .UpdateHorizon = options.UpdateHorizon,
                    .ExportSprites = options.ExportSprites});
    host.OnProg = std::move(onProg);
    Session session(host);
    Outcome outcome;
    try {
        outcome.Complete = ConvertOne(job, options, session);
        if (const auto note = NoteOnSounds(session, mainSFX, look);
            outcome.Complete && !note.empty())
            host.Messages.push_back(note);
    } catch (const ProgramEnd&) {
        outcome.Complete = false; // its message is there
    } catch (const std::exception& failure) {
        host.ShowMessage(failure.what(), kErrorTitle);
    }
    session.Report.Times.Change(Phase::Convert);
    outcome.Times = session.Report.Times;
    outcome.Game = session.Level.Version;
    outcome.Messages = std::move(host.Messages);
    outcome.IsDone = true;
    return outcome;
}

void PrintTimes(const PhaseTimes& times, std::ostream& out)
{
    out << std::fixed << std::setprecision(3);
    for (const PhaseName& phase : kPhases)
        out << "  " << phase.Name << ' ' << times.Milliseconds(phase.Which) << " ms";
    out << '\n';
}

/// A message whose further lines stand as far in as the first.
std::string Indented(std::string message)
{
    for (auto at = message.find('\n'); at != std::string::npos; at = message.find('\n', at + 1))
        message.insert(at + 1, "  ");
    return message;
}

void Print(const Job& job, const Outcome& outcome, bool timings, const Streams& streams)
{
    if (outcome.Complete)
        streams.Out << job.Level << ": saved as " << job.Set << std::endl;
    else
        streams.Errors << job.Level << ": not converted, or not wholly\n";
    if (outcome.Complete && !outcome.Messages.empty())
        streams.Errors << job.Level << ":\n";
    for (const std::string& message : outcome.Messages)
        streams.Errors << "  " << Indented(message) << '\n';
    streams.Errors << std::flush;
    if (timings)
        PrintTimes(outcome.Times, streams.Out);
}

nlohmann::ordered_json ToJson(const Job& job, const Outcome& outcome, bool timings)
{
    nlohmann::ordered_json json{{"level", job.Level},
                                {"set", job.Set},
                                {"game", outcome.Game},
                                {"complete", outcome.Complete},
                                {"messages", outcome.Messages}};
    if (timings)
        for (const PhaseName& phase : kPhases)
            json["milliseconds"][phase.Name] = outcome.Times.Milliseconds(phase.Which);
    return json;
}

/// Carries out the jobs, several at a time, and prints each as its turn comes, in the order of the
/// command line.
std::vector<Outcome> WorkOnAll(const std::vector<Job>& jobs, const ConvertOptions& options,
                               const Streams& streams)
{
    std::vector<Outcome> outcomes(jobs.size());
    std::atomic<std::size_t> next = 0;
    std::size_t printed = 0;
    ProgressBar bar(streams, jobs.size());
    const auto work = [&] {
        for (std::size_t i = next++; i < jobs.size(); i = next++) {
            auto outcome =
                Work(jobs[i], options, [&bar, i](float percent) { bar.Set(i, percent); });
            bar.Set(i, 100);
            bar.Around([&] {
                outcomes[i] = std::move(outcome);
                for (; printed < jobs.size() && outcomes[printed].IsDone; ++printed)
                    if (!options.Json)
                        Print(jobs[printed], outcomes[printed], options.Timings, streams);
            });
        }
    };
    const auto processors = std::max(1U, std::thread::hardware_concurrency());
    const auto wanted = options.Jobs != 0 ? options.Jobs : processors;
    std::vector<std::thread> threads;
    while (threads.size() + 1 < std::min<std::size_t>(wanted, jobs.size()))
        threads.emplace_back(work);
    work();
    for (std::thread& thread : threads)
        thread.join();
    return outcomes;
}

} // namespace

int Convert(const ConvertOptions& options, const Streams& streams)
{
    const auto jobs = Plan(options);
    if (const auto fault = FaultOf(options, jobs); !fault.empty()) {
        streams.Errors << fault << '\n';
        return kWrongUse;
    }
    if (!options.Folder.empty()) {
        std::error_code ignored; // what is wrong with it shows at the first file
        fs::create_directories(ToPath(options.Folder), ignored);
    }
    const auto outcomes = WorkOnAll(jobs, options, streams);
    if (options.Json) {
        auto list = nlohmann::ordered_json::array();
        for (std::size_t i = 0; i < jobs.size(); ++i)
            list.push_back(ToJson(jobs[i], outcomes[i], options.Timings));
        streams.Out << list.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    }
    const bool good = std::all_of(outcomes.begin(), outcomes.end(),
                                  [](const Outcome& outcome) { return outcome.Complete; });
    return good ? kGood : kFailed;
}

} // namespace morlik::cli
