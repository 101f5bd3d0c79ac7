#include "check/ObjectSetCheck.h"
#include "samples/Project.h"
#include "tests/window/WindowRun.h"

#include <QAbstractButton>

namespace morlik::test
{

namespace
{

TEST(WindowSave, WritesTheSetWithItsCommandsOffMeanwhile)
{
    WindowRun run(kTR2);
    int turns = 0;
    int bar = 0;
    run.Host.OnTurn = [&] {
        ++turns;
        bar = std::max(bar, run.Find<QProgressBar>("Prog")->value());
        for (const char* off : {"Frame1", "TB", "SndFrame"})
            EXPECT_FALSE(run.IsOn(off)) << off;
        for (const char* off : {"Mnu_File_LoadTR", "Mnu_File_SaveWAD", "Mnu_File_Quit", "TB_Open"})
            EXPECT_FALSE(run.Find<QAction>(off)->isEnabled()) << off;
        EXPECT_FALSE(run.Window->close());
    };
    run.Find<QCheckBox>("SkyFix")->setChecked(true);
    run.Host.OpenAnswers = {run.Write(MainSfxFile(), "main.sfx")};
    run.Save("TB_Save", "out.was");
    EXPECT_GT(turns, 256);
    EXPECT_EQ(bar, 100);
    EXPECT_EQ(run.Host.Dialogs.at(0).Folder, "C:\\");
    EXPECT_EQ(run.Host.Dialogs.at(0).Filter, "WAS files (*.was)|*.was");
    EXPECT_EQ(run.Host.Dialogs.at(1).Folder, run.Folder.File(""));
    EXPECT_EQ(run.Host.Dialogs.at(1).Filter, "TR2&3 Sound Data (main.sfx)|main.sfx");
    EXPECT_TRUE(check::CheckSet(run.Folder.File("out"), kTR2).Problems.empty());
    EXPECT_EQ(LinesOfFile(run.Folder.File("out Info.txt")).size(), 6U);
    EXPECT_EQ(run.Label("Foot").toStdString(), "Saved " + run.Folder.File("out.was"));
    EXPECT_EQ(run.Label("Event"), "Ready.");
    EXPECT_EQ(run.Host.Dialogs.at(0).Proposed, "level.was");
    EXPECT_EQ(run.Host.Dialogs.at(0).Ending, "was");
    for (const char* on : {"Frame1", "TB", "Frame4"})
        EXPECT_TRUE(run.IsOn(on)) << on;
    EXPECT_FALSE(run.IsOn("SndFrame")); // as before: the game has no samples of its own
    EXPECT_TRUE(run.Find<QAction>("Mnu_File_SaveWAD")->isEnabled());
    EXPECT_FALSE(run.Find<QAction>("Mnu_File_LoadPRJ")->isEnabled());

    run.Save("TB_Save_WAS", "none/out.was");
    EXPECT_EQ(run.Host.Messages.size(), 1U);
    EXPECT_EQ(run.Label("Foot"), "Nothing was saved");
    EXPECT_TRUE(run.Window->isVisible());
}

TEST(WindowSave, SaysWhatTheSetLacksAndGoesOnWithTheLevel)
{
    WindowRun run(kTR3);
    const auto title = run.Title();
    run.Save("TB_Save", "out.was"); // and no main.sfx
    EXPECT_PRED2(Has, run.Told(), "out.was without WAV files: no main.sfx was chosen");
    run.Trigger("Mnu_File_LoadTR"); // which is cancelled
    EXPECT_TRUE(run.Window->isVisible());
    EXPECT_EQ(run.Title(), title);

    auto few = samples::SampleSounds();
    few.resize(2);
    run.Host.OpenAnswers = {run.Write(samples::WriteMainSfx(few).Bytes, "main.sfx")};
    run.Save("TB_Save", "other.was");
    EXPECT_PRED2(Has, run.Told(), " sounds, which main.sfx or the level lacks");
    EXPECT_EQ(run.Host.Dialogs.at(3).Fallback, run.Folder.File(""));
}

/// Everything that a user can throw at a window at once.
void Fire(WindowRun& run, const std::string& file)
{
    EXPECT_FALSE(run.Drop(file));
    QCloseEvent close;
    QCoreApplication::sendEvent(run.Window.get(), &close);
    EXPECT_FALSE(close.isAccepted());
    QApplication::closeAllWindows();
    for (const Qt::Key key : {Qt::Key_Q, Qt::Key_O, Qt::Key_S})
        QTest::keyClick(run.Window.get(), key, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_F5, Qt::Key_F6, Qt::Key_F7, Qt::Key_F1})
        QTest::keyClick(run.Window.get(), key);
    for (QAction* action : run.Window->findChildren<QAction*>()) {
        action->trigger();
        emit action->triggered(); // as if the click had been under way already
    }
    for (QAbstractButton* button : run.Window->findChildren<QAbstractButton*>())
        button->click();
}

TEST(WindowSave, IsNotDisturbedByWhatComesInItsTurns)
{
    for (const bool isSet : {true, false}) {
        WindowRun run(kTR4);
        const auto other = run.Write(samples::MakeTinyLevel(kTR1), "b.phd");
        const auto caption = run.Title();
        const LevelData& level = run.Program.Level;
        const auto meshes = level.NumMeshPointers;
        int turns = 0;
        run.Host.OnTurn = [&] {
            if (++turns % 16 == 1)
                Fire(run, other);
        };
        run.Host.OpenAnswers = {other};
        run.Save(isSet ? "TB_Save" : "TB_Save_TGA", isSet ? "out.was" : "out.tga");
        run.Host.OnTurn = nullptr;
        EXPECT_GT(turns, 0);
        EXPECT_EQ(run.Host.Dialogs.size(), 1U);
        EXPECT_EQ(level.NumMeshPointers, meshes);
        EXPECT_TRUE(run.Window->isVisible());
        EXPECT_EQ(run.Title(), caption);
        EXPECT_TRUE(run.Label("Foot").startsWith("Saved "));
        if (isSet) {
            EXPECT_TRUE(check::CheckSet(run.Folder.File("out"), kTR4).Problems.empty());
        } else {
            const int rows = level.NumRoomTiles * 256 + level.NumBumpTiles * 128;
            EXPECT_EQ(ReadFile(run.Folder.File("out.tga")).size(),
                      18 + 768 * static_cast<std::size_t>(rows));
        }
        run.Open(other); // and the window still answers
        EXPECT_EQ(level.Version, kTR1);
    }
}

TEST(WindowSave, AsksOnceAboutAllThatIsThere)
{
    WindowRun run(kTR1);
    // What is asked about is an empty file that is made before, where the answer is a no.
    const std::vector<std::tuple<const char*, const char*, bool, std::string, const char*>> rows{
        {"TB_Save", "my.was", false, "my.wad", "Nothing was saved"},
        {"TB_Save", "my.WAS", true, "my.wad", "Saved FOLDER/my.was"},
        {"TB_Save", "other.was", true, "", "Saved FOLDER/other.was"},
        {"SndSaveAll", "all.wav", true, "", "Saved 11 sounds into FOLDER/"},
        {"SndSaveAll", "all.wav", false, "all 17-1.wav", "Nothing was saved"}};
    for (const auto& [command, name, answer, asked, foot] : rows) {
        if (!answer)
            run.Write(std::span<const std::byte>(), asked);
        run.Host.Questions.clear();
        run.Host.AnswersYes = answer;
        run.Save(command, name);
        ASSERT_EQ(run.Host.Questions.size(), asked.empty() ? 0U : 1U) << name;
        EXPECT_TRUE(asked.empty() || Has(run.Host.Questions[0], "\n" + asked + "\n"));
        EXPECT_EQ(run.Label("Foot").replace(run.Folder.File("").c_str(), "FOLDER/").toStdString(),
                  foot);
        EXPECT_TRUE(answer || ReadFile(run.Folder.File(asked)).empty());
    }
    EXPECT_FALSE(std::filesystem::exists(run.Folder.File("my.WAS")));
    EXPECT_TRUE(run.Host.Messages.empty());
}

TEST(WindowSave, WritesOverNothingThatItHasRead)
{
    WindowRun run(kTR1);
    const auto sfx = MainSfxFile();
    const auto project = samples::WriteProject(samples::MakeProject()).Bytes;
    const std::string level = LevelName(kTR1);
    run.Open(run.Write(sfx, "main.sfx"));
    run.Open(run.Folder.File(level));
    const auto refuses = [&](const char* command, const std::string& name) {
        run.Host.Messages.clear();
        run.Save(command, name);
        ASSERT_EQ(run.Host.Messages.size(), 1U) << command << ' ' << name;
        EXPECT_PRED2(Has, run.Host.Messages[0], "is read and would be replaced");
    };
    run.Find<QListWidget>("SndLst")->setCurrentRow(0);
    for (const std::string& name : {level, std::string("main.sfx")}) {
        const auto input = run.Folder.File(name);
        const auto before = ReadFile(input);
        for (const char* link : {"set.sam", "snd 17-1.wav"}) {
            std::filesystem::remove(run.Folder.File(link));
            std::filesystem::create_hard_link(input, run.Folder.File(link));
        }
        refuses("TB_Save", "set.was");
        refuses("TB_Save_TGA", name);
        refuses("SndSave", name);
        refuses("SndSaveAll", "snd.wav");
        EXPECT_EQ(ReadFile(input), before);
    }
    run.Open(run.Write(project, "a.prj"));
    refuses("SndSave", "a.prj");
    EXPECT_TRUE(run.Host.Questions.empty());
}

TEST(WindowSave, ExportsEachSoundByteForByte)
{
    WindowRun run(kTR1);
    const auto expectFile = [&run](const std::string& name, std::span<const std::byte> bytes) {
        EXPECT_TRUE(std::ranges::equal(ReadFile(run.Folder.File(name)), bytes)) << name;
    };
    const auto& samples = run.Program.Level.Samples;
    auto* list = run.Find<QListWidget>("SndLst");
    for (int row = 0; row < list->count(); ++row) {
        list->setCurrentRow(row);
        run.Save("SndSave", "one");
        const auto& sample = samples.at(list->item(row)->data(Qt::UserRole).toUInt());
        expectFile("one", sample.Data);
        EXPECT_TRUE(list->item(row)->text().contains(QString(" (%1 bytes)").arg(sample.Size())));
    }
    run.Click("SndSave"); // cancelled
    run.Save("SndSaveAll", "all.x.wav");
    expectFile("all 17-1.wav", samples.at(1).Data);
    run.Save("SndSaveAll", "all"); // a path without a point is the base as it is
    EXPECT_TRUE(std::filesystem::exists(run.Folder.File("all 59-1.wav")));

    run.Open(run.Write(MainSfxFile(), "main.sfx"));
    run.Save("SndSaveAll", "sfx.wav");
    list->setCurrentRow(3);
    run.Save("SndSave", "three");
    for (const char* name : {"sfx3.wav", "three"})
        expectFile(name, samples::SampleSounds()[3]);
    EXPECT_TRUE(run.Host.Messages.empty());
}

TEST(WindowSave, OfAllSoundsHasAButtonThatStopsIt)
{
    WindowRun run(kTR1);
    auto* stop = run.Find<QPushButton>("Stop");
    EXPECT_FALSE(stop->isVisible());
    int turns = 0;
    run.Host.OnTurn = [&] {
        EXPECT_TRUE(stop->isVisible() && stop->isEnabled());
        if (++turns == 3)
            QTest::keyClick(run.Window.get(), Qt::Key_Escape);
    };
    run.Save("SndSaveAll", "all");
    EXPECT_EQ(turns, 3);
    EXPECT_EQ(run.Host.Messages, Strings{});
    EXPECT_EQ(run.Label("Foot"), "Not all was saved");
    EXPECT_FALSE(stop->isVisible());
    run.Host.OnTurn = nullptr;
    run.Save("SndSaveAll", "again"); // the next one begins anew
    EXPECT_TRUE(run.Label("Foot").startsWith("Saved 11 sounds into "));
}

} // namespace

} // namespace morlik::test
