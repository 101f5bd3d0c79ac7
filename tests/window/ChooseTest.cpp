#include "samples/Textures.h"
#include "set/ReadSet.h"
#include "tests/window/WindowRun.h"

namespace morlik::test
{

TEST(WindowChoose, SavesTheTickedObjects)
{
    WindowRun run(kTR4);
    auto* list = run.Find<QListWidget>("ObjList");
    const LevelData& level = run.Program.Level;
    const auto all = level.Moveables.size() + level.StaticMeshes.size();
    const auto countOf = [&](std::size_t count) {
        return QString("%1 of %2 objects, ").arg(count).arg(all);
    };
    const auto triggerOfMenu = [&](const QString& caption) { // the list's own
        emit list->customContextMenuRequested({4, 4});
        for (QAction* action : run.Find<QMenu>("ChoiceMenu")->actions())
            if (QString(action->text()).remove('&') == caption)
                action->trigger();
        run.Find<QMenu>("ChoiceMenu")->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    const auto isTicked = [&](int row) { return list->item(row)->checkState() == Qt::Checked; };

    EXPECT_TRUE(list->item(0)->data(Qt::CheckStateRole).isNull());
    run.Trigger("Mnu_Edit_Choose");
    EXPECT_TRUE(isTicked(0));
    EXPECT_TRUE(run.Label("Chosen").startsWith(countOf(all))) << run.Label("Chosen").toStdString();
    triggerOfMenu("None");
    EXPECT_TRUE(run.Label("Chosen").startsWith(countOf(level.StaticMeshes.size())));
    run.Trigger("Mnu_Edit_Static");
    EXPECT_TRUE(isTicked(0));
    triggerOfMenu("Invert");
    EXPECT_FALSE(isTicked(0));
    EXPECT_EQ(run.Label("Chosen"), countOf(0) + "0 of at most 2,047 textures, 0 tiles");
    run.Trigger("TB_Save_WAS");
    EXPECT_EQ(run.Host.Beeps, 1);
    EXPECT_EQ(run.Label("Foot"), "No object is chosen: tick those that the set is to have");
    EXPECT_TRUE(run.Host.Dialogs.empty());

    run.Trigger("Mnu_Edit_Move");
    list->item(1)->setCheckState(Qt::Checked);
    EXPECT_TRUE(run.Label("Chosen").startsWith(countOf(1)));
    run.Find<QLineEdit>("ObjFilter")->setText(list->item(2)->text());
    triggerOfMenu("All"); // of what the filter shows
    run.Find<QLineEdit>("ObjFilter")->clear();
    const QString told = run.Label("Chosen");
    EXPECT_TRUE(told.startsWith(countOf(2)));
    run.Save("TB_Save_WAS", "some.was");
    const ObjectSet set = ReadSet(run.Folder.File("some.was"));
    ASSERT_EQ(set.Moveables.size(), 2U);
    EXPECT_EQ(set.Moveables[0].ObjectID, level.Moveables[1].ObjectID);
    EXPECT_EQ(set.Moveables[1].ObjectID, level.Moveables[2].ObjectID);
    EXPECT_EQ(told, countOf(2) + QString("%1 of at most 2,047 textures, %2 tiles")
                                     .arg(set.ColourBase())
                                     .arg(set.Tiles.Count()));

    run.Trigger("Mnu_Edit_Choose"); // off: all objects, and the choice is there again later
    EXPECT_TRUE(list->item(0)->data(Qt::CheckStateRole).isNull());
    run.Save("TB_Save_WAS", "all.was");
    EXPECT_EQ(ReadSet(run.Folder.File("all.was")).Moveables.size(), level.Moveables.size());
    run.Trigger("Mnu_Edit_Choose");
    EXPECT_EQ(run.Label("Chosen"), told);
    run.Open(run.Write(kTR2, "b.tr2")); // another level: all are chosen
    EXPECT_TRUE(isTicked(0));
    triggerOfMenu("Keep All Sounds");
    EXPECT_TRUE(run.Program.Objects->AllSounds);
}

TEST(WindowGltf, SavesTheSelectedObjectOrTheTickedOnes)
{
    WindowRun run(kTR4);
    auto* list = run.Find<QListWidget>("ObjList");
    const auto sizeOf = [&](const std::string& name) {
        return ReadFile(run.Folder.File(name)).size();
    };
    run.Trigger("Mnu_File_SaveGltf");
    EXPECT_EQ(run.Host.Beeps, 1);
    list->setCurrentRow(1);
    run.Save("Mnu_File_SaveGltf", "one.glb");
    const std::string proposed = run.Host.Dialogs.back().Proposed;
    EXPECT_EQ(proposed, std::to_string(run.Program.Level.Moveables[1].ObjectID) + "-" +
                            list->item(1)->text().toStdString() + ".glb");
    EXPECT_GT(sizeOf("one.glb"), 0U);
    EXPECT_EQ(run.Label("Foot").toStdString(), "Saved " + run.Folder.File("one.glb"));

    run.Trigger("Mnu_Edit_Choose");
    list->item(0)->setCheckState(Qt::Unchecked);
    run.Save("TB_Save_Gltf", "all");
    EXPECT_EQ(sizeOf("all/" + proposed), sizeOf("one.glb"));
    const auto chosen = run.Program.Objects->Count();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(run.Folder.File("all")), {}),
              static_cast<std::ptrdiff_t>(chosen));
    run.Host.AnswersYes = false;
    run.Save("TB_Save_Gltf", "all");
    EXPECT_EQ(run.Host.Questions.size(), 1U);
    EXPECT_EQ(run.Label("Foot"), "Nothing was saved");
    EXPECT_TRUE(run.Host.Messages.empty());
}

/// The foot tells it while the message stands before the window.
TEST(WindowChoose, IsWhatHelpsWithTooManyTextures)
{
    auto level = samples::MakeTinyLevel(kTR1);
    for (std::int32_t i = 0; i < 2047; ++i)
        level.Meshes[0].Rectangles.push_back(
            {{0, 1, 2, 3},
             samples::AddTexture(level, {.X = i % 128, .Y = i / 128, .Width = 32, .Height = 32})});
    WindowRun run(level);
    run.Save("TB_Save_WAS", "a.was");
    EXPECT_EQ(run.Host.Messages,
              Strings{"MORLIK: To many object textures in level - can't continue!"});
    EXPECT_TRUE(
        run.Told().starts_with("2,048 textures used, the editor takes 2,047: leave out objects"));
}

} // namespace morlik::test
