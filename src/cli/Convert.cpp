// morlik-cli convert: one level or a folder full of them.

#include "base/Folders.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/Json.h"
#include "cli/MainSFX.h"
#include "cli/ObjectList.h"
#include "cli/Plan.h"
#include "cli/ProgressBar.h"
#include "cli/QuietHost.h"
#include "convert/ObjectNeeds.h"
#include "convert/UsedTextures.h"
#include "platform/Platform.h"
#include "shell/MORLIK_Main.h"
#include "shell/ObjectID_Mod.h"
#include "shell/Session.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <iomanip>
#include <system_error>
#include <thread>
#include <utility>

namespace morlik::cli
{

namespace
{

using Strings = std::vector<std::string>;

struct Outcome
{
    bool IsDone = false;
    bool Complete = false;
    bool IsWrongUse = false;     ///< the level has no such objects
    VersionCode Game = kNoLevel; ///< as long as the level could not be read
    Strings Messages;
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

/// Takes the objects that the user wants of the loaded level.
void ChooseWanted(const ConvertOptions& options, Session& session, Strings& messages)
{
    if (options.Objects.empty() && options.Without.empty() && !options.Fit)
        return;
    const LevelData& level = session.Level;
    const auto itemsOf = [](const std::string& list) {
        return list.empty() ? ObjectItems() : ReadItems(list);
    };
    ObjectChoice choice =
        ChooseByItems(level, session.Names, itemsOf(options.Objects), itemsOf(options.Without));
    choice.AllSounds = options.AllSounds;
    if (options.Fit)
        for (const ObjectPlace& place : FitChoice(NeedsOf(level), choice, kMostTextures))
            messages.push_back("Left out, so that the textures fit: " +
                               (place.IsStatic ? StaticText(level, session.Names, place.Index)
                                               : MoveableText(level, session.Names, place.Index)));
    session.Objects = std::move(choice);
}

/// What helps where a level has more textures than the editor takes; else empty.
std::string HintOnTextures(const Session& session)
{
    try {
        const auto count = CountTextures(NeedsOf(session.Level),
                                         session.Objects.value_or(ChooseAll(session.Level)));
        return count <= kMostTextures
                   ? ""
                   : Grouped(count) + " textures used, the editor takes " + Grouped(kMostTextures) +
                         ": leave out objects with --without, or with --fit";
    } catch (const ReadFailure&) {
        return ""; // the damage has been told
    }
}

bool ConvertOne(const Job& job, const ConvertOptions& options, Session& session, Strings& notes)
{
    Reporter& report = session.Report;
    MakeFolder(ToPath(job.Set).parent_path());
    if (!options.Log.empty()) {
        report.Log.OpenNew(options.Log);
        BeginLog(report);
    }
    report.LogLine("Loading TR4Objects.dat");
    LoadObjectIDs("", session.Names, report);
    report.LogLine("Loading level");
    session.LevelTitle = FileTitle(job.Level);
    LoadLevel(session, job.Level);
    ChooseWanted(options, session, notes);
    report.LogLine("Saving WAS");
    return SaveGuardedLevel(session, job.Set);
}

/// The work on one level.
Outcome TryWork(const Job& job, const ConvertOptions& options, std::function<void(float)> onProg)
{
    QuietHost host({.MainSFX = job.MainSFX,
                    .UpdateHorizon = options.UpdateHorizon,
                    .ExportSprites = options.ExportSprites});
    host.OnProg = std::move(onProg);
    Session session(host);
    Outcome outcome;
    Strings notes;
    outcome.Complete = host.Try([&] {
        try {
            return ConvertOne(job, options, session, notes);
        } catch (const ListFault& fault) {
            outcome.IsWrongUse = true;
            host.Messages.emplace_back(fault.what());
            return false;
        }
    });
    host.Messages.insert(host.Messages.end(), notes.begin(), notes.end());
    if (const auto hint = outcome.Complete ? std::string() : HintOnTextures(session); !hint.empty())
        host.Messages.push_back(hint);
    outcome.Complete &= host.Try([&] {
        session.Report.Log.Close();
        return true;
    });
    if (!outcome.Complete && host.StopRequested())
        host.Messages.emplace_back("Stopped by the user");
    const auto note = NoteOnSounds(session, job.MainSFX, job.MainSFX != options.MainSFX);
    if (outcome.Complete && !note.empty())
        host.Messages.push_back(note);
    session.Report.Times.Change(Phase::Convert);
    outcome.Times = session.Report.Times;
    outcome.Game = session.Level.Version;
    outcome.Messages = std::move(host.Messages);
    outcome.IsDone = true;
    return outcome;
}

/// The whole work on one level. Whatever comes of it, it comes as a result.
Outcome Work(const Job& job, const ConvertOptions& options, std::function<void(float)> onProg)
{
    try {
        return TryWork(job, options, std::move(onProg));
    } catch (const std::exception& failure) { // around the work that `QuietHost` looks after
        Outcome outcome;
        outcome.IsDone = true;
        outcome.Messages.emplace_back(std::string(kErrorTitle) + ": " + ReasonOf(failure));
        return outcome;
    }
}

void PrintTimes(const PhaseTimes& times, std::ostream& out)
{
    out << std::fixed << std::setprecision(3);
    for (const PhaseName& phase : kPhases)
        out << "  " << phase.Name << ' ' << times.Milliseconds(phase.Which) << " ms";
    out << '\n';
}

void Print(const Job& job, const Outcome& outcome, bool timings, const Streams& streams)
{
    const auto level = Printable(job.Level);
    if (outcome.Complete)
        streams.Out << level << ": saved as " << Printable(job.Set) << std::endl;
    else
        streams.Errors << level << ": not converted, or not wholly\n";
    if (outcome.Complete && !outcome.Messages.empty())
        streams.Errors << level << ":\n";
    for (const std::string& message : outcome.Messages)
        streams.Errors << "  " << PrintableLines(message) << '\n';
    streams.Errors << std::flush;
    if (timings)
        PrintTimes(outcome.Times, streams.Out);
}

Json ToJson(const Job& job, const Outcome& outcome, bool timings)
{
    Json json{{"level", job.Level},
              {"set", job.Set},
              {"game", NumberOf(outcome.Game)},
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
        for (std::size_t i = next++; i < jobs.size() && !InterruptScope::IsRequested();
             i = next++) {
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
    // What is thrown around the works, such as for want of memory, waits for the other threads.
    std::exception_ptr failure;
    const auto guarded = [&] {
        try {
            work();
        } catch (const std::exception&) {
            bar.Around([&] { failure = std::current_exception(); });
        }
    };
    auto wanted = options.Jobs;
    if (wanted == 0 && jobs.size() > 1) // to ask costs a single level too much
        wanted = std::max(1U, std::thread::hardware_concurrency());
    std::vector<std::thread> threads;
    try {
        while (threads.size() + 1 < std::min<std::size_t>(wanted, jobs.size()))
            threads.emplace_back(guarded);
    } catch (const std::system_error&) {
        // The system gives no more of them; those that there are do it too.
    }
    guarded();
    for (std::thread& thread : threads)
        thread.join();
    if (failure)
        std::rethrow_exception(failure);
    return outcomes;
}

} // namespace

int Convert(const ConvertOptions& options, const Streams& streams)
{
    const auto jobs = Plan(options);
    if (const auto fault = FaultOf(options, jobs); !fault.empty()) {
        streams.Errors << Printable(fault) << '\n';
        return kWrongUse;
    }
    const auto outcomes = WorkOnAll(jobs, options, streams);
    const auto numDone = std::ranges::count(outcomes, true, &Outcome::IsDone);
    if (std::cmp_less(numDone, jobs.size()))
        streams.Errors << "Stopped by the user: " << numDone << " of " << jobs.size()
                       << " levels were begun\n";
    if (options.Json) {
        auto list = Json::array();
        for (std::size_t i = 0; i < jobs.size(); ++i)
            list.push_back(ToJson(jobs[i], outcomes[i], options.Timings));
        PrintJson(list, streams.Out);
    }
    const bool good = std::all_of(outcomes.begin(), outcomes.end(),
                                  [](const Outcome& outcome) { return outcome.Complete; });
    if (outcomes.size() == 1 && outcomes[0].IsWrongUse)
        return kWrongUse;
    if (!good && InterruptScope::IsRequested())
        return kStopped;
    return good ? kGood : kFailed;
}

} // namespace morlik::cli
