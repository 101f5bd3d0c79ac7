#include "shell/window/RunWindow.h"

#include "base/Text.h"
#include "platform/ConsoleHost.h"
#include "platform/Platform.h"
#include "shell/Batch.h"
#include "shell/MORLIK_Main.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/QtHost.h"
#include "shell/window/QtRegistry.h"

#ifdef _WIN32
#include "platform/Win32Registry.h"
#endif

#include <QApplication>
#include <cstdlib>
#include <exception>
#include <iostream>

namespace morlik
{

namespace
{

QSettings UserSettings()
{
    return {QSettings::IniFormat, QSettings::UserScope, "morlik", "morlik"};
}

#ifdef _WIN32
Win32Registry MakeRegistry(QSettings&)
{
    return {};
}
#else
QtRegistry MakeRegistry(QSettings& store)
{
    return QtRegistry(store);
}
#endif

/// What comes out of an event, where the window's own guard is not around it or has no memory left
/// for its box, can't pass through the toolkit: it is told, and the program ends.
class GuardedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& failure) {
            ShowLastMessage(PrintableLines(ReasonOf(failure)), kErrorTitle);
            std::_Exit(EXIT_FAILURE);
        }
    }
};

int RunBatchJob(Session& session, const std::string& commandLine)
{
    QSettings store = UserSettings();
    auto registry = MakeRegistry(store);
    OpenLog(session.Report);
    const InterruptScope interrupts;
    const bool complete = RunBatch(session, registry, commandLine);
    if (InterruptScope::IsRequested())
        return kStoppedStatus;
    return complete ? EXIT_SUCCESS : EXIT_FAILURE;
}

int RunBatchOnConsole(const std::string& commandLine)
{
    ConsoleHost host(std::cout);
    Session session(host);
    return RunBatchJob(session, commandLine);
}

/// With a display the messages and the dialog for `main.sfx` come up as in the window, which
/// itself is never shown.
int RunBatchOnDisplay(int argc, char** argv, const std::string& commandLine)
{
    const GuardedApplication application(argc, argv);
    QtHost host;
    Session session(host);
    QSettings store = UserSettings();
    RecentFiles recent(store);
    Main_Frm window(session, recent);
    host.Attach(window, window.Controls());
    return RunBatchJob(session, commandLine);
}

int RunWindow(int argc, char** argv)
{
    const GuardedApplication application(argc, argv);
    QApplication::setApplicationName("Morlik");
    QtHost host;
    Session session(host);
    OpenLog(session.Report);
    QSettings store = UserSettings();
    auto registry = MakeRegistry(store);
    RecentFiles recent(store);
    Main_Frm window(session, recent);
    host.Attach(window, window.Controls());
    const QStringList arguments = QApplication::arguments();
    const QString file = arguments.size() == 2 ? arguments[1] : QString();
    return window.Start(registry, file) ? QApplication::exec() : window.ExitCode();
}

} // namespace

int RunProgram(int argc, char** argv)
{
    try {
        const auto commandLine = CommandLine(argc, argv);
        if (!IsBatch(commandLine))
            return RunWindow(argc, argv);
        return HasDisplay() ? RunBatchOnDisplay(argc, argv, commandLine)
                            : RunBatchOnConsole(commandLine);
    } catch (const ProgramEnd&) {
        return EXIT_FAILURE;
    } catch (const std::exception& failure) {
        ShowLastMessage(PrintableLines(ReasonOf(failure)), kErrorTitle);
        return EXIT_FAILURE;
    }
}

} // namespace morlik
