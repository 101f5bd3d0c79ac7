#include "base/Files.h"
#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "check/WadCheck.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>

namespace morlik::check
{

namespace
{

namespace fs = std::filesystem;

/// Whether there is something of this name; what can't be looked at is tried and told then.
bool Exists(const std::string& path)
{
    std::error_code fault;
    return fs::exists(ToPath(path), fault) || fault;
}

/// The check of a set while it goes on.
class SetCheck
{
public:
    explicit SetCheck(std::string base) : base_(std::move(base)) {}

    /// A file read with `read`; nothing where it is missing or can't be read.
    template <class Read>
    auto Load(const std::string& extension, const Read& read)
        -> std::optional<decltype(read(std::string()))>
    {
        const std::string path = base_ + extension;
        if (!Exists(path)) {
            Report.Missing.push_back(extension);
            return std::nullopt;
        }
        try {
            return read(path);
        } catch (const std::runtime_error& failure) {
            Add(extension.substr(1), {failure.what()});
            return std::nullopt;
        }
    }

    void Add(const std::string& file, const Complaints& complaints)
    {
        for (const std::string& complaint : complaints)
            Report.Problems.push_back(file + ": " + complaint);
    }

    SetReport Report;

private:
    std::string base_;
};

/// WAV files that no line names: no fault, since nothing looks at them.
Complaints UnnamedWaves(const std::string& folder, const std::vector<std::string>& lines)
{
    const std::set<std::string> named(lines.begin(), lines.end());
    std::set<std::string> unnamed;
    std::error_code fault; // as above: the lines have told it
    for (fs::directory_iterator entry(ToPath(folder), fault), end; !fault && entry != end;
         entry.increment(fault))
        if (const auto name = FromPath(entry->path().filename()); !named.contains(name))
            unnamed.insert(name);
    Gatherer out;
    for (const std::string& name : unnamed)
        out.Add("No line names ", Quoted(name), ", maybe a file of an earlier set");
    return out.Take();
}

/// The folder of the WAV files. That of games 2 and 3 is there if the set was saved with a
/// `main.sfx`.
void CheckSoundFolder(SetCheck& check, const std::string& folder,
                      const std::vector<std::string>& lines, int game)
{
    const bool isThere = Exists(folder);
    if (isThere || game == 1)
        check.Add("wav", CheckWaves(folder, lines, game));
    else if (!lines.empty())
        check.Report.Notes.push_back("There are no WAV files: the set was saved without main.sfx");
    if (isThere)
        check.Report.Notes = UnnamedWaves(folder, lines);
}

} // namespace

Complaints CheckWas(const std::vector<std::string>& lines, const WadFile* wad, int game)
{
    Gatherer out;
    const std::size_t moveables = wad != nullptr ? wad->Moveables.size() : lines.size();
    if (wad != nullptr && lines.size() != moveables + wad->StaticMeshes.size())
        out.Add(lines.size(), " lines for ", moveables, " moveables and ", wad->StaticMeshes.size(),
                " static meshes");
    const std::string root = ":Z:\\TOMB" + std::to_string(game) + "\\";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto names = lines[i].find(root);
        const auto path = lines[i].rfind('\\');
        if (names == std::string::npos || path <= names + root.size())
            out.Add("Line ", i + 1, " has no source path of game ", game);
        else if ((i >= moveables || game == 4) &&
                 lines[i].substr(0, names) != lines[i].substr(path + 1))
            out.Add("Line ", i + 1, " has two names for one object");
    }
    return out.Take();
}

Complaints CheckSwd(const SwdFile& swd)
{
    Gatherer out;
    if (swd.Pixels.size() % kSetTileBytes != 0)
        out.Add(swd.Pixels.size(), " tile bytes are no whole tiles");
    // The last tile holds the palette.
    const std::size_t tiles = std::max(swd.Pixels.size() / kSetTileBytes, std::size_t{1}) - 1;
    for (std::size_t i = 0; i < swd.SpriteTextures.size(); ++i) {
        const SwdSpriteTexture& sprite = swd.SpriteTextures[i];
        if (!Inside(sprite.Tile, 1, tiles))
            out.Add("Sprite texture ", i, " lies on tile ", sprite.Tile, " of ", tiles);
        if (sprite.X + sprite.Width / 256 > 255 || sprite.Y + sprite.Height / 256 > 255)
            out.Add("Sprite texture ", i, " leaves its tile");
    }
    for (std::size_t i = 0; i < swd.SpriteSequences.size(); ++i)
        if (const SwdSpriteSequence& sequence = swd.SpriteSequences[i];
            sequence.NegatedCount == 0 ||
            !Inside(sequence.FirstTexture, -sequence.NegatedCount, swd.SpriteTextures.size()))
            out.Add("Sprite sequence ", i, " has ", -sequence.NegatedCount, " textures from ",
                    sequence.FirstTexture, " on, of ", swd.SpriteTextures.size());
    return out.Take();
}

SetReport CheckSet(const std::string& setBase, int game)
{
    SetCheck check(setBase);
    const auto readLines = [](const std::string& path) { return ReadLines(path); };
    const auto wad = check.Load(".wad", [](const std::string& path) { return ReadWad(path); });
    if (wad)
        check.Add("wad", CheckWad(*wad, game));
    if (const auto lines = check.Load(".was", readLines))
        check.Add("was", CheckWas(*lines, wad ? &*wad : nullptr, game));
    if (const auto swd =
            check.Load(".swd", [](const std::string& path) { return ReadSwd(ReadFile(path)); }))
        check.Add("swd", CheckSwd(*swd));
    const auto sfx =
        check.Load(".sfx", [](const std::string& path) { return ReadSfx(ReadFile(path)); });
    if (sfx)
        check.Add("sfx", CheckSfx(*sfx));
    const auto sounds = check.Load(".sam", readLines);
    if (sounds && sfx)
        check.Add("sam", CheckSam(*sounds, *sfx, game));
    if (sounds && game <= 3)
        CheckSoundFolder(check, setBase + "-Sounds", *sounds, game);
    return std::move(check.Report);
}

} // namespace morlik::check
