#include "shell/window/RunWindow.h"

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

int RunBatchJob(const std::string& commandLine)
{
    ConsoleHost host(std::cout);
    Session session(host);
    QSettings store = UserSettings();
    auto registry = MakeRegistry(store);
    OpenLog(session.Report);
    return RunBatch(session, registry, commandLine) ? EXIT_SUCCESS : EXIT_FAILURE;
}

int RunWindow(int argc, char** argv)
{
    QApplication application(argc, argv);
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
        return IsBatch(commandLine) ? RunBatchJob(commandLine) : RunWindow(argc, argv);
    } catch (const ProgramEnd&) {
        return EXIT_FAILURE;
    } catch (const std::exception& failure) {
        std::cerr << kErrorTitle << ": " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}

} // namespace morlik
