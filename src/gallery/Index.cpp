#include "gallery/Index.h"

#include "base/Text.h"
#include "gallery/Assets.h"
#include "gallery/Gallery.h"
#include "gallery/Html.h"
#include "gallery/Pictures.h"
#include "gallery/Piece.h"
#include "gallery/Store.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <set>

// Markup is full of quotes, and most of it holds line breaks, too.
// NOLINTBEGIN(modernize-raw-string-literal)

namespace morlik::gallery
{

namespace
{

namespace fs = std::filesystem;

/// Calls `take` with each level that is whole and its piece.
template <class Take>
void ForEachPiece(const std::string& root, const std::vector<IndexEntry>& entries, const Take& take)
{
    for (const IndexEntry& entry : entries)
        if (const auto piece = LoadPiece(root + kLevels + entry.Folder))
            take(entry, *piece);
}

Html IndexHead()
{
    Html head = PageHead("Gallery of levels", "", false);
    head << "<body class=\"index\">\n<a class=\"skip\" href=\"#main\">Skip the search</a>\n"
            "<header>\n<h1>Gallery of levels</h1>\n"
            "<form id=\"search\" role=\"search\">\n"
            "<div><label for=\"words\">Find an object</label><input type=\"search\" id=\"words\" "
            "autocomplete=\"off\" spellcheck=\"false\" placeholder=\"name or number\" "
            "aria-describedby=\"found\"></div>\n"
            "<div><label for=\"game\">Game</label><select id=\"game\"><option value=\"\">all"
            "</option>";
    for (int game = 1; game <= 5; ++game)
        head << "<option value=\"" << game << "\">" << GameText(GameOf(game)) << "</option>";
    head << "</select></div>\n"
            "<div><label for=\"kind\">Kind</label><select id=\"kind\"><option value=\"\">all"
            "</option><option value=\"m\">moveables</option><option value=\"s\">static meshes"
            "</option><option value=\"p\">sprites</option></select></div>\n"
            "<output id=\"found\" for=\"words game kind\" aria-live=\"polite\"></output>\n</form>\n"
            "</header>\n<main id=\"main\">\n<section id=\"results\" aria-label=\"Objects\" "
            "hidden></section>\n"
            "<section id=\"levels\" aria-label=\"Levels\">\n<ul>\n";
    return head;
}

Html RowOf(const IndexEntry& entry, const Piece& piece)
{
    Html row;
    row << "<li data-game=\"" << NumberOf(piece.Game) << "\"><a href=\"" << std::string(kLevels)
        << entry.Folder << "/index.html\"><span class=\"title\">" << piece.Title << "</span>";
    if (!piece.Strip.empty())
        row << "<img class=\"strip\" src=\"" << EncodeUrl(piece.Strip) << "\" alt=\"\" height=\""
            << kStripSide << "\" width=\"" << kStripSide * kStripObjects
            << "\" loading=\"lazy\" decoding=\"async\">";
    row << "</a><p class=\"facts\"><span class=\"game\">" << GameText(piece.Game) << "</span> ";
    if (!entry.Below.empty())
        row << "<span class=\"below\">" << entry.Below << "</span> ";
    for (const std::string& fact : {CountText(piece.Objects.size(), "object", "objects"),
                                    CountText(piece.Sounds, "sound", "sounds")})
        if (!fact.empty())
            row << "<span>" << fact << "</span> ";
    row << "</p></li>\n";
    return row;
}

std::string LineOf(const IndexEntry& entry, const Piece& piece)
{
    const Json line{entry.Folder, piece.Title, PlainText(entry.Below), NumberOf(piece.Game),
                    piece.Objects};
    return "morlikIndex.push(" + ScriptText(line) + ");\n";
}

constexpr std::size_t kDigits = 20; ///< of a `ContentName`

/// Whether a text ends in that many small hexadecimal digits.
bool EndsInDigits(std::string_view text, std::size_t count)
{
    return text.size() >= count &&
           text.substr(text.size() - count).find_first_not_of("0123456789abcdef") ==
               std::string_view::npos;
}

/// Removes files of a folder and the ones below that look like those of a store, and what a run
/// that was ended has left of one.
void RemoveFiles(const std::string& root, const char* kind, const std::set<std::size_t>& used)
{
    std::error_code none;
    const fs::path folder = ToPath(root) / kind;
    std::vector<fs::path> unused;
    for (fs::recursive_directory_iterator entry(folder, none), end; !none && entry != end;
         entry.increment(none)) {
        const std::string stem = FromPath(entry->path().stem());
        const auto relative = entry->path().lexically_relative(ToPath(root)).generic_u8string();
        const std::string name(relative.begin(), relative.end());
        std::error_code gone;
        if (NameBegins(entry->path().filename(), ".morlik-") && entry->is_directory(gone)) {
            entry.disable_recursion_pending();
            unused.push_back(entry->path());
        } else if (entry->is_regular_file(gone) && EndsInDigits(stem, kDigits - 2) &&
                   !used.contains(std::hash<std::string>()(name)))
            unused.push_back(entry->path());
    }
    for (const fs::path& path : unused)
        fs::remove_all(path, none);
}

} // namespace

IndexCounts WriteIndex(FileGroup& group, const std::string& root,
                       const std::vector<IndexEntry>& entries)
{
    IndexCounts counts;
    const std::string page = root + kIndexFile;
    const std::string script = root + "search.js";
    OutputFile pageFile(group.DraftOf(page), page);
    OutputFile scriptFile(group.DraftOf(script), script);
    pageFile.PutText(IndexHead().Text());
    scriptFile.PutText("globalThis.morlikIndex = [];\n");
    ForEachPiece(root, entries, [&](const IndexEntry& entry, const Piece& piece) {
        pageFile.PutText(RowOf(entry, piece).Text());
        scriptFile.PutText(LineOf(entry, piece));
        ++counts.Levels;
        counts.Objects += piece.Objects.size();
    });
    Html end;
    end << "</ul>\n</section>\n</main>\n<footer><p>" << CountText(counts.Levels, "level", "levels")
        << " with " << CountText(counts.Objects, "object", "objects")
        << ", made by Morlik</p></footer>\n</body>\n</html>\n";
    pageFile.PutText(end.Text());
    pageFile.Close();
    scriptFile.Close();
    for (const Asset& asset : Assets())
        group.Write(root + asset.Name, std::as_bytes(asset.Bytes));
    return counts;
}

void RemoveUnused(const std::string& root, const std::vector<IndexEntry>& entries)
{
    std::set<std::string> folders;
    for (const IndexEntry& entry : entries)
        folders.insert(entry.Folder);
    std::error_code none;
    std::vector<fs::path> unused;
    for (fs::directory_iterator entry(ToPath(root + kLevels), none), end; !none && entry != end;
         entry.increment(none)) {
        const std::string name = FromPath(entry->path().filename());
        if (EndsInDigits(name, kDigits) && !folders.contains(name))
            unused.push_back(entry->path());
    }
    std::vector<IndexEntry> kept = entries;
    for (const fs::path& path : unused) {
        // First what tells that a page is whole: the rest, and what it shows, goes piece by piece.
        std::error_code fault;
        if (fs::remove(path / Piece::kFile, fault); fault)
            kept.push_back({.Folder = FromPath(path.filename()), .Below = {}});
        else
            fs::remove_all(path, none);
    }

    std::set<std::size_t> used; // numbers of names: thousands of levels have many of them
    ForEachPiece(root, kept, [&](const IndexEntry& /*entry*/, const Piece& piece) {
        for (const std::string& file : piece.Files)
            used.insert(std::hash<std::string>()(file));
    });
    for (const char* kind : {kPictures, kSounds, kModels})
        RemoveFiles(root, kind, used);
}

} // namespace morlik::gallery

// NOLINTEND(modernize-raw-string-literal)
