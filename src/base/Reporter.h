#pragma once

#include "base/Host.h"
#include "base/PhaseTimes.h"
#include "base/TextLines.h"

#include <exception>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace morlik
{

/// The end of the program, thrown after the user was told why. Caught in the mains and at the edge
/// of a window event.
class ProgramEnd : public std::runtime_error
{
public:
    explicit ProgramEnd(const std::string& why) : std::runtime_error(why) {}
};

/// What to tell of a failure that only a main or a window event catches. A text of its own for
/// missing memory; nothing is allocated.
const char* ReasonOf(const std::exception& failure);

class DeferredReports;

/// The channels on which the work tells what it does: message boxes and status through the Host,
/// the log beside the program and the Info file of the running save.
class Reporter
{
public:
    explicit Reporter(Host& host) : host_(host) {}

    Host& TheHost() const { return host_; }

    /// One text to the log; `kEndLine` ends the line. Without an open log it goes nowhere. A line
    /// break in it can't end the line: it may come from a name.
    void LogLine(std::string_view text, std::int16_t flag = kEndLine);
    /// The same for the Info file.
    void InfoLine(std::string_view text, std::int16_t flag = kEndLine) { Info.Line(text, flag); }

    /// A message box with an OK button. `detail` tells more, such as the place in a file; it goes
    /// to the log and where the Host has room for it.
    void Message(const std::string& text, const std::string& title = kAppTitle,
                 const std::string& detail = {});
    /// What helps with a message that comes next, or is worth to know of a good file: to the log,
    /// and where the Host has a place for it beside its boxes.
    void Hint(const std::string& text);
    /// The message of a failure that ends the program, then its end.
    [[noreturn]] void Stop(const std::string& text, const std::string& title = kAppTitle,
                           const std::string& detail = {});
    /// A message that ends in a name. All with the same text are of one kind, see `MessageScope`.
    void MessageOf(const std::string& text, const std::string& name);

    TextLines Log;
    TextLines Info;
    PhaseTimes Times; ///< where the time of the work goes

private:
    friend class MessageScope;
    friend class DeferredReports;

    /// Tells a report, in its turn where reports are deferred.
    void Tell(const std::function<void()>& tell);

    void Show(const std::string& kind, const std::string& text, const std::string& title,
              const std::string& detail);
    void LogMessage(const std::string& text, const std::string& detail);
    void ShowBox(const std::string& text, const std::string& title, const std::string& detail);
    /// Tells how many messages were held back, if any were.
    void TellHeldBack();

    Host& host_;
    DeferredReports* deferred_ = nullptr;
    int scopes_ = 0;                          ///< loads and saves that go on
    std::map<std::string, std::size_t> told_; ///< messages of them by kind
    std::size_t heldBack_ = 0;
};

/// One load or save. A damaged level may have a message for each of its thousands of textures: of
/// one kind, which is the same text but for its numbers, the first ones are shown, and the end of
/// the scope, or the message that ends the program, tells how many more there were. The log gets
/// them all. A scope in a scope belongs to the outer one.
class MessageScope
{
public:
    static constexpr std::size_t kMostOfAKind = 20;

    explicit MessageScope(Reporter& report) : report_(report) { ++report_.scopes_; }
    MessageScope(const MessageScope&) = delete;
    MessageScope& operator=(const MessageScope&) = delete;
    ~MessageScope();

private:
    Reporter& report_;
};

/// Defers what a trial reports, from its start to its end: only then one knows whether it counts.
class DeferredReports
{
public:
    explicit DeferredReports(Reporter& report);
    DeferredReports(const DeferredReports&) = delete;
    DeferredReports& operator=(const DeferredReports&) = delete;
    ~DeferredReports() { End(); }

    /// From here on reports are told at once again.
    void End();
    /// The same, and tells what was deferred. Else nobody learns of it.
    void Tell();
    /// Whether it was told, be it that there was too much to keep.
    bool WasTold() const { return wasTold_; }

private:
    friend class Reporter;
    static constexpr std::size_t kMost = 4096;

    void Add(std::function<void()> tell);

    Reporter& report_;
    std::vector<std::function<void()>> reports_;
    bool wasTold_ = false;
};

} // namespace morlik
