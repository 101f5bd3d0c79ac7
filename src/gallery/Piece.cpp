#include "gallery/Piece.h"

#include "base/Files.h"
#include "base/OutputFile.h"
#include "gallery/Html.h"

#include <array>

namespace morlik::gallery
{

namespace
{

constexpr std::size_t kMostPieceBytes = std::size_t{64} << 20U;

std::string InFolder(const std::string& folder)
{
    return FromPath(ToPath(folder) / Piece::kFile);
}

Piece PieceFrom(const Json& json)
{
    Piece piece;
    json.at("title").get_to(piece.Title);
    piece.Game = GameOf(json.at("game").get<std::int32_t>());
    json.at("sounds").get_to(piece.Sounds);
    json.at("strip").get_to(piece.Strip);
    piece.Objects = json.at("objects");
    json.at("files").get_to(piece.Files);
    return piece;
}

} // namespace

std::string ScriptText(const Json& value)
{
    constexpr int kOneLine = -1;
    return value.dump(kOneLine, ' ', true, Json::error_handler_t::replace);
}

std::string CountText(std::size_t count, const char* one, const char* many)
{
    return count == 0 ? "" : Grouped(count) + " " + (count == 1 ? one : many);
}

std::string GameText(VersionCode game)
{
    constexpr std::array kNumerals{"", "I", "II", "III", "IV", "V"};
    const auto number = static_cast<std::size_t>(NumberOf(game));
    return number < kNumerals.size() ? kNumerals[number] : "";
}

std::vector<std::string> AnchorsOf(const std::vector<ObjectCard>& objects)
{
    std::vector<std::string> anchors;
    std::set<std::string> taken;
    for (const ObjectCard& object : objects) {
        const char kind = "msp"[static_cast<std::size_t>(object.Kind)];
        const std::string plain = kind + std::to_string(object.ID);
        std::string unique = plain;
        for (int number = 2; !taken.insert(unique).second; ++number)
            unique = plain + "-" + std::to_string(number);
        anchors.push_back(unique);
    }
    return anchors;
}

std::string ShownName(const ObjectCard& object)
{
    return object.Name.empty() ? object.EditorName : object.Name;
}

Piece PieceOf(const LevelCards& cards, const std::set<std::string>& files)
{
    Piece piece{.Title = PlainText(cards.Title),
                .Game = cards.Game,
                .Sounds = cards.Sounds.size(),
                .Strip = cards.Strip,
                .Files = {files.begin(), files.end()}};
    const auto anchors = AnchorsOf(cards.Objects);
    for (std::size_t i = 0; i < anchors.size(); ++i) {
        const ObjectCard& object = cards.Objects[i];
        const std::string name = ShownName(object);
        piece.Objects.push_back({anchors[i], object.ID, name,
                                 object.EditorName == name ? "" : object.EditorName, object.Meshes,
                                 object.Animations.size(), object.Textures, object.Still});
    }
    return piece;
}

void SavePiece(const std::string& folder, const Piece& piece)
{
    const Json json{{"form", Piece::kForm},         {"title", piece.Title},
                    {"game", NumberOf(piece.Game)}, {"sounds", piece.Sounds},
                    {"strip", piece.Strip},         {"objects", piece.Objects},
                    {"files", piece.Files}};
    const std::string text = ScriptText(json) + "\n";
    WriteWholeFile(InFolder(folder), std::as_bytes(std::span(text)));
}

std::optional<Piece> LoadPiece(const std::string& folder)
{
    try {
        const auto file = FileBytes::Load(InFolder(folder), kMostPieceBytes);
        const auto bytes = file.Bytes();
        const Json json = Json::parse(reinterpret_cast<const char*>(bytes.data()),
                                      reinterpret_cast<const char*>(bytes.data()) + bytes.size());
        if (json.at("form") == Piece::kForm)
            return PieceFrom(json);
    } catch (const FileFailure&) {
        // the level is made anew
    } catch (const Json::exception&) {
        // the same for a file that is none of ours
    }
    return {};
}

} // namespace morlik::gallery
