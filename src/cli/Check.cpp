// morlik-cli check: an object set, read back.

#include "base/Files.h"
#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "cli/Commands.h"

#include <algorithm>

namespace morlik::cli
{

namespace
{

/// The game that the first source path of a list names, ":Z:\TOMB4\..."; 0 where there is none.
/// Looks at the bytes, whatever else may be wrong with them.
int GameOf(const std::string& list)
{
    static constexpr std::string_view kRoot = ":Z:\\TOMB";
    const auto bytes = check::ReadFile(list);
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto at = text.find(kRoot);
    const int game =
        at < text.size() - std::min(text.size(), kRoot.size()) ? text[at + kRoot.size()] - '0' : 0;
    return game >= 1 && game <= 5 ? game : 0;
}

} // namespace

int Check(const std::string& set, int game, const Streams& streams)
{
    if (!EndsWithNoCase(set, ".was")) {
        streams.Errors << "The set is named by its list, which ends in .was\n";
        return kWrongUse;
    }
    // A list is written with small letters, also where the set was named with others.
    const auto base = set.substr(0, set.size() - 4);
    if (game == 0)
        try {
            game = GameOf(base + ".was");
        } catch (const FileFailure& failure) {
            streams.Errors << failure.what() << '\n';
            return kFailed;
        }
    if (game == 0) {
        streams.Errors << set << " does not tell the game; say it with --game N\n";
        return kFailed;
    }
    const auto report = check::CheckSet(base, game);
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
