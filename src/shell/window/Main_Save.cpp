// The commands that write files: the object set and the texture sheet.

#include "base/FileIdentity.h"
#include "base/OutputFile.h"
#include "base/Text.h"
#include "picture/TGA_Mod.h"
#include "platform/Platform.h"
#include "set/ReadSet.h"
#include "shell/Filters.h"
#include "shell/SetFiles.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/Text.h"

#include <QMenuBar>
#include <QScopeGuard>

namespace morlik
{

namespace
{

/// Turns the window's commands off as long as it lives; the foot with its bar stays as it is.
class BusyScope
{
public:
    BusyScope(QMainWindow& window, MainControls& controls, bool& busy)
        : busy_(busy), focus_(window.focusWidget())
    {
        busy_ = true;
        for (QAction* action : window.findChildren<QAction*>())
            if (action->isEnabled())
                TurnOff(action);
        for (QWidget* widget : std::initializer_list<QWidget*>{
                 window.menuBar(), controls.TB, controls.Frame1, controls.Frame2, controls.Frame4,
                 controls.SndFrame, controls.Pictures->Save, controls.Pictures->Copy})
            if (widget->isEnabled())
                TurnOff(widget);
    }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;
    ~BusyScope()
    {
        for (const auto& turnOn : turnOn_)
            turnOn();
        if (focus_ != nullptr)
            focus_->setFocus();
        busy_ = false;
    }

private:
    template <class Control>
    void TurnOff(Control* control)
    {
        control->setEnabled(false);
        turnOn_.emplace_back([control] { control->setEnabled(true); });
    }

    bool& busy_;
    QWidget* focus_; ///< a control that is turned off loses the keys
    std::vector<std::function<void()>> turnOn_;
};

} // namespace

void Main_Frm::Work(const std::function<void()>& action)
{
    {
        const BusyScope scope(*this, controls_, busy_);
        const InterruptScope interrupts; // a save ends whole or leaves nothing
        action();
    }
    if (InterruptScope::IsRequested())
        End(kStoppedStatus);
}

bool Main_Frm::AskToSave(const char* filter)
{
    FileDialog& dialog = session_.FMSave;
    dialog.Filter = filter;
    dialog.FileName.clear();
    host_.ShowSave(dialog);
    return !dialog.FileName.empty();
}

/// Tells what must not be replaced, and asks about what may; the dialog has asked about the name
/// that was chosen in it.
bool Main_Frm::MayReplace(const std::vector<std::string>& files)
{
    TellFoot("");
    try {
        GuardInputs(InputsOf(session_), files);
    } catch (const FileFailure& failure) {
        session_.Report.Message(failure.what());
        return false;
    }
    const auto question = QuestionToReplace(files, session_.FMSave.FileName);
    if (question.empty() || host_.Ask(question, kAppTitle))
        return true;
    TellFoot("Nothing was saved.");
    return false;
}

void Main_Frm::DoSaveWAS()
{
    if (session_.State.LevelIsLoaded == 0) {
        host_.Beep();
        return;
    }
    if (session_.Objects && session_.Objects->Count() == 0) {
        host_.Beep();
        TellFoot("No object is chosen: tick those that the set is to have.");
        return;
    }
    FileDialog& dialog = session_.FMSave;
    dialog.Folder = session_.Settings.DestWADFolder;
    const bool chosen = AskToSave("WAS files (*.was)|*.was");
    dialog.Filter = kSaveFilterAtRest;
    // A name that is none of a set gets its message from the save.
    const bool isSet = EndsWithNoCase(dialog.FileName, ".was");
    if (!chosen || (isSet && !MayReplace(FilesOfSet(dialog.FileName, session_.Level.Version))))
        return;
    // The save may ask for the main.sfx of the game, which people keep with their levels.
    const std::string& level = session_.LevelFile;
    session_.FMLoad.Folder = level.substr(0, LastFolderEnd(level));
    const bool listsMainSFX = session_.State.LevelVersion == kMainSFXVersion;
    bool complete = false;
    Work([&] { complete = SaveLevel(session_, dialog.FileName); });
    if (listsMainSFX)
        ListSounds(MainSFXSounds(session_.MainSFX));
    TellFoot(complete ? "Saved " + FromPathText(SetNames(dialog.FileName).With("was"))
                      : QString("Not all was saved."));
}

void Main_Frm::DoSaveTGA()
{
    if (session_.State.LevelIsLoaded == 0) {
        host_.Beep();
        return;
    }
    FileDialog& dialog = session_.FMSave;
    const bool chosen = AskToSave("TGA files(*.tga)|*.tga");
    dialog.Filter = kSaveFilterAtRest;
    if (!chosen || !MayReplace({dialog.FileName}))
        return;
    bool complete = false;
    Work([&] { complete = SaveTGA(dialog.FileName, session_.Level, session_.Report); });
    TellFoot(complete ? "Saved " + FromPathText(dialog.FileName) : QString());
}

} // namespace morlik
