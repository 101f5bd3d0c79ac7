#pragma once

#include "shell/window/Main_Frm.h"
#include "shell/window/QtHost.h"
#include "tests/support/Conversion.h"
#include "tests/support/MemoryRegistry.h"

#include <QTest>
#include <deque>
#include <functional>
#include <memory>

namespace morlik::test
{

/// The window's own Host, but for the dialogs and message boxes, which are answered by a script.
class WindowHost : public QtHost
{
public:
    Strings Messages; ///< each as "TITLE: TEXT"
    Strings Details;  ///< of the failures among them
    std::deque<std::string> OpenAnswers;
    std::deque<std::string> SaveAnswers;
    Strings Questions;
    bool AnswersYes = true;
    std::vector<FileDialog> Dialogs; ///< as they were set up
    Strings WebAddresses;
    int Beeps = 0;
    std::string Folder;
    std::function<void()> OnTurn; ///< what the window system does in a turn

    void ShowMessage(const std::string& text, const std::string& title) override
    {
        Messages.push_back(title + ": " + text);
    }
    void ShowFailure(const std::string& text, const std::string& title,
                     const std::string& detail) override
    {
        ShowMessage(text, title);
        Details.push_back(detail);
    }
    bool Ask(const std::string& question, const std::string& /*title*/) override
    {
        Questions.push_back(question);
        return AnswersYes;
    }
    void ShowOpen(FileDialog& dialog) override
    {
        Dialogs.push_back(dialog);
        TakeAnswer(dialog, OpenAnswers);
    }
    void ShowSave(FileDialog& dialog) override
    {
        Dialogs.push_back(dialog);
        TakeAnswer(dialog, SaveAnswers);
    }
    void ShowFolder(FileDialog& dialog) override { ShowSave(dialog); }
    void Beep() override { ++Beeps; }
    void OpenWebAddress(const std::string& address) override { WebAddresses.push_back(address); }
    void GiveTurn() override
    {
        if (OnTurn)
            OnTurn();
        QtHost::GiveTurn();
    }
    std::filesystem::path ProgramFolder() const override { return Folder; }
};

/// A run of the window in a folder of its own.
class WindowRun
{
public:
    WindowRun();
    /// Started with a level, or the rich sample of a game, under its `LevelName`.
    explicit WindowRun(const samples::LevelContent& level);
    explicit WindowRun(VersionCode game) : WindowRun(samples::MakeRichLevel(game)) {}

    /// Writes a level, the rich sample of a game, or any bytes into the folder.
    std::string Write(const samples::LevelContent& level, const std::string& name)
    {
        return Folder.Write(name, samples::WriteLevel(level).Bytes);
    }
    std::string Write(VersionCode game, const std::string& name)
    {
        return Write(samples::MakeRichLevel(game), name);
    }
    std::string Write(std::span<const std::byte> bytes, const std::string& name)
    {
        return Folder.Write(name, bytes);
    }

    /// Starts the window with a file as its argument.
    bool Start(const std::string& file);
    /// Chooses a file in the open dialog of the menu.
    void Open(const std::string& file);
    /// Drops a file where the file manager proposes a move. Gives whether it is taken, as a copy.
    bool Drop(const std::string& file, Qt::DropActions possible = Qt::CopyAction);
    /// Triggers an action or clicks a button, and answers the dialog of a save with a file of the
    /// folder.
    void Save(const char* command, const std::string& name);

    /// A control by its name; the test fails where there is none.
    template <class Control>
    Control* Find(const char* name)
    {
        auto* control = Window->findChild<Control*>(name);
        if (control == nullptr)
            ADD_FAILURE() << "no control " << name;
        return control;
    }
    void Trigger(const char* action) { Find<QAction>(action)->trigger(); }
    void Click(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    bool IsOn(const char* control) { return Find<QWidget>(control)->isEnabled(); }
    QString Label(const char* name) { return Find<QLabel>(name)->text(); }
    /// All of what the foot tells.
    std::string Told() { return Find<QLabel>("Foot")->toolTip().toStdString(); }
    /// Clicks an entry of a list.
    static void ClickRow(QListWidget* list, int row);
    std::string Title() const { return Window->windowTitle().toStdString(); }
    /// The texts of a list.
    Strings List(const char* name);

    TempFolder Folder;
    MemoryRegistry Registry;
    WindowHost Host;
    Session Program{Host};
    std::unique_ptr<QSettings> Store;
    std::unique_ptr<RecentFiles> Recent;
    std::unique_ptr<Main_Frm> Window;
};

} // namespace morlik::test
