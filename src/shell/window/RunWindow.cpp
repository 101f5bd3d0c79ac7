#include "shell/window/RunWindow.h"

#include "base/Text.h"
#include "platform/ConsoleHost.h"
#include "platform/Platform.h"
#include "platform/Trial.h"
#include "shell/Batch.h"
#include "shell/MORLIK_Main.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/QtHost.h"
#include "shell/window/QtRegistry.h"

#ifdef _WIN32
#include "platform/Win32Registry.h"
#include "shell/UserRegistry.h"
#endif

#include <QApplication>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>

namespace morlik
{

namespace
{

constexpr const char* kHelp =
    "Usage: morlik [FILE]\n"
    "       morlik /makewas LEVEL /export OUT.was\n"
    "\n"
    "Opens a Tomb Raider level, a main.sfx or a project in a window, or converts a level to an\n"
    "object set and ends. The second line is taken as it stands: paths are not quoted.\n"
    "morlik-cli does the same for scripts.\n";

/// What a command line asks for that needs neither window nor log; empty for all others.
std::string AnswerTo(const std::string& commandLine)
{
    if (commandLine == "--help" || commandLine == "-h")
        return kHelp;
    return commandLine == "--version" ? BuildVersionString({}) + "\n" : std::string();
}

QSettings UserSettings()
{
    return {QSettings::IniFormat, QSettings::UserScope, "morlik", "morlik"};
}

#ifdef _WIN32
UserRegistry MakeRegistry(QSettings&)
{
    return UserRegistry(std::make_unique<Win32Registry>());
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
    const InterruptScope interrupts;
    const bool complete = RunBatch(session, registry, commandLine);
    if (InterruptScope::IsRequested())
        return kStoppedStatus;
    return complete ? EXIT_SUCCESS : EXIT_FAILURE;
}

void OpenBatchLog(Reporter& report, const std::string& commandLine)
{
    const auto paths = CutBatchLine(commandLine);
    OpenLog(report, paths ? paths->Level : std::string());
}

int RunBatchOnConsole(const std::string& commandLine)
{
    ConsoleHost host(std::cout);
    Session session(host);
    OpenBatchLog(session.Report, commandLine);
    return RunBatchJob(session, commandLine);
}

/// With a display the messages and the dialog for `main.sfx` come up as in the window, which
/// itself is never shown.
int RunBatchOnDisplay(int argc, char** argv, const std::string& commandLine)
{
    QtHost host;
    Session session(host);
    OpenBatchLog(session.Report, commandLine);
    const GuardedApplication application(argc, argv);
    QSettings store = UserSettings();
    Main_Frm window(session, store);
    host.Attach(window, window.Controls());
    return RunBatchJob(session, commandLine);
}

/// A batch job on the display where one opens, else on the console. The toolkit ends the process
/// where its display doesn't answer, refuses or has no plugin here, and waits without end for a
/// server that is stuck: so it is tried in a child, which costs less than the answer of a user to
/// the closing message. A box on a platform that nobody sees would never be answered.
int RunBatchProgram(int argc, char** argv, const std::string& commandLine)
{
    constexpr std::chrono::seconds kPatience(10);
    const auto opens = [&] {
        static const QApplication application(argc, argv);
        const QString platform = QApplication::platformName();
        return platform != "offscreen" && platform != "minimal";
    };
    if (!HasDisplay())
        return RunBatchOnConsole(commandLine);
    const Trial display(opens, kPatience);
    return display.IsGood() ? RunBatchOnDisplay(argc, argv, commandLine)
                            : RunBatchOnConsole(commandLine);
}

/// While one lives, an abort, with which the toolkit answers to a missing display once it has told
/// why, is a plain end of the program.
class AbortIsEnd
{
public:
    AbortIsEnd()
    {
        Handle([](int) { std::_Exit(EXIT_FAILURE); });
    }
    AbortIsEnd(const AbortIsEnd&) = delete;
    AbortIsEnd& operator=(const AbortIsEnd&) = delete;
    ~AbortIsEnd() { Handle(SIG_DFL); }

private:
    static void Handle(void (*handler)(int)) { static_cast<void>(std::signal(SIGABRT, handler)); }
};

int RunWindow(int argc, char** argv)
{
    QtHost host;
    Session session(host);
    const auto words = Arguments(argc, argv);
    OpenLog(session.Report, words.empty() ? std::string() : words.back());
    std::optional<AbortIsEnd> untilThereIsADisplay(std::in_place);
    const GuardedApplication application(argc, argv);
    untilThereIsADisplay.reset();
    QApplication::setApplicationName("Morlik");
    QGuiApplication::setDesktopFileName("morlik"); // whose picture the task bar shows
    QSettings store = UserSettings();
    auto registry = MakeRegistry(store);
    Main_Frm window(session, store);
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
        if (const auto answer = AnswerTo(commandLine); !answer.empty()) {
            ShowAnswer(answer, kAppTitle);
            return EXIT_SUCCESS;
        }
        return IsBatch(commandLine) ? RunBatchProgram(argc, argv, commandLine)
                                    : RunWindow(argc, argv);
    } catch (const ProgramEnd&) {
        return EXIT_FAILURE;
    } catch (const std::exception& failure) {
        ShowLastMessage(PrintableLines(ReasonOf(failure)), kErrorTitle);
        return EXIT_FAILURE;
    }
}

} // namespace morlik
