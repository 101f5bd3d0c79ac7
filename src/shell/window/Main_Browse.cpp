// The object list: its two modes, what a click shows, and renaming.

#include "shell/window/Main_Frm.h"
#include "shell/window/Text.h"

#include <QSignalBlocker>

namespace morlik
{

/// A mode button has just been clicked and so changed its state. The pressed one stays pressed.
void Main_Frm::ModeButton_Click(QAction& button, bool moveables)
{
    const bool pressed = button.isChecked();
    button.setChecked(!pressed);
    if (pressed)
        SwitchMode(moveables);
}

void Main_Frm::SwitchMode(bool moveables)
{
    // With a main.sfx loaded no game's names apply: the mode stays as it is.
    if (session_.State.LevelVersion == kMainSFXVersion) {
        ShowMode(IsMoveableMode());
        return;
    }
    ShowMode(moveables);
    FillObjects();
}

void Main_Frm::ShowMode(bool moveables)
{
    controls_.Mnu_Edit_Move->setChecked(moveables);
    controls_.Mnu_Edit_Static->setChecked(!moveables);
    controls_.TB_Moveables->setChecked(moveables);
    controls_.TB_Statics->setChecked(!moveables);
    controls_.TB_Sprites->setChecked(false);
}

void Main_Frm::FillObjects()
{
    NotedList& list = *controls_.ObjList;
    const bool moveables = IsMoveableMode();
    list.clear();
    if (moveables) {
        for (const Moveable& moveable : session_.Level.Moveables)
            list.addItem(
                FromText(session_.Names.Moveable(session_.State.LevelVersion, moveable.ObjectID)));
    } else {
        for (const StaticMesh& mesh : session_.Level.StaticMeshes)
            list.addItem(FromText(session_.Names.Static(mesh.ObjectID)));
    }
    ShowChoice();
    StartThumbnails();
    list.SetNote(session_.Level.Version == kNoLevel ? "No level is loaded"
                 : moveables                        ? "The level has no moveables"
                                                    : "The level has no static meshes");
    controls_.FilterObjects();
    setWindowTitle(FromText(session_.TitleText + " - [" + session_.FMLoad.FileName +
                            (moveables ? "] - Moveables" : "] - Static Meshes")));
}

std::optional<std::int32_t> Main_Frm::IDOf(int row) const
{
    const auto index = static_cast<std::size_t>(row);
    if (row < 0)
        return std::nullopt;
    const LevelData& level = session_.Level;
    if (IsMoveableMode() && index < level.Moveables.size())
        return level.Moveables[index].ObjectID;
    if (!IsMoveableMode() && index < level.StaticMeshes.size())
        return level.StaticMeshes[index].ObjectID;
    return std::nullopt;
}

void Main_Frm::ObjList_Click()
{
    const auto selected = controls_.ObjList->selectedItems();
    const auto id = selected.isEmpty() ? std::nullopt : IDOf(controls_.ObjList->row(selected[0]));
    if (!id || session_.Level.Version == kNoLevel)
        return;
    controls_.ObjName->setEnabled(true);
    const ObjectNames& names = session_.Names;
    const QSignalBlocker quiet(controls_.ObjName); // to show a name is not to change it
    controls_.ObjName->setText(FromText(
        IsMoveableMode() ? names.Moveable(session_.State.LevelVersion, *id) : names.Static(*id)));
    controls_.ObjName->setCursorPosition(0); // of a long name the beginning shows
    controls_.ObjectID->setText(QString("ID %1").arg(*id));
}

void Main_Frm::ObjName_Change(const QString& text)
{
    const auto selected = controls_.ObjList->selectedItems();
    const auto id = selected.isEmpty() ? std::nullopt : IDOf(controls_.ObjList->row(selected[0]));
    if (!id)
        return;
    const bool known = IsMoveableMode() ? session_.Names.SetMoveable(session_.State.LevelVersion,
                                                                     *id, ToText(text))
                                        : session_.Names.SetStatic(*id, ToText(text));
    if (known)
        selected[0]->setText(FromText(ToText(text))); // what the table holds
}

} // namespace morlik
