#pragma once

#include "base/Host.h"

#include <ostream>

namespace morlik {

/// The Host of a start without a window: messages go to a stream, the status goes nowhere.
class ConsoleHost : public Host
{
public:
    explicit ConsoleHost(std::ostream& messages) : messages_(messages) {}

    /// Writes a line with the title and the text.
    void ShowMessage(const std::string& text, const std::string& title) override;

    void SetEvent(const std::string& /*text*/) override {}
    void SetProg(float /*percent*/) override {}
    void GiveTurn() override {}

    bool SkyFix() const override { return false; }

    std::filesystem::path ProgramFolder() const override;
    std::filesystem::path StateFolder() const override;
    std::string ShortDate() const override;

private:
    std::ostream& messages_;
};

} // namespace morlik
