#include "shell/window/SpritesTab.h"

#include "base/Bytes.h"
#include "picture/ContactSheet.h"
#include "shell/window/ObjectView.h"
#include "shell/window/Text.h"

namespace morlik
{

namespace
{

constexpr int kSide = 96; ///< of a picture

} // namespace

SpritesTab::SpritesTab() : list_(new QListWidget)
{
    setObjectName("SpritesTab");
    list_->setObjectName("SpriteList");
    list_->setAccessibleName("Sprites");
    list_->setViewMode(QListView::IconMode);
    list_->setResizeMode(QListView::Adjust);
    list_->setMovement(QListView::Static);
    list_->setWordWrap(true);
    list_->setIconSize({kSide, kSide});
    list_->setGridSize({kSide + 32, kSide + 52});
    auto* column = new QVBoxLayout(this);
    column->addWidget(list_);
    connect(&timer_, &QTimer::timeout, this, [this] { DrawNext(); });
}

void SpritesTab::Show(const SpriteTables* sprites, const QStringList& names)
{
    timer_.stop();
    list_->clear();
    sprites_ = sprites;
    textures_ = sprites == nullptr ? nullptr : std::make_unique<TexturePixels>(sprites->Tiles);
    next_ = 0;
    if (sprites == nullptr)
        return;
    QPixmap blank(kSide, kSide);
    blank.fill(Qt::transparent);
    for (const QString& name : names)
        list_->addItem(new QListWidgetItem(QIcon(blank), name));
    timer_.start();
}

void SpritesTab::DrawNext()
{
    if (next_ >= list_->count()) {
        timer_.stop();
        return;
    }
    QListWidgetItem* item = list_->item(next_);
    try {
        const auto side = static_cast<std::int32_t>(kSide * devicePixelRatioF());
        QPixmap picture = QPixmap::fromImage(ToImage(
            DrawSprites(*sprites_, sprites_->SpriteSequences[static_cast<std::size_t>(next_)], side,
                        0, *textures_)));
        picture.setDevicePixelRatio(devicePixelRatioF());
        item->setIcon(QIcon(picture));
    } catch (const ReadFailure& damage) {
        item->setToolTip(FromText(damage.what()));
    }
    ++next_;
}

QImage SpritesTab::Image()
{
    return list_->grab().toImage();
}

} // namespace morlik
