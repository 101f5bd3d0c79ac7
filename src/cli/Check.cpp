// morlik-cli check: object sets, read back.

#include "base/Files.h"
#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "cli/FindFiles.h"
#include "cli/ManyFiles.h"
#include "set/ReadSet.h"
#include "set/Was.h"

namespace morlik::cli
{

namespace
{

using Strings = std::vector<std::string>;

constexpr std::string_view kExtension = ".was";

/// How a set is told.
struct CheckLook
{
    bool IsOneOfMany = false;
    bool IsQuiet = false;
};

/// The game that a list tells.
VersionCode GameOfList(const std::string& list)
{
    const auto file = LoadListFile(list);
    const auto bytes = file->Bytes();
    return GameOfWas({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

/// What is said about a set that was read back.
void Tell(const check::SetReport& report, const std::string& set, const CheckLook& look,
          FileOutcome& outcome)
{
    const bool good = report.Missing.empty() && report.Problems.empty();
    Strings lines;
    for (const std::string& extension : report.Missing)
        lines.push_back("missing: the " + extension + " file");
    for (const std::string& problem : report.Problems)
        lines.push_back(Printable(problem));
    for (const std::string& note : report.Notes)
        lines.push_back("note: " + Printable(note));
    const std::string verdict = good ? "good" : "NOT good";
    if (look.IsOneOfMany)
        outcome.Text = Printable(set) + ": " + verdict + '\n';
    for (const std::string& line : lines)
        outcome.Text += (look.IsOneOfMany ? "  " : "") + line + '\n';
    if (!look.IsOneOfMany)
        outcome.Text += verdict + '\n';
    if (good && look.IsQuiet)
        outcome.Text.clear();
    outcome.Members["good"] = good;
    outcome.Members["missing"] = report.Missing;
    outcome.Members["problems"] = report.Problems;
    outcome.Members["notes"] = report.Notes;
}

FileOutcome CheckOne(const std::string& set, int number, const CheckLook& look)
{
    auto outcome = WorkQuietly(set, look.IsOneOfMany, [&](Session& session, FileOutcome& told) {
        // A list is written with small letters, also where the set was named with others.
        const auto base = set.substr(0, set.size() - kExtension.size());
        VersionCode game = GameOf(number);
        if (game == kNoLevel)
            game = GameOfList(base + std::string(kExtension));
        if (game == kNoLevel) {
            session.Report.Message(Printable(set) +
                                   " does not tell the game; say it with --game N");
            return false;
        }
        const auto report = check::CheckSet(base, game);
        told.Members["game"] = NumberOf(game);
        Tell(report, set, look, told);
        return report.Missing.empty() && report.Problems.empty();
    });
    outcome.Members["event"] = outcome.Members.contains("good") ? "checked" : "unreadable";
    return outcome;
}

} // namespace

int Check(const ManyOptions& options, int game, const Streams& streams)
{
    Strings sets;
    try {
        sets = FindPaths(options.Files, options.Recursive, Wanted::Sets);
    } catch (const FileFailure& failure) {
        streams.Errors << failure.what() << '\n';
        return kWrongUse;
    }
    for (const std::string& set : sets)
        if (!EndsWithNoCase(set, kExtension)) {
            streams.Errors << Printable(set)
                           << ": a set is named by its list, which ends in .was\n";
            return kWrongUse;
        }
    const CheckLook look{.IsOneOfMany = sets.size() > 1, .IsQuiet = options.IsQuiet};
    return WorkOnFiles(sets, options, streams, [&](std::size_t i, const OnProg& /*onProg*/) {
        return CheckOne(sets[i], game, look);
    });
}

} // namespace morlik::cli
