#include "tests/window/WindowRun.h"

namespace morlik::test
{

TEST(WindowBrowse, SwitchesTheModeByToolbarAndMenu)
{
    WindowRun run(kTR5);
    const auto expectMode = [&](bool moveables, const char* action) {
        for (const auto& [name, isChecked] : {std::pair{"TB_Moveables", moveables},
                                              {"TB_Statics", !moveables},
                                              {"Mnu_Edit_Move", moveables},
                                              {"Mnu_Edit_Static", !moveables},
                                              {"TB_Sprites", false}})
            EXPECT_EQ(run.Find<QAction>(name)->isChecked(), isChecked) << action << ' ' << name;
        const LevelData& level = run.Program.Level;
        EXPECT_EQ(run.List("ObjList").size(),
                  moveables ? level.Moveables.size() : level.StaticMeshes.size());
        EXPECT_TRUE(run.Title().ends_with(moveables ? "] - Moveables" : "] - Static Meshes"));
    };
    expectMode(true, "start");
    bool moveables = true;
    for (const char* action :
         {"TB_Statics", "TB_Statics", "TB_Moveables", "TB_Moveables", "Mnu_Edit_Static",
          "Mnu_Edit_Static", "TB_Sprites", "Mnu_Edit_Move", "TB_Sprites"}) {
        run.Trigger(action);
        moveables = Has(action, "Move") || (moveables && Has(action, "Sprites")); // which leave it
        expectMode(moveables, action);
    }
    EXPECT_EQ(run.Host.Messages, Strings(2, "MORLIK: Sorry, no sprite support yet"));
    run.Trigger("Mnu_Edit_Static");
    run.Open(run.Write(kTR4, "b.tr4"));
    expectMode(false, "another level");
}

TEST(WindowBrowse, BeginsInTheListAndFindsByTheFilter)
{
    WindowRun run(kTR5);
    auto* list = run.Find<QListWidget>("ObjList");
    auto* filter = run.Find<QLineEdit>("ObjFilter");
    const int all = list->count();
    EXPECT_TRUE(list->hasFocus());
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_TRUE(list->item(0)->isSelected());
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_TRUE(list->item(1)->isSelected());
    QKeyEvent euro(QEvent::KeyPress, 0, {}, QString(QChar(0x20ac))); // no Western letter
    QApplication::sendEvent(run.Find<QLineEdit>("ObjName"), &euro);
    EXPECT_EQ(run.Find<QLineEdit>("ObjName")->text(), list->item(1)->text());
    QTest::keyClick(run.Window.get(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(filter->hasFocus());
    EXPECT_EQ(run.Label("ObjCount"), QString("%1 moveables").arg(all));
    QTest::keyClicks(filter, list->item(2)->text().toLower());
    EXPECT_EQ(run.Label("ObjCount"), QString("1 of %1 moveables").arg(all));
    EXPECT_TRUE(list->item(0)->isHidden()); // and no entry has moved
    EXPECT_FALSE(list->item(2)->isHidden());
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_TRUE(list->item(2)->isSelected());
    EXPECT_EQ(run.Label("ObjectID").toStdString(),
              "ID " + std::to_string(run.Program.Level.Moveables.at(2).ObjectID));
    filter->clear();
    EXPECT_FALSE(list->item(0)->isHidden());
    QTest::keyClicks(run.Find<QLineEdit>("SndFilter"), "sound 17-1");
    auto* sounds = run.Find<QListWidget>("SndLst");
    int shown = 0;
    for (int row = 0; row < sounds->count(); ++row)
        shown += sounds->item(row)->isHidden() ? 0 : 1;
    EXPECT_EQ(shown, 1);
}

TEST(WindowBrowse, RenamesWithEachKeyAndTheListOfTheSetFollows)
{
    WindowRun run(kTR4);
    auto* list = run.Find<QListWidget>("ObjList");
    auto* name = run.Find<QLineEdit>("ObjName");
    const int row = 2;
    const auto id = run.Program.Level.Moveables.at(row).ObjectID;
    const auto before = run.List("ObjList");
    run.ClickRow(list, row);
    EXPECT_EQ(run.Label("ObjectID").toStdString(), "ID " + std::to_string(id));
    EXPECT_TRUE(name->isEnabled());
    EXPECT_EQ(name->text(), list->item(row)->text());
    EXPECT_EQ(run.List("ObjList"), before);

    QTest::mouseClick(name, Qt::LeftButton);
    EXPECT_EQ(name->selectedText(), name->text());
    QTest::keyClick(name, Qt::Key_Delete);
    EXPECT_EQ(run.Program.Names.Moveable(kTR4, id), "");
    QTest::keyClicks(name, "A");
    for (const char* typed : {"A", "A\xe4", "A\xe4 b"}) {
        if (typed[1] != '\0')
            name->setText(QString::fromLatin1(typed));
        EXPECT_EQ(list->item(row)->text(), QString::fromLatin1(typed));
        EXPECT_EQ(run.Program.Names.Moveable(kTR4, id), typed);
    }
    run.Trigger("Mnu_Edit_Static");
    run.ClickRow(list, 0);
    name->setText("Stone");
    EXPECT_EQ(run.Program.Names.Static(run.Program.Level.StaticMeshes[0].ObjectID), "Stone");
    run.Trigger("Mnu_Edit_Move");
    name->setText("nothing is selected"); // and so nothing changes
    EXPECT_EQ(list->item(row)->text(), QString::fromLatin1("A\xe4 b"));

    run.Host.SaveAnswers = {run.Folder.File("out.was")};
    QTest::keyClick(run.Window.get(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(LinesOfFile(run.Folder.File("out.was")).at(row),
              "A\xe4 b:Z:\\TOMB4\\LEVEL.TR4\\A\xe4 b");
}

TEST(WindowBrowse, ShowsANameWithoutChangingIt)
{
    WindowRun run(kTR4);
    const auto& moveables = run.Program.Level.Moveables;
    auto* list = run.Find<QListWidget>("ObjList");
    auto* field = run.Find<QLineEdit>("ObjName");
    int row = 0;
    for (const std::string stored : {"L\xf6we", "L\xc3\xb6we"}) { // of two kinds of editor
        const auto id = moveables.at(static_cast<std::size_t>(row)).ObjectID;
        run.Program.Names.SetMoveable(kTR4, id, stored);
        run.Trigger("Mnu_Edit_Move"); // lists anew
        EXPECT_EQ(list->item(row)->text().toStdString(), "L\xc3\xb6we");
        run.ClickRow(list, row);
        EXPECT_EQ(field->text().toStdString(), "L\xc3\xb6we");
        EXPECT_EQ(run.Program.Names.Moveable(kTR4, id), stored);
        QTest::keyClick(field, Qt::Key_End);
        QTest::keyClick(field, Qt::Key_N);
        EXPECT_EQ(run.Program.Names.Moveable(kTR4, id), "L\xf6wen");
        EXPECT_EQ(list->item(row++)->text().toStdString(), "L\xc3\xb6wen");
    }
}

TEST(WindowBrowse, LeavesObjectsWithoutANameInTheCatalogueAlone)
{
    auto level = samples::MakeRichLevel(kTR2);
    level.Moveables[1].ObjectID = 501;
    level.Moveables[2].ObjectID = -1;
    WindowRun run(level);
    for (const int row : {1, 2}) {
        run.ClickRow(run.Find<QListWidget>("ObjList"), row);
        run.Find<QLineEdit>("ObjName")->setText("x");
        EXPECT_EQ(run.List("ObjList").at(static_cast<std::size_t>(row)), "");
        run.Find<QLineEdit>("ObjName")->clear();
    }
}

} // namespace morlik::test
