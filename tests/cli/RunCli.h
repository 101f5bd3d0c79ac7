#pragma once

#include "cli/Commands.h"

#include <sstream>
#include <string>
#include <vector>

namespace morlik::test
{

using Strings = std::vector<std::string>;

/// A command line that was carried out.
struct Ran
{
    int Status;
    std::string Out;
    std::string Errors;
};

inline Ran RunCli(const Strings& words, bool isTerminal = false)
{
    std::ostringstream out;
    std::ostringstream errors;
    const int status = cli::RunCommandLine(words, {out, errors, isTerminal});
    return {status, out.str(), errors.str()};
}

} // namespace morlik::test
