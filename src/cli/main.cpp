#include "base/Host.h"
#include "cli/Commands.h"
#include "platform/Platform.h"

#include <exception>
#include <iostream>

/// morlik-cli: the work of the program for scripts, without a window.
int main(int argc, char** argv)
{
    using namespace morlik;
    TakeSizeLimitAsError();
    const ConsoleTexts console;
    try {
        return cli::RunCommandLine(Arguments(argc, argv),
                                   {std::cout, std::cerr, ErrorsGoToATerminal()});
    } catch (const std::exception& failure) {
        std::cerr << kErrorTitle << ": " << failure.what() << '\n';
        return cli::kFailed;
    }
}
