// Makes a picture of the main window with a level loaded, the rich sample of Tomb Raider IV where
// none is named, and an object selected, by its row in the list. QT_SCALE_FACTOR scales it;
// MORLIK_DARK makes the colours of the desktop dark, MORLIK_POINTS is the size of its letters.
// usage: morlik-screenshot OUT.png [LEVEL [TAB [ROW [SIDE OF SMALL PICTURES]]]]

#include "base/OutputFile.h"
#include "platform/Platform.h"
#include "samples/LevelWriter.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/QtHost.h"
#include "shell/window/QtRegistry.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QTabWidget>
#include <QTemporaryDir>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <span>
#include <string_view>

namespace
{

QPalette DarkPalette()
{
    QPalette palette(QColor(0x35, 0x35, 0x3a));
    palette.setColor(QPalette::Base, QColor(0x22, 0x22, 0x26));
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::ButtonText, Qt::white);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, Qt::gray);
    return palette;
}

/// A screen that holds the window with its pane. The platform reads it from a file.
void MakeScreen(const QTemporaryDir& folder)
{
    const QString file = folder.filePath("screen.json");
    morlik::WriteWholeFile(
        file.toStdString(),
        std::as_bytes(std::span(std::string_view(
            R"({"screens":[{"name":"wide","x":0,"y":0,"width":2400,"height":1400}]})"))));
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.toUtf8());
}

/// Gives the window's small jobs time: pictures are drawn in its pauses.
void Settle()
{
    constexpr int kMilliseconds = 500;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < kMilliseconds)
        QApplication::processEvents();
}

/// Selects an object and a sound, so that the picture shows a name, an id and a wave.
void Show(morlik::Main_Frm& window, const QStringList& wishes)
{
    morlik::MainControls& controls = window.Controls();
    const QString tab = wishes.value(0, "Object");
    if (tab == "Rooms")
        controls.ShowRooms();
    auto* tabs = window.findChild<QTabWidget*>("PictureTabs");
    for (int i = 0; i < tabs->count(); ++i)
        if (tabs->tabText(i) == tab)
            tabs->setCurrentIndex(i);
    for (QAction* action : controls.Mnu_View_List->actions())
        if (action->data().toString() == wishes.value(2, "0"))
            action->trigger();
    Settle(); // the pane fills once the window is there
    controls.ObjList->setCurrentRow(wishes.value(1, "2").toInt());
    controls.SndLst->setCurrentRow(3);
    controls.Foot->Tell("Saved mill.was");
    Settle();
}

int Run(const QTemporaryDir& folder, const QString& picture, const QStringList& wishes)
{
    QString file = wishes.value(0);
    if (file.isEmpty()) {
        file = folder.filePath("mill.tr4");
        morlik::WriteWholeFile(
            file.toStdString(),
            morlik::samples::WriteLevel(morlik::samples::MakeRichLevel(morlik::kTR4)).Bytes);
    }
    QSettings store(folder.filePath("settings.ini"), QSettings::IniFormat);
    morlik::QtHost host;
    morlik::Session session(host);
    morlik::QtRegistry registry(store);
    morlik::Main_Frm window(session, store);
    host.Attach(window, window.Controls());
    if (!window.Start(registry, file))
        return EXIT_FAILURE;
    Show(window, wishes.mid(1));
    return window.grab().save(picture) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const QTemporaryDir folder;
        MakeScreen(folder);
        const QApplication application(argc, argv);
        QApplication::setStyle("Fusion");
        if (const int points = qEnvironmentVariableIntValue("MORLIK_POINTS"); points > 0) {
            QFont font = QApplication::font();
            font.setPointSize(points);
            QApplication::setFont(font);
        }
        if (qEnvironmentVariableIsSet("MORLIK_DARK"))
            QApplication::setPalette(DarkPalette());
        const QStringList arguments = QApplication::arguments();
        if (arguments.size() < 2) {
            std::cerr << "usage: morlik-screenshot OUT.png [LEVEL [TAB [ROW [SIDE]]]]\n";
            return EXIT_FAILURE;
        }
        return Run(folder, arguments[1], arguments.mid(2));
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
