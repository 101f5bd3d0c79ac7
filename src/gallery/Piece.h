#pragma once

#include "gallery/LevelCards.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace morlik::gallery
{

using Json = nlohmann::json;

/// JSON as a script takes it: ASCII alone, so that no letter can end a line or a script there.
std::string ScriptText(const Json& value);

/// A number of plural things: "1 mesh", "2 meshes"; empty for none.
std::string CountText(std::size_t count, const char* one, const char* many);

/// The number of the game as people write it: "I" to "V".
std::string GameText(VersionCode game);

/// Names of the objects' places on their page, each of its own: "m91" of moveable 91, "s3" of a
/// static mesh, "p4" of sprites; of several with one number the later ones are "m91-2" and so on.
std::vector<std::string> AnchorsOf(const std::vector<ObjectCard>& objects);

/// What an object is called where there is room for one name: its own, else the editor's.
std::string ShownName(const ObjectCard& object);

/// What the index and the next run know of a level whose page is whole: the file "made.json" of its
/// folder, which is written last.
///
///   form     number, `kForm`
///   title, game, sounds, strip
///   objects  a list each: anchor, number, name, name in IV, meshes, animations, textures, picture
///   files    names of the files of the store that the page uses
struct Piece
{
    static constexpr int kForm = 1;
    static constexpr const char* kFile = "made.json";

    std::string Title;
    VersionCode Game = kNoLevel;
    std::size_t Sounds = 0;
    std::string Strip;
    Json Objects = Json::array();
    std::vector<std::string> Files;
};

Piece PieceOf(const LevelCards& cards, const std::set<std::string>& files);

/// `path` is that of the folder. `FileFailure`.
void SavePiece(const std::string& folder, const Piece& piece);
/// Nothing where there is none, or one of another form.
std::optional<Piece> LoadPiece(const std::string& folder);

} // namespace morlik::gallery
