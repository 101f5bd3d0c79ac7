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

#include <QFileInfo>
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

void Main_Frm::WorkToStop(const std::function<void()>& action)
{
    controls_.Stop->setChecked(false);
    controls_.Stop->show();
    const QScopeGuard hide([this] { controls_.Stop->hide(); });
    Work(action);
}

std::string Main_Frm::LevelStem() const
{
    return FromPath(ToPath(FileTitle(session_.LevelFile)).stem());
}

void Main_Frm::ShowDialog(const char* key, FileDialog& dialog, void (Host::*ask)(FileDialog&))
{
    const std::string before = dialog.FileName;
    dialog.Fallback = ToPathText(store_.value(key).toString());
    (host_.*ask)(dialog);
    if (dialog.FileName.empty() || dialog.FileName == before)
        return;
    const QString chosen = FromPathText(dialog.FileName);
    const auto folder = dialog.FileName.substr(0, LastFolderEnd(dialog.FileName));
    store_.setValue(key, QFileInfo(chosen).isDir() ? chosen : FromPathText(folder));
}

bool Main_Frm::AskToSave(const char* filter, const std::string& proposed, const char* ending)
{
    FileDialog& dialog = session_.FMSave;
    TellFoot("");
    dialog.Filter = filter;
    dialog.FileName.clear();
    dialog.Proposed = proposed;
    dialog.Ending = ending;
    ShowDialog("window/saveFolder", dialog, &Host::ShowSave);
    dialog.Filter = kSaveFilterAtRest;
    if (dialog.FileName.empty())
        TellFoot("Nothing was saved");
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
        TellFoot("Nothing was saved");
        return false;
    }
    const auto question = QuestionToReplace(files, session_.FMSave.FileName);
    if (question.empty() || host_.Ask(question, kAppTitle))
        return true;
    TellFoot("Nothing was saved");
    return false;
}

void Main_Frm::DoSaveWAS()
{
    if (session_.State.LevelIsLoaded == 0) {
        Refuse("There is no level to save: open one first");
        return;
    }
    if (session_.Objects && session_.Objects->Count() == 0) {
        Refuse("No object is chosen: tick those that the set is to have");
        return;
    }
    FileDialog& dialog = session_.FMSave;
    dialog.Folder = session_.Settings.DestWADFolder;
    const bool chosen = AskToSave("WAS files (*.was)|*.was", LevelStem() + ".was", "was");
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
    // The dialog of the next load keeps a file: only the first one of a run may end the program.
    if (session_.FMLoad.FileName.empty())
        session_.FMLoad.FileName = session_.LevelFile;
    TellSaved(complete);
}

void Main_Frm::TellSaved(bool isComplete)
{
    const SaveResult& result = session_.LastSave;
    QString text = "Saved " + FromPathText(SetNames(session_.FMSave.FileName).With("was"));
    if (!result.IsWritten)
        text = "Nothing was saved";
    else if (!isComplete)
        text += ", but not all of it";
    else if (result.LacksMainSFX)
        text += " without WAV files: no main.sfx was chosen";
    else if (result.MissingSamples != 0)
        text += QString(" without %1 of %2 sounds, which main.sfx or the level lacks")
                    .arg(result.MissingSamples)
                    .arg(result.NumSamples);
    TellFoot(text);
}

void Main_Frm::DoSaveTGA()
{
    if (session_.State.LevelIsLoaded == 0) {
        Refuse("There is no level to save: open one first");
        return;
    }
    const std::string& path = session_.FMSave.FileName;
    if (!AskToSave("TGA files(*.tga)|*.tga", LevelStem() + ".tga", "tga") || !MayReplace({path}))
        return;
    bool complete = false;
    Work([&] { complete = SaveTGA(path, session_.Level, session_.Report); });
    TellFoot(complete ? "Saved " + FromPathText(path) : QString("Nothing was saved"));
}

} // namespace morlik
