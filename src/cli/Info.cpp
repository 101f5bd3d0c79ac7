// morlik-cli info: what is in a file. All of it is gathered as JSON first; the text is that, laid
// out for people.

#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/Json.h"
#include "cli/MainSFX.h"
#include "cli/QuietHost.h"
#include "convert/ConvertMeshes.h"
#include "convert/UsedTextures.h"
#include "shell/ObjectID_Mod.h"
#include "shell/Sounds.h"

#include <algorithm>
#include <map>

namespace morlik::cli
{

namespace
{

/// Textures that an object set of the level takes; null where its meshes can't be converted.
Json CountUsedTextures(const Session& session, Reporter& report)
{
    try {
        const auto textures = NumberTextures(session.Level, FirstTextureOf(session.Level), report);
        if (!textures)
            return nullptr;
        std::vector<std::string> info;
        ConvertMeshes(session.Level, *textures, false, info, report);
        return textures->InOrder.size();
    } catch (const ProgramEnd&) {
        return nullptr;
    }
}

Json Moveables(const Session& session)
{
    Json list = Json::array();
    const LevelData& level = session.Level;
    for (std::size_t i = 0; i < level.Moveables.size(); ++i) {
        const Moveable& moveable = level.Moveables[i];
        const bool moves = moveable.Animation != -1;
        list.push_back(
            {{"id", moveable.ObjectID},
             {"name", FromLatin1(session.Names.Moveable(level.Version, moveable.ObjectID))},
             {"meshes", moveable.NumMeshes},
             {"animations", moves ? CountAnimations(level.Moveables, level.NumAnimations, i) : 0}});
    }
    return list;
}

Json Statics(const Session& session)
{
    Json list = Json::array();
    for (const StaticMesh& mesh : session.Level.StaticMeshes)
        list.push_back(
            {{"id", mesh.ObjectID}, {"name", FromLatin1(session.Names.Static(mesh.ObjectID))}});
    return list;
}

Json Sounds(const LevelData& level)
{
    Json list = Json::array();
    for (const SoundEntry& entry : LevelSounds(level))
        list.push_back({{"name", entry.Name}, {"bytes", entry.Size}});
    return list;
}

Json DescribeLevel(const std::string& file, Session& session)
{
    static constexpr std::array<const char*, 6> kNumerals{"", "I", "II", "III", "IV", "V"};
    LoadObjectIDs("", session.Names, session.Report);
    LoadLevel(session, file);
    const LevelData& level = session.Level;
    const bool samplesElsewhere = HasMainSFX(level);
    const std::size_t numElsewhere =
        HasMainSFX(level.Version) ? level.SampleIndices.size() : level.SamplePlaces.size();
    return {{"file", file},
            {"game", std::string("Tomb Raider ") +
                         kNumerals.at(static_cast<std::size_t>(NumberOf(level.Version)))},
            {"rooms", session.State.RoomCount},
            {"tiles", level.TileBytes / kTileBytes},
            {"textures", level.NumTextInfo},
            {"textures used", CountUsedTextures(session, session.Report)},
            {"meshes", level.NumMeshPointers},
            {"animations", level.NumAnimations},
            // The reader of IV and V passes over them.
            {"sprites", IsOlderGame(level.Version) ? Json(level.NumSpriteTextures) : Json()},
            {"sound details", level.NumSoundDetails},
            {"samples", samplesElsewhere ? Json(numElsewhere) : Json(level.NumSamples)},
            {"moveables", Moveables(session)},
            {"static meshes", Statics(session)},
            {"sounds", samplesElsewhere ? Json::array() : Sounds(level)}};
}

Json DescribeMainSFX(const std::string& file, Session& session)
{
    if (!LoadMainSFX(session, file))
        throw ProgramEnd("no main.sfx");
    Json list = Json::array();
    for (std::size_t i = 0; i < session.MainSFX.MainSFXSamples.size(); ++i)
        list.push_back({{"number", i}, {"bytes", session.MainSFX.MainSFXSamples[i].size()}});
    return {{"file", file}, {"samples", std::move(list)}};
}

Json DescribeProject(const std::string& file, Session& session)
{
    const PRJData project = ReadPRJ(file, session.State.LevelIsLoaded, session.Report);
    if (project.Rooms.empty())
        throw ProgramEnd("no project");
    Json rooms = Json::array();
    for (const PRJRoom& room : project.Rooms)
        if (room.State != 0)
            rooms.push_back({{"number", room.Index},
                             {"name", FromLatin1(room.Name)},
                             {"columns", room.BlockColumns},
                             {"rows", room.BlockRows},
                             {"objects", room.ObjectTypes.size() + room.Object2Types.size()}});
    return {{"file", file},
            {"version", project.Version},
            {"room slots", project.NumRoomSlots},
            {"texture file", FromLatin1(project.TextureFile)},
            {"rooms", std::move(rooms)}};
}

/// A value for people.
std::string TextOf(const Json& value)
{
    if (value.is_null())
        return "unknown";
    return value.is_string() ? Printable(value.get<std::string>()) : value.dump();
}

/// Columns that a text in UTF-8 takes.
std::size_t Width(const std::string& text)
{
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](unsigned char byte) { return (byte & 0xc0U) != 0x80; }));
}

/// A table of objects that have the same members, one in a line.
void PrintTable(const std::string& name, const Json& table, std::ostream& out)
{
    out << name << ": " << table.size() << '\n';
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

void PrintText(const Json& description, std::ostream& out)
{
    for (const auto& [name, value] : description.items()) {
        if (value.is_array())
            PrintTable(name, value, out);
        else
            out << name << ": " << TextOf(value) << '\n';
    }
}

} // namespace

int Info(const std::string& file, bool json, const Streams& streams)
{
    return RunQuietly(streams, [&](Session& session) {
        const bool isProject = EndsWithNoCase(file, ".prj");
        const Json description = IsMainSFX(file) ? DescribeMainSFX(file, session)
                                 : isProject     ? DescribeProject(file, session)
                                                 : DescribeLevel(file, session);
        if (json)
            PrintJson(description, streams.Out);
        else
            PrintText(description, streams.Out);
        // What could be read is shown, but a level that can't be converted is no good one.
        return description.value("textures used", Json(0)) != nullptr;
    });
}

} // namespace morlik::cli
