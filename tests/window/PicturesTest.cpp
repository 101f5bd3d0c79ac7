#include "playback/Decode.h"
#include "samples/Project.h"
#include "shell/window/TexturesTab.h"
#include "tests/window/DiskSound.h"
#include "tests/window/WindowRun.h"

#include <QClipboard>
#include <QColorSpace>
#include <QGraphicsPathItem>
#include <QSlider>
#include <QTabWidget>

namespace morlik::test
{

/// A run with the pane open. It fills in a turn of the window system.
class PaneRun : public WindowRun
{
public:
    explicit PaneRun(const samples::LevelContent& level)
    {
        Store->setValue("window/pictures", true);
        Begin(Write(level, LevelName(level.Game)));
    }
    explicit PaneRun(VersionCode game) : PaneRun(samples::MakeRichLevel(game)) {}

    void Begin(const std::string& file)
    {
        EXPECT_TRUE(Start(file));
        QApplication::processEvents();
        View = Find<ObjectView>("ObjectView");
    }
    /// Selects an object and gives its picture.
    QImage Select(int row)
    {
        Find<QListWidget>("ObjList")->setCurrentRow(row);
        return View->Image();
    }
    /// Selects Lara's walk, which has steps.
    void SelectWalk()
    {
        Select(0);
        Find<QListWidget>("AnimList")->setCurrentRow(1);
    }
    QPainterPath Outline()
    {
        for (const QGraphicsItem* item : Find<QGraphicsView>("TileView")->scene()->items())
            if (const auto* path = dynamic_cast<const QGraphicsPathItem*>(item); path != nullptr)
                return path->path();
        return {};
    }
    void ShowTab(const QString& caption)
    {
        auto* tabs = Find<QTabWidget>("PictureTabs");
        for (int i = 0; i < tabs->count(); ++i)
            if (tabs->tabText(i) == caption && tabs->isTabVisible(i)) {
                tabs->setCurrentIndex(i);
                return;
            }
        ADD_FAILURE() << "no tab " << caption.toStdString();
    }

    ObjectView* View = nullptr;
};

TEST(WindowPictures, AnimationsPlayTheirSounds)
{
    const DiskSound disk;
    auto level = samples::MakeRichLevel(kTR4);
    for (auto& sample : level.Samples) // a step takes one of four
        sample = level.Samples.front();
    PaneRun run(level);
    run.SelectWalk();
    run.Find<QPushButton>("AnimPlay")->click();
    QTest::qWait(100);
    EXPECT_TRUE(disk.Values().empty()); // no device was opened
    run.Find<QCheckBox>("AnimSound")->click();
    const auto step = Decode(level.Samples.front()).Values;
    WaitUntil([&] { return disk.Holds(step); });
}

TEST(WindowPictures, AnimationsPlayWithoutADeviceWhichSoundsMiss)
{
    const std::string told = "No sound can be played: Audio target 'none such' not available";
    qputenv("SDL_AUDIODRIVER", "none such");
    PaneRun run(kTR4);
    run.SelectWalk();
    run.Find<QCheckBox>("AnimSound")->click();
    run.Find<QPushButton>("AnimPlay")->click();
    EXPECT_EQ(run.Told(), told);
    EXPECT_FALSE(run.Find<QCheckBox>("AnimSound")->isChecked());
    EXPECT_TRUE(run.Find<QPushButton>("AnimPlay")->isChecked());
    auto* sounds = run.Find<QListWidget>("SndLst");
    sounds->setCurrentRow(0);
    sounds->setFocus();
    run.Find<QLabel>("Foot")->setToolTip("");
    QTest::keyClick(sounds, Qt::Key_Space);
    qputenv("SDL_AUDIODRIVER", "dummy");
    EXPECT_EQ(run.Told(), told);
    EXPECT_FALSE(run.Find<QTimer>("SndTimer")->isActive());
    EXPECT_TRUE(run.Host.Messages.empty());
    EXPECT_NE(run.Label("SndText"), "");
}

TEST(WindowPictures, TurnsMovesAndZoomsByMouseAndKeys)
{
    PaneRun run(kTR4);
    EXPECT_TRUE(run.View->Image().isNull()); // nothing is selected
    QImage last = run.Select(0);
    const QImage first = last;
    const auto isChanged = [&] {
        const QImage now = run.View->Image();
        const bool isOther = now != last;
        last = now;
        return isOther;
    };
    const auto drag = [&](Qt::MouseButton button) {
        QTest::mousePress(run.View, button, {}, {50, 50});
        QMouseEvent move(QEvent::MouseMove, QPointF(80, 60), QPointF(80, 60), Qt::NoButton, button,
                         Qt::NoModifier);
        QApplication::sendEvent(run.View, &move);
        QTest::mouseRelease(run.View, button, {}, {80, 60});
    };
    drag(Qt::LeftButton);
    EXPECT_TRUE(isChanged());
    drag(Qt::RightButton);
    EXPECT_TRUE(isChanged());
    QTest::mouseDClick(run.View, Qt::LeftButton);
    EXPECT_TRUE(isChanged());
    for (const Qt::Key key :
         {Qt::Key_Left, Qt::Key_Down, Qt::Key_Up, Qt::Key_Plus, Qt::Key_Home, Qt::Key_W}) {
        QTest::keyClick(run.View, key, key == Qt::Key_Up ? Qt::ShiftModifier : Qt::NoModifier);
        EXPECT_TRUE(isChanged()) << key;
    }
    QTest::keyClick(run.View, Qt::Key_W);
    run.Select(1);
    EXPECT_EQ(run.Select(0), first); // seen anew
}

TEST(WindowPictures, StepsAndPlaysFrames)
{
    PaneRun run(kTR4);
    const QImage first = run.Select(0);
    auto* frame = run.Find<QSlider>("AnimFrame");
    ASSERT_GT(frame->maximum(), 1);
    QTest::keyClick(run.View, Qt::Key_Comma); // there is none before
    EXPECT_EQ(run.View->Image(), first);
    QTest::keyClick(run.View, Qt::Key_Period);
    EXPECT_EQ(frame->value(), 1);
    EXPECT_EQ(run.Label("AnimPlace"), QString("Frame 1 of %1").arg(frame->maximum()));
    EXPECT_NE(run.View->Image(), first);
    run.Click("AnimForward");
    run.Click("AnimBack");
    EXPECT_EQ(frame->value(), 1);
    QTest::keyClick(run.View, Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([&] { return frame->value() != 1; }));
    QTest::keyClick(run.View, Qt::Key_Space);
    const int stopped = frame->value();
    QTest::qWait(100);
    EXPECT_EQ(frame->value(), stopped);
    EXPECT_EQ(run.Find<QPushButton>("AnimPlay")->text(), "Play");
    run.Trigger("Mnu_Edit_Static");
    EXPECT_FALSE(run.Select(0).isNull());
    EXPECT_FALSE(run.IsOn("AnimFrame"));
    EXPECT_TRUE(run.Label("ObjectFacts").startsWith("1 mesh, "));
}

TEST(WindowPictures, OutlinesAndTellsTheTexturesOfTheObject)
{
    PaneRun run(kTR2);
    const LevelData& level = run.Program.Level;
    const ObjectNeeds needs = NeedsOf(level);
    run.ShowTab("Textures");
    for (const int row : {0, 1, 2}) {
        run.Select(row);
        const TextureList& used = needs.Moveables[static_cast<std::size_t>(row)];
        EXPECT_EQ(run.Outline().elementCount(), 5 * static_cast<int>(used.size())) << row;
    }
    run.Select(0);
    ASSERT_FALSE(needs.Moveables[0].empty());
    const std::int32_t texture = needs.Moveables[0].front();
    const QPointF corner(run.Outline().elementAt(0));
    auto* view = run.Find<QGraphicsView>("TileView");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      view->mapFromScene(corner + QPointF(2, 2)));
    const TextInfo& box = level.Textures[static_cast<std::size_t>(texture)].Info;
    const QString told = run.Label("TextureFacts");
    EXPECT_TRUE(told.startsWith(
        QString::asprintf("Texture %d: tile %d, at %d, %d; %d \u00d7 %d pixels", texture, box.Tile,
                          box.X, box.Y, box.Width + 1, box.Height + 1)))
        << told.toStdString();
    EXPECT_TRUE(told.contains(run.Find<QListWidget>("ObjList")->item(0)->text()));
}

TEST(WindowPictures, SavesAndCopiesWhatIsSeen)
{
    PaneRun run(kTR1);
    run.Click("SavePicture");
    EXPECT_EQ(run.Host.Beeps, 1);
    EXPECT_TRUE(run.Host.Dialogs.empty());
    run.Select(0);
    QApplication::processEvents(); // its facts take some of the height
    const QImage shown = run.View->Image();
    run.Save("SavePicture", "a.png");
    QImage saved(QString::fromStdString(run.Folder.File("a.png")));
    saved.setColorSpace({});
    EXPECT_EQ(saved.convertToFormat(QImage::Format_RGB32),
              shown.convertToFormat(QImage::Format_RGB32));
    for (const char* tab : {"Textures", "Sprites"}) {
        run.ShowTab(tab);
        QApplication::clipboard()->clear();
        run.Click("CopyPicture");
        EXPECT_FALSE(QApplication::clipboard()->image().isNull()) << tab;
    }
}

TEST(WindowPictures, GivesTheListSmallPicturesInPauses)
{
    PaneRun run(kTR5);
    auto* list = run.Find<QListWidget>("ObjList");
    const auto names = run.List("ObjList");
    EXPECT_TRUE(list->item(0)->icon().isNull());
    run.Trigger("Mnu_View_Small");
    const auto isDrawn = [&](int row) {
        const QImage icon = list->item(row)->icon().pixmap(48).toImage();
        QImage empty(icon.size(), icon.format());
        empty.fill(Qt::transparent);
        return icon != empty;
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return isDrawn(0) && isDrawn(2); }));
    EXPECT_EQ(run.List("ObjList"), names);
    run.Trigger("Mnu_View_Names");
    EXPECT_TRUE(list->item(0)->icon().isNull());
}

TEST(WindowPictures, TellsWhatCanNotBeShown)
{
    auto level = samples::MakeRichLevel(kTR4);
    const auto mesh = level.MeshTable[static_cast<std::size_t>(level.Moveables[1].StartingMesh)];
    level.Meshes[mesh].Rectangles.at(0).Texture = 9999;
    PaneRun run(level);
    EXPECT_TRUE(run.Select(1).isNull());
    const QImage good = run.Select(2); // of a level that doesn't convert
    EXPECT_FALSE(good.isNull());
    EXPECT_NE(run.Select(0), good);
    EXPECT_TRUE(run.Host.Messages.empty());
}

TEST(WindowPictures, ComeBackAsTheyWereLeft)
{
    PaneRun run(kTR4);
    const int width = run.Window->width();
    run.Trigger("Mnu_View_Pictures");
    EXPECT_FALSE(run.View->isVisible());
    const int narrow = run.Window->width();
    EXPECT_LT(narrow, width);
    run.Trigger("Mnu_View_Pictures");
    run.Trigger("Mnu_View_Pictures");
    EXPECT_EQ(run.Window->width(), narrow);
    run.Trigger("Mnu_View_Large");
    run.Trigger("Mnu_File_Quit");
    run.Window = std::make_unique<Main_Frm>(run.Program, *run.Store);
    run.Host.Attach(*run.Window, run.Window->Controls());
    run.Begin(run.Folder.File(LevelName(kTR4)));
    EXPECT_FALSE(run.View->isVisible());
    EXPECT_TRUE(run.Find<QAction>("Mnu_View_Large")->isChecked());
    run.Trigger("Mnu_View_Pictures");
    EXPECT_FALSE(run.Select(0).isNull());
}

TEST(WindowPictures, GetATabOfRoomsWithAProject)
{
    PaneRun run(kTR4);
    auto* rooms = run.Find<QListWidget>("RoomList");
    EXPECT_EQ(run.Find<QTabWidget>("PictureTabs")->count(), 3);
    run.Open(run.Write(samples::WriteProject(samples::MakeProject()).Bytes, "city.prj"));
    run.ShowTab("Rooms");
    EXPECT_TRUE(rooms->isVisible());
    EXPECT_TRUE(
        run.Window->rect().contains(rooms->mapTo(run.Window.get(), rooms->rect().center())));
}

} // namespace morlik::test
