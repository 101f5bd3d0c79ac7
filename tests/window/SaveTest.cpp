#include "check/ObjectSetCheck.h"
#include "samples/MainSfx.h"
#include "samples/Project.h"
#include "tests/window/WindowRun.h"

#include <QAbstractButton>
#include <QMimeData>
#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

using Strings = std::vector<std::string>;

TEST(WindowSave, BeepsWithoutALevelOrASound)
{
    WindowRun run;
    for (const char* command : {"Mnu_File_SaveWAD", "Mnu_File_SaveTGA", "TB_Save", "TB_Save_WAS"})
        run.Trigger(command);
    run.Click("SndSave");
    EXPECT_EQ(run.Host.Beeps, 5);
    EXPECT_TRUE(run.Host.Dialogs.empty());
}

TEST(WindowSave, WritesTheSetWithItsCommandsOffMeanwhile)
{
    WindowRun run;
    const auto level = run.Write(kTR2, "a.tr2");
    ASSERT_TRUE(run.Start(level));
    WriteWholeFile(run.Folder.File("main.sfx"),
                   samples::WriteMainSfx(samples::SampleSounds()).Bytes);
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
    run.Host.SaveAnswers = {run.Folder.File("out.was")};
    run.Host.OpenAnswers = {run.Folder.File("main.sfx")};
    run.Trigger("TB_Save");
    EXPECT_GT(turns, 256);
    EXPECT_EQ(bar, 100);
    EXPECT_EQ(run.Host.Dialogs.at(0).Folder, "C:\\");
    EXPECT_EQ(run.Host.Dialogs.at(0).Filter, "WAS files (*.was)|*.was");
    EXPECT_EQ(run.Host.Dialogs.at(1).Folder, level.substr(0, level.size() - 5));
    EXPECT_EQ(run.Host.Dialogs.at(1).Filter, "TR2&3 Sound Data (main.sfx)|main.sfx");
    EXPECT_TRUE(check::CheckSet(run.Folder.File("out"), kTR2).Problems.empty());
    EXPECT_EQ(LinesOfFile(run.Folder.File("out Info.txt")).size(), 6U);
    EXPECT_EQ(run.Label("Foot").toStdString(), "Saved " + run.Folder.File("out.was"));
    EXPECT_EQ(run.Label("Event"), "Ready.");
    for (const char* on : {"Frame1", "TB", "Frame4"})
        EXPECT_TRUE(run.IsOn(on)) << on;
    EXPECT_FALSE(run.IsOn("SndFrame")); // as before: the game has no samples of its own
    EXPECT_TRUE(run.Find<QAction>("Mnu_File_SaveWAD")->isEnabled());
    EXPECT_FALSE(run.Find<QAction>("Mnu_File_LoadPRJ")->isEnabled());

    run.Host.SaveAnswers = {run.Folder.File("none/out.was")};
    run.Trigger("TB_Save_WAS");
    EXPECT_EQ(run.Host.Messages.size(), 1U);
    EXPECT_EQ(run.Label("Foot"), "Not all was saved.");
    EXPECT_TRUE(run.Window->isVisible());
}

/// Everything that a user can throw at a window at once.
void Fire(WindowRun& run, const QString& file)
{
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(file)});
    QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(run.Window.get(), &drop);
    EXPECT_FALSE(drop.isAccepted());
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
    for (const char* command : {"TB_Save", "TB_Save_TGA"}) {
        WindowRun run;
        const auto other = run.Write(samples::MakeTinyLevel(kTR1), "b.phd");
        ASSERT_TRUE(run.Start(run.Write(kTR4, "a.tr4")));
        const auto meshes = run.Program.Level.NumMeshPointers;
        int turns = 0;
        run.Host.OnTurn = [&] {
            if (++turns % 16 == 1)
                Fire(run, QString::fromStdString(other));
        };
        run.Host.SaveAnswers = {run.Folder.File("out.was")};
        run.Host.OpenAnswers = {other};
        run.Trigger(command);
        run.Host.OnTurn = nullptr;
        EXPECT_GT(turns, 0);
        EXPECT_EQ(run.Host.Dialogs.size(), 1U);
        EXPECT_EQ(run.Program.Level.NumMeshPointers, meshes);
        EXPECT_TRUE(run.Window->isVisible());
        EXPECT_EQ(run.Label("Foot").toStdString(), "Saved " + run.Folder.File("out.was"));
        if (command == std::string("TB_Save")) {
            EXPECT_TRUE(check::CheckSet(run.Folder.File("out"), kTR4).Problems.empty());
        }
        run.Open(other); // and the window still answers
        EXPECT_EQ(run.Program.Level.Version, kTR1);
    }
}

TEST(WindowSave, AsksOnceAboutAllThatIsThere)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR1, "a.phd")));
    const auto saveAs = [&run](const char* button, const std::string& name) {
        run.Host.Questions.clear();
        run.Host.SaveAnswers = {run.Folder.File(name)};
        if (button == std::string("SndSaveAll"))
            run.Click(button);
        else
            run.Trigger(button);
    };
    WriteWholeFile(run.Folder.File("my.wad"), {});
    run.Host.AnswersYes = false;
    saveAs("TB_Save", "my.was");
    ASSERT_EQ(run.Host.Questions.size(), 1U);
    EXPECT_NE(run.Host.Questions[0].find("\nmy.wad\n"), std::string::npos);
    EXPECT_TRUE(ReadFile(run.Folder.File("my.wad")).empty());
    EXPECT_FALSE(std::filesystem::exists(run.Folder.File("my.was")));
    EXPECT_EQ(run.Label("Foot"), "Nothing was saved.");
    run.Host.AnswersYes = true;
    saveAs("TB_Save", "my.WAS");
    EXPECT_EQ(run.Host.Questions.size(), 1U);
    EXPECT_EQ(run.Label("Foot").toStdString(), "Saved " + run.Folder.File("my.was"));
    saveAs("TB_Save", "other.was"); // nothing of it is there
    EXPECT_TRUE(run.Host.Questions.empty());

    saveAs("SndSaveAll", "all.wav");
    EXPECT_TRUE(run.Host.Questions.empty());
    WriteWholeFile(run.Folder.File("all 17-1.wav"), {});
    run.Host.AnswersYes = false;
    saveAs("SndSaveAll", "all.wav");
    ASSERT_EQ(run.Host.Questions.size(), 1U);
    EXPECT_NE(run.Host.Questions[0].find("\nall 17-1.wav\n"), std::string::npos);
    EXPECT_TRUE(ReadFile(run.Folder.File("all 17-1.wav")).empty());
    EXPECT_TRUE(run.Host.Messages.empty());
}

TEST(WindowSave, WritesOverNothingThatItHasRead)
{
    WindowRun run;
    const auto level = run.Write(kTR1, "a.phd");
    ASSERT_TRUE(run.Start(level));
    const auto sfx = run.Folder.File("main.sfx");
    WriteWholeFile(sfx, samples::WriteMainSfx(samples::SampleSounds()).Bytes);
    const auto project = run.Folder.File("a.prj");
    WriteWholeFile(project, samples::WriteProject(samples::MakeProject()).Bytes);
    run.Open(sfx);
    run.Open(level);
    const auto refuses = [&](const char* button, const std::string& name) {
        run.Host.SaveAnswers = {name};
        run.Host.Messages.clear();
        if (run.Window->findChild<QPushButton*>(button) != nullptr)
            run.Click(button);
        else
            run.Trigger(button);
        EXPECT_EQ(run.Host.Messages.size(), 1U) << button << ' ' << name;
        EXPECT_NE(run.Host.Messages.back().find("is read and would be replaced"),
                  std::string::npos);
    };
    run.Find<QListWidget>("SndLst")->setCurrentRow(0);
    for (const std::string& input : {level, sfx}) {
        const auto before = ReadFile(input);
        std::filesystem::create_hard_link(input, run.Folder.File("set.sam"));
        std::filesystem::create_hard_link(input, run.Folder.File("snd 17-1.wav"));
        refuses("TB_Save", run.Folder.File("set.was"));
        refuses("TB_Save_TGA", input);
        refuses("SndSave", input);
        refuses("SndSaveAll", run.Folder.File("snd.wav"));
        EXPECT_EQ(ReadFile(input), before);
        std::filesystem::remove(run.Folder.File("set.sam"));
        std::filesystem::remove(run.Folder.File("snd 17-1.wav"));
    }
    run.Open(project);
    refuses("SndSave", project);
    EXPECT_TRUE(run.Host.Questions.empty());
}

TEST(WindowSave, WritesTheTextureSheet)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR4, "a.tr4")));
    const auto caption = run.Window->windowTitle();
    run.Host.SaveAnswers = {run.Folder.File("sheet.tga")};
    run.Trigger("TB_Save_TGA");
    const LevelData& level = run.Program.Level;
    const auto rows = static_cast<std::size_t>(level.NumRoomTiles * 256 + level.NumBumpTiles * 128);
    EXPECT_EQ(ReadFile(run.Folder.File("sheet.tga")).size(), 18 + 768 * rows);
    EXPECT_EQ(run.Window->windowTitle(), caption);
}

TEST(WindowSave, ExportsEachSoundByteForByte)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR1, "a.phd")));
    auto* list = run.Find<QListWidget>("SndLst");
    for (int row = 0; row < list->count(); ++row) {
        list->setCurrentRow(row);
        run.Host.SaveAnswers = {run.Folder.File("one")};
        run.Click("SndSave");
        const auto number = static_cast<std::size_t>(list->item(row)->data(Qt::UserRole).toInt());
        EXPECT_TRUE(std::ranges::equal(ReadFile(run.Folder.File("one")),
                                       run.Program.Level.Samples.at(number).Data));
        EXPECT_TRUE(list->item(row)->text().contains(
            QString(" (%1 bytes)").arg(run.Program.Level.Samples.at(number).Size())));
    }
    run.Click("SndSave"); // cancelled
    run.Host.SaveAnswers = {run.Folder.File("all.x.wav"), run.Folder.File("all")};
    run.Click("SndSaveAll");
    EXPECT_TRUE(std::ranges::equal(ReadFile(run.Folder.File("all 17-1.wav")),
                                   run.Program.Level.Samples.at(1).Data));
    run.Click("SndSaveAll"); // a path without a point is the base as it is
    EXPECT_TRUE(std::filesystem::exists(run.Folder.File("all 59-1.wav")));

    const auto sounds = samples::SampleSounds();
    WriteWholeFile(run.Folder.File("main.sfx"), samples::WriteMainSfx(sounds).Bytes);
    run.Open(run.Folder.File("main.sfx"));
    run.Host.SaveAnswers = {run.Folder.File("sfx.wav"), run.Folder.File("three")};
    run.Click("SndSaveAll");
    list->setCurrentRow(3);
    run.Click("SndSave");
    for (std::size_t i = 0; i < sounds.size(); ++i)
        EXPECT_EQ(ReadFile(run.Folder.File("sfx" + std::to_string(i) + ".wav")), sounds[i]);
    EXPECT_EQ(ReadFile(run.Folder.File("three")), sounds[3]);
    EXPECT_TRUE(run.Host.Messages.empty());
}

TEST(WindowSave, OfAllSoundsHasAButtonThatStopsIt)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR1, "a.phd")));
    auto* stop = run.Find<QPushButton>("Stop");
    EXPECT_FALSE(stop->isVisible());
    int turns = 0;
    run.Host.OnTurn = [&] {
        EXPECT_TRUE(stop->isVisible() && stop->isEnabled());
        if (++turns == 3)
            QTest::keyClick(run.Window.get(), Qt::Key_Escape);
    };
    run.Host.SaveAnswers = {run.Folder.File("all"), run.Folder.File("again")};
    run.Click("SndSaveAll");
    EXPECT_EQ(turns, 3);
    EXPECT_EQ(run.Host.Messages, Strings{});
    EXPECT_EQ(run.Label("Foot"), "Not all was saved.");
    EXPECT_FALSE(stop->isVisible());
    run.Host.OnTurn = nullptr;
    run.Click("SndSaveAll"); // the next one begins anew
    EXPECT_EQ(run.Label("Foot").toStdString(), "Saved " + run.Folder.File("again"));
}

} // namespace

} // namespace morlik::test
