#pragma once

#include "base/SilentHost.h"
#include "platform/Platform.h"

#include <ostream>

namespace morlik
{

/// The Host of a start without a window: messages go to a stream, the status goes nowhere.
class ConsoleHost : public SilentHost
{
public:
    /// What a person would choose in the window.
    struct Choices
    {
        std::string MainSFX; ///< answer to the dialog for `main.sfx`; empty for a cancel
        bool UpdateHorizon = false;
        bool ExportSprites = false;
    };

    explicit ConsoleHost(std::ostream& messages) : messages_(messages) {}
    ConsoleHost(std::ostream& messages, Choices choices)
        : messages_(messages), choices_(std::move(choices))
    {
    }

    /// Writes a line with the title and the text; further lines of the text are set in.
    void ShowMessage(const std::string& text, const std::string& title) override;

    /// The one dialog of a run without a window asks for `main.sfx`.
    void ShowOpen(FileDialog& dialog) override;
    bool StopRequested() const override { return InterruptScope::IsRequested(); }

    bool SkyFix() const override { return choices_.UpdateHorizon; }
    bool ExpSpr() const override { return choices_.ExportSprites; }

    std::filesystem::path ProgramFolder() const override;
    std::filesystem::path StateFolder() const override;
    std::string ShortDate() const override;

private:
    std::ostream& messages_;
    Choices choices_;
};

} // namespace morlik
