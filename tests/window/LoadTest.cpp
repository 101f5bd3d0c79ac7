#include "samples/Project.h"
#include "tests/support/HeapPeak.h"
#include "tests/window/WindowRun.h"

namespace morlik::test
{

TEST(WindowLoad, ShowsEachGame)
{
    const std::vector<std::tuple<VersionCode, const char*, const char*>> rows{
        {kTR1, "a.phd", "I"},   {kTR2, "a.tr2", "II"}, {kTR5, "a.trc", "V"},
        {kTR3, "b.tr2", "III"}, {kTR4, "a.tr4", "IV"}, {kTR1Gold, "a.tub", "I Gold"}};
    WindowRun run(kTR1);
    for (const auto& [game, name, caption] : rows) {
        const auto path = run.Write(game, name);
        run.Open(path);
        const bool isSecondOrThird = game == kTR2 || game == kTR3;
        EXPECT_EQ(run.Label("LevelType"), QString("Tomb Raider %1 level").arg(caption));
        EXPECT_EQ(run.IsOn("SkyFix"), isSecondOrThird) << name;
        EXPECT_EQ(run.IsOn("SndFrame"), !isSecondOrThird) << name;
        EXPECT_EQ(run.IsOn("LaraType"), game == kTR5);
        EXPECT_EQ(run.Find<QComboBox>("LaraType")->currentText(),
                  game == kTR5 ? "Catsuit Lara" : "Normal Lara");
        EXPECT_EQ(run.Find<QComboBox>("Weather")->currentText(),
                  game == kTR5 ? "Rain" : "No weather");
        EXPECT_EQ(run.List("ObjList").size(), run.Program.Level.Moveables.size());
        EXPECT_EQ(ToLower(run.List("ObjList").at(0)), "lara");
        EXPECT_EQ(run.List("SndLst").empty(), isSecondOrThird);
        EXPECT_EQ(run.Title(), "MORLIK 1.7 - [" + path + "] - Moveables");
        EXPECT_EQ(run.Program.LevelTitle, name);
    }
    EXPECT_TRUE(run.Host.Messages.empty());
    // The list of sounds: the first slot that names a sound, its samples with their sizes.
    EXPECT_EQ(run.List("SndLst").at(1), "TR1 Sound 17-1 (2690 bytes)");
}

TEST(WindowLoad, TakesLevelsWithoutSoundsOrWithSoundsElsewhere)
{
    WindowRun run(kTR1);
    for (const VersionCode game : {kTR1, kTR4, kTR5})
        for (const int lost : {0, 1, 2}) {
            auto level = samples::MakeRichLevel(game);
            if (lost != 1) {
                level.Samples.clear();
                level.SampleIndices.clear();
            }
            if (lost != 0)
                level.SoundDetails.clear();
            run.Open(run.Write(level, LevelName(game)));
            EXPECT_EQ(run.Program.LevelTitle, LevelName(game));
            EXPECT_TRUE(run.IsOn("SndFrame"));
            EXPECT_EQ(run.List("SndLst").empty(), lost != 0) << game << lost;
        }
    auto outside = samples::MakeRichLevel(kTR4);
    samples::MakeExtended(outside, 1024, true);
    run.Open(run.Write(outside, "outside.tr4"));
    EXPECT_FALSE(run.IsOn("SndFrame"));
    EXPECT_TRUE(run.Find<QPushButton>("SndOpen")->isVisible());
    EXPECT_TRUE(run.List("SndLst").empty());
    EXPECT_EQ(run.Host.Messages, Strings());
    auto sounds = samples::SampleSounds();
    sounds.resize(10);
    const auto few = samples::WriteMainSfx(sounds).Bytes;
    run.Host.OpenAnswers = {run.Write(few, "main.sfx")}; // the save asks for it
    run.Save("Mnu_File_SaveWAD", "set.was");
    EXPECT_PRED2(Has, run.Told(), " without 1 of 11 sounds, which main.sfx or the level lacks");
    EXPECT_TRUE(std::filesystem::exists(run.Folder.File("set-Sounds/TR4 Sound 65-0.wav")));
}

TEST(WindowLoad, AddsTheSamplesOfEachMainSfx)
{
    WindowRun run(kTR3);
    const auto sounds = samples::SampleSounds();
    const auto path = run.Write(samples::WriteMainSfx(sounds).Bytes, "MAIN.SFX");
    const auto caption = run.Title();
    for (const std::size_t round : {1U, 2U}) {
        run.Open(path);
        const auto list = run.List("SndLst");
        ASSERT_EQ(list.size(), round * sounds.size());
        EXPECT_EQ(list.back(), "TR3 Sound " + std::to_string(list.size() - 1) + " - " +
                                   std::to_string(sounds.back().size()) + " bytes");
    }
    QTest::keyClick(run.Window.get(), Qt::Key_F5); // reads the files again, and adds none
    EXPECT_EQ(run.List("SndLst").size(), 2 * sounds.size());
    for (const char* frame : {"Frame1", "Frame2", "Frame4", "SndFrame"})
        EXPECT_FALSE(run.IsOn(frame)) << frame;
    // The mode stays, whichever way it is asked for.
    for (const char* mode : {"Mnu_Edit_Static", "TB_Statics", "Mnu_Edit_Move", "TB_Moveables"}) {
        run.Trigger(mode);
        EXPECT_TRUE(run.Find<QAction>("TB_Moveables")->isChecked()) << mode;
        EXPECT_FALSE(run.Find<QAction>("Mnu_Edit_Static")->isChecked()) << mode;
    }
    EXPECT_EQ(run.Title(), caption);
}

TEST(WindowLoad, ListsTheRoomsOfAProject)
{
    WindowRun run(kTR1);
    const auto objects = run.List("ObjList");
    auto project = samples::MakeProject();
    project.Rooms[2].Name = "M\xfchle";
    run.Open(run.Write(samples::WriteProject(project).Bytes, "city.PRJ"));
    EXPECT_EQ(run.List("RoomList"), (Strings{"Room 0", "Empty room", "Room 2", "Room 3"}));
    EXPECT_EQ(run.Find<QListWidget>("RoomList")->item(2)->toolTip().toStdString(), "M\xc3\xbchle");
    EXPECT_EQ(run.Label("NumRooms"), " 4 Rooms");
    EXPECT_EQ(run.Label("Foot"), "Opened city.PRJ: 4 Rooms");
    EXPECT_EQ(run.List("ObjList"), objects);
    run.Trigger("Mnu_File_SaveWAD");
    run.Trigger("Mnu_File_SaveTGA");
    EXPECT_EQ(run.Host.Beeps, 2);
    EXPECT_EQ(run.Label("Foot"), "There is no level to save: open one first");
    EXPECT_EQ(run.Host.Dialogs.size(), 1U); // the one that opened the project
}

TEST(WindowLoad, KeepsItsListsAndRecentFilesWhereAFileIsNone)
{
    WindowRun run(kTR1);
    const auto sounds = run.List("SndLst");
    for (const auto& [name, head] :
         {std::pair{"main.sfx", std::string()}, {"city.prj", ""}, {"short.prj", "PROJFILE"}}) {
        run.Host.Messages.clear();
        run.Open(run.Write(std::as_bytes(std::span(head)), name));
        EXPECT_EQ(run.Host.Messages.size(), 1U) << name;
        EXPECT_EQ(run.Program.LevelTitle, LevelName(kTR1)); // which the list of a set has
        EXPECT_NE(run.Program.State.LevelIsLoaded, 0);
    }
    EXPECT_EQ(run.List("SndLst"), sounds);
    EXPECT_TRUE(run.IsOn("Frame1"));
    EXPECT_EQ(run.Find<QMenu>("Mnu_Go_Recent")->actions().size(), 1);
    EXPECT_EQ(run.Recent->List().size(), 1);
}

TEST(WindowLoad, TakesADropAsACopyAndNoForeignFile)
{
    WindowRun run(kTR1);
    const auto level = run.Write(kTR4, "b.TR4");
    const auto other = run.Write(std::span<const std::byte>(), "c.txt");
    const std::vector<std::tuple<std::string, Qt::DropActions, bool, VersionCode>> rows{
        {other, Qt::CopyAction | Qt::MoveAction, true, kTR1},
        {level, Qt::MoveAction, false, kTR1},
        {level, Qt::MoveAction | Qt::LinkAction, false, kTR1},
        {level, Qt::MoveAction | Qt::CopyAction, true, kTR4}};
    for (const auto& [file, possible, isTaken, loaded] : rows) {
        EXPECT_EQ(run.Drop(file, possible), isTaken);
        EXPECT_EQ(run.Program.Level.Version, loaded);
        EXPECT_EQ(run.Label("Foot").contains("c.txt is no level"), loaded == kTR1);
    }
    EXPECT_TRUE(run.Host.Messages.empty());
    EXPECT_TRUE(run.Window->isVisible());
}

TEST(WindowLoad, EndsInGoodOrderOnShortMemory)
{
    WindowRun run(kTR1);
    const auto path = run.Write(kTR4, "b.tr4");
    {
        const ShortMemory memory(std::size_t{16} << 10U);
        run.Open(path);
    }
    EXPECT_EQ(run.Host.Messages, Strings{"MORLIK error: There is not enough memory"});
    EXPECT_FALSE(run.Window->isVisible());
    EXPECT_EQ(run.Window->ExitCode(), 1);
}

TEST(WindowLoad, KeepsTheLevelOnScreenWhereAnotherIsDamaged)
{
    auto damaged = samples::MakeRichLevel(kTR4);
    damaged.Animations.clear();
    WindowRun run(kTR1);
    const auto caption = run.Title();
    const auto path = run.Write(damaged, "z.tr4");
    const std::vector<std::function<void()>> loads{
        [&] { QTest::keyClick(run.Window.get(), Qt::Key_F7); }, [&] { run.Drop(path); },
        [&] { run.Open(path); }};
    for (const auto& load : loads) {
        run.Host.Messages.clear();
        load();
        EXPECT_EQ(run.Host.Messages, Strings{"MORLIK error: ReadTR -> Error reading level"});
        EXPECT_EQ(run.Label("Foot"), "z.tr4 can't be read; what was opened before stays");
        EXPECT_TRUE(run.Window->isVisible());
        EXPECT_EQ(run.Program.State.LevelVersion, kTR1);
        EXPECT_EQ(run.Program.LevelTitle, LevelName(kTR1));
        run.Trigger("Mnu_Edit_Move"); // shows the caption anew
        EXPECT_EQ(run.Title(), caption);
    }
    QTest::keyClick(run.Window.get(), Qt::Key_F7); // from the damaged one on
    EXPECT_EQ(run.Label("Foot"), "This is the last level of its folder");
    EXPECT_EQ(run.Find<QMenu>("Mnu_Go_Recent")->actions().size(), 1);
    run.Save("TB_Save", "set.was");
    EXPECT_TRUE(run.Label("Foot").startsWith("Saved "));
}

TEST(WindowLoad, TakesFilesByKeyDropAndMenuUnderAnyName)
{
    WindowRun run;
    const auto first = run.Write(kTR1, "a b.phd");
    const auto second = run.Write(kTR4, "b \xc3\xa4\xc3\xb6 \xe4\xb8\xad.tr4");
    const auto third = run.Write(kTR5, "c.trc");
    ASSERT_TRUE(run.Start(first));
    const auto expectFile = [&](const std::string& path) {
        EXPECT_EQ(run.Title(), "MORLIK 1.7 - [" + path + "] - Moveables");
    };
    for (const auto& [key, path] : {std::pair{Qt::Key_F7, second},
                                    {Qt::Key_F7, third},
                                    {Qt::Key_F7, third}, // the last one
                                    {Qt::Key_F6, second}}) {
        QTest::keyClick(run.Window.get(), key);
        expectFile(path);
    }
    EXPECT_EQ(run.Host.Beeps, 1);
    run.Program.Level.Moveables.clear();
    QTest::keyClick(run.Window.get(), Qt::Key_F5);
    EXPECT_FALSE(run.Program.Level.Moveables.empty());
    EXPECT_TRUE(run.Drop(first));
    expectFile(first);

    const auto recent = [&] { return run.Find<QMenu>("Mnu_Go_Recent")->actions(); };
    ASSERT_EQ(recent().size(), 3);
    EXPECT_EQ(recent()[1]->text().toStdString(), second);
    recent()[1]->trigger();
    QApplication::processEvents();
    expectFile(second);

    // A file that is gone costs a message and its entry, not the renames of the run.
    std::filesystem::remove(first);
    recent()[1]->trigger();
    QApplication::processEvents();
    EXPECT_EQ(run.Host.Messages.size(), 1U);
    EXPECT_EQ(recent().size(), 2);
    expectFile(second);

    run.Host.OpenAnswers = {third};
    QTest::keyClick(run.Window.get(), Qt::Key_O, Qt::ControlModifier);
    expectFile(third);
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

} // namespace morlik::test
