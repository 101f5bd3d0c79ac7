// The window itself: its start and end, and which command each control gives. What a load does
// stands in Main_Load.cpp, the object list in Main_Browse.cpp and Main_Choose.cpp, the saves in
// Main_Save.cpp and Main_Gltf.cpp, the sounds in Main_Sounds.cpp.

#include "shell/window/Main_Frm.h"

#include "shell/Filters.h"
#include "shell/MORLIK_Main.h"
#include "shell/ObjectID_Mod.h"
#include "shell/Register_Mod.h"
#include "shell/window/Text.h"
#include "shell/window/ToolIcons.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QMouseEvent>
#include <QScreen>
#include <QShortcut>
#include <QToolTip>
#include <QUrl>
#include <QWindow>

namespace morlik
{

namespace
{

/// Gives whether the other side leaves it at a copy.
bool TakeAsCopy(QDropEvent& event)
{
    if (!event.possibleActions().testFlag(Qt::CopyAction))
        return false;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    return true;
}

} // namespace

Main_Frm::Main_Frm(Session& session, QSettings& store)
    : session_(session),
      host_(session.Report.TheHost()),
      store_(store),
      recent_(store),
      controls_(*this)
{
    setObjectName("Main_Frm");
    setWindowIcon(ProgramIcon());
    setAcceptDrops(true);
    session_.FMLoad.Filter = kOpenFilter;
    session_.FMSave.Filter = kSaveFilterAtRest;
    session_.FMSave.Folder = R"(C:\Program Files\Core Design\trle\graphics\wads)";
    ConnectCommands();
    ConnectToolbar();
    ConnectLists();
    ConnectChoice();
    ConnectPictures();
    FillRecentMenu();
}

bool Main_Frm::Start(Registry& registry, const QString& file)
{
    Guard([&] { FormLoad(registry, file); });
    return !ended_;
}

void Main_Frm::FormLoad(Registry& registry, const QString& file)
{
    Reporter& report = session_.Report;
    report.LogLine("Reading settings");
    session_.Settings = LoadSettings(registry, report);
    const VersionRecord version;
    const auto write = [&](const char* name, std::int16_t number) {
        RegWriteBinary(registry, kProgramKey, name, std::to_string(number), report);
    };
    write("MORLIKMinor", version.Minor);
    write("MORLIKMajor", version.Major);
    write("MORLIKRev", version.Revision);
    session_.TitleText = BuildVersionString(version);
    report.LogLine("Loading TR4Objects.dat");
    LoadObjectIDs("", session_.Names, report);
    RegWriteText(registry, kProgramKey, "MorlikFile",
                 FromPath(host_.ProgramFolder()) + "\\MORLIK.exe", report);
    RestoreLayout();
    show();
    if (file.isEmpty())
        DoLoadTR();
    else
        LoadAsChosen(file);
    const std::string& chosen = session_.FMLoad.FileName;
    session_.Settings.LevelFolder = chosen.substr(0, LastFolderEnd(chosen));
    SaveSettings(session_.Settings, registry, report);
}

void Main_Frm::Guard(const std::function<void()>& action)
{
    if (busy_) // what comes in the turns of a save must not change what is being saved
        return;
    try {
        action();
    } catch (const ProgramEnd&) {
        if (!ended_)
            End(1);
    } catch (const std::exception& failure) {
        session_.Report.Message(ReasonOf(failure), kErrorTitle);
        End(1);
    }
}

void Main_Frm::On(QAction* trigger, const std::function<void()>& action)
{
    connect(trigger, &QAction::triggered, this, [this, action] { Guard(action); });
}

void Main_Frm::End(int exitCode)
{
    exitCode_ = exitCode;
    ended_ = true;
    about_.reset();
    if (isVisible())
        KeepLayout();
    hide();
    QCoreApplication::exit(exitCode);
}

void Main_Frm::ConnectCommands()
{
    On(controls_.Mnu_File_LoadTR, [this] { DoLoadTR(); });
    On(controls_.Mnu_File_SaveWAD, [this] { DoSaveWAS(); });
    On(controls_.Mnu_File_SaveTGA, [this] { DoSaveTGA(); });
    On(controls_.Mnu_File_SaveGltf, [this] { DoSaveGltf(); });
    On(controls_.Mnu_File_Quit, [this] { End(0); });
    On(controls_.Mnu_Edit_Move, [this] { SwitchMode(true); });
    On(controls_.Mnu_Edit_Static, [this] { SwitchMode(false); });
    On(controls_.Mnu_Edit_Find, [this] {
        const bool isSounds = controls_.SndFrame->isAncestorOf(focusWidget()) ||
                              !controls_.Frame1->isEnabled(); // of a main.sfx
        QLineEdit* filter = isSounds ? controls_.SndFilter : controls_.ObjFilter;
        filter->setFocus();
        filter->selectAll();
    });
    On(controls_.Mnu_Go_Reload, [this] { ReloadFile(); });
    On(controls_.Mnu_Go_Previous, [this] { StepInFolder(-1); });
    On(controls_.Mnu_Go_Next, [this] { StepInFolder(1); });
    On(controls_.Mnu_Help_About, [this] { ShowAbout(); });
}

void Main_Frm::ConnectToolbar()
{
    On(controls_.TB_Open, [this] { DoLoadTR(); });
    On(controls_.TB_Open_TR, [this] { DoLoadTR(); });
    On(controls_.TB_Open_PRJ, [this] { DoLoadPRJ(""); });
    On(controls_.TB_Save, [this] { DoSaveWAS(); });
    On(controls_.TB_Save_WAS, [this] { DoSaveWAS(); });
    On(controls_.TB_Save_TGA, [this] { DoSaveTGA(); });
    On(controls_.TB_Save_Gltf, [this] { DoSaveGltf(); });
    On(controls_.TB_Moveables, [this] { ModeButton_Click(*controls_.TB_Moveables, true); });
    On(controls_.TB_Statics, [this] { ModeButton_Click(*controls_.TB_Statics, false); });
    On(controls_.TB_Sprites, [this] {
        controls_.TB_Sprites->setChecked(false);
        session_.Report.Message("Sorry, no sprite support yet");
    });
    const auto unfinished = [this] {
        session_.Report.Message("Sorry, this feature isn't completed yet.");
    };
    On(controls_.TB_Save_PRJ, unfinished);
}

void Main_Frm::ConnectLists()
{
    connect(controls_.ObjList, &QListWidget::itemSelectionChanged, this,
            [this] { Guard([this] { ObjList_Click(); }); });
    connect(controls_.ObjName, &QLineEdit::textChanged, this,
            [this](const QString& text) { Guard([&] { ObjName_Change(text); }); });
    controls_.ObjName->installEventFilter(this);
    controls_.Inner()->installEventFilter(this);
    connect(controls_.ObjName, &QLineEdit::inputRejected, this, [this] {
        QToolTip::showText(controls_.ObjName->mapToGlobal(QPoint(0, controls_.ObjName->height())),
                           "Names in the lists of the editor have no such letter");
    });
    connect(controls_.ObjFilter, &QLineEdit::textChanged, this,
            [this] { Guard([this] { controls_.FilterObjects(); }); });
    connect(controls_.SndFilter, &QLineEdit::textChanged, this,
            [this] { Guard([this] { controls_.FilterSounds(); }); });
    connect(controls_.SndLst, &QListWidget::itemSelectionChanged, this,
            [this] { Guard([this] { SndLst_Click(); }); });
    connect(controls_.SndLst, &QListWidget::itemDoubleClicked, this,
            [this] { Guard([this] { PlaySound(); }); });
    connect(new QShortcut(Qt::Key_Space, controls_.SndLst, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, [this] { Guard([this] { PlaySound(); }); });
    connect(controls_.SndSave, &QPushButton::clicked, this,
            [this] { Guard([this] { SndSave_Click(); }); });
    connect(controls_.SndSaveAll, &QPushButton::clicked, this,
            [this] { Guard([this] { SndSaveAll_Click(); }); });
    connect(controls_.SndOpen, &QPushButton::clicked, this,
            [this] { Guard([this] { OpenMainSFX(); }); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] {
        controls_.Stop->setChecked(true);
        controls_.SndView->Stop();
    });
    connect(controls_.SaveID, &QPushButton::clicked, this,
            [this] { TellFoot("The names last for this run; no file is changed."); });
}

void Main_Frm::TellFoot(const QString& text)
{
    controls_.Foot->Tell(text);
}

void Main_Frm::Refuse(const QString& why)
{
    host_.Beep();
    TellFoot(why);
}

void Main_Frm::ShowAbout()
{
    QWidget* focus = focusWidget(); // a window that is off loses it
    about_ = std::make_unique<About_Frm>(host_, [this, focus] {
        setEnabled(true);
        activateWindow();
        if (focus != nullptr)
            focus->setFocus();
    });
    setEnabled(false);
    about_->adjustSize();
    about_->move(frameGeometry().center() - about_->rect().center());
    about_->show();
    about_->windowHandle()->setTransientParent(windowHandle()); // stays in front
}

void Main_Frm::closeEvent(QCloseEvent* event)
{
    if (busy_ || !isEnabled()) {
        event->ignore();
        return;
    }
    session_.Report.Log.Abandon();
    End(exitCode_);
    event->accept();
}

/// A drop is a copy, whatever the user's keys ask for: behind a move the file manager deletes the
/// file.
void Main_Frm::dragEnterEvent(QDragEnterEvent* event)
{
    const auto urls = event->mimeData()->urls();
    if (!busy_ && urls.size() == 1 && QFileInfo(urls.front().toLocalFile()).isFile())
        TakeAsCopy(*event);
}

void Main_Frm::dropEvent(QDropEvent* event)
{
    const auto urls = event->mimeData()->urls();
    if (busy_ || urls.isEmpty() || !TakeAsCopy(*event)) { // the drag may have begun before a save
        event->ignore();
        return;
    }
    Guard([&] { LoadDropped(urls.front().toLocalFile()); });
}

bool Main_Frm::eventFilter(QObject* object, QEvent* event)
{
    // A click in the field marks the whole name, so that typing replaces it.
    if (object == controls_.ObjName && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        controls_.ObjName->selectAll();
    if (object == controls_.Inner() && event->type() == QEvent::Resize)
        controls_.PlaceRooms();
    return QMainWindow::eventFilter(object, event);
}

} // namespace morlik
