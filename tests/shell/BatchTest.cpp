#include "shell/Batch.h"

#include "shell/MORLIK_Main.h"
#include "tests/support/Conversion.h"
#include "tests/support/MemoryRegistry.h"

namespace morlik::test
{

namespace
{

TEST(BatchLine, IsCutByPositionsAndNeverSplit)
{
    // Level, title and output of each.
    const std::vector<std::array<const char*, 4>> rows{
        {R"(/makewas C:\levels\city.tr4 /export C:\out\city.was)", R"(C:\levels\city.tr4)",
         "city.tr4", R"(C:\out\city.was)"},
        {"/MakeWAS /my levels/a b.phd /export /out put/a.was", "/my levels/a b.phd", "a b.phd",
         "/out put/a.was"},
        {"/makewas x/a.phd  /export o.was", "x/a.phd ", "a.phd ", "o.was"},
        {R"(/makewas "a.phd" /export "o.was")", R"("a.phd")", R"("a.phd")", R"("o.was")"},
        {R"(/makewas-a\b/c.phd+/export=o.was /export p)", R"(a\b/c.phd)", "c.phd",
         "o.was /export p"},
        {"/makewas x/export/a.phd /export o.was", "", "", "a.phd /export o.was"},
    };
    for (const auto& [line, level, title, output] : rows) {
        EXPECT_TRUE(IsBatch(line));
        const auto paths = CutBatchLine(line);
        ASSERT_TRUE(paths) << line;
        EXPECT_EQ(paths->Level, level);
        EXPECT_EQ(GetTitle(paths->LevelWithBlank), title) << line;
        EXPECT_EQ(paths->Output, output);
    }
    for (const char* line :
         {"/makewas a.phd /EXPORT o.was", "/makewas a.phd", "/makewas", "/makewas a.phd /export",
          "/makewas a.phd /export ", "/makewas /export o.was"})
        EXPECT_TRUE(IsBatch(line) && !CutBatchLine(line)) << line;
    EXPECT_TRUE(IsBatch("/makewashing"));
    for (const char* line : {"", "/makewa", " /makewas a"})
        EXPECT_FALSE(IsBatch(line)) << line;
}

TEST(VersionText, NamesRevisionsAndBetas)
{
    EXPECT_EQ(BuildVersionString({}), "MORLIK 1.7");
    EXPECT_EQ(BuildVersionString({2, 0, 1}), "MORLIK 2.0 Revision 1");
    EXPECT_EQ(BuildVersionString({2, 0, 100}), "MORLIK 2.0 Revision 100");
    EXPECT_EQ(BuildVersionString({2, 0, 101}), "MORLIK 2.0 Beta 1");
}

/// A batch run over a level in the folder of `run`.
bool Batch(Conversion& run, const std::string& level, const std::string& output)
{
    MemoryRegistry registry;
    return RunBatch(run.Program, registry,
                    "/makewas " + run.Folder.File(level) + " /export " + output);
}

TEST(Batch, LogsEveryStage)
{
    const std::vector<std::tuple<VersionCode, std::string, std::string>> rows{
        {kTR2, "a b.tr2", "-Converting Textures"},
        {kTR3, "c.tr2", "-Converting textures"},
        {kTR1Gold, "c.TUB", "-Converting Textures"},
        {kTR4, "c.tr4", ""},
    };
    for (const auto& [game, name, reading] : rows) {
        Conversion run;
        run.Host.Date = "11/24/26";
        run.Folder.Write("MORLIK.log", std::vector<std::byte>(10000));
        OpenLog(run.Program.Report);
        run.Folder.Write(name, WriteLevel(samples::MakeTinyLevel(game)).Bytes);
        EXPECT_TRUE(Batch(run, name, run.Output(".WAS")));
        EXPECT_EQ(run.Host.Messages(), Strings{"Morlik v1.6: WAS Saved!"});
        EXPECT_EQ(run.Program.Level.Version, game == kTR1Gold ? kTR1 : game);

        const std::string level = run.Folder.File(name);
        const std::string set = run.Output(".WAS");
        Strings expected{"MORLIK v1.6",
                         "File created on 11/24/26",
                         "---------------------------",
                         "MORLIK started with command line '/makewas " + level + " /export " + set +
                             "'",
                         "Reading settings",
                         "Loading TR4Objects.dat",
                         "Loading level",
                         "-LevelFile:" + level,
                         "-LevelVersion:" + std::to_string(NumberOf(game)),
                         reading,
                         "Saving WAS",
                         "Writing WAD file " + set,
                         "Converting Meshes",
                         "1 TextInfos found",
                         "Building palette",
                         "Converting frames",
                         "Converting texture tiles",
                         "Writing SAM file",
                         "Writing SFX file",
                         "Writing SWD file",
                         "Writing WAS file"};
        if (game == kTR4) // which has neither a palette nor frames to convert
            for (const std::string none : {"", "Building palette", "Converting frames"})
                std::erase(expected, none);
        EXPECT_EQ(LinesOfFile(run.Folder.File("MORLIK.log")), expected);
    }
}

TEST(Batch, TellsWhatItCannotDo)
{
    Conversion run;
    run.Folder.Write("a.phd", WriteLevel(samples::MakeTinyLevel(kTR1)).Bytes);
    const auto messages = [&run](const std::string& output) {
        run.Host.Calls.clear();
        EXPECT_FALSE(Batch(run, "a.phd", output)) << output;
        return run.Host.Messages();
    };
    const std::string saved = "Morlik v1.6: WAS Saved!";
    run.Program.LastSave.IsWritten = true; // by the save before
    EXPECT_EQ(messages(run.Output(".wad")),
              (Strings{"MORLIK: You must save it as a was file", saved}));
    EXPECT_FALSE(run.Program.LastSave.IsWritten);
    EXPECT_EQ(messages("was"), (Strings{"MORLIK: You must save it as a was file", saved}));
    // A folder in the place of a later file of the set.
    std::filesystem::create_directory(run.Output(".sfx"));
    EXPECT_EQ(messages(run.Output(".was")),
              (Strings{"MORLIK: Can't write " + run.Output(".sfx") + ": Is a directory", saved}));
    EXPECT_EQ(run.Host.Calls.at(run.Host.Calls.size() - 2), "event: Ready.");

    MemoryRegistry registry;
    EXPECT_NE(EndOf([&] { RunBatch(run.Program, registry, "/makewas a.phd /export"); }), "");
    EXPECT_EQ(run.Host.Messages().back(),
              "MORLIK error: The command line needs /export and an output path!");
}

TEST(Log, GoesToTheStateFolderWhereTheProgramsOwnIsNotWritable)
{
    Conversion run;
    run.Host.Folder = run.Folder.File("none");
    run.Host.State = run.Folder.File("state/morlik");
    OpenLog(run.Program.Report);
    EXPECT_EQ(LinesOfFile(run.Folder.File("state/morlik/MORLIK.log")).at(0), "MORLIK v1.6");
    run.Folder.Write("file", "");
    run.Host.State = run.Folder.Path() / "file";
    EXPECT_EQ(EndOf([&] { OpenLog(run.Program.Report); }),
              "Can't make the folder " + FromPath(run.Host.State) + ": Not a directory");
}

/// What the user sees of the status: texts and percentages in order, "|" between them. The steps of
/// the tile conversion are left out and counted.
std::string Status(const ScriptedHost& host, int& steps)
{
    std::string seen;
    steps = 0;
    bool tiles = false;
    for (const std::string& call : host.Calls) {
        const bool event = call.starts_with("event: ");
        if (event)
            tiles = call == "event: Converting textures";
        if (tiles && call.starts_with("prog: ")) {
            EXPECT_NEAR(std::stod(call.substr(6)), 30 + steps / 10.2, 0.01);
            ++steps;
        } else if (event || call.starts_with("prog: ")) {
            seen += call.substr(event ? 7 : 6) + "|";
        }
    }
    return seen;
}

TEST(Status, FollowsTheSaveAndComesBackToRest)
{
    for (const VersionCode game : {kTR2, kTR4}) {
        Conversion run(samples::MakeRichLevel(game));
        EXPECT_TRUE(run.Save());
        int steps = 0;
        EXPECT_EQ(Status(run.Host, steps),
                  "0|Converting meshes|2|10|12|Converting frames|15|Fixing AnimDispatches|20|"
                  "Writing WAD|25|30|Converting textures|Writing WAD|55|57|60|62|65|67|70|72|75|77|"
                  "Writing SAM|80|Writing SFX|85|Writing SWD|90|Writing WAS|95|100|0|Ready.|");
        EXPECT_EQ(steps, 256);
        // The save asks for turns of the window system from 15 on.
        EXPECT_EQ(run.Host.Turns, 256 + 20);

        run.Host.Calls.clear();
        for (LevelTexture& texture : run.Program.Level.Textures)
            texture.TextureRemap = 100000;
        EXPECT_FALSE(run.Save());
        EXPECT_EQ(Status(run.Host, steps), "0|Converting meshes|2|0|Ready.|");
        EXPECT_FALSE(run.Program.Report.Info.IsOpen());
    }
}

} // namespace

} // namespace morlik::test
