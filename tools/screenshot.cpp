// Makes a picture of the main window with a level loaded, the rich sample of Tomb Raider IV where
// none is named. QT_SCALE_FACTOR scales it; MORLIK_DARK makes the colours of the desktop dark.
// usage: morlik-screenshot OUT.png [LEVEL]

#include "base/OutputFile.h"
#include "platform/Platform.h"
#include "samples/LevelWriter.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/QtHost.h"
#include "shell/window/QtRegistry.h"

#include <QApplication>
#include <QPixmap>
#include <QTemporaryDir>
#include <cstdlib>
#include <exception>
#include <iostream>

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

/// Selects the third object, so that the picture shows a name and an id.
void Show(morlik::Main_Frm& window)
{
    morlik::MainControls& controls = window.Controls();
    controls.ObjList->setCurrentRow(2);
    controls.Foot->setText("Saved mill.was");
    QApplication::processEvents();
}

int Run(const QString& picture, const QString& level)
{
    const QTemporaryDir folder;
    QString file = level;
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
    morlik::RecentFiles recent(store);
    morlik::Main_Frm window(session, recent);
    host.Attach(window, window.Controls());
    if (!window.Start(registry, file))
        return EXIT_FAILURE;
    Show(window);
    return window.grab().save(picture) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    try {
        const QApplication application(argc, argv);
        QApplication::setStyle("Fusion");
        if (qEnvironmentVariableIsSet("MORLIK_DARK"))
            QApplication::setPalette(DarkPalette());
        const QStringList arguments = QApplication::arguments();
        if (arguments.size() < 2) {
            std::cerr << "usage: morlik-screenshot OUT.png [LEVEL]\n";
            return EXIT_FAILURE;
        }
        return Run(arguments[1], arguments.value(2));
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
