// morlik-cli convert: one level or a folder full of them.

#include "base/Files.h"
#include "base/Folders.h"
#include "base/Text.h"
#include "cli/MainSFX.h"
#include "cli/ManyFiles.h"
#include "cli/ObjectList.h"
#include "cli/Plan.h"
#include "convert/ObjectNeeds.h"
#include "convert/UsedTextures.h"
#include "shell/MORLIK_Main.h"
#include "shell/ObjectID_Mod.h"
#include "shell/Session.h"

#include <array>
#include <filesystem>
#include <iomanip>
#include <sstream>
#include <system_error>
#include <utility>

namespace morlik::cli
{

namespace
{

using Strings = std::vector<std::string>;

/// What came of a level before it is told.
struct Result
{
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
Result Work(const Job& job, const ConvertOptions& options, const OnProg& onProg)
{
    QuietHost host({.MainSFX = job.MainSFX,
                    .UpdateHorizon = options.UpdateHorizon,
                    .ExportSprites = options.ExportSprites});
    host.OnProg = onProg;
    Session session(host);
    Result result;
    Strings notes;
    result.Complete = host.Try([&] {
        try {
            return ConvertOne(job, options, session, notes);
        } catch (const ListFault& fault) {
            result.IsWrongUse = true;
            host.Messages.emplace_back(fault.what());
            return false;
        }
    });
    host.Messages.insert(host.Messages.end(), notes.begin(), notes.end());
    result.Complete &= host.Try([&] {
        session.Report.Log.Close();
        return true;
    });
    if (!result.Complete && host.StopRequested())
        host.Messages.emplace_back("Stopped by the user");
    const auto note = NoteOnSounds(session, job.MainSFX, job.MainSFX != options.MainSFX);
    if (result.Complete && !note.empty())
        host.Messages.push_back(note);
    session.Report.Times.Change(Phase::Convert);
    result.Times = session.Report.Times;
    result.Game = session.Level.Version;
    result.Messages = std::move(host.Messages);
    return result;
}

std::string TextOfTimes(const PhaseTimes& times)
{
    std::ostringstream out;
    out << std::fixed << std::setprecision(3);
    for (const PhaseName& phase : kPhases)
        out << "  " << phase.Name << ' ' << times.Milliseconds(phase.Which) << " ms";
    out << '\n';
    return out.str();
}

/// What is said of a level.
FileOutcome OutcomeOf(const Job& job, const Result& result, const ConvertOptions& options)
{
    FileOutcome outcome;
    const bool isGood = result.Complete;
    outcome.Status = isGood ? kGood : result.IsWrongUse ? kWrongUse : kFailed;
    const auto level = Printable(job.Level);
    if (isGood && !options.IsQuiet)
        outcome.Text = level + ": saved as " + Printable(job.Set) + '\n';
    if (!isGood)
        outcome.Told = level + ": not converted, or not wholly\n";
    else if (!result.Messages.empty())
        outcome.Told = level + ":\n";
    for (const std::string& message : result.Messages)
        outcome.Told += "  " + PrintableLines(message) + '\n';
    if (options.Timings)
        outcome.Text += TextOfTimes(result.Times);
    outcome.Members = {{"event", isGood ? "converted" : "not_converted"},
                       {"file", job.Level},
                       {"set", job.Set},
                       {"game", NumberOf(result.Game)},
                       {"complete", isGood},
                       {"messages", result.Messages}};
    if (options.Timings)
        for (const PhaseName& phase : kPhases)
            outcome.Members["milliseconds"][phase.Name] = result.Times.Milliseconds(phase.Which);
    return outcome;
}

FileOutcome Skipped(const Job& job, const ConvertOptions& options)
{
    FileOutcome outcome;
    if (!options.IsQuiet)
        outcome.Text = Printable(job.Level) + ": skipped, there is " + Printable(job.Set) + '\n';
    outcome.Members = {{"event", "skipped"}, {"file", job.Level}, {"set", job.Set}};
    return outcome;
}

bool Exists(const std::string& file)
{
    std::error_code none;
    return std::filesystem::exists(ToPath(file), none);
}

} // namespace

int Convert(const ConvertOptions& options, const Streams& streams)
{
    std::vector<Job> jobs;
    std::string fault;
    try {
        jobs = Plan(options);
        fault = FaultOf(options, jobs);
    } catch (const FileFailure& failure) {
        fault = failure.what();
    }
    if (!fault.empty()) {
        streams.Errors << Printable(fault) << '\n';
        return kWrongUse;
    }
    Strings levels;
    for (const Job& job : jobs)
        levels.push_back(job.Level);
    return WorkOnFiles(levels, options, streams, [&](std::size_t i, const OnProg& onProg) {
        if (options.SkipExisting && Exists(jobs[i].Set))
            return Skipped(jobs[i], options);
        return OutcomeOf(jobs[i], Work(jobs[i], options, onProg), options);
    });
}

} // namespace morlik::cli
