#pragma once

#include "base/Reporter.h"

#include <cstdint>
#include <string>

namespace morlik
{

/// The program's version record.
struct VersionRecord
{
    std::int16_t Major = 1;
    std::int16_t Minor = 7;
    std::int16_t Revision = 0; ///< above 100: a beta, counted from 101
};

/// Opens the log of this run, with its three header lines, as "MORLIK.log" in the program's
/// folder or, where that can't be written, in the user's state folder. Where neither can, the
/// program ends with a message. A place where it would replace `input`, the file that this run is
/// about, counts as one that can't be written.
void OpenLog(Reporter& report, const std::string& input = {});

/// Opens the log at `path`. `FileFailure` if it can't be created.
void OpenLogFile(const std::string& path, Reporter& report);

/// Writes the header lines of a log that was just opened.
void BeginLog(Reporter& report);

/// The text that window captions begin with, such as "MORLIK 1.7".
std::string BuildVersionString(const VersionRecord& version);

} // namespace morlik
