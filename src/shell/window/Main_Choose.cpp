// Which objects a save takes: their boxes in the object list, and the line that tells what they
// need.

#include "base/Text.h"
#include "convert/UsedTextures.h"
#include "shell/window/Main_Frm.h"
#include "shell/window/Text.h"

#include <QMenu>
#include <QSignalBlocker>

namespace morlik
{

void Main_Frm::ConnectChoice()
{
    connect(controls_.Mnu_Edit_Choose, &QAction::toggled, this,
            [this] { Guard([this] { ChooseObjects_Click(); }); });
    connect(controls_.ObjList, &QListWidget::itemChanged, this,
            [this](QListWidgetItem* item) { Guard([&] { ObjList_Check(*item); }); });
    connect(controls_.ObjList, &QListWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { Guard([&] { ShowChoiceMenu(at); }); });
}

/// A choice that was made stays for when it is wanted again, until another level comes.
void Main_Frm::ChooseObjects_Click()
{
    if (controls_.Mnu_Edit_Choose->isChecked()) {
        session_.Objects = choice_ ? choice_ : ChooseAll(session_.Level);
    } else {
        choice_ = session_.Objects;
        session_.Objects.reset();
    }
    ShowChoice();
}

/// For a level that was just loaded.
void Main_Frm::ResetChoice()
{
    choice_.reset();
    needs_.reset();
    session_.Objects.reset();
    if (controls_.Mnu_Edit_Choose->isChecked())
        session_.Objects = ChooseAll(session_.Level);
}

const ObjectNeeds* Main_Frm::Needs()
{
    try {
        if (!needs_)
            needs_ = NeedsOf(session_.Level);
        return &*needs_;
    } catch (const ReadFailure&) {
        return nullptr;
    }
}

std::vector<bool>& Main_Frm::ChosenOfMode()
{
    return IsMoveableMode() ? session_.Objects->Moveables : session_.Objects->StaticMeshes;
}

void Main_Frm::ShowChoice()
{
    const QSignalBlocker quiet(controls_.ObjList);
    for (int row = 0; row < controls_.ObjList->count(); ++row) {
        QListWidgetItem& item = *controls_.ObjList->item(row);
        if (session_.Objects)
            item.setCheckState(ChosenOfMode().at(static_cast<std::size_t>(row)) ? Qt::Checked
                                                                                : Qt::Unchecked);
        else
            item.setData(Qt::CheckStateRole, {}); // no box
    }
    TellChoice();
}

void Main_Frm::TellChoice()
{
    controls_.Chosen->setVisible(session_.Objects.has_value());
    if (!session_.Objects)
        return;
    const LevelData& level = session_.Level;
    const ObjectChoice& choice = *session_.Objects;
    const auto all = level.Moveables.size() + level.StaticMeshes.size();
    std::string text = Grouped(choice.Count()) + " of " + Grouped(all) + " objects, ";
    bool isTooMuch = false;
    if (const ObjectNeeds* needs = Needs(); needs != nullptr) {
        const auto textures = CountTextures(*needs, choice);
        isTooMuch = textures > kMostTextures;
        text += Grouped(textures) + " of at most " + Grouped(kMostTextures) + " textures, " +
                Grouped(CountTiles(*needs, choice, level)) + " tiles";
    } else {
        text += "some of them damaged";
    }
    QFont font = controls_.ObjectID->font();
    font.setBold(isTooMuch);
    controls_.Chosen->setFont(font);
    controls_.Chosen->setText(FromText(text));
}

void Main_Frm::ObjList_Check(const QListWidgetItem& item)
{
    const auto row = static_cast<std::size_t>(controls_.ObjList->row(&item));
    if (!session_.Objects || row >= ChosenOfMode().size())
        return;
    const bool isChosen = item.checkState() == Qt::Checked;
    if (ChosenOfMode()[row] == isChosen) // another change, as of the name
        return;
    ChosenOfMode()[row] = isChosen;
    TellChoice();
}

/// What the filter hides stays as it is.
void Main_Frm::ChangeChoice(const std::function<bool(bool)>& change)
{
    std::vector<bool>& chosen = ChosenOfMode();
    for (std::size_t row = 0; row < chosen.size(); ++row)
        if (!controls_.ObjList->isRowHidden(static_cast<int>(row)))
            chosen[row] = change(chosen[row]);
    ShowChoice();
}

void Main_Frm::ShowChoiceMenu(const QPoint& at)
{
    if (!session_.Objects)
        return;
    auto* menu = new QMenu(this);
    menu->setObjectName("ChoiceMenu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const char* caption, const std::function<bool(bool)>& change) {
        On(menu->addAction(caption), [this, change] { ChangeChoice(change); });
    };
    add("&All", [](bool) { return true; });
    add("&None", [](bool) { return false; });
    add("&Invert", [](bool isChosen) { return !isChosen; });
    menu->addSeparator();
    QAction* sounds = menu->addAction("Keep All &Sounds");
    sounds->setToolTip("Also those that no chosen object makes");
    sounds->setCheckable(true);
    sounds->setChecked(session_.Objects->AllSounds);
    On(sounds, [this, sounds] { session_.Objects->AllSounds = sounds->isChecked(); });
    menu->popup(controls_.ObjList->viewport()->mapToGlobal(at));
}

} // namespace morlik
