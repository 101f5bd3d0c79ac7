#include "shell/window/MainControls.h"

#include "shell/window/ToolIcons.h"

#include <QHBoxLayout>
#include <QMenuBar>
#include <QRegularExpressionValidator>
#include <QToolButton>
#include <QVBoxLayout>

namespace morlik
{

namespace
{

/// The inner size of the window was laid out in twips, 15 to a pixel of a screen with 96 dots to
/// the inch: 7050 by 8250.
constexpr int kWidth = 7050 / 15;
constexpr int kHeight = 8250 / 15;
constexpr int kRoomsLeft = 7080 / 15;

template <class Control, class... Arguments>
Control* Make(const char* name, Arguments&&... arguments)
{
    auto* control = new Control(std::forward<Arguments>(arguments)...);
    control->setObjectName(name);
    return control;
}

QAction* MakeAction(QMenu* menu, const char* name, const char* caption, bool enabled = true,
                    const QKeySequence& shortcut = {})
{
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    action->setEnabled(enabled);
    action->setShortcut(shortcut);
    return action;
}

QMenu* MakeMenuOf(QMenuBar* bar, const char* name, const char* caption)
{
    QMenu* menu = bar->addMenu(caption);
    menu->setObjectName(name);
    return menu;
}

QLineEdit* MakeFilter(const char* name)
{
    auto* filter = Make<QLineEdit>(name);
    filter->setPlaceholderText("Filter");
    filter->setClearButtonEnabled(true);
    filter->setToolTip("Show only the entries that hold this text");
    filter->setAcceptDrops(false); // a dropped file is for the window
    return filter;
}

/// A button of the toolbar that opens `menu` beside its own command.
QAction* MakeMenuButton(QToolBar* bar, const char* name, ToolPicture picture, const char* tip,
                        QMenu* menu)
{
    auto* action = Make<QAction>(name, ToolIcon(picture), QString(tip), bar);
    action->setToolTip(tip);
    action->setMenu(menu);
    bar->addAction(action);
    if (auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action)))
        button->setPopupMode(QToolButton::MenuButtonPopup);
    return action;
}

QAction* MakeCheckButton(QToolBar* bar, const char* name, ToolPicture picture, const char* tip,
                         bool pressed)
{
    auto* action = Make<QAction>(name, ToolIcon(picture), QString(tip), bar);
    action->setToolTip(tip);
    action->setCheckable(true);
    action->setChecked(pressed);
    bar->addAction(action);
    return action;
}

/// Such as "60 moveables", or "3 of 60 moveables" where a filter hides some.
void TellCount(QLabel& label, const NotedList& list, const QString& kind)
{
    const int all = list.count();
    const int shown = list.NumShown();
    const QString kinds = all == 1 ? kind : kind + (kind.endsWith('h') ? "es" : "s");
    label.setText((shown == all ? QString() : QString("%1 of ").arg(shown)) +
                  QString("%1 %2").arg(all).arg(kinds));
}

} // namespace

MainControls::MainControls(QMainWindow& window)
{
    window.setWindowTitle("Morlik 1.7");
    MakeMenu(window);
    MakeToolbar(window);
    LayOut(window);
    SetTabOrder();
    window.resize(kWidth, kHeight + window.menuBar()->sizeHint().height());
    PlaceRooms();
}

void MainControls::MakeMenu(QMainWindow& window)
{
    QMenu* file = MakeMenuOf(window.menuBar(), "Mnu_File", "&File");
    Mnu_File_LoadTR = MakeAction(file, "Mnu_File_LoadTR", "&Load TR", true, QKeySequence::Open);
    Mnu_File_LoadPRJ = MakeAction(file, "Mnu_File_LoadPRJ", "Load &PRJ", false);
    file->addSeparator()->setObjectName("Mnu_File_Line1");
    Mnu_File_SaveWAD = MakeAction(file, "Mnu_File_SaveWAD", "&Save WAD", true, QKeySequence::Save);
    Mnu_File_SaveTGA = MakeAction(file, "Mnu_File_SaveTGA", "Save T&GA");
    Mnu_File_SaveGltf =
        MakeAction(file, "Mnu_File_SaveGltf", "Save glT&F…", true, QKeySequence("Ctrl+G"));
    Mnu_File_SavePRJ = MakeAction(file, "Mnu_File_SavePRJ", "Save P&RJ", false);
    Mnu_File_SaveTR = MakeAction(file, "Mnu_File_SaveTR", "Save &TR", false);
    file->addSeparator()->setObjectName("Mnu_File_Line2");
    Mnu_File_Quit = MakeAction(file, "Mnu_File_Quit", "&Quit", true, QKeySequence("Ctrl+Q"));

    QMenu* edit = MakeMenuOf(window.menuBar(), "Mnu_Edit", "&Edit");
    Mnu_Edit_Move = MakeAction(edit, "Mnu_Edit_Move", "&Moveable Mode");
    Mnu_Edit_Static = MakeAction(edit, "Mnu_Edit_Static", "&Static Mesh Mode");
    Mnu_Edit_Sprite = MakeAction(edit, "Mnu_Edit_Sprite", "S&prite Mode", false);
    for (QAction* mode : {Mnu_Edit_Move, Mnu_Edit_Static, Mnu_Edit_Sprite})
        mode->setCheckable(true);
    Mnu_Edit_Move->setChecked(true);
    edit->addSeparator()->setObjectName("Mnu_Edit_Line1");
    Mnu_Edit_Find = MakeAction(edit, "Mnu_Edit_Find", "&Filter", true, QKeySequence::Find);
    Mnu_Edit_Choose =
        MakeAction(edit, "Mnu_Edit_Choose", "&Choose Objects", true, QKeySequence("Ctrl+B"));
    Mnu_Edit_Choose->setCheckable(true);

    MakeViewMenu(window);
    QMenu* go = MakeMenuOf(window.menuBar(), "Mnu_Go", "&Go");
    Mnu_Go_Recent = go->addMenu("&Recent Files");
    Mnu_Go_Recent->setObjectName("Mnu_Go_Recent");
    Mnu_Go_Reload = MakeAction(go, "Mnu_Go_Reload", "Re&load", true, QKeySequence("F5"));
    Mnu_Go_Previous =
        MakeAction(go, "Mnu_Go_Previous", "&Previous Level in Folder", true, QKeySequence("F6"));
    Mnu_Go_Next = MakeAction(go, "Mnu_Go_Next", "&Next Level in Folder", true, QKeySequence("F7"));

    QMenu* help = MakeMenuOf(window.menuBar(), "Mnu_Help", "&Help");
    Mnu_Help_About = MakeAction(help, "Mnu_Help_About", "&About", true, QKeySequence("F1"));
}

void MainControls::MakeViewMenu(QMainWindow& window)
{
    constexpr int kSmall = 48;
    constexpr int kLarge = 112;
    QMenu* view = MakeMenuOf(window.menuBar(), "Mnu_View", "&View");
    Mnu_View_Pictures =
        MakeAction(view, "Mnu_View_Pictures", "&Pictures", true, QKeySequence("F9"));
    Mnu_View_Pictures->setCheckable(true);
    view->addSeparator()->setObjectName("Mnu_View_Line1");
    Mnu_View_List = new QActionGroup(&window);
    const auto add = [&](const char* name, const char* caption, int side) {
        QAction* action = Mnu_View_List->addAction(MakeAction(view, name, caption));
        action->setCheckable(true);
        action->setChecked(side == 0);
        action->setData(side);
    };
    add("Mnu_View_Names", "&Names", 0);
    add("Mnu_View_Small", "&Small Pictures", kSmall);
    add("Mnu_View_Large", "&Large Pictures", kLarge);
}

void MainControls::MakeToolbar(QMainWindow& window)
{
    TB = Make<QToolBar>("TB", "Toolbar", &window);
    TB->setMovable(false);
    TB->setIconSize({16, 16});
    // The window's own menu would hide the toolbar, which holds the mode.
    window.setContextMenuPolicy(Qt::NoContextMenu);
    window.addToolBar(TB);

    auto* open = new QMenu(TB);
    TB_Open_TR = MakeAction(open, "TB_Open_TR", "Open TR");
    TB_Open_PRJ = MakeAction(open, "TB_Open_PRJ", "Open PRJ", false);
    TB_Open = MakeMenuButton(TB, "TB_Open", ToolPicture::Open, "Open", open);

    auto* save = new QMenu(TB);
    TB_Save_WAS = MakeAction(save, "TB_Save_WAS", "Save WAS");
    TB_Save_TGA = MakeAction(save, "TB_Save_TGA", "Save TGA");
    TB_Save_Gltf = MakeAction(save, "TB_Save_Gltf", "Save glTF…");
    TB_Save_PRJ = MakeAction(save, "TB_Save_PRJ", "Save PRJ", false);
    TB_Save_TR = MakeAction(save, "TB_Save_TR", "Save TR", false);
    TB_Save = MakeMenuButton(TB, "TB_Save", ToolPicture::Save, "Save", save);

    TB->addSeparator();
    TB_Moveables =
        MakeCheckButton(TB, "TB_Moveables", ToolPicture::Moveables, "Moveable Mode", true);
    TB_Statics = MakeCheckButton(TB, "TB_Statics", ToolPicture::Statics, "Static Mode", false);
    TB_Sprites = MakeCheckButton(TB, "TB_Sprites", ToolPicture::Sprites, "Sprite Mode", false);
}

QWidget* MainControls::MakeLevelFrame()
{
    Frame2 = Make<QGroupBox>("Frame2", "Level");
    LevelType = Make<QLabel>("LevelType", "No level loaded");
    LaraType = Make<QComboBox>("LaraType");
    LaraType->addItems(
        {"Normal Lara", "Young Lara", "Catsuit Lara", "Diving Suit", "Invisible Lara"});
    Weather = Make<QComboBox>("Weather");
    Weather->addItems({"No weather", "Rain", "Snow"});
    auto* row = new QHBoxLayout(Frame2);
    row->addWidget(LevelType, 1);
    row->addWidget(LaraType);
    row->addWidget(Weather);
    return Frame2;
}

QWidget* MainControls::MakeOptionsFrame()
{
    Frame4 = Make<QGroupBox>("Frame4", "Options");
    TR5Kelder = Make<QCheckBox>("TR5Kelder", "Make TR5 compatible\nwith TRKelder");
    TR5Kelder->setChecked(true);
    TR5Kelder->setEnabled(false);
    ExpSpr = Make<QCheckBox>("ExpSpr", "Export Sprites");
    ExpSpr->setEnabled(false);
    SkyFix = Make<QCheckBox>("SkyFix", "&Update Horizon");
    SkyFix->setToolTip("This will update the TR2&3 horizon to make the clouds visible when using "
                       "it in TR4 levels");
    auto* column = new QVBoxLayout(Frame4);
    for (QCheckBox* box : {TR5Kelder, ExpSpr, SkyFix})
        column->addWidget(box);
    return Frame4;
}

QWidget* MainControls::MakeObjectsFrame()
{
    Frame1 = Make<QGroupBox>("Frame1", "Objects");
    ObjCount = Make<QLabel>("ObjCount");
    ObjFilter = MakeFilter("ObjFilter");
    ObjList = Make<NotedList>("ObjList");
    ObjList->setContextMenuPolicy(Qt::CustomContextMenu);
    ObjList->SetNote("No level is loaded");
    Chosen = Make<QLabel>("Chosen");
    Chosen->setTextFormat(Qt::PlainText);
    Chosen->setWordWrap(true);
    Chosen->hide();
    ObjectID = Make<QLabel>("ObjectID", "ID 0");
    ObjName = Make<QLineEdit>("ObjName");
    ObjName->setEnabled(false);
    ObjName->setAcceptDrops(false);
    ObjName->setToolTip("Change the name of this object");
    // Names in the lists of sets are of Western letters.
    ObjName->setValidator(
        new QRegularExpressionValidator(QRegularExpression("[\\x{0}-\\x{ff}]*"), ObjName));
    SaveID = Make<QPushButton>("SaveID", "Write &IDs");
    SaveID->setToolTip("Write the object names.");
    auto* row = new QHBoxLayout;
    row->addWidget(ObjectID, 1);
    row->addWidget(SaveID);
    auto* column = new QVBoxLayout(Frame1);
    column->addWidget(ObjCount);
    column->addWidget(ObjFilter);
    column->addWidget(ObjList, 1);
    column->addWidget(Chosen);
    column->addLayout(row);
    column->addWidget(ObjName);
    return Frame1;
}

QWidget* MainControls::MakeSoundsFrame()
{
    SndFrame = Make<QGroupBox>("SndFrame", "Sounds");
    SndCount = Make<QLabel>("SndCount");
    SndFilter = MakeFilter("SndFilter");
    SndLst = Make<NotedList>("SndLst");
    SndLst->SetNote("No level is loaded");
    SndLst->setToolTip("Space or a double-click plays a sound, Escape stops it");
    SndView = Make<SoundView>("SndView");
    SndSave = Make<QPushButton>("SndSave", "Sa&ve");
    SndSaveAll = Make<QPushButton>("SndSaveAll", "Save &All");
    auto* row = new QHBoxLayout;
    row->addWidget(SndSave);
    row->addWidget(SndSaveAll);
    auto* column = new QVBoxLayout(SndFrame);
    column->addWidget(SndCount);
    column->addWidget(SndFilter);
    column->addWidget(SndLst, 1);
    column->addWidget(SndView);
    column->addLayout(row);
    return SndFrame;
}

void MainControls::MakeRoomsFrame(QWidget* parent)
{
    Frame3 = Make<QGroupBox>("Frame3", "Rooms", parent);
    RoomList = Make<QListWidget>("RoomList");
    NumRooms = Make<QLabel>("NumRooms", "0 Rooms");
    auto* column = new QVBoxLayout(Frame3);
    column->addWidget(RoomList, 1);
    column->addWidget(NumRooms);
    // Nothing of it can be seen, so the Tab key must not go there.
    RoomList->setFocusPolicy(Qt::NoFocus);
}

void MainControls::MakeFoot()
{
    Event = Make<QLabel>("Event", "Ready.");
    Prog = Make<QProgressBar>("Prog");
    Prog->setRange(0, 100);
    Prog->setValue(0);
    Prog->setTextVisible(false);
    Stop = Make<QPushButton>("Stop", "Stop");
    Stop->setCheckable(true);
    Stop->hide();
    Foot = Make<FootLabel>("Foot");
}

void MainControls::LayOut(QMainWindow& window)
{
    inner_ = new QWidget;
    Lists = Make<QSplitter>("Lists");
    Lists->setChildrenCollapsible(false);
    const auto addColumn = [this](int stretch) {
        auto* column = new QWidget;
        Lists->addWidget(column);
        Lists->setStretchFactor(Lists->count() - 1, stretch);
        auto* layout = new QVBoxLayout(column);
        layout->setContentsMargins({});
        return layout;
    };
    QVBoxLayout* left = addColumn(2);
    QVBoxLayout* right = addColumn(1);
    auto* whole = new QVBoxLayout(inner_);
    whole->addWidget(MakeLevelFrame());
    whole->addWidget(Lists, 1);
    left->addWidget(MakeObjectsFrame(), 1);
    right->addWidget(MakeOptionsFrame());
    right->addWidget(MakeSoundsFrame(), 1);
    SndOpen = Make<QPushButton>("SndOpen", "Open &main.sfx…"); // the frame is off then
    SndOpen->hide();
    right->addWidget(SndOpen);
    MakeFoot();
    left->addWidget(Event);
    auto* progress = new QHBoxLayout;
    progress->addWidget(Prog, 1);
    progress->addWidget(Stop);
    left->addLayout(progress);
    MakeRoomsFrame(inner_);
    Left = new QWidget;
    auto* rows = new QVBoxLayout(Left);
    const QMargins margins = rows->contentsMargins();
    whole->setContentsMargins(margins.left(), margins.top(), margins.right(), 0);
    rows->setContentsMargins({});
    const int bars = window.menuBar()->sizeHint().height() + TB->sizeHint().height();
    const int foot = rows->spacing() + Foot->sizeHint().height() + margins.bottom();
    rows->addWidget(new FittingArea(inner_, TitleHeight(window) + bars + foot), 1);
    auto* footRow = new QHBoxLayout;
    footRow->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom());
    footRow->addWidget(Foot);
    rows->addLayout(footRow);
    Pictures = new PicturePane;
    Pictures->hide();
    Columns = Make<QSplitter>("Columns");
    Columns->setChildrenCollapsible(false);
    Columns->addWidget(Left);
    Columns->addWidget(Pictures);
    Columns->setStretchFactor(1, 1);
    window.setCentralWidget(Columns);
}

void MainControls::SetTabOrder() const
{
    QWidget* last = nullptr;
    for (QWidget* next : std::initializer_list<QWidget*>{
             LaraType, Weather, ObjFilter, ObjList, SaveID, ObjName, TR5Kelder, ExpSpr, SkyFix,
             SndFilter, SndLst, SndSave, SndSaveAll, SndOpen}) {
        if (last != nullptr)
            QWidget::setTabOrder(last, next);
        last = next;
    }
}

void MainControls::PlaceRooms() const
{
    if (Frame3->parentWidget() == inner_)
        Frame3->setGeometry(std::max(kRoomsLeft, inner_->width() + 2), 0, 160, inner_->height());
}

void MainControls::ShowRooms() const
{
    RoomList->setFocusPolicy(Qt::StrongFocus);
    Pictures->TakeRooms(*Frame3);
}

void MainControls::FilterObjects() const
{
    ObjList->Filter(ObjFilter->text());
    TellCount(*ObjCount, *ObjList, TB_Moveables->isChecked() ? "moveable" : "static mesh");
}

void MainControls::FilterSounds() const
{
    SndLst->Filter(SndFilter->text());
    TellCount(*SndCount, *SndLst, "sound");
}

} // namespace morlik
