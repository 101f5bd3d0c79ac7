#include "shell/window/PicturePane.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace morlik
{

PicturePane::PicturePane()
    : Object(new ObjectTab),
      Textures(new TexturesTab),
      Sprites(new SpritesTab),
      Save(new QPushButton("Save &Picture\u2026")),
      Copy(new QPushButton("&Copy Picture")),
      tabs_(new QTabWidget)
{
    setObjectName("PicturePane");
    tabs_->setObjectName("PictureTabs");
    tabs_->addTab(Object, "Object");
    tabs_->addTab(Textures, "Textures");
    tabs_->addTab(Sprites, "Sprites");
    Save->setObjectName("SavePicture");
    Copy->setObjectName("CopyPicture");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Save);
    buttons->addWidget(Copy);
    auto* column = new QVBoxLayout(this);
    column->addWidget(tabs_, 1);
    column->addLayout(buttons);
    ShowSprites(false);
}

void PicturePane::ShowSprites(bool isShown)
{
    tabs_->setTabVisible(tabs_->indexOf(Sprites), isShown);
}

void PicturePane::TakeRooms(QWidget& rooms)
{
    if (tabs_->indexOf(&rooms) < 0)
        tabs_->addTab(&rooms, "Rooms");
}

QImage PicturePane::Image()
{
    QWidget* const shown = tabs_->currentWidget();
    if (shown == Object)
        return Object->Image();
    if (shown == Textures)
        return Textures->Image();
    if (shown == Sprites)
        return Sprites->Image();
    return shown->grab().toImage();
}

} // namespace morlik
