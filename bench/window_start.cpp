// Starts the window as the program does, with its pane of pictures and with a sample level as its
// file, and ends when it has been painted for the first time, so that a parent can time that from
// outside. With LEVEL it opens that, clicks each of its objects, and writes into OUT how many
// milliseconds it took at the median and at most until the picture was there.
// usage: morlik-window-start [LEVEL OUT]

#include "base/OutputFile.h"
#include "samples/LevelWriter.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/QtHost.h"
#include "shell/window/QtRegistry.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <fstream>
#include <vector>

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

/// Milliseconds from a click on each object to its picture, in rising order.
std::vector<double> TimeClicks(morlik::Main_Frm& window)
{
    QApplication::processEvents(); // the pane fills once the window is there
    auto* view = window.findChild<morlik::ObjectView*>("ObjectView");
    QListWidget& list = *window.Controls().ObjList;
    std::vector<double> times;
    for (int row = 0; row < list.count(); ++row) {
        QElapsedTimer clock;
        clock.start();
        list.setCurrentRow(row);
        view->repaint();
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        QApplication::processEvents();
    }
    std::ranges::sort(times);
    return times;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    QSettings store(folder.filePath("settings.ini"), QSettings::IniFormat);
    morlik::QtHost host;
    morlik::Session session(host);
    store.setValue("window/pictures", true);
    morlik::Main_Frm window(session, store);
    host.Attach(window, window.Controls());
    morlik::QtRegistry registry(store);
    if (argc > 2) {
        if (!window.Start(registry, QString::fromLocal8Bit(argv[1])))
            return window.ExitCode();
        const auto times = TimeClicks(window);
        if (times.empty())
            return EXIT_FAILURE;
        std::ofstream(argv[2]) << times[times.size() / 2] << ' ' << times.back();
        return EXIT_SUCCESS;
    }
    FirstPaint painted;
    window.installEventFilter(&painted);
    const QString level = folder.filePath("level.tr4");
    morlik::WriteWholeFile(
        level.toStdString(),
        morlik::samples::WriteLevel(morlik::samples::MakeRichLevel(morlik::kTR4)).Bytes);
    return window.Start(registry, level) ? QApplication::exec() : window.ExitCode();
}
