// The pane of pictures and the small pictures of the object list: what they show, and their menu.

#include "picture/PNG.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/Text.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLayout>
#include <QScreen>
#include <QSignalBlocker>
#include <algorithm>

namespace morlik
{

namespace
{

constexpr const char* kPaneKey = "window/pictures";
constexpr const char* kSizeKey = "window/size";
constexpr const char* kColumnsKey = "window/columns";
constexpr const char* kListsKey = "window/lists";
constexpr const char* kThumbnailKey = "window/thumbnails";
constexpr int kPaneWidth = 480;
constexpr int kScreenRim = 40; ///< that a wide window leaves free

/// Whether the screen holds the window and the pane beside it.
bool HasRoomForPane(const QWidget& window)
{
    return window.screen()->availableGeometry().width() >= window.width() + kPaneWidth + kScreenRim;
}

} // namespace

void Main_Frm::ConnectPictures()
{
    On(controls_.Mnu_View_Pictures, [this] { ShowPane(controls_.Mnu_View_Pictures->isChecked()); });
    connect(controls_.Mnu_View_List, &QActionGroup::triggered, this,
            [this] { Guard([this] { StartThumbnails(); }); });
    connect(controls_.Pictures->Save, &QPushButton::clicked, this,
            [this] { Guard([this] { SavePicture(); }); });
    connect(controls_.Pictures->Copy, &QPushButton::clicked, this,
            [this] { Guard([this] { CopyPicture(); }); });
    connect(controls_.ObjList, &QListWidget::itemSelectionChanged, this,
            [this] { Guard([this] { ShowSelected(); }); });
    connect(&thumbnails_, &QTimer::timeout, this, [this] { Guard([this] { DrawThumbnails(); }); });
}

/// As the window was left, but never larger than the screen.
void Main_Frm::RestoreLayout()
{
    const bool hasPane = store_.value(kPaneKey, HasRoomForPane(*this)).toBool();
    const int thumbnails = store_.value(kThumbnailKey, 0).toInt();
    for (QAction* action : controls_.Mnu_View_List->actions())
        action->setChecked(action->data().toInt() == thumbnails);
    if (hasPane)
        ShowPane(true);
    QSize size = store_.value(kSizeKey, this->size()).toSize();
    const QRect free = screen()->availableGeometry().adjusted(0, TitleHeight(*this), 0, 0);
    resize(size.boundedTo(free.size()));
    move(free.center() - rect().center() - QPoint(0, TitleHeight(*this)));
    controls_.Columns->restoreState(store_.value(kColumnsKey).toByteArray());
    controls_.Lists->restoreState(store_.value(kListsKey).toByteArray());
}

void Main_Frm::KeepLayout()
{
    store_.setValue(kPaneKey, controls_.Mnu_View_Pictures->isChecked());
    store_.setValue(kThumbnailKey, ThumbnailSide());
    store_.setValue(kSizeKey, size());
    store_.setValue(kColumnsKey, controls_.Columns->saveState());
    store_.setValue(kListsKey, controls_.Lists->saveState());
}

/// The window grows and shrinks by the pane, so that the rest of it stays as it is, as far as the
/// screen has room.
void Main_Frm::ShowPane(bool isShown)
{
    controls_.Mnu_View_Pictures->setChecked(isShown);
    if (isShown == controls_.Pictures->isVisibleTo(this))
        return;
    QSplitter& columns = *controls_.Columns;
    // Large letters may ask for more than the window has so far.
    const int left = isShown ? std::max(width(), controls_.Left->minimumSizeHint().width())
                             : width() - controls_.Pictures->width() - columns.handleWidth();
    controls_.Pictures->setVisible(isShown);
    columns.refresh(); // what the window takes at least is to follow now
    layout()->activate();
    if (!isMaximized()) {
        const QRect free = screen()->availableGeometry();
        const int width = isShown ? left + columns.handleWidth() + kPaneWidth : left;
        resize(std::min(width, free.width()), height());
        if (isVisible())
            move(std::max(free.x(), std::min(x(), free.right() + 1 - frameGeometry().width())),
                 y());
    }
    if (isShown)
        columns.setSizes({left, kPaneWidth});
    FillPictures();
}

/// Drops what the pane shows of a level that is no longer there. What there is of the new one comes
/// once the window has shown the rest.
void Main_Frm::ResetPictures()
{
    arePicturesStale_ = true;
    controls_.Pictures->Object->ShowText("Select an object to see it");
    controls_.Pictures->Textures->Show(nullptr, {});
    controls_.Pictures->Sprites->Show(nullptr, {});
    shown_ = std::make_unique<ShownObjects>(session_.Level, session_.Names);
    QTimer::singleShot(0, this, [this] { Guard([this] { FillPictures(); }); });
}

void Main_Frm::FillPictures()
{
    if (!arePicturesStale_ || !shown_ || !controls_.Pictures->isVisibleTo(this))
        return;
    arePicturesStale_ = false;
    PicturePane& pane = *controls_.Pictures;
    pane.Textures->Show(&session_.Level, [this](std::int32_t texture) { return UsersOf(texture); });
    const ObjectSet* set = shown_->Whole();
    const SpriteTables* sprites = set != nullptr && set->Sprites ? &*set->Sprites : nullptr;
    QStringList names;
    if (sprites != nullptr)
        for (const SpriteSequence& sequence : sprites->SpriteSequences)
            names << QString("%1 %2")
                         .arg(sequence.ObjectID)
                         .arg(FromText(
                             session_.Names.Moveable(session_.Level.Version, sequence.ObjectID)));
    pane.Sprites->Show(sprites, names);
    pane.ShowSprites(sprites != nullptr && !names.isEmpty());
    ShowSelected();
}

std::optional<ObjectPlace> Main_Frm::SelectedObject() const
{
    const auto selected = controls_.ObjList->selectedItems();
    if (selected.isEmpty() || session_.Level.Version == kNoLevel)
        return {};
    return ObjectPlace{!IsMoveableMode(),
                       static_cast<std::size_t>(controls_.ObjList->row(selected[0]))};
}

void Main_Frm::ShowSelected()
{
    const auto place = SelectedObject();
    if (!place || arePicturesStale_ || !shown_)
        return;
    const auto soundsOf = [this, place = *place](std::size_t animation) -> std::vector<SoundAt> {
        const LevelData& level = session_.Level;
        const int first = place.IsStatic ? -1 : level.Moveables[place.Index].Animation;
        if (first < 0)
            return {};
        return SoundsOfAnimation(level, session_.MainSFX,
                                 static_cast<std::size_t>(first) + animation);
    };
    controls_.Pictures->Object->SetSounds(soundsOf,
                                          [this](const QString& text) { TellFoot(text); });
    try {
        controls_.Pictures->Object->Show(shown_->Find(*place), place->IsStatic);
    } catch (const ReadFailure& damage) {
        controls_.Pictures->Object->ShowText(FromText(damage.what()));
    }
    if (const ObjectNeeds* needs = Needs(); needs != nullptr)
        controls_.Pictures->Textures->Outline(
            (place->IsStatic ? needs->StaticMeshes : needs->Moveables)[place->Index]);
}

QStringList Main_Frm::UsersOf(std::int32_t texture)
{
    QStringList users;
    const ObjectNeeds* needs = Needs();
    if (needs == nullptr)
        return users;
    const LevelData& level = session_.Level;
    const auto uses = [texture](const TextureList& numbers) {
        return std::ranges::binary_search(numbers, texture);
    };
    for (std::size_t i = 0; i < needs->Moveables.size(); ++i)
        if (uses(needs->Moveables[i]))
            users << FromText(session_.Names.Moveable(level.Version, level.Moveables[i].ObjectID));
    for (std::size_t i = 0; i < needs->StaticMeshes.size(); ++i)
        if (uses(needs->StaticMeshes[i]))
            users << FromText(session_.Names.Static(level.StaticMeshes[i].ObjectID));
    return users;
}

int Main_Frm::ThumbnailSide() const
{
    const QAction* chosen = controls_.Mnu_View_List->checkedAction();
    return chosen == nullptr ? 0 : chosen->data().toInt();
}

/// Gives the entries empty pictures of their size, which fill in the pauses of the window system.
void Main_Frm::StartThumbnails()
{
    const int side = ThumbnailSide();
    const QSignalBlocker quiet(controls_.ObjList);
    QPixmap blank;
    if (side > 0) {
        blank = QPixmap(side, side);
        blank.fill(Qt::transparent);
    }
    controls_.ObjList->setIconSize({side, side});
    for (int row = 0; row < controls_.ObjList->count(); ++row)
        controls_.ObjList->item(row)->setIcon(blank.isNull() ? QIcon() : QIcon(blank));
    nextThumbnail_ = 0;
    if (side > 0)
        thumbnails_.start();
    else
        thumbnails_.stop();
}

/// Draws for a part of what a screen takes for a picture; then come the user's clicks.
void Main_Frm::DrawThumbnails()
{
    constexpr qint64 kMilliseconds = 8;
    QElapsedTimer clock;
    clock.start();
    while (nextThumbnail_ < controls_.ObjList->count() && clock.elapsed() < kMilliseconds)
        DrawThumbnail(nextThumbnail_++);
    if (nextThumbnail_ >= controls_.ObjList->count())
        thumbnails_.stop();
}

/// Damaged objects keep an empty picture.
void Main_Frm::DrawThumbnail(int row)
{
    try {
        const ObjectPlace place{!IsMoveableMode(), static_cast<std::size_t>(row)};
        const ShownObject object = shown_->Find(place);
        const Scene scene = place.IsStatic ? SceneOfStaticMesh(object.In->Set, object.Place)
                                           : SceneOfMoveable(object.In->Set, object.Place);
        Camera camera = ObliqueCamera();
        FrameTo(camera, scene, 1);
        const auto side = static_cast<std::int32_t>(ThumbnailSide() * devicePixelRatioF());
        QPixmap picture = QPixmap::fromImage(
            ToImage(Render(scene, camera, {.Width = side, .Height = side}, object.In->Textures)));
        picture.setDevicePixelRatio(devicePixelRatioF());
        const QSignalBlocker quiet(controls_.ObjList);
        controls_.ObjList->item(row)->setIcon(QIcon(picture));
        controls_.ObjList->viewport()->update();
    } catch (const ReadFailure&) {
        // the pane tells it, once the object is selected
    }
}

void Main_Frm::SavePicture()
{
    const QImage image = controls_.Pictures->Image().convertToFormat(QImage::Format_RGBA8888);
    if (image.isNull()) {
        Refuse("There is no picture to save");
        return;
    }
    const auto selected = controls_.ObjList->selectedItems();
    const bool isObject = controls_.Pictures->IsObjectOnTop() && !selected.isEmpty();
    const auto name = isObject ? ToPathText(selected[0]->text()) : LevelStem();
    const bool chosen = AskToSave("PNG files (*.png)|*.png", name + ".png", "png");
    if (!chosen || !MayReplace({session_.FMSave.FileName}))
        return;
    Picture picture{.Width = image.width(), .Height = image.height(), .Pixels = {}};
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const Colour*>(image.constScanLine(y));
        picture.Pixels.insert(picture.Pixels.end(), row, row + image.width());
    }
    try {
        WritePNG(session_.FMSave.FileName, picture);
        TellFoot("Saved " + FromPathText(session_.FMSave.FileName));
    } catch (const FileFailure& failure) {
        session_.Report.Message(failure.what());
        TellFoot("Nothing was saved");
    }
}

void Main_Frm::CopyPicture()
{
    const QImage image = controls_.Pictures->Image();
    if (image.isNull()) {
        Refuse("There is no picture to copy");
        return;
    }
    QApplication::clipboard()->setImage(image);
    TellFoot("Copied the picture");
}

} // namespace morlik
