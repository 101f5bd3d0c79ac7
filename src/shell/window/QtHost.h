#pragma once

#include "base/Host.h"
#include "shell/window/MainControls.h"

namespace morlik
{

/// The Host of a start with a window.
class QtHost : public Host
{
public:
    /// What the status, the caption and the check boxes belong to, once there is a window.
    void Attach(QMainWindow& window, MainControls& controls);

    void ShowMessage(const std::string& text, const std::string& title) override;
    /// The detail stands in small letters below the text.
    void ShowFailure(const std::string& text, const std::string& title,
                     const std::string& detail) override;
    /// At the foot of the window.
    void ShowHint(const std::string& text) override;
    bool Ask(const std::string& question, const std::string& title) override;
    void ShowOpen(FileDialog& dialog) override;
    void ShowSave(FileDialog& dialog) override;
    void ShowFolder(FileDialog& dialog) override;
    void SetEvent(const std::string& text) override;
    void SetProg(float percent) override;
    void GiveTurn() override;
    bool StopRequested() const override;
    std::string Caption() const override;
    void SetCaption(const std::string& text) override;
    void Beep() override;
    void OpenWebAddress(const std::string& address) override;
    bool SkyFix() const override;
    bool ExpSpr() const override;
    std::filesystem::path ProgramFolder() const override;
    std::filesystem::path StateFolder() const override;
    std::string ShortDate() const override;

private:
    QWidget* Parent() const;
    void ShowBox(const std::string& text, const std::string& title, const std::string& detail);

    QMainWindow* window_ = nullptr;
    MainControls* controls_ = nullptr;
};

/// A dialog's filter, descriptions and patterns in turn with "|" between, in Qt's form.
QString QtFilter(const std::string& filter);

} // namespace morlik
