#include "platform/ConsoleHost.h"
#include "platform/Platform.h"
#include "shell/Batch.h"
#include "shell/MORLIK_Main.h"

#include <cstdlib>
#include <exception>
#include <iostream>

namespace
{

bool Run(morlik::Session& session, const std::string& commandLine)
{
    morlik::OpenLog(session.Report);
    if (!morlik::IsBatch(commandLine))
        session.Report.Stop("There is no window yet. Start me as: "
                            "morlik /makewas LEVEL /export OUT.was");
    return morlik::RunBatch(session, commandLine);
}

} // namespace

int main(int argc, char** argv)
{
    morlik::ConsoleHost host(std::cout);
    morlik::Session session(host);
    try {
        return Run(session, morlik::CommandLine(argc, argv)) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const morlik::ProgramEnd&) {
        return EXIT_FAILURE;
    } catch (const std::exception& failure) {
        host.ShowMessage(failure.what(), morlik::kErrorTitle);
        return EXIT_FAILURE;
    }
}
