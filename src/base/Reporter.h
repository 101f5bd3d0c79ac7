#pragma once

#include "base/Host.h"
#include "base/PhaseTimes.h"
#include "base/TextLines.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace morlik
{

/// The end of the program, thrown after the user was told why. Caught in the mains and at the edge
/// of a window event.
class ProgramEnd : public std::runtime_error
{
public:
    explicit ProgramEnd(const std::string& why) : std::runtime_error(why) {}
};

/// The channels on which the work tells what it does: message boxes and status through the Host,
/// the log beside the program and the Info file of the running save.
class Reporter
{
public:
    explicit Reporter(Host& host) : host_(host) {}

    Host& TheHost() const { return host_; }

    /// One text to the log; `kEndLine` ends the line. Without an open log it goes nowhere.
    void LogLine(std::string_view text, std::int16_t flag = kEndLine);
    /// The same for the Info file.
    void InfoLine(std::string_view text, std::int16_t flag = kEndLine) { Info.Line(text, flag); }

    /// A message box with an OK button.
    void Message(const std::string& text, const std::string& title = kAppTitle);
    /// The message of a failure that ends the program, then its end.
    [[noreturn]] void Stop(const std::string& text, const std::string& title = kAppTitle);

    TextLines Log;
    TextLines Info;
    PhaseTimes Times; ///< where the time of the work goes

private:
    Host& host_;
};

} // namespace morlik
