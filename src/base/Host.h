#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace morlik
{

/// Title of a message box that has none of its own.
inline constexpr const char* kAppTitle = "MORLIK";
/// Title of messages about a failure, where one is given.
inline constexpr const char* kErrorTitle = "MORLIK error";

/// A file dialog, as it is set up and as it comes back.
struct FileDialog
{
    std::string Filter{};   ///< descriptions and patterns in turn, separated by "|"
    std::string Folder{};   ///< where it starts; empty where the system chooses
    std::string FileName{}; ///< full path of the chosen file; a cancel leaves it as it was
    std::string Fallback{}; ///< where it starts while there is no `Folder`
    std::string Proposed{}; ///< the name, without a folder, that a dialog of a save begins with
    std::string Ending{};   ///< such as "was", for a name that is typed without one
};

/// The end of a work that the user asked to stop.
class Interrupted : public std::runtime_error
{
public:
    Interrupted() : std::runtime_error("Stopped by the user") {}
};

/// The one way to the outside: message boxes, status, options, folders, the clock.
/// The window, the console and the tests each have their own.
class Host
{
public:
    virtual ~Host() = default;

    /// A plain message box with an OK button; returns when the user has answered it.
    virtual void ShowMessage(const std::string& text, const std::string& title) = 0;
    /// The same with a line that tells more of a failure, such as its place in a file.
    virtual void ShowFailure(const std::string& text, const std::string& title,
                             const std::string& detail)
    {
        ShowMessage(text + "\n" + detail, title);
    }

    /// What helps with the message that comes next; where a Host has no place for it, only the log
    /// has it.
    virtual void ShowHint(const std::string& /*text*/) {}

    /// A question that is answered by yes or no; gives whether it was yes.
    virtual bool Ask(const std::string& question, const std::string& title) = 0;

    /// Asks for a file to open.
    virtual void ShowOpen(FileDialog& dialog) = 0;
    /// Asks for the name of a file to write.
    virtual void ShowSave(FileDialog& dialog) = 0;
    /// Asks for a folder to write into, which comes back as the file name.
    virtual void ShowFolder(FileDialog& dialog) = 0;

    /// Stage text at the foot of the window, "Ready." at rest.
    virtual void SetEvent(const std::string& text) = 0;
    /// Progress in percent, 0 to 100.
    virtual void SetProg(float percent) = 0;
    /// A turn for the window system, so that the controls repaint.
    virtual void GiveTurn() = 0;
    /// Whether the user asked to stop what is going on; looked at in the turns.
    virtual bool StopRequested() const { return false; }
    /// Caption of the main window.
    virtual std::string Caption() const = 0;
    virtual void SetCaption(const std::string& text) = 0;

    virtual void Beep() = 0;
    /// Opens an address with the desktop's handler.
    virtual void OpenWebAddress(const std::string& address) = 0;

    /// Whether the box "Update Horizon" is ticked.
    virtual bool SkyFix() const = 0;
    /// Whether the box "Export Sprites" is ticked.
    virtual bool ExpSpr() const = 0;

    /// The folder of the executable, where the data files stand.
    virtual std::filesystem::path ProgramFolder() const = 0;
    /// The user's folder for what a program keeps by itself, for when its own is not writable;
    /// empty where there is none.
    virtual std::filesystem::path StateFolder() const = 0;
    /// Today's date in the system's short form, without the time.
    virtual std::string ShortDate() const = 0;

protected:
    Host() = default;
    Host(const Host&) = default;
    Host(Host&&) = default;
    Host& operator=(const Host&) = default;
    Host& operator=(Host&&) = default;
};

} // namespace morlik
