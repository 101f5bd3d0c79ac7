// Loads: which of the three kinds of file it is, and how the controls are filled from it.

#include "base/Text.h"
#include "level/TR_Main.h"
#include "shell/Filters.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/Text.h"

#include <QDir>
#include <QFileInfo>
#include <QScopedValueRollback>
#include <algorithm>
#include <array>

namespace morlik
{

namespace
{

/// Lara types of Tomb Raider V by the entry of the list that names them.
constexpr std::array<std::int16_t, 5> kLaraTypes{0, 1, 3, 4, 6};

/// Endings of levels and projects.
constexpr std::array<const char*, 6> kEndings{".phd", ".tub", ".tr2", ".tr4", ".trc", ".prj"};

bool IsMainSFX(const std::string& path)
{
    return IsNamedMainSFX(ToPath(FileTitle(path)));
}

const char* LevelCaption(VersionCode version)
{
    switch (version) {
    case kTR1:
        return "Tomb Raider I level";
    case kTR1Gold:
        return "Tomb Raider I Gold level";
    case kTR2:
        return "Tomb Raider II level";
    case kTR3:
        return "Tomb Raider III level";
    case kTR4:
        return "Tomb Raider IV level";
    case kTR5:
    case kTR5Demo:
        return "Tomb Raider V level";
    case kNoLevel:
    case kMainSFXVersion:
        break;
    }
    return "No level loaded";
}

} // namespace

void Main_Frm::DoLoadTR()
{
    session_.FMLoad.Folder = session_.Settings.LevelFolder;
    ShowDialog("window/openFolder", session_.FMLoad, &Host::ShowOpen);
    LoadChosen();
}

/// Nobody has chosen a kind of file in a dialog here: what a hand has let go by mistake is told at
/// the foot.
void Main_Frm::LoadDropped(const QString& path)
{
    const auto name = ToPathText(path);
    const bool isOurs =
        IsMainSFX(name) || std::any_of(kEndings.begin(), kEndings.end(),
                                       [&](auto ending) { return EndsWithNoCase(name, ending); });
    if (isOurs)
        LoadAsChosen(path);
    else
        TellFoot(QFileInfo(path).fileName() + " is no level, project or main.sfx by its name.");
}

void Main_Frm::LoadAsChosen(const QString& path)
{
    session_.FMLoad.FileName =
        ToPathText(QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()));
    LoadChosen();
}

/// A cancel leaves the last name in the dialog, which loads that file again; without a name, at the
/// first dialog of a run, the program ends. So it does where its first file can't be read; later
/// what is on screen stays.
void Main_Frm::LoadChosen()
{
    const std::string path = session_.FMLoad.FileName;
    if (path.empty()) {
        End(0);
        throw ProgramEnd("no file was chosen");
    }
    TellFoot("");
    if (loadedFile_.empty()) {
        LoadFile(path);
        return;
    }
    const TrMainState state = session_.State;
    const std::string title = session_.LevelTitle;
    const bool areFramesOn = controls_.Frame1->isEnabled();
    try {
        if (LoadFile(path))
            return;
    } catch (const ProgramEnd&) {
        // its message was there
    }
    session_.State = state;
    session_.LevelTitle = title;
    session_.FMLoad.FileName = loadedFile_;
    for (QGroupBox* frame : {controls_.Frame1, controls_.Frame2, controls_.Frame4})
        frame->setEnabled(areFramesOn);
    TellFoot(FromText(FileTitle(path)) + " can't be read; what was opened before stays");
}

bool Main_Frm::LoadFile(const std::string& path)
{
    if (IsMainSFX(path)) {
        if (!LoadMainSFX())
            return false;
    } else {
        for (QGroupBox* frame : {controls_.Frame1, controls_.Frame2, controls_.Frame4})
            frame->setEnabled(true);
        if (!EndsWithNoCase(path, "prj"))
            LoadLevelFile();
        else if (!DoLoadPRJ(path))
            return false;
    }
    loadedFile_ = path;
    damagedFile_.clear();
    TellFoot(Opened());
    recent_.Add(FromPathText(path));
    FillRecentMenu();
    return true;
}

void Main_Frm::LoadLevelFile()
{
    const std::string path = session_.FMLoad.FileName;
    session_.LevelTitle = FileTitle(path);
    show();
    session_.Report.LogLine("Loading level");
    session_.Level = ReadTR(path, session_.State, session_.Report);
    session_.LevelFile = path;
    ResetChoice();
    ResetPictures();
    ShowLevelType();
    TakeVersion(session_);
    const VersionCode version = session_.Level.Version;
    controls_.SkyFix->setEnabled(version == kTR2 || version == kTR3);
    session_.Report.LogLine("Listing objects");
    FillObjects();
    if (version != kTR5) {
        for (QComboBox* list : {controls_.LaraType, controls_.Weather}) {
            list->setCurrentIndex(0);
            list->setEnabled(false);
        }
    }
    ListLevelSounds();
    controls_.ObjList->setFocus();
}

QString Main_Frm::Opened() const
{
    const QString name = FromText(FileTitle(session_.FMLoad.FileName));
    if (IsMainSFX(session_.FMLoad.FileName))
        return QString("Opened %1: %2 sounds").arg(name).arg(controls_.SndLst->count());
    if (session_.FMLoad.FileName == session_.ProjectFile)
        return QString("Opened %1:%2").arg(name, controls_.NumRooms->text());
    return {};
}

void Main_Frm::ShowLevelType()
{
    controls_.LevelType->setText(LevelCaption(session_.State.LevelVersion));
    if (session_.State.LevelVersion != kTR5)
        return;
    const std::int16_t weather = session_.Level.WeatherType;
    if (weather >= 0 && weather < controls_.Weather->count())
        controls_.Weather->setCurrentIndex(weather);
    controls_.LaraType->setEnabled(true);
    controls_.Weather->setEnabled(true);
    for (std::size_t i = 0; i < kLaraTypes.size(); ++i)
        if (kLaraTypes[i] == session_.Level.LaraType)
            controls_.LaraType->setCurrentIndex(static_cast<int>(i));
}

/// Levels of Tomb Raider II and III, and some of the extended engine of IV, have no samples of
/// their own.
void Main_Frm::ListLevelSounds()
{
    session_.Report.LogLine("Listing sounds");
    const bool hasSamples = !HasMainSFX(session_.Level);
    ListSounds(hasSamples ? LevelSounds(session_.Level) : std::vector<SoundEntry>());
    controls_.SndFrame->setEnabled(hasSamples);
    controls_.SndLst->SetNote(hasSamples ? "The level has no sounds"
                                         : "No sounds: they are in main.sfx");
    controls_.SndOpen->setVisible(!hasSamples);
}

void Main_Frm::OpenMainSFX()
{
    FileDialog dialog{.Filter = kMainSFXFilter,
                      .Folder = session_.LevelFile.substr(0, LastFolderEnd(session_.LevelFile))};
    ShowDialog("window/openFolder", dialog, &Host::ShowOpen);
    if (!dialog.FileName.empty())
        LoadAsChosen(FromPathText(dialog.FileName));
}

void Main_Frm::ListSounds(const std::vector<SoundEntry>& entries)
{
    controls_.SndLst->clear();
    for (const SoundEntry& entry : entries) {
        auto* item = new QListWidgetItem(FromText(entry.Text), controls_.SndLst);
        item->setData(Qt::UserRole, entry.Sample);
        item->setData(kNameRole, FromText(entry.Name));
        item->setToolTip(FromText(entry.Text)); // which the list may cut
    }
    controls_.FilterSounds();
}

bool Main_Frm::LoadMainSFX()
{
    if (!ReadMainSFX(session_.FMLoad.FileName, session_.MainSFX, session_.Report))
        return false;
    session_.State.LevelVersion = kMainSFXVersion;
    for (QGroupBox* frame : {controls_.Frame1, controls_.Frame2, controls_.Frame4})
        frame->setEnabled(false);
    controls_.SndOpen->hide();
    ListSounds(MainSFXSounds(session_.MainSFX));
    controls_.SndLst->SetNote("The main.sfx has no sounds");
    controls_.SndLst->setFocus();
    return true;
}

/// Reads what was opened of them in this run once more, and not behind what is there.
bool Main_Frm::ReloadMainSFX()
{
    MainSFXState again;
    for (const std::string& name : session_.MainSFX.FileNames)
        if (!ReadMainSFX(name, again, session_.Report))
            return false;
    session_.MainSFX = std::move(again);
    ListSounds(MainSFXSounds(session_.MainSFX));
    return true;
}

bool Main_Frm::DoLoadPRJ(const std::string& path)
{
    FileDialog& dialog = session_.FMLoad;
    if (path.empty()) {
        const QScopedValueRollback<std::string> filter(dialog.Filter, "PRJ files(*.prj)|*.prj");
        dialog.Folder = session_.Settings.LevelFolder;
        ShowDialog("window/openFolder", dialog, &Host::ShowOpen);
        if (dialog.FileName.empty())
            return false;
    }
    session_.LevelTitle = FileTitle(dialog.FileName);
    show();
    PRJData project = ReadPRJ(dialog.FileName, session_.State.LevelIsLoaded, session_.Report);
    if (project.Rooms.empty())
        return false;
    session_.ProjectData = std::move(project);
    ListRooms();
    session_.ProjectFile = dialog.FileName;
    controls_.ShowRooms();
    return true;
}

void Main_Frm::ListRooms()
{
    const PRJData& project = session_.ProjectData;
    controls_.NumRooms->setText(QString(" %1 Rooms").arg(project.NumRoomSlots));
    controls_.RoomList->clear();
    for (std::size_t i = 0; i < project.Rooms.size(); ++i) {
        const PRJRoom& room = project.Rooms[i];
        auto* item = new QListWidgetItem(room.State == -1 ? QString("Room %1").arg(i)
                                                          : QString("Empty room"),
                                         controls_.RoomList);
        item->setToolTip(FromText(room.Name.substr(0, room.Name.find('\0'))).toHtmlEscaped());
    }
}

void Main_Frm::ReloadFile()
{
    if (loadedFile_.empty())
        Refuse("Nothing was opened yet");
    else if (IsMainSFX(loadedFile_) && QFileInfo(FromPathText(loadedFile_)).isFile())
        TellFoot(ReloadMainSFX() ? "Read again" : "");
    else
        LoadKnown(FromPathText(loadedFile_));
}

void Main_Frm::LoadKnown(const QString& path)
{
    if (QFileInfo(path).isFile()) {
        LoadAsChosen(path);
        return;
    }
    recent_.Remove(path);
    FillRecentMenu();
    session_.Report.Message("Can't open " + Printable(ToPathText(path)) +
                            ": it is no longer there");
}

/// The file `step` places behind the level on screen among the levels of its folder, by name.
void Main_Frm::StepInFolder(int step)
{
    const QFileInfo loaded(FromPathText(damagedFile_.empty() ? session_.LevelFile : damagedFile_));
    const auto files = loaded.dir().entryInfoList({"*.phd", "*.tub", "*.tr2", "*.tr4", "*.trc"},
                                                  QDir::Files, QDir::Name | QDir::IgnoreCase);
    const auto at = files.indexOf(loaded) + step;
    if (session_.LevelFile.empty() || !files.contains(loaded))
        Refuse("There is no level whose folder could be gone through");
    else if (at < 0 || at >= files.size())
        Refuse(QString("This is the %1 level of its folder").arg(at < 0 ? "first" : "last"));
    else {
        damagedFile_ = ToPathText(files[at].filePath()); // the next step leads past it
        LoadKnown(files[at].filePath());
    }
}

void Main_Frm::FillRecentMenu()
{
    QMenu* menu = controls_.Mnu_Go_Recent;
    menu->clear();
    for (const QString& path : recent_.List()) {
        QString caption = path;
        caption.replace('&', "&&");
        // The menu is made anew by the load, so the load must wait until its entry has returned.
        connect(
            menu->addAction(caption), &QAction::triggered, this,
            [this, path] { Guard([&] { LoadKnown(path); }); }, Qt::QueuedConnection);
    }
    menu->setEnabled(!menu->isEmpty());
}

} // namespace morlik
