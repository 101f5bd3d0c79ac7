#pragma once

#include "platform/ConsoleHost.h"

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

} // namespace morlik::cli
