#include "gallery/LevelPage.h"

#include "gallery/Html.h"
#include "gallery/Pictures.h"
#include "gallery/Piece.h"

#include <algorithm>
#include <array>

// Markup is full of quotes, and most of it holds line breaks, too.
// NOLINTBEGIN(modernize-raw-string-literal)

namespace morlik::gallery
{

namespace
{

constexpr std::string_view kRoot = "../../";

/// Each fact that there is by itself, so that a line ends between two of them.
Html Facts(const std::vector<std::string>& facts)
{
    Html list;
    list << "<p class=\"facts\">";
    for (const std::string& fact : facts)
        if (!fact.empty())
            list << "<span>" << fact << "</span> ";
    list << "</p>";
    return list;
}

/// A count of a file, which may be below 0.
std::size_t CountOf(std::int64_t number)
{
    return static_cast<std::size_t>(std::max<std::int64_t>(number, 0));
}

Html FactsOf(const ObjectCard& object)
{
    if (object.Kind == CardKind::Sprites)
        return Facts({CountText(CountOf(object.Meshes), "sprite", "sprites")});
    return Facts({CountText(CountOf(object.Meshes), "mesh", "meshes"),
                  CountText(object.Animations.size(), "animation", "animations"),
                  CountText(object.Textures, "texture", "textures"),
                  CountText(object.Sounds.size(), "sound", "sounds")});
}

Html FactsOf(const LevelCards& cards)
{
    return Facts({"Tomb Raider " + GameText(cards.Game),
                  CountText(cards.Objects.size(), "object", "objects"),
                  CountText(CountOf(cards.Textures), "texture", "textures"),
                  CountText(cards.Sounds.size(), "sound", "sounds"),
                  CountText(CountOf(cards.Rooms), "room", "rooms")});
}

std::string KindText(CardKind kind)
{
    constexpr std::array kTexts{"moveable", "static mesh", "sprites"};
    return kTexts[static_cast<std::size_t>(kind)];
}

void AddCard(Html& page, const ObjectCard& object, const std::string& anchor)
{
    const std::string name = ShownName(object);
    const std::string number = std::to_string(object.ID);
    const std::string shown = name.empty() ? KindText(object.Kind) + " " + number : name;
    page << "<li class=\"card\" id=\"" << anchor << "\"><a href=\"#" << anchor << "\">";
    if (object.Still.empty())
        page << "<span class=\"shot none\">"
             << std::string(object.Fault.empty() ? "no faces" : "damaged") << "</span>";
    else
        page << "<img class=\"shot\" src=\"" << std::string(kRoot) + EncodeUrl(object.Still)
             << "\" alt=\"Picture of " << shown << "\" width=\"" << kStillSide << "\" height=\""
             << kStillSide << "\" loading=\"lazy\" decoding=\"async\">";
    page << "<span class=\"name\"><span class=\"id\">" << number << "</span> " << shown
         << "</span></a>";
    if (object.EditorName != name && !object.EditorName.empty())
        page << "<p class=\"other\">in IV: " << object.EditorName << "</p>";
    page << FactsOf(object) << "</li>\n";
}

void AddCards(Html& page, const LevelCards& cards, CardKind kind, const Markup& id,
              const Markup& heading)
{
    const auto anchors = AnchorsOf(cards.Objects);
    Html list;
    std::size_t count = 0;
    for (std::size_t i = 0; i < anchors.size(); ++i)
        if (cards.Objects[i].Kind == kind) {
            AddCard(list, cards.Objects[i], anchors[i]);
            ++count;
        }
    if (count > 0)
        page << "<section id=\"" << id << "\"><h2>" << heading << " <span class=\"count\">" << count
             << "</span></h2>\n<ul class=\"cards\">\n"
             << list << "</ul></section>\n";
}

void AddSounds(Html& page, const std::vector<SoundCard>& sounds)
{
    if (sounds.empty())
        return;
    page << "<section id=\"sounds\"><h2>Sounds <span class=\"count\">" << sounds.size()
         << "</span></h2>\n<ul class=\"sounds\">\n";
    for (const SoundCard& sound : sounds) {
        page << "<li id=\"sound" << sound.Slot << "\"><h3><span class=\"id\">" << sound.Slot
             << "</span></h3><ul>";
        for (std::size_t i = 0; i < sound.Samples.size(); ++i) {
            const SampleCard& sample = sound.Samples[i];
            page << "<li>";
            if (!sample.File.empty())
                page << "<audio controls preload=\"none\" src=\""
                     << std::string(kRoot) + EncodeUrl(sample.File) << "\" aria-label=\"Sound "
                     << sound.Slot << ", sample " << i + 1 << "\"></audio>";
            page << "<span class=\"facts\">" << sample.Facts << "</span></li>";
        }
        page << "</ul></li>\n";
    }
    page << "</ul></section>\n";
}

/// Leaves empty values out.
void Set(Json& object, const char* key, Json value)
{
    const bool isEmptyText = value.is_string() && value.get_ref<const std::string&>().empty();
    if (!value.empty() && !isEmptyText)
        object[key] = std::move(value);
}

Json AnimationFrames(const ObjectCard& object)
{
    Json frames = Json::array();
    for (const AnimationCard& animation : object.Animations)
        frames.push_back(animation.Frames);
    return frames;
}

Json AnimationPictures(const ObjectCard& object)
{
    Json pictures = Json::object();
    for (std::size_t i = 0; i < object.Animations.size(); ++i)
        Set(pictures, std::to_string(i).c_str(), object.Animations[i].Moving);
    return pictures;
}

Json TilesOf(const ObjectCard& object)
{
    Json tiles = Json::array();
    for (const TileCard& tile : object.Tiles) {
        Json boxes = Json::array();
        for (const TextInfo& box : tile.Boxes)
            boxes.push_back({box.X, box.Y, box.Width + 1, box.Height + 1});
        tiles.push_back({tile.Picture, std::move(boxes)});
    }
    return tiles;
}

Json DataOf(const ObjectCard& object, const std::string& anchor)
{
    Json data{{"k", anchor}, {"i", object.ID}};
    const std::string name = ShownName(object);
    Set(data, "n", name);
    Set(data, "e", object.EditorName == name ? "" : object.EditorName);
    data["m"] = object.Meshes;
    data["t"] = object.Textures;
    Set(data, "s", object.Sounds);
    Set(data, "a", AnimationFrames(object));
    Set(data, "v", AnimationPictures(object));
    Set(data, "x", TilesOf(object));
    Set(data, "p", object.Still);
    Set(data, "r", object.Turning);
    Set(data, "g", object.Model);
    Set(data, "z", object.SetFiles);
    Set(data, "f", PlainText(object.Fault));
    return data;
}

} // namespace

std::string LevelPage(const LevelCards& cards)
{
    Html page = PageHead(PlainText(cards.Title) + " – gallery", std::string(kRoot), true);
    page << "<body class=\"level\">\n<a class=\"skip\" href=\"#main\">Skip to the objects</a>\n"
            "<header><div><nav><a href=\"../../index.html\">All levels</a></nav>\n<h1>"
         << cards.Title << "</h1>\n"
         << FactsOf(cards)
         << "</div>\n<form id=\"filter\" role=\"search\"><div><label for=\"words\">Find on "
            "this "
            "page</label><input type=\"search\" id=\"words\" autocomplete=\"off\" "
            "spellcheck=\"false\" placeholder=\"name or number\"></div><output id=\"found\" "
            "for=\"words\"></output></form>\n</header>\n<main id=\"main\">\n";
    AddCards(page, cards, CardKind::Moveable, "moveables", "Moveables");
    AddCards(page, cards, CardKind::StaticMesh, "statics", "Static meshes");
    AddCards(page, cards, CardKind::Sprites, "sprites", "Sprites");
    AddSounds(page, cards.Sounds);
    page << "</main>\n<dialog id=\"object\" aria-labelledby=\"object-name\"></dialog>\n"
            "</body>\n</html>\n";
    return page.Text();
}

std::string LevelScript(const LevelCards& cards)
{
    const auto anchors = AnchorsOf(cards.Objects);
    Json data{{"objects", Json::array()}, {"sounds", Json::object()}};
    for (std::size_t i = 0; i < anchors.size(); ++i)
        data["objects"].push_back(DataOf(cards.Objects[i], anchors[i]));
    for (const SoundCard& sound : cards.Sounds) {
        Json files = Json::array();
        for (const SampleCard& sample : sound.Samples)
            if (!sample.File.empty())
                files.push_back(sample.File);
        Set(data["sounds"], std::to_string(sound.Slot).c_str(), std::move(files));
    }
    return "globalThis.morlikLevel = " + ScriptText(data) + ";\n";
}

} // namespace morlik::gallery

// NOLINTEND(modernize-raw-string-literal)
