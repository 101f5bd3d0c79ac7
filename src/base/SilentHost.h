#pragma once

#include "base/Host.h"

#include <string>
#include <vector>

namespace morlik
{

/// The Host of a work that nobody watches: it keeps the messages, and answers what a run without a
/// window would.
class SilentHost : public Host
{
public:
    std::vector<std::string> Texts; ///< of the messages, without their titles

    void ShowMessage(const std::string& text, const std::string& /*title*/) override
    {
        Texts.push_back(text);
    }
    /// Nobody is there to be asked: a script has said what it wants with its command.
    bool Ask(const std::string& /*question*/, const std::string& /*title*/) override
    {
        return true;
    }
    void ShowOpen(FileDialog& /*dialog*/) override {}
    void ShowSave(FileDialog& /*dialog*/) override {}
    void ShowFolder(FileDialog& /*dialog*/) override {}

    void SetEvent(const std::string& /*text*/) override {}
    void SetProg(float /*percent*/) override {}
    void GiveTurn() override {}
    std::string Caption() const override { return {}; }
    void SetCaption(const std::string& /*text*/) override {}
    void Beep() override {}
    void OpenWebAddress(const std::string& /*address*/) override {}

    bool SkyFix() const override { return false; }
    bool ExpSpr() const override { return false; }

    std::filesystem::path ProgramFolder() const override { return {}; }
    std::filesystem::path StateFolder() const override { return {}; }
    std::string ShortDate() const override { return {}; }
};

} // namespace morlik
