// morlik-cli check: an object set, read back.

#include "base/Files.h"
#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "cli/Commands.h"
#include "set/ReadSet.h"
#include "set/Was.h"

namespace morlik::cli
{

namespace
{

/// The game that a list tells.
VersionCode GameOfList(const std::string& list)
{
    const auto file = LoadListFile(list);
    const auto bytes = file->Bytes();
    return GameOfWas({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

} // namespace

int Check(const std::string& set, int number, const Streams& streams)
{
    if (!EndsWithNoCase(set, ".was")) {
        streams.Errors << "The set is named by its list, which ends in .was\n";
        return kWrongUse;
    }
    // A list is written with small letters, also where the set was named with others.
    const auto base = set.substr(0, set.size() - 4);
    VersionCode game = GameOf(number);
    if (game == kNoLevel)
        try {
            game = GameOfList(base + ".was");
        } catch (const FileFailure& failure) {
            streams.Errors << PrintableLines(failure.what()) << '\n';
            return kFailed;
        }
    if (game == kNoLevel) {
        streams.Errors << Printable(set) << " does not tell the game; say it with --game N\n";
        return kFailed;
    }
    const auto report = check::CheckSet(base, game);
    for (const std::string& extension : report.Missing)
        streams.Out << "missing: the " << extension << " file\n";
    for (const std::string& problem : report.Problems)
        streams.Out << Printable(problem) << '\n';
    for (const std::string& note : report.Notes)
        streams.Out << "note: " << Printable(note) << '\n';
    const bool good = report.Missing.empty() && report.Problems.empty();
    streams.Out << (good ? "good" : "NOT good") << '\n';
    return good ? kGood : kFailed;
}

} // namespace morlik::cli
