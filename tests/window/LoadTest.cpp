#include "samples/MainSfx.h"
#include "samples/Project.h"
#include "tests/support/HeapPeak.h"
#include "tests/window/WindowRun.h"

#include <QDropEvent>
#include <QMimeData>
#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

using Strings = std::vector<std::string>;

TEST(WindowLoad, ShowsEachGame)
{
    struct Row
    {
        VersionCode Game;
        const char* Name;
        const char* Caption;
        bool HasHorizon;
        bool HasSounds;
    };
    const std::vector<Row> rows{{kTR1, "a.phd", "Tomb Raider I level", false, true},
                                {kTR2, "a.tr2", "Tomb Raider II level", true, false},
                                {kTR5, "a.trc", "Tomb Raider V level", false, true},
                                {kTR3, "b.tr2", "Tomb Raider III level", true, false},
                                {kTR4, "a.tr4", "Tomb Raider IV level", false, true},
                                {kTR1Gold, "a.tub", "Tomb Raider I Gold level", false, true}};
    WindowRun run;
    for (const Row& row : rows) {
        const auto path = run.Write(row.Game, row.Name);
        if (run.Window->isVisible())
            run.Open(path);
        else
            ASSERT_TRUE(run.Start(path));
        const LevelData& level = run.Program.Level;
        EXPECT_EQ(run.Label("LevelType"), row.Caption);
        EXPECT_EQ(run.IsOn("SkyFix"), row.HasHorizon) << row.Name;
        EXPECT_EQ(run.IsOn("SndFrame"), row.HasSounds) << row.Name;
        EXPECT_EQ(run.IsOn("LaraType"), row.Game == kTR5);
        EXPECT_EQ(run.Find<QComboBox>("LaraType")->currentText(),
                  row.Game == kTR5 ? "Catsuit Lara" : "Normal Lara");
        EXPECT_EQ(run.Find<QComboBox>("Weather")->currentText(),
                  row.Game == kTR5 ? "Rain" : "No weather");
        EXPECT_EQ(run.List("ObjList").size(), level.Moveables.size());
        EXPECT_EQ(ToLower(run.List("ObjList").at(0)), "lara");
        EXPECT_EQ(run.List("SndLst").empty(), !row.HasSounds);
        EXPECT_EQ(run.Window->windowTitle().toStdString(),
                  "MORLIK 1.7 - [" + path + "] - Moveables");
        EXPECT_EQ(run.Program.LevelTitle, row.Name);
    }
    EXPECT_TRUE(run.Host.Messages.empty());
    // The list of sounds: the first slot that names a sound, its samples with their sizes.
    EXPECT_EQ(run.List("SndLst").at(1), "TR1 Sound 17-1 (" +
                                            std::to_string(run.Program.Level.Samples.at(1).Size()) +
                                            " bytes)");
}

TEST(WindowLoad, TakesLevelsWithoutSoundsOrWithSoundsElsewhere)
{
    WindowRun run;
    for (const VersionCode game : {kTR1, kTR4, kTR5})
        for (const int lost : {0, 1, 2}) {
            auto level = samples::MakeRichLevel(game);
            if (lost != 1) {
                level.Samples.clear();
                level.SampleIndices.clear();
            }
            if (lost != 0)
                level.SoundDetails.clear();
            const auto path = run.Write(level, LevelName(game));
            if (run.Window->isVisible())
                run.Open(path);
            else
                ASSERT_TRUE(run.Start(path));
            EXPECT_EQ(run.Program.LevelTitle, LevelName(game));
            EXPECT_TRUE(run.IsOn("SndFrame"));
            EXPECT_EQ(run.List("SndLst").empty(), lost != 0) << game << lost;
        }
    auto outside = samples::MakeRichLevel(kTR4);
    samples::MakeExtended(outside, 1024, true);
    run.Open(run.Write(outside, "outside.tr4"));
    EXPECT_FALSE(run.IsOn("SndFrame"));
    EXPECT_TRUE(run.List("SndLst").empty());
    EXPECT_EQ(run.Host.Messages, std::vector<std::string>());
    const auto sfx = run.Folder.File("main.sfx"); // as the save asks for it
    WriteWholeFile(sfx, samples::WriteMainSfx(samples::SampleSounds()).Bytes);
    run.Host.SaveAnswers = {run.Folder.File("set.was")};
    run.Host.OpenAnswers = {sfx};
    run.Trigger("Mnu_File_SaveWAD");
    EXPECT_TRUE(std::filesystem::exists(run.Folder.File("set-Sounds/TR4 Sound 65-0.wav")));
}

TEST(WindowLoad, AddsTheSamplesOfEachMainSfx)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR3, "a.tr2")));
    const auto sounds = samples::SampleSounds();
    const auto path = run.Folder.File("MAIN.SFX");
    WriteWholeFile(path, samples::WriteMainSfx(sounds).Bytes);
    const auto caption = run.Window->windowTitle();
    for (const std::size_t round : {1U, 2U}) {
        run.Open(path);
        const auto list = run.List("SndLst");
        ASSERT_EQ(list.size(), round * sounds.size());
        EXPECT_EQ(list.back(), "TR3 Sound " + std::to_string(list.size() - 1) + " - " +
                                   std::to_string(sounds.back().size()) + " bytes");
    }
    for (const char* frame : {"Frame1", "Frame2", "Frame4", "SndFrame"})
        EXPECT_FALSE(run.IsOn(frame)) << frame;
    // The mode stays, whichever way it is asked for.
    for (const char* mode : {"Mnu_Edit_Static", "TB_Statics", "Mnu_Edit_Move", "TB_Moveables"}) {
        run.Trigger(mode);
        EXPECT_TRUE(run.Find<QAction>("TB_Moveables")->isChecked()) << mode;
        EXPECT_FALSE(run.Find<QAction>("Mnu_Edit_Static")->isChecked()) << mode;
    }
    EXPECT_EQ(run.Window->windowTitle(), caption);
}

TEST(WindowLoad, ListsTheRoomsOfAProject)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR1, "a.phd")));
    const auto objects = run.List("ObjList");
    auto project = samples::MakeProject();
    project.Rooms[2].Name = "M\xfchle";
    WriteWholeFile(run.Folder.File("city.PRJ"), samples::WriteProject(project).Bytes);
    run.Open(run.Folder.File("city.PRJ"));
    EXPECT_EQ(run.List("RoomList"), (Strings{"Room 0", "Empty room", "Room 2", "Room 3"}));
    EXPECT_EQ(run.Find<QListWidget>("RoomList")->item(2)->toolTip().toStdString(), "M\xc3\xbchle");
    EXPECT_EQ(run.Label("NumRooms"), " 4 Rooms");
    EXPECT_EQ(run.List("ObjList"), objects);
    run.Trigger("Mnu_File_SaveWAD");
    run.Trigger("Mnu_File_SaveTGA");
    EXPECT_EQ(run.Host.Beeps, 2);
    EXPECT_EQ(run.Host.Dialogs.size(), 1U); // the one that opened the project
}

TEST(WindowLoad, KeepsItsListsAndRecentFilesWhereAFileIsNone)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR1, "a.phd")));
    const auto sounds = run.List("SndLst");
    for (const char* name : {"main.sfx", "city.prj", "short.prj"}) {
        const std::string head = name == std::string("short.prj") ? "PROJFILE" : "";
        WriteWholeFile(run.Folder.File(name), std::as_bytes(std::span(head)));
        run.Host.Messages.clear();
        run.Open(run.Folder.File(name));
        EXPECT_EQ(run.Host.Messages.size(), 1U) << name;
    }
    EXPECT_EQ(run.List("SndLst"), sounds);
    EXPECT_TRUE(run.IsOn("Frame1"));
    EXPECT_EQ(run.Find<QMenu>("Mnu_Go_Recent")->actions().size(), 1);
    EXPECT_EQ(run.Recent->List().size(), 1);
}

TEST(WindowLoad, TakesADropAsACopyAndNoForeignFile)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR1, "a.phd")));
    const auto level = run.Write(kTR4, "b.TR4");
    WriteWholeFile(run.Folder.File("c.txt"), {});
    struct Row
    {
        std::string File;
        Qt::DropActions Possible;
        bool IsTaken;
        VersionCode Loaded;
    };
    const std::vector<Row> rows{
        {run.Folder.File("c.txt"), Qt::CopyAction | Qt::MoveAction, true, kTR1},
        {level, Qt::MoveAction, false, kTR1},
        {level, Qt::MoveAction | Qt::LinkAction, false, kTR1},
        {level, Qt::MoveAction | Qt::CopyAction, true, kTR4}};
    for (const Row& row : rows) {
        QMimeData mime;
        mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(row.File))});
        // The key for a move is held: it is what the file manager proposes.
        QDragEnterEvent enter({10, 10}, row.Possible, &mime, Qt::LeftButton, Qt::ShiftModifier);
        enter.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(run.Window.get(), &enter);
        EXPECT_EQ(enter.isAccepted(), row.IsTaken);
        QDropEvent drop({10, 10}, row.Possible, &mime, Qt::LeftButton, Qt::ShiftModifier);
        drop.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(run.Window.get(), &drop);
        EXPECT_EQ(drop.isAccepted(), row.IsTaken);
        EXPECT_EQ(drop.dropAction() == Qt::CopyAction, row.IsTaken);
        EXPECT_EQ(run.Program.Level.Version, row.Loaded);
        EXPECT_EQ(run.Label("Foot").contains("c.txt is no level"), row.Loaded == kTR1);
    }
    EXPECT_TRUE(run.Host.Messages.empty());
    EXPECT_TRUE(run.Window->isVisible());
}

TEST(WindowLoad, TakesALaterCancelForTheLastFile)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR2, "a.tr2")));
    run.Program.Names.SetMoveable(kTR2, 0, "Somebody");
    run.Trigger("TB_Open");
    EXPECT_EQ(run.List("ObjList").at(0), "Somebody"); // listed anew
    // A save whose main.sfx dialog is cancelled leaves no name, so the next cancel ends the run.
    run.Host.SaveAnswers = {run.Folder.File("out.was")};
    run.Trigger("Mnu_File_SaveWAD");
    run.Trigger("TB_Open_TR");
    EXPECT_FALSE(run.Window->isVisible());
    EXPECT_EQ(run.Window->ExitCode(), 0);
}

TEST(WindowLoad, EndsInGoodOrderOnADamagedLevel)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR1, "a.phd")));
    auto damaged = samples::MakeRichLevel(kTR1);
    damaged.Animations.clear();
    run.Open(run.Write(damaged, "b.phd"));
    EXPECT_EQ(run.Host.Messages, Strings{"MORLIK error: ReadTR -> Error reading level"});
    EXPECT_FALSE(run.Window->isVisible());
    EXPECT_EQ(run.Window->ExitCode(), 1);
}

TEST(WindowLoad, TakesFilesByKeyDropAndMenuUnderAnyName)
{
    WindowRun run;
    const auto first = run.Write(kTR1, "a b.phd");
    const auto second = run.Write(kTR4, "b \xc3\xa4\xc3\xb6 \xe4\xb8\xad.tr4");
    const auto third = run.Write(kTR5, "c.trc");
    ASSERT_TRUE(run.Start(first));
    const auto titleIs = [&](const std::string& path) {
        return run.Window->windowTitle().toStdString() == "MORLIK 1.7 - [" + path + "] - Moveables";
    };
    QTest::keyClick(run.Window.get(), Qt::Key_F7);
    EXPECT_TRUE(titleIs(second));
    QTest::keyClick(run.Window.get(), Qt::Key_F7);
    EXPECT_TRUE(titleIs(third));
    QTest::keyClick(run.Window.get(), Qt::Key_F7);
    EXPECT_EQ(run.Host.Beeps, 1);
    QTest::keyClick(run.Window.get(), Qt::Key_F6);
    EXPECT_TRUE(titleIs(second));
    run.Program.Level.Moveables.clear();
    QTest::keyClick(run.Window.get(), Qt::Key_F5);
    EXPECT_FALSE(run.Program.Level.Moveables.empty());

    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(first))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(run.Window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(run.Window.get(), &drop);
    EXPECT_TRUE(titleIs(first));

    const auto recent = run.Find<QMenu>("Mnu_Go_Recent")->actions();
    ASSERT_EQ(recent.size(), 3);
    EXPECT_EQ(recent[1]->text().toStdString(), second);
    recent[1]->trigger();
    QApplication::processEvents();
    EXPECT_TRUE(titleIs(second));

    // A file that is gone costs a message and its entry, not the renames of the run.
    std::filesystem::remove(first);
    run.Find<QMenu>("Mnu_Go_Recent")->actions()[1]->trigger();
    QApplication::processEvents();
    EXPECT_EQ(run.Host.Messages.size(), 1U);
    EXPECT_EQ(run.Find<QMenu>("Mnu_Go_Recent")->actions().size(), 2);
    EXPECT_TRUE(titleIs(second));

    run.Host.OpenAnswers = {third};
    QTest::keyClick(run.Window.get(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(titleIs(third));
    QTest::keyClick(run.Window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(run.Window->isVisible());
    EXPECT_EQ(run.Window->ExitCode(), 0);
}

TEST(WindowLoad, KeepsTwentyRecentFilesOfAnyNumberThatTheSettingsHold)
{
    WindowRun run;
    QStringList files;
    for (int i = 0; i < 1000; ++i)
        files << QString("/gone/%1.phd").arg(i);
    run.Store->setValue("window/recent", files);
    const auto level = run.Write(kTR1, "a.phd");
    ASSERT_TRUE(run.Start(level));
    const auto recent = run.Find<QMenu>("Mnu_Go_Recent")->actions();
    ASSERT_EQ(recent.size(), 20);
    EXPECT_EQ(recent[0]->text().toStdString(), level);
    EXPECT_EQ(recent[19]->text(), files[18]);
    EXPECT_EQ(run.Store->value("window/recent").toStringList().size(), 20);
    run.Recent->Remove(files[0]);
    EXPECT_EQ(run.Recent->List().size(), 19);
}

TEST(WindowLoad, TellsOfShortMemoryAndEnds)
{
    WindowRun run;
    ASSERT_TRUE(run.Start(run.Write(kTR1, "a.phd")));
    const auto other = run.Write(kTR4, "b.tr4");
    {
        const ShortMemory memory(std::size_t{16} << 10U);
        run.Open(other);
    }
    EXPECT_EQ(run.Host.Messages.back(), "MORLIK error: There is not enough memory");
    EXPECT_EQ(run.Window->ExitCode(), 1);
}

} // namespace

} // namespace morlik::test
