#include "tests/window/WindowRun.h"

namespace morlik::test
{

void WindowHost::Answer(FileDialog& dialog, std::deque<std::string>& answers)
{
    Dialogs.push_back(dialog);
    if (answers.empty())
        return;
    if (!answers.front().empty())
        dialog.FileName = answers.front();
    answers.pop_front();
}

WindowRun::WindowRun()
{
    Host.Folder = MORLIK_DATA_FOLDER;
    Program.Report.Log.Open(Folder.File("log"));
    Store = std::make_unique<QSettings>(QString::fromStdString(Folder.File("settings.ini")),
                                        QSettings::IniFormat);
    Recent = std::make_unique<RecentFiles>(*Store);
    Window = std::make_unique<Main_Frm>(Program, *Store);
    Host.Attach(*Window, Window->Controls());
}

WindowRun::~WindowRun() = default;

std::string WindowRun::Write(VersionCode game, const std::string& name)
{
    return Write(samples::MakeRichLevel(game), name);
}

std::string WindowRun::Write(const samples::LevelContent& level, const std::string& name)
{
    WriteWholeFile(Folder.File(name), samples::WriteLevel(level).Bytes);
    return Folder.File(name);
}

bool WindowRun::Start(const std::string& file)
{
    const bool started = Window->Start(Registry, QString::fromStdString(file));
    if (started) { // shortcuts go to the active window alone
        Window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Window.get()));
    }
    return started;
}

void WindowRun::Open(const std::string& file)
{
    Host.OpenAnswers.push_back(file);
    Trigger("Mnu_File_LoadTR");
}

std::vector<std::string> WindowRun::List(const char* name)
{
    std::vector<std::string> texts;
    const auto* list = Find<QListWidget>(name);
    for (int i = 0; i < list->count(); ++i)
        texts.push_back(list->item(i)->text().toStdString());
    return texts;
}

} // namespace morlik::test
