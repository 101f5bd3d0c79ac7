// morlik-cli find: which levels and sets have an object.

#include "base/Files.h"
#include "base/Narrow.h"
#include "base/Text.h"
#include "cli/FindFiles.h"
#include "cli/ManyFiles.h"
#include "cli/ObjectList.h"
#include "cli/OpenSet.h"
#include "cli/Shapes.h"
#include "convert/ObjectNeeds.h"
#include "model/Damage.h"
#include "model/MeshGeometry.h"
#include "shell/ObjectID_Mod.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <map>
#include <memory>
#include <set>

namespace morlik::cli
{

namespace
{

using Strings = std::vector<std::string>;

/// What is looked for; any of it is a hit.
struct Wish
{
    std::vector<ObjectPattern> Patterns;
    std::optional<std::int32_t> Sound;
    std::vector<Shape> Shapes;
};

/// An object, as it is told.
struct Found
{
    bool IsStatic = false;
    std::int64_t FirstMesh = 0;
    std::int64_t NumMeshes = 0;
    std::int64_t Animations = 0;
    std::function<std::size_t()> CountTextures{}; ///< for hits alone: it takes longer than the rest
    Candidate Named{};
    std::string Name{};
};

/// What a level or a set has.
struct Contents
{
    std::vector<Found> Objects;
    std::optional<Shapes> Meshes;
    std::vector<std::int32_t> Sounds; ///< slots that have one
};

template <class Sounds>
void AddSounds(Contents& contents, const Sounds& sounds)
{
    for (std::size_t slot = 0; slot < sounds.SoundMap.size(); ++slot)
        if (Inside(sounds.SoundMap[slot], 1, sounds.SoundDetails.size()))
            contents.Sounds.push_back(static_cast<std::int32_t>(slot));
}

Contents ContentsOf(const LevelData& level, const ObjectNames& names)
{
    Contents contents;
    contents.Meshes.emplace(level);
    const auto animations = AnimationNeedsOf(level);
    const auto needs = std::make_shared<std::optional<ObjectNeeds>>();
    const auto texturesOf = [&level, needs](bool isStatic, std::size_t i) {
        if (!*needs)
            *needs = NeedsOf(level);
        return (isStatic ? (*needs)->StaticMeshes : (*needs)->Moveables)[i].size();
    };
    const auto moveables = MoveablesOf(level, names);
    for (std::size_t i = 0; i < moveables.size(); ++i) {
        const Moveable& moveable = level.Moveables[i];
        const std::string& own = names.Moveable(level.Version, moveable.ObjectID);
        contents.Objects.push_back(
            {.FirstMesh = moveable.StartingMesh,
             .NumMeshes = moveable.NumMeshes,
             .Animations = animations[i].Animations,
             .CountTextures = [texturesOf, i] { return texturesOf(false, i); },
             .Named = moveables[i],
             .Name = own.empty() ? names.Moveable(kTR4, moveable.ObjectID) : own});
    }
    const auto statics = StaticsOf(level, names);
    for (std::size_t i = 0; i < statics.size(); ++i)
        contents.Objects.push_back(
            {.IsStatic = true,
             .FirstMesh = level.StaticMeshes[i].Mesh,
             .NumMeshes = 1,
             .CountTextures = [texturesOf, i] { return texturesOf(true, i); },
             .Named = statics[i],
             .Name = names.Static(statics[i].ID)});
    AddSounds(contents, level);
    return contents;
}

/// Counts the textures of objects of a set, whose meshes are read once.
class SetTextures
{
public:
    explicit SetTextures(const ObjectSet& set) : set_(set) {}

    std::size_t Count(std::int64_t firstMesh, std::int64_t numMeshes)
    {
        std::set<std::uint16_t> all;
        for (std::int64_t mesh = firstMesh; mesh < firstMesh + numMeshes; ++mesh) {
            const auto& textures = Of(static_cast<std::size_t>(mesh));
            if (textures.size() + 1 > left_)
                FailDamaged("objects: they share their meshes again and again");
            left_ -= textures.size() + 1;
            all.insert(textures.begin(), textures.end());
        }
        return all.size();
    }

private:
    const std::set<std::uint16_t>& Of(std::size_t mesh)
    {
        const auto [made, isNew] = made_.try_emplace(mesh);
        if (isNew)
            for (const GeometryFace& face : GeometryOf(set_, mesh).Faces)
                if (!face.IsColour)
                    made->second.insert(face.Texture);
        return made->second;
    }

    const ObjectSet& set_;
    std::size_t left_ = std::size_t{1} << 22U; ///< textures that are added up
    std::map<std::size_t, std::set<std::uint16_t>> made_;
};

void AddNamed(Contents& contents, const std::shared_ptr<SetTextures>& textures,
              const NamedObject& named, Found object)
{
    object.Named.ID = named.ObjectID;
    for (const std::string& name : named.Names)
        object.Named.Names.push_back(ToUpper(name));
    object.Name = named.Names[0];
    object.CountTextures = [textures, first = object.FirstMesh, count = object.NumMeshes] {
        return textures->Count(first, count);
    };
    contents.Objects.push_back(std::move(object));
}

Contents ContentsOf(const OpenedSet& opened)
{
    Contents contents;
    const ObjectSet& set = opened.Whole();
    contents.Meshes.emplace(set);
    const auto textures = std::make_shared<SetTextures>(set);
    const auto numAnimations = static_cast<std::int32_t>(set.Animations.size());
    for (std::size_t i = 0; i < set.Moveables.size(); ++i) {
        const Moveable& moveable = set.Moveables[i];
        AddNamed(contents, textures, opened.Moveables[i],
                 {.FirstMesh = moveable.StartingMesh,
                  .NumMeshes = moveable.NumMeshes,
                  .Animations = moveable.Animation < 0
                                    ? 0
                                    : CountAnimations(set.Moveables, numAnimations, i)});
    }
    for (std::size_t i = 0; i < set.StaticMeshes.size(); ++i)
        AddNamed(contents, textures, opened.StaticMeshes[i],
                 {.IsStatic = true, .FirstMesh = set.StaticMeshes[i].Mesh, .NumMeshes = 1});
    if (set.Sounds)
        AddSounds(contents, *set.Sounds);
    return contents;
}

/// Does a work with what is in a level or a set.
template <class Work>
void WithContents(const std::string& file, Session& session, const Work& work)
{
    LoadObjectIDs("", session.Names, session.Report);
    if (EndsWithNoCase(file, ".was")) {
        const OpenedSet opened = OpenSet(session, file);
        work(ContentsOf(opened));
    } else {
        LoadLevel(session, file);
        work(ContentsOf(session.Level, session.Names));
    }
}

bool IsMeant(const Wish& wish, const Found& object, Contents& contents)
{
    const auto byPattern = [&](const ObjectPattern& pattern) {
        return pattern.IsStatic() == object.IsStatic && pattern.Means(object.Named);
    };
    const auto byShape = [&](const Shape& shape) {
        try {
            return contents.Meshes->AreLike(shape, object.FirstMesh, object.NumMeshes);
        } catch (const ReadFailure&) {
            return false; // one that is damaged is not the same
        }
    };
    return std::ranges::any_of(wish.Patterns, byPattern) ||
           std::ranges::any_of(wish.Shapes, byShape);
}

Json HitOf(const std::string& file, const Found& object)
{
    Json textures;
    try {
        textures = object.CountTextures();
    } catch (const ReadFailure&) {
        // a mesh is damaged
    }
    return {{"event", "hit"},
            {"file", file},
            {"kind", object.IsStatic ? "static" : "moveable"},
            {"id", object.Named.ID},
            {"name", object.Name},
            {"meshes", object.NumMeshes},
            {"animations", object.Animations},
            {"textures", textures}};
}

/// A line of columns between tabs.
std::string LineOf(const Json& hit)
{
    std::string line;
    for (const char* column : {"file", "kind", "id", "name", "meshes", "animations", "textures"}) {
        const Json value = hit.contains(column) ? hit[column] : Json();
        line += line.empty() ? "" : "\t";
        if (value.is_string())
            line += Printable(value.get<std::string>());
        else
            line += value.is_null() ? "-" : value.dump();
    }
    return line + '\n';
}

Json HitsIn(const std::string& file, Session& session, const Wish& wish)
{
    Json hits = Json::array();
    WithContents(file, session, [&](Contents contents) {
        for (const Found& object : contents.Objects)
            if (IsMeant(wish, object, contents))
                hits.push_back(HitOf(file, object));
        if (wish.Sound && std::ranges::find(contents.Sounds, *wish.Sound) != contents.Sounds.end())
            hits.push_back(
                {{"event", "hit"}, {"file", file}, {"kind", "sound"}, {"id", *wish.Sound}});
    });
    return hits;
}

FileOutcome FindIn(const std::string& file, const Wish& wish, bool isQuiet)
{
    FileOutcome outcome{.Members = Json::array()};
    QuietHost host;
    Session session(host);
    const bool isRead = host.Try([&] {
        outcome.Members = HitsIn(file, session, wish);
        return true;
    });
    for (const Json& hit : outcome.Members)
        outcome.Text += isQuiet ? "" : LineOf(hit);
    if (!isRead) {
        outcome.Told = LinesOfFault(file, host.Messages);
        outcome.Members.push_back(
            {{"event", "unreadable"}, {"file", file}, {"messages", host.Messages}});
    }
    return outcome;
}

/// The shapes of the objects that "LEVEL:OBJECT" means.
std::vector<Shape> ShapesOf(const std::string& told)
{
    std::error_code none;
    std::size_t colon = told.find(':');
    while (colon != std::string::npos &&
           !std::filesystem::is_regular_file(ToPath(told.substr(0, colon)), none))
        colon = told.find(':', colon + 1);
    if (colon == std::string::npos)
        throw ListFault("\"" + Printable(told) + "\" is not LEVEL:NAME with a level that exists");
    const std::string file = told.substr(0, colon);
    const ObjectPattern pattern(told.substr(colon + 1));
    std::vector<Shape> shapes;
    QuietHost host;
    Session session(host);
    const bool isRead = host.Try([&] {
        WithContents(file, session, [&](Contents contents) {
            std::vector<Candidate> candidates;
            for (const Found& object : contents.Objects) {
                if (object.IsStatic == pattern.IsStatic())
                    candidates.push_back(object.Named);
                if (object.IsStatic == pattern.IsStatic() && pattern.Means(object.Named))
                    shapes.push_back(contents.Meshes->Of(object.FirstMesh, object.NumMeshes));
            }
            if (shapes.empty())
                throw ListFault(pattern.Fault("file", candidates));
        });
        return true;
    });
    if (!isRead)
        throw ListFault(host.Messages.empty() ? "can't read " + Printable(file) : host.Messages[0]);
    return shapes;
}

/// The words up to the first that is there on the disk, or is called like a level or a set, are
/// patterns, one at least where nothing else says what is looked for.
Wish WishOf(const FindOptions& options, Strings& paths)
{
    Wish wish;
    wish.Sound = options.Sound;
    if (!options.SameAs.empty())
        wish.Shapes = ShapesOf(options.SameAs);
    auto word = options.Files.begin();
    bool isNeeded = !wish.Sound && wish.Shapes.empty();
    const auto isThere = [](const std::string& text) {
        std::error_code none;
        return std::filesystem::exists(ToPath(text), none);
    };
    const auto isPath = [&](const std::string& text) {
        return IsWanted(text, Wanted::LevelsAndSets) || isThere(text);
    };
    for (; word != options.Files.end() && (isNeeded || !isPath(*word)); ++word, isNeeded = false)
        for (const std::string& item : ReadItems(*word))
            wish.Patterns.emplace_back(item);
    paths.assign(word, options.Files.end());
    if (paths.empty() && options.Recursive)
        paths = {"."};
    if (std::ranges::none_of(paths, isThere))
        throw ListFault(std::any_of(options.Files.begin(), word, isThere)
                            ? "Say what to look for, in front of the files and folders"
                            : "Say where to look: none of the words is a file or a folder");
    return wish;
}

} // namespace

int Find(const FindOptions& options, const Streams& streams)
{
    Wish wish;
    Strings files;
    try {
        Strings paths;
        wish = WishOf(options, paths);
        files = FindPaths(paths, options.Recursive, Wanted::LevelsAndSets);
    } catch (const std::runtime_error& fault) {
        streams.Errors << PrintableLines(fault.what()) << '\n';
        return kWrongUse;
    }
    std::atomic<std::size_t> numHits = 0;
    const int status =
        WorkOnFiles(files, options, streams, [&](std::size_t i, const OnProg& /*onProg*/) {
            FileOutcome outcome = FindIn(files[i], wish, options.IsQuiet);
            numHits += static_cast<std::size_t>(std::ranges::count_if(
                outcome.Members, [](const Json& member) { return member["event"] == "hit"; }));
            return outcome;
        });
    return status != kGood ? status : numHits > 0 ? kGood : kFailed;
}

} // namespace morlik::cli
