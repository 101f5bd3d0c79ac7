#include "tests/window/WindowRun.h"

#include <QDropEvent>
#include <QMimeData>

namespace morlik::test
{

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

WindowRun::WindowRun(const samples::LevelContent& level) : WindowRun()
{
    EXPECT_TRUE(Start(Write(level, LevelName(level.Game))));
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

bool WindowRun::Drop(const std::string& file, Qt::DropActions possible)
{
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(file))});
    QDragEnterEvent enter({10, 10}, possible, &mime, Qt::LeftButton, Qt::ShiftModifier);
    QDropEvent drop({10, 10}, possible, &mime, Qt::LeftButton, Qt::ShiftModifier);
    for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), &drop}) {
        event->setDropAction(Qt::MoveAction);
        QApplication::sendEvent(Window.get(), event);
    }
    EXPECT_EQ(enter.isAccepted(), drop.isAccepted());
    EXPECT_TRUE(!drop.isAccepted() || drop.dropAction() == Qt::CopyAction);
    return drop.isAccepted();
}

void WindowRun::Save(const char* command, const std::string& name)
{
    Host.SaveAnswers = {Folder.File(name)};
    if (Window->findChild<QPushButton*>(command) != nullptr)
        Click(command);
    else
        Trigger(command);
}

void WindowRun::ClickRow(QListWidget* list, int row)
{
    list->scrollToItem(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(row)).center());
}

Strings WindowRun::List(const char* name)
{
    Strings texts;
    const auto* list = Find<QListWidget>(name);
    for (int i = 0; i < list->count(); ++i)
        texts.push_back(list->item(i)->text().toStdString());
    return texts;
}

} // namespace morlik::test
