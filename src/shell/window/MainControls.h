#pragma once

#include "shell/window/ListParts.h"
#include "shell/window/PicturePane.h"
#include "shell/window/SoundView.h"

#include <QAction>
#include <QActionGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QToolBar>

namespace morlik
{

/// The controls of the main window. Each member's name is the control's Qt object name too.
/// They are owned by the window.
struct MainControls
{
    /// Makes all controls as they are at the start and lays them out in `window`.
    explicit MainControls(QMainWindow& window);

    QToolBar* TB;
    QAction* TB_Open;
    QAction* TB_Save;
    QAction* TB_Moveables; ///< pressed: the list shows moveables; this is the mode
    QAction* TB_Statics;
    QAction* TB_Sprites;
    QAction* TB_Open_TR;
    QAction* TB_Open_PRJ;
    QAction* TB_Save_WAS;
    QAction* TB_Save_TGA;
    QAction* TB_Save_Gltf;
    QAction* TB_Save_PRJ;
    QAction* TB_Save_TR;

    QGroupBox* Frame2; ///< "Level"
    QLabel* LevelType;
    QComboBox* LaraType;
    QComboBox* Weather;

    QGroupBox* Frame4; ///< "Options"
    QCheckBox* TR5Kelder;
    QCheckBox* ExpSpr;
    QCheckBox* SkyFix;

    QGroupBox* Frame1; ///< "Objects"
    QLabel* ObjCount;  ///< such as "60 moveables"
    QLineEdit* ObjFilter;
    NotedList* ObjList;
    QLabel* Chosen; ///< what a choice of objects takes; shown while one is made
    QLabel* ObjectID;
    QLineEdit* ObjName;
    QPushButton* SaveID;

    QGroupBox* SndFrame; ///< "Sounds"
    QLabel* SndCount;
    QLineEdit* SndFilter;
    NotedList* SndLst;
    SoundView* SndView; ///< the wave of the selected sound
    QPushButton* SndSave;
    QPushButton* SndSaveAll;
    QPushButton* SndOpen; ///< shown where the sounds of a level are in `main.sfx`: opens one

    QSplitter* Lists;   ///< the objects, and the options with the sounds
    QWidget* Left;      ///< all of the above
    QSplitter* Columns; ///< that, and the pictures
    PicturePane* Pictures;

    QGroupBox* Frame3; ///< "Rooms", beyond the right edge of what is left of the pictures
    QListWidget* RoomList;
    QLabel* NumRooms;

    QLabel* Event;
    QProgressBar* Prog;
    QPushButton* Stop; ///< shown while something can be stopped; pressed, or Esc: it is to stop
    FootLabel* Foot;   ///< where the last set went, and hints

    QAction* Mnu_File_LoadTR;
    QAction* Mnu_File_LoadPRJ;
    QAction* Mnu_File_SaveWAD;
    QAction* Mnu_File_SaveTGA;
    QAction* Mnu_File_SaveGltf;
    QAction* Mnu_File_SavePRJ;
    QAction* Mnu_File_SaveTR;
    QAction* Mnu_File_Quit;
    QAction* Mnu_Edit_Move;
    QAction* Mnu_Edit_Static;
    QAction* Mnu_Edit_Sprite;
    QAction* Mnu_Edit_Find;   ///< goes to the filter of the list that is in use
    QAction* Mnu_Edit_Choose; ///< checked: the objects have boxes, and a save takes the ticked ones
    QAction* Mnu_View_Pictures;  ///< checked: the pane is there
    QActionGroup* Mnu_View_List; ///< how the object list looks: side of its pictures, 0 for none
    QMenu* Mnu_Go_Recent;
    QAction* Mnu_Go_Reload;
    QAction* Mnu_Go_Previous;
    QAction* Mnu_Go_Next;
    QAction* Mnu_Help_About;

    /// Shows the entries that hold the texts of the filters, and how many there are.
    void FilterObjects() const;
    void FilterSounds() const;
    /// Keeps `Frame3` beyond the right edge, where nothing of it can be seen.
    void PlaceRooms() const;
    /// What holds all that is left of the pictures but the foot.
    QWidget* Inner() const { return inner_; }
    /// Gives the rooms a tab beside the pictures.
    void ShowRooms() const;

private:
    void MakeMenu(QMainWindow& window);
    void MakeToolbar(QMainWindow& window);
    QWidget* MakeLevelFrame();
    QWidget* MakeOptionsFrame();
    QWidget* MakeObjectsFrame();
    QWidget* MakeSoundsFrame();
    void MakeRoomsFrame(QWidget* parent);
    void MakeFoot();
    void MakeViewMenu(QMainWindow& window);
    void LayOut(QMainWindow& window);
    void SetTabOrder() const;

    QWidget* inner_; ///< what is left of the pictures, without the foot
};

} // namespace morlik
