#include "base/Reporter.h"
#include "base/Text.h"
#include "base/Uninitialised.h"
#include "cli/Commands.h"
#include "platform/Platform.h"

#include <exception>
#include <iostream>

/// morlik-cli: the work of the program for scripts, without a window.
int main(int argc, char** argv)
{
    using namespace morlik;
    TakeFaultsAsErrors();
    TakeFirstMemory();
    const ConsoleTexts console;
    const InterruptScope interrupts;
    try {
        const int status =
            cli::RunCommandLine(Arguments(argc, argv),
                                {std::cout, std::cerr, ErrorsGoToATerminal(), ColumnsOfErrors()});
        if (std::cout.flush())
            return status;
        std::cerr << kErrorTitle << ": Can't write the results\n"; // a full disk behind a ">"
        return cli::kFailed;
    } catch (const std::exception& failure) {
        std::cerr << kErrorTitle << ": " << PrintableLines(ReasonOf(failure)) << '\n';
        return cli::kFailed;
    }
}
