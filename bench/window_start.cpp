// Starts the window as the program does, with a sample level as its file, and ends when it has been
// painted for the first time, so that a parent can time that from outside.

#include "base/OutputFile.h"
#include "samples/LevelWriter.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/QtHost.h"
#include "shell/window/QtRegistry.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

namespace
{

/// Ends the program behind the first paint of the window.
class FirstPaint : public QObject
{
public:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, QApplication::instance(), &QCoreApplication::quit);
        return QObject::eventFilter(object, event);
    }
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    QSettings store(folder.filePath("settings.ini"), QSettings::IniFormat);
    morlik::QtHost host;
    morlik::Session session(host);
    morlik::Main_Frm window(session, store);
    host.Attach(window, window.Controls());
    FirstPaint painted;
    window.installEventFilter(&painted);
    const QString level = folder.filePath("level.tr4");
    morlik::WriteWholeFile(
        level.toStdString(),
        morlik::samples::WriteLevel(morlik::samples::MakeRichLevel(morlik::kTR4)).Bytes);
    morlik::QtRegistry registry(store);
    return window.Start(registry, level) ? QApplication::exec() : window.ExitCode();
}
