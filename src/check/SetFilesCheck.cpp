#include "base/FileGroup.h"
#include "base/Files.h"
#include "base/SampleLookup.h"
#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "check/WadCheck.h"
#include "set/ReadSet.h"
#include "set/Sounds.h"
#include "set/Swd.h"
#include "set/Wad.h"
#include "set/Was.h"

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

    /// Reads a file into its part of the set; gives whether that could be done.
    template <class ReadInto>
    bool Read(const std::string& extension, ObjectSet& set, const ReadInto& read)
    {
        return Load(extension,
                    [&](const std::string& path) {
                        const auto file = LoadSetFile(path);
                        read(file->Bytes(), file, set);
                        return true;
                    })
            .has_value();
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

/// WAV files that no line names: no fault, since nothing looks at them. Those of a set of Tomb
/// Raider IV, from a `main.sfx`, are in no list.
Complaints UnnamedWaves(const std::string& folder, const std::vector<std::string>& lines,
                        VersionCode game)
{
    const std::string ownStart = game == kTR4 ? SampleNameStart(game) : "";
    const std::set<std::string> named(lines.begin(), lines.end());
    std::set<std::string> unnamed;
    std::error_code fault; // as above: the lines have told it
    for (fs::directory_iterator entry(ToPath(folder), fault), end; !fault && entry != end;
         entry.increment(fault))
        if (const auto name = FromPath(entry->path().filename());
            !named.contains(name) && (ownStart.empty() || !name.starts_with(ownStart)))
            unnamed.insert(name);
    Gatherer out;
    for (const std::string& name : unnamed)
        out.Add("No line names ", Quoted(name), ", maybe a file of an earlier set");
    return out.Take();
}

/// The folder of the WAV files. Those of games 2 and 3 are there if the set was saved with a
/// `main.sfx`, those of game 4 only then, those of game 5 from a set that was here before. So may
/// the folder be.
void CheckSoundFolder(SetCheck& check, const std::string& folder,
                      const std::vector<std::string>& lines, VersionCode game)
{
    const bool isThere = Exists(folder);
    const bool hasWaves = isThere && std::ranges::any_of(lines, [&](const std::string& name) {
                              return Exists(folder + "/" + name);
                          });
    if (IsOlderGame(game) && (hasWaves || game == kTR1))
        check.Add("wav", CheckWaves(folder, lines, game));
    else if (IsOlderGame(game) && !lines.empty())
        check.Report.Notes.push_back("There are no WAV files: the set was saved without main.sfx");
    if (isThere)
        for (const std::string& note : UnnamedWaves(folder, lines, game))
            check.Report.Notes.push_back(note);
}

} // namespace

Complaints CheckWas(const std::vector<std::string>& lines, const ObjectSet* wad, VersionCode game)
{
    Gatherer out;
    const std::size_t moveables = wad != nullptr ? wad->Moveables.size() : lines.size();
    if (wad != nullptr && lines.size() != moveables + wad->StaticMeshes.size())
        out.Add(lines.size(), " lines for ", moveables, " moveables and ", wad->StaticMeshes.size(),
                " static meshes");
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto line = CutWasLine(lines[i], game);
        if (!line)
            out.Add("Line ", i + 1, " has no source path of game ", NumberOf(game));
        else if ((i >= moveables || game == kTR4) && line->Names.EditorName != line->Names.GameName)
            out.Add("Line ", i + 1, " has two names for one object");
    }
    return out.Take();
}

Complaints CheckSwd(const SpriteTables& sprites)
{
    Gatherer out;
    // The last tile holds the palette.
    const auto tiles =
        static_cast<std::size_t>(std::max<std::int64_t>(sprites.Tiles.Count(), 1) - 1);
    for (std::size_t i = 0; i < sprites.SpriteTextures.size(); ++i) {
        const SpriteTexture& sprite = sprites.SpriteTextures[i];
        if (!Inside(sprite.Tile, 1, tiles))
            out.Add("Sprite texture ", i, " lies on tile ", sprite.Tile, " of ", tiles);
        if (sprite.X + sprite.Width / 256 > 255 || sprite.Y + sprite.Height / 256 > 255)
            out.Add("Sprite texture ", i, " leaves its tile");
    }
    for (std::size_t i = 0; i < sprites.SpriteSequences.size(); ++i)
        if (const SpriteSequence& sequence = sprites.SpriteSequences[i];
            sequence.NegatedCount == 0 ||
            !Inside(sequence.FirstTexture, -sequence.NegatedCount, sprites.SpriteTextures.size()))
            out.Add("Sprite sequence ", i, " has ", -sequence.NegatedCount, " textures from ",
                    sequence.FirstTexture, " on, of ", sprites.SpriteTextures.size());
    return out.Take();
}

SetReport CheckSet(const std::string& setBase, VersionCode game)
{
    SetCheck check(setBase);
    try {
        FinishGroup(setBase + ".was");
    } catch (const FileFailure& failure) {
        check.Report.Problems.emplace_back(failure.what());
        return std::move(check.Report);
    }
    ObjectSet set;
    set.Game = game;
    const auto readLines = [](const std::string& path) {
        return ReadLines(LoadListFile(path)->Bytes());
    };
    const bool hasWad = check.Read(".wad", set, ReadWad);
    if (hasWad)
        check.Add("wad", CheckWad(set, &check.Report.Notes));
    if (const auto lines = check.Load(".was", readLines))
        check.Add("was", CheckWas(*lines, hasWad ? &set : nullptr, game));
    if (check.Read(".swd", set, ReadSwd))
        check.Add("swd", CheckSwd(*set.Sprites));
    const auto readTables = [](std::span<const std::byte> bytes, const auto&, ObjectSet& into) {
        ReadSfx(bytes, into);
    };
    const bool hasSfx = check.Read(".sfx", set, readTables);
    if (hasSfx)
        check.Add("sfx", CheckSfx(*set.Sounds));
    const auto sounds = check.Load(".sam", readLines);
    if (sounds && hasSfx)
        check.Add("sam", CheckSam(*sounds, *set.Sounds, game));
    if (sounds)
        CheckSoundFolder(check, setBase + "-Sounds", *sounds, game);
    return std::move(check.Report);
}

} // namespace morlik::check
