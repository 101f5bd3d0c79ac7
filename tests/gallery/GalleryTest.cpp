// Galleries as a user finds them on the disk, and the texts of their pages.

#include "gallery/Html.h"
#include "gallery/LevelPage.h"
#include "gallery/Piece.h"
#include "picture/PNG.h"
#include "tests/cli/RunCli.h"

#include <nlohmann/json.hpp>

namespace morlik::test
{

using gallery::CardKind;
using gallery::LevelCards;
using nlohmann::json;

TEST(GalleryTextsTest, NamesComeIntoPagesAsTexts)
{
    const std::vector<std::pair<std::string, std::string>> rows{
        {"<script>alert(1)</script>", "&lt;script&gt;alert(1)&lt;/script&gt;"},
        {R"(a" onload='x' & b)", "a&quot; onload=&#39;x&#39; &amp; b"},
        {"caf\xe9 \xc3\xa9", "caf\xc3\xa9 \xc3\xa9"},
        {"a\x1b\n\x7f\xc2\x85", "a\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
    };
    for (const auto& [text, escaped] : rows) {
        EXPECT_EQ(gallery::EscapeHtml(text), escaped);
        const LevelCards cards{
            .Title = text,
            .Game = kTR3,
            .Objects = {{.ID = 7, .Name = text, .EditorName = text + "2", .Fault = text}},
            .Sounds = {},
            .Strip = {}};
        const std::string page = gallery::LevelPage(cards);
        EXPECT_PRED2(Has, page, "<h1>" + escaped + "</h1>");
        EXPECT_PRED2(Has, page, "in IV: " + escaped + "2</p>");
        EXPECT_EQ(page.find("<script>"), std::string::npos);
        const std::string script = gallery::LevelScript(cards);
        EXPECT_EQ(std::ranges::count(script, '\n'), 1);
        for (const char* key : {"e", "f"}) // the name in the editor, to be found by it; the fault
            EXPECT_PRED2(Has, script, std::string("\"") + key + "\":\"");
        EXPECT_TRUE(std::ranges::all_of(script, [](char letter) { return letter < 0x7f; }));
    }
    EXPECT_EQ(gallery::EncodeUrl("models/a b#?%.glb"), "models/a%20b%23%3F%25.glb");
}

TEST(GalleryTextsTest, ObjectsOfOneNumberHaveTheirOwnPlaces)
{
    const std::vector<gallery::ObjectCard> cards{
        {.ID = 4}, {.ID = 4}, {.Kind = CardKind::StaticMesh, .ID = 4}, {.ID = 4}};
    EXPECT_EQ(gallery::AnchorsOf(cards), (Strings{"m4", "m4-2", "s4", "m4-3"}));
}

/// Runs the command on levels of the folder.
class GalleryTest : public CliTest
{
protected:
    void SetUp() override
    {
        if (!HasPNG())
            GTEST_SKIP() << "This build has no PNG files";
        for (const VersionCode game : {kTR2, kTR3}) // few objects are drawn soon
            Write(FileTitle(Levels.at(static_cast<std::size_t>(game))),
                  samples::MakeTinyLevel(game));
    }

    /// What the command tells of each level, by event and then file; its index is there after it.
    std::vector<std::string> Made(int status, const std::string& words) const
    {
        const auto ran = Expect(status, "gallery -d %g --json " + words);
        std::vector<std::string> told;
        const json all = json::parse(ran.Out);
        for (const json& level : all["levels"])
            told.push_back(level["event"].get<std::string>() + " " +
                           FileTitle(level["file"].get<std::string>()));
        EXPECT_TRUE(Exists("g/index.html"));
        return told;
    }
    /// The folder of the page of a level, by the letters that its title begins with.
    std::string PageFolder(const std::string& start) const
    {
        for (const auto& entry : std::filesystem::directory_iterator(ToPath(File("g/levels"))))
            if (NameBegins(entry.path().filename(), start))
                return "g/levels/" + FromPath(entry.path().filename());
        return "none";
    }
    std::string TextOf(const std::string& name) const
    {
        const auto bytes = Read(name);
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }
};

TEST_F(GalleryTest, RedoesOnlyWhatChangedAndWhatWasNotFinished)
{
    const Strings second{"unchanged l2level.tr2", "made l4level.tr4"};
    EXPECT_EQ(Made(0, "%2 %4"), (Strings{"made l2level.tr2", "made l4level.tr4"}));
    EXPECT_EQ(Made(0, "%2 %4"), (Strings{"unchanged l2level.tr2", "unchanged l4level.tr4"}));
    // A run that was ended: the piece of a level comes last.
    std::filesystem::remove(ToPath(File(PageFolder("l4level") + "/made.json")));
    EXPECT_EQ(Made(0, "%2 %4"), second);
    WriteText(PageFolder("l4level") + "/made.json", R"({"form":1,"title":2})");
    EXPECT_EQ(Made(0, "%2 %4"), second);
    Write("l4level.tr4", samples::MakeTinyLevel(kTR4));
    EXPECT_EQ(Made(0, "%2 %4"), second);
    for (const std::string words : {"", " --sets", " --animations 1"})
        EXPECT_EQ(Made(0, "%2 --no-gltf" + words), (Strings{"made l2level.tr2"})) << words;
    std::filesystem::create_directories(ToPath(File("g/pictures/ab/.morlik-1-2"))); // of a dead run
    EXPECT_EQ(Made(0, "%2 --no-gltf --animations 1"), (Strings{"unchanged l2level.tr2"}));
    EXPECT_FALSE(Exists("g/pictures/ab/.morlik-1-2"));
}

TEST_F(GalleryTest, GoesOnBehindBrokenLevelsAndLeavesOtherPagesAlone)
{
    const auto whole = Read("l4level.tr4");
    Write("bad.tr4", std::span(whole).first(2000));
#ifndef _WIN32 // whose files have no such names
    Write("<script>'\"&.tr2", Read("l2level.tr2"));
#else
    Write("'&.tr2", Read("l2level.tr2"));
#endif
    std::filesystem::create_directory(ToPath(File("in")));
    for (const auto& entry : std::filesystem::directory_iterator(ToPath(File(""))))
        if (entry.path().extension() == ".tr2" || entry.path().filename() == "bad.tr4")
            std::filesystem::rename(entry.path(), ToPath(File("in")) / entry.path().filename());
    Write("in/main.sfx", MainSfxFile());
    const auto ran = Expect(1, "gallery -r %in -d %g -j 2 --sets", "bad.tr4: MORLIK error: ");
    EXPECT_EQ(std::ranges::count(ran.Errors, '\n'), 1) << ran.Errors;
    EXPECT_PRED2(Has, ran.Out, ": levels: 3, objects: ");
    const std::string index = TextOf("g/index.html");
    EXPECT_PRED2(Has, index, "&#39;");
    EXPECT_EQ(index.find("<script>"), std::string::npos);

    // A level that can't be written isn't a bad one: the gallery doesn't go on without it.
    std::filesystem::remove_all(ToPath(File("g/models")));
    WriteText("g/models", "in the way");
    Expect(1, "gallery -d %g -r %in --sets %4", "Can't make the folder");
    EXPECT_EQ(TextOf("g/index.html"), index);

    std::filesystem::create_directory(ToPath(File("site")));
    WriteText("site/index.html", "<h1>Mine</h1>");
    Expect(2, "gallery %2 -d %site", "There is one that no gallery has made");
    Expect(2, "gallery %2", "-d is required");
    EXPECT_EQ(TextOf("site/index.html"), "<h1>Mine</h1>");
    WriteText("wrong.sfx", "no sounds");
    Expect(0, "gallery %in/l2level.tr2 -d %sfx --main-sfx %wrong.sfx",
           "wrong.sfx is not a main.sfx");
    Expect(2, "gallery %1 -d %sfx --main-sfx %none.sfx", "Can't open");
}

} // namespace morlik::test
