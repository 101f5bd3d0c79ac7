#pragma once

#include "base/Registry.h"
#include "convert/ObjectNeeds.h"
#include "gltf/SaveGltf.h"
#include "shell/Session.h"
#include "shell/ShownObjects.h"
#include "shell/Sounds.h"
#include "shell/window/About_Frm.h"
#include "shell/window/MainControls.h"
#include "shell/window/RecentFiles.h"

#include <QMainWindow>
#include <functional>
#include <memory>

namespace morlik
{

/// Under which a line of the sound list holds the name of its sound.
inline constexpr int kNameRole = Qt::UserRole + 1;

/// The program's window: a list of the level's objects, its properties, options and sounds, and
/// the commands. It works on the session; the outside is reached through the session's Host.
/// A failure that ends the program is caught at the edge of each event: the window closes, and
/// `ExitCode` is 1.
class Main_Frm : public QMainWindow
{
public:
    /// `store` keeps how the user left the window.
    explicit Main_Frm(Session& session, QSettings& store);

    /// The interactive start: settings, version values, catalogue, the window, and `file` or, where
    /// that is empty, the open dialog. Gives false when the program is to end at once.
    bool Start(Registry& registry, const QString& file);

    MainControls& Controls() { return controls_; }
    int ExitCode() const { return exitCode_; }

    /// Loads a file as if it had been chosen in the open dialog.
    void LoadAsChosen(const QString& path);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    /// Runs the action of an event; an end of the program in it ends the window.
    void Guard(const std::function<void()>& action);
    /// Calls `action` under guard when `trigger` is triggered.
    void On(QAction* trigger, const std::function<void()>& action);
    void End(int exitCode);

    void ConnectCommands();
    void ConnectToolbar();
    void ConnectLists();

    void FormLoad(Registry& registry, const QString& file);
    void DoLoadTR();
    void LoadChosen();
    void LoadLevelFile();
    /// These give whether there is something to show, and tell if not.
    bool LoadFile(const std::string& path);
    bool LoadMainSFX();
    bool DoLoadPRJ(const std::string& path);
    bool ReloadMainSFX();
    void OpenMainSFX();
    void LoadDropped(const QString& path);
    void ShowLevelType();
    void ListLevelSounds();
    /// What the foot says of a file that was just opened.
    QString Opened() const;
    void ListSounds(const std::vector<SoundEntry>& entries);
    void ListRooms();

    bool IsMoveableMode() const { return controls_.TB_Moveables->isChecked(); }
    void ModeButton_Click(QAction& button, bool moveables);
    void SwitchMode(bool moveables);
    void ShowMode(bool moveables);
    void FillObjects();
    void ObjList_Click();
    void ObjName_Change(const QString& text);
    /// Object id of an entry of the object list, by the current mode; nothing for no entry.
    std::optional<std::int32_t> IDOf(int row) const;

    void ConnectChoice();
    void ChooseObjects_Click();
    void ResetChoice();
    /// Which objects of the list's mode are chosen; only while there is a choice.
    std::vector<bool>& ChosenOfMode();
    void ShowChoice();
    void TellChoice();
    void ObjList_Check(const QListWidgetItem& item);
    /// Chooses among the entries that the list shows: `change` gives from what was chosen what is.
    void ChangeChoice(const std::function<bool(bool)>& change);
    void ShowChoiceMenu(const QPoint& at);

    /// The textures that the level's objects use; nothing where their meshes are damaged.
    const ObjectNeeds* Needs();

    void ConnectPictures();
    void RestoreLayout();
    void KeepLayout();
    void ShowPane(bool isShown);
    void ResetPictures();
    void FillPictures();
    std::optional<ObjectPlace> SelectedObject() const;
    void ShowSelected();
    /// Names of the objects that use a texture.
    QStringList UsersOf(std::int32_t texture);
    /// Side of the pictures in the object list, in points; 0 for names alone.
    int ThumbnailSide() const;
    void StartThumbnails();
    void DrawThumbnails();
    void DrawThumbnail(int row);
    void SavePicture();
    void CopyPicture();

    void DoSaveWAS();
    void TellSaved(bool isComplete);
    void DoSaveTGA();
    void DoSaveGltf();
    void SaveSelectedGltf();
    void SaveChosenGltf();
    GltfObject ToSave(const ObjectPlace& place) const;
    /// Runs the writing of glTF files, with the button that stops it. Gives whether all were
    /// written.
    bool SaveGltfFiles(const std::vector<GltfObject>& objects, const std::string& path,
                       bool isFolder);
    /// The WAV file of the selected sound; empty where it has none, nothing where none is selected.
    std::optional<std::span<const std::byte>> SelectedSound() const;
    void SndLst_Click();
    void PlaySound();
    void SndSave_Click();
    void SndSaveAll_Click();
    /// Runs the writing of sounds and says at the foot where they went, which is `done`. `write`
    /// gives whether all were written.
    void SaveSounds(const QString& done, const std::function<bool()>& write);
    /// Asks for a file to save; gives whether a name came back.
    bool AskToSave(const char* filter, const std::string& proposed, const char* ending);
    /// Runs an open dialog, or another one for a file; the next run of the program knows its
    /// folder.
    void ShowDialog(const char* key, FileDialog& dialog, void (Host::*ask)(FileDialog&));
    /// The name of the level's file without its ending, for the names of what is made of it.
    std::string LevelStem() const;
    /// Whether a save may write these files.
    bool MayReplace(const std::vector<std::string>& files);
    /// Runs long work with the window's commands off.
    void Work(const std::function<void()>& action);
    /// The same with the button that stops it.
    void WorkToStop(const std::function<void()>& action);
    /// Says at the foot where a file went, or why none did.
    void TellFoot(const QString& text);
    /// A beep, and why it comes.
    void Refuse(const QString& why);

    void ReloadFile();
    /// Loads a file that was known before; one that is gone is told and forgotten.
    void LoadKnown(const QString& path);
    void StepInFolder(int step);
    void FillRecentMenu();
    void ShowAbout();

    Session& session_;
    Host& host_;
    QSettings& store_;
    RecentFiles recent_;
    MainControls controls_;
    std::unique_ptr<About_Frm> about_;
    std::optional<ObjectNeeds> needs_;    ///< of the level, once a choice asked for them
    std::optional<ObjectChoice> choice_;  ///< that was made before choosing was turned off
    std::unique_ptr<ShownObjects> shown_; ///< of the level
    bool arePicturesStale_ = false;       ///< the pane doesn't show them yet
    QTimer thumbnails_;
    int nextThumbnail_ = 0;   ///< row that is drawn next
    std::string loadedFile_;  ///< the file that was opened last, for reload
    std::string damagedFile_; ///< the last step in the folder led to it; empty where it was good
    bool busy_ = false;
    bool ended_ = false;
    int exitCode_ = 0;
};

} // namespace morlik
