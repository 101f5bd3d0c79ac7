#pragma once

#include "shell/window/ObjectTab.h"
#include "shell/window/SpritesTab.h"
#include "shell/window/TexturesTab.h"

#include <QTabWidget>

namespace morlik
{

/// The pane that shows what is in a level, in tabs, with the buttons that save and copy what is to
/// be seen there.
class PicturePane : public QWidget
{
public:
    PicturePane();

    ObjectTab* Object;
    TexturesTab* Textures;
    SpritesTab* Sprites;
    QPushButton* Save;
    QPushButton* Copy;

    /// Shows or hides the tab of the sprites, which not every game has.
    void ShowSprites(bool isShown);
    /// Gives a list of rooms a tab.
    void TakeRooms(QWidget& rooms);

    bool IsObjectOnTop() const { return tabs_->currentWidget() == Object; }
    /// The picture of the tab on top; null where it shows none.
    QImage Image();

private:
    QTabWidget* tabs_;
};

} // namespace morlik
