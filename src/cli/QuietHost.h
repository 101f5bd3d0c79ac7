#pragma once

#include "base/Text.h"
#include "cli/Commands.h"
#include "platform/ConsoleHost.h"
#include "shell/Session.h"

#include <exception>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace morlik::cli
{

/// A Host that keeps the messages, for whoever prints them once the work is done; the hints stand
/// behind them.
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
    void ShowHint(const std::string& text) override { hints_.push_back(text); }
    void SetProg(float percent) override
    {
        if (OnProg)
            OnProg(percent);
    }

    /// Does a work that tells whether it was good. One that ends early was not; why is a message.
    template <class Work>
    bool Try(Work work)
    {
        bool good = false;
        try {
            good = work();
        } catch (const ProgramEnd&) {
            // its message is there
        } catch (const Interrupted&) {
            // which the command tells at its end
        } catch (const std::exception& failure) {
            ShowMessage(ReasonOf(failure), kErrorTitle);
        }
        Messages.insert(Messages.end(), hints_.begin(), hints_.end());
        hints_.clear();
        return good;
    }

private:
    std::vector<std::string> hints_;
    std::ostringstream nowhere_;
};

/// Does the work of a command in a session of its own, then prints its messages. Gives the exit
/// status.
template <class Work>
int RunQuietly(const Streams& streams, Work work)
{
    QuietHost host;
    Session session(host);
    const bool good = host.Try([&] {
        const MessageScope messages(session.Report);
        return work(session);
    });
    for (const std::string& message : host.Messages)
        streams.Errors << PrintableLines(message) << '\n';
    if (!good && InterruptScope::IsRequested()) {
        streams.Errors << "Stopped by the user\n";
        return kStopped;
    }
    return good ? kGood : kFailed;
}

} // namespace morlik::cli
