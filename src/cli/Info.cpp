// morlik-cli info: what is in files. All of it is gathered as JSON first; the text is that, laid
// out for people.

#include "base/Files.h"
#include "base/Text.h"
#include "cli/Columns.h"
#include "cli/Describe.h"
#include "cli/FindFiles.h"
#include "cli/ManyFiles.h"

#include <array>
#include <map>
#include <sstream>

namespace morlik::cli
{

namespace
{

/// Names of members have "_" where people read blanks.
std::string LabelOf(std::string name)
{
    std::ranges::replace(name, '_', ' ');
    return name;
}

/// A value for people.
std::string TextOf(const Json& value)
{
    if (value.is_null())
        return "unknown";
    return value.is_string() ? Printable(value.get<std::string>()) : value.dump();
}

/// A table of objects that have the same members, one in a line.
void PrintTable(const std::string& name, const Json& table, std::ostream& out)
{
    out << LabelOf(name) << ": " << table.size() << '\n';
    if (table.empty())
        return;
    std::map<std::string, std::size_t> widths;
    for (const auto& [column, first] : table[0].items()) {
        widths[column] = column.size();
        for (const Json& row : table)
            widths[column] = std::max(widths[column], Width(TextOf(row[column])));
    }
    const auto print = [&](const Json& row, bool isHead) {
        std::string line;
        for (const auto& [column, value] : row.items()) {
            const std::string text = isHead ? column : TextOf(value);
            const std::string fill(widths[column] - Width(text), ' ');
            line += "  " + (value.is_number() ? fill + text : text + fill);
        }
        out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    };
    print(table[0], true);
    for (const Json& row : table)
        print(row, false);
}

/// The value of a member, which may say more than in JSON; empty for one that is told elsewhere.
std::string TextOfMember(const std::string& name, const Json& description)
{
    static constexpr std::array<const char*, 6> kNumerals{"", "I", "II", "III", "IV", "V"};
    const Json& value = description[name];
    if (name == "game")
        return std::string("Tomb Raider ") + kNumerals.at(value.get<std::size_t>());
    if (name == "textures_used" && value.is_number())
        return Grouped(value.get<std::size_t>()) + " of at most " +
               Grouped(description["most_textures"].get<std::size_t>());
    return name == "most_textures" || name == "messages" ? "" : TextOf(value);
}

std::string TextOfAll(const Json& description)
{
    std::ostringstream out;
    for (const auto& [name, value] : description.items()) {
        const bool isTable = value.is_array() && name != "messages";
        if (isTable)
            PrintTable(name, value, out);
        else if (const std::string text = TextOfMember(name, description); !text.empty())
            out << LabelOf(name) << ": " << text << '\n';
    }
    return out.str();
}

FileOutcome Tell(const std::string& file, bool isOneOfMany)
{
    auto outcome = WorkQuietly(file, isOneOfMany, [&](Session& session, FileOutcome& told) {
        const Json description = Describe(file, session);
        Json text{{"file", file}};
        text.update(description);
        told.Text = TextOfAll(text) + (isOneOfMany ? "\n" : "");
        told.Members.update(description);
        // What could be read is shown, but a level that can't be converted is no good one.
        return description.value("textures_used", Json(0)) != nullptr;
    });
    outcome.Members["event"] = outcome.Text.empty() ? "unreadable" : "told";
    return outcome;
}

} // namespace

int Info(const ManyOptions& options, const Streams& streams)
{
    std::vector<std::string> files;
    try {
        files = FindPaths(options.Files, options.Recursive, Wanted::AllToTell);
    } catch (const FileFailure& failure) {
        streams.Errors << failure.what() << '\n';
        return kWrongUse;
    }
    return WorkOnFiles(files, options, streams, [&files](std::size_t i, const OnProg& /*onProg*/) {
        return Tell(files[i], files.size() > 1);
    });
}

} // namespace morlik::cli
