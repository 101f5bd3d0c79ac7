#include "shell/Register_Mod.h"
#include "shell/window/ObjectView.h"
#include "shell/window/QtRegistry.h"
#include "tests/window/WindowRun.h"

#include <QApplication>
#include <QGroupBox>
#include <QScopeGuard>
#include <QScreen>

namespace morlik::test
{

TEST(WindowStart, WritesItsValuesLoadsAFileAndKeepsItsFolder)
{
    WindowRun run;
    const auto level = run.Write(kTR1, "a.phd");
    run.Host.OpenAnswers = {level};
    EXPECT_TRUE(run.Start(""));
    EXPECT_TRUE(run.Window->isVisible());
    EXPECT_EQ(run.Host.Dialogs.at(0).Folder, "C:\\");
    EXPECT_EQ(run.Host.Dialogs.at(0).Filter,
              "TR Levels|*.phd;*.tub;*.tr2;*.tr4;*.trc|PRJ Files|*.prj|TR2&3 Sound Data "
              "(main.sfx)|main.sfx");
    EXPECT_EQ(run.Program.Settings.LevelFolder, level.substr(0, level.size() - 5));
    Reporter& report = run.Program.Report;
    const auto value = [&](const char* key, const char* name) {
        return RegReadValue(run.Registry, key, name, report);
    };
    EXPECT_EQ(value(kProgramKey, "MORLIKMajor") + value(kProgramKey, "MORLIKMinor") +
                  value(kProgramKey, "MORLIKRev"),
              "170");
    EXPECT_EQ(value(kProgramKey, "MorlikFile"), run.Host.Folder + "\\MORLIK.exe");
    EXPECT_EQ(value(kFoldersKey, "LevelFolder"), run.Program.Settings.LevelFolder);
    EXPECT_EQ(value(kFoldersKey, "Sorbling version"), "17");
    EXPECT_EQ(LinesOfFile(run.Folder.File("log")),
              (Strings{"Reading settings", "Loading TR4Objects.dat", "Loading level",
                       "-LevelFile:" + level, "-LevelVersion:1", "-Converting Textures",
                       "Listing objects", "Listing sounds"}));
}

TEST(WindowStart, EndsWhenTheFirstDialogIsCancelledOrTheFileIsDamaged)
{
    WindowRun cancelled;
    EXPECT_FALSE(cancelled.Start(""));
    EXPECT_TRUE(cancelled.Host.Messages.empty());

    WindowRun damaged;
    EXPECT_FALSE(damaged.Start(damaged.Write(std::as_bytes(std::span("TR4c")), "b.phd")));
    EXPECT_EQ(damaged.Host.Messages.size(), 1U);
    EXPECT_TRUE(damaged.Label("Foot").contains("encrypted"));
    EXPECT_FALSE(damaged.Window->isVisible());
    EXPECT_EQ(damaged.Window->ExitCode(), 1);
}

TEST(WindowStart, GoesOnWhereTheRegistryCannotBeWritten)
{
    WindowRun run;
    run.Registry.RefusesWrites = true;
    EXPECT_TRUE(run.Start(run.Write(kTR1, "a.phd")));
    EXPECT_EQ(run.Host.Messages, Strings(4, "MORLIK: Fout bij het schrijven van het register"));
}

TEST(QtRegistryStore, KeepsTypedValuesAndKnowsNamesInAnyCase)
{
    const TempFolder folder;
    const auto file = QString::fromStdString(folder.File("registry.ini"));
    constexpr RootKey kRoot = 0x80000002;
    const RegistryValue text{RegistryType::Text, "C:\\a b\\\xe4"};
    const RegistryValue path{RegistryType::Text, std::string("C:\\\xc3\xb6\\\0", 7)}; // terminated
    const RegistryValue binary{RegistryType::Binary, std::string("\x00\xff\n", 3)};
    {
        QSettings store(file, QSettings::IniFormat);
        QtRegistry registry(store);
        EXPECT_FALSE(registry.SetValue(kRoot, "Software\\A", "Text", text));
        EXPECT_TRUE(registry.CreateKey(kRoot, "Software\\A"));
        EXPECT_TRUE(registry.SetValue(kRoot, "software\\a", "Text", text));
        EXPECT_TRUE(registry.SetValue(kRoot, "software\\a", "Path", path));
        EXPECT_TRUE(registry.SetValue(kRoot, "software\\a", "Two words", binary));
    }
    QSettings store(file, QSettings::IniFormat);
    QtRegistry registry(store);
    EXPECT_EQ(registry.QueryValue(kRoot, "SOFTWARE\\A", "TEXT"), text);
    EXPECT_EQ(registry.QueryValue(kRoot, "SOFTWARE\\A", "path"), path);
    EXPECT_EQ(registry.QueryValue(kRoot, "SOFTWARE\\A", "two words"), binary);
    EXPECT_EQ(registry.QueryValue(kRoot, "SOFTWARE", "text"), std::nullopt);

    QSettings unwritable("/dev/null/x.ini", QSettings::IniFormat);
    EXPECT_FALSE(QtRegistry(unwritable).CreateKey(kRoot, "software"));
}

TEST(WindowControls, StartAsTheyShouldAndBeepWithoutALevelOrASound)
{
    WindowRun run;
    EXPECT_EQ(run.Title(), "Morlik 1.7");
    EXPECT_EQ(run.Label("LevelType"), "No level loaded");
    const QImage pane = run.Find<ObjectView>("ObjectView")->grab().toImage();
    EXPECT_GT(pane.convertToFormat(QImage::Format_Indexed8).colorCount(), 1) << "it has a text";
    run.Window->show();
    for (const QSize size : {QSize(500, 600), QSize(1400, 900)}) {
        run.Window->resize(size);
        const auto* rooms = run.Find<QGroupBox>("Frame3");
        EXPECT_GE(rooms->x(), run.Window->centralWidget()->width());
    }
    // The Tab key goes round through all controls that can be seen, and to no other.
    QWidget* start = run.Find<QLineEdit>("ObjFilter");
    Strings visited;
    for (QWidget* w = start->nextInFocusChain(); w != start; w = w->nextInFocusChain())
        if ((w->focusPolicy() & Qt::TabFocus) != 0 && !w->objectName().startsWith("qt_"))
            visited.push_back(w->objectName().toStdString());
    EXPECT_EQ(std::count(visited.begin(), visited.end(), "RoomList"), 0);
    EXPECT_EQ(std::count(visited.begin(), visited.end(), "SndSaveAll"), 1);
    for (const char* command : {"Mnu_File_SaveWAD", "Mnu_File_SaveTGA", "TB_Save", "TB_Save_WAS"})
        run.Trigger(command);
    run.Click("SndSave");
    EXPECT_EQ(run.Host.Beeps, 5);
    EXPECT_TRUE(run.Host.Dialogs.empty());
}

TEST(WindowControls, FitTheScreenAtLargeLetters)
{
    const QFont font = QApplication::font();
    const QScopeGuard restore([&] { QApplication::setFont(font); });
    QFont large(font);
    large.setPointSize(2 * font.pointSize());
    QApplication::setFont(large);
    WindowRun run(kTR2);
    EXPECT_LE(run.Window->height(), run.Window->screen()->availableGeometry().height());
}

TEST(About, KeepsTheMainWindowOffUntilItIsClosed)
{
    WindowRun run(kTR2);
    for (std::size_t round = 1; round <= 2; ++round) {
        run.Trigger("Mnu_Help_About");
        EXPECT_FALSE(run.Window->isEnabled());
        EXPECT_FALSE(run.Window->close());
        const auto all = QApplication::topLevelWidgets();
        auto* about = *std::ranges::find(all, QString("About_Frm"), &QWidget::objectName);
        EXPECT_EQ(about->findChild<QLabel*>("Features")->text(),
                  "- Exporting WAS files\n- Exporting TGA files\n- Exporting WAV files");
        QTest::mouseClick(about->findChild<QLabel*>("Label4"), Qt::LeftButton);
        EXPECT_EQ(run.Host.WebAddresses, Strings(round, "https://morlik.invalid/"));
        EXPECT_TRUE(about->isVisible());
        about->close();
        EXPECT_TRUE(run.Window->isEnabled());
    }
}

} // namespace morlik::test
