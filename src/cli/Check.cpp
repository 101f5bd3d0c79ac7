// morlik-cli check: an object set, read back.

#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "cli/Commands.h"

#include <filesystem>

namespace morlik::cli
{

namespace
{

/// The game that the source paths of a list name, ":Z:\TOMB4\..."; 0 where no line does, or where
/// the list can't be read, which the check itself tells.
int GameOf(const std::string& list)
{
    static constexpr std::string_view kRoot = ":Z:\\TOMB";
    try {
        for (const std::string& line : check::ReadLines(list)) {
            const auto at = line.find(kRoot);
            if (at == std::string::npos || at + kRoot.size() >= line.size())
                continue;
            if (const int game = line[at + kRoot.size()] - '0'; game >= 1 && game <= 5)
                return game;
        }
    } catch (const std::runtime_error&) {
        return 0;
    }
    return 0;
}

} // namespace

int Check(const std::string& set, int game, const Streams& streams)
{
    if (!EndsWithNoCase(set, ".was")) {
        streams.Errors << "The set is named by its list, which ends in .was\n";
        return kWrongUse;
    }
    std::error_code fault;
    if (game == 0 && !std::filesystem::is_regular_file(ToPath(set), fault)) {
        streams.Errors << "There is no list " << set << '\n';
        return kFailed;
    }
    const int known = game != 0 ? game : GameOf(set);
    if (known == 0) {
        streams.Errors << set << " does not tell the game; say it with --game N\n";
        return kFailed;
    }
    const auto report = check::CheckSet(set.substr(0, set.size() - 4), known);
    for (const std::string& extension : report.Missing)
        streams.Out << "missing: the " << extension << " file\n";
    for (const std::string& problem : report.Problems)
        streams.Out << problem << '\n';
    for (const std::string& note : report.Notes)
        streams.Out << "note: " << note << '\n';
    const bool good = report.Missing.empty() && report.Problems.empty();
    streams.Out << (good ? "good" : "NOT good") << '\n';
    return good ? kGood : kFailed;
}

} // namespace morlik::cli
