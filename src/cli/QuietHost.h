#pragma once

#include "base/Files.h"
#include "cli/Commands.h"
#include "platform/ConsoleHost.h"
#include "shell/Session.h"

#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace morlik::cli
{

/// A Host that keeps the messages, for whoever prints them once the work is done.
class QuietHost : public ConsoleHost
{
public:
    explicit QuietHost(Choices choices = {}) : ConsoleHost(nowhere_, std::move(choices)) {}

    std::vector<std::string> Messages; ///< each as "TITLE: TEXT"
    std::function<void(float)> OnProg; ///< percent of the work

    void ShowMessage(const std::string& text, const std::string& title) override
    {
        Messages.push_back(title + ": " + text);
    }
    void SetProg(float percent) override
    {
        if (OnProg)
            OnProg(percent);
    }

private:
    std::ostringstream nowhere_;
};

/// Does a work that tells whether it was good, then prints its messages. Gives the exit status.
template <class Work>
int RunQuietly(const Streams& streams, Work work)
{
    QuietHost host;
    Session session(host);
    bool good = false;
    try {
        good = work(session);
    } catch (const ProgramEnd&) {
        good = false; // its message is there
    } catch (const FileFailure& failure) {
        host.ShowMessage(failure.what(), kAppTitle);
    }
    for (const std::string& message : host.Messages)
        streams.Errors << message << '\n';
    return good ? kGood : kFailed;
}

/// Reads a `main.sfx` that is what a command is about; one without a sound is told.
inline bool LoadMainSFX(Session& session, const std::string& file)
{
    if (!ReadMainSFX(file, session.MainSFX, session.Report))
        return false;
    if (session.MainSFX.MainSFXSamples.empty())
        session.Report.Message(file + " holds no sounds");
    return !session.MainSFX.MainSFXSamples.empty();
}

} // namespace morlik::cli
