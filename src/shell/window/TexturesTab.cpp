#include "shell/window/TexturesTab.h"

#include "convert/Pixels.h"

#include <QCache>
#include <QGraphicsItem>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace morlik
{

namespace
{

constexpr int kMostTilesShown = 1024; ///< more than the games' memory took
constexpr int kMostImageSide = 4096;
constexpr double kZoomPerStep = 1.25;
constexpr double kWheelStep = 120;

constexpr int CellOf(std::int64_t place)
{
    return static_cast<int>(place * kTileSide);
}

} // namespace

/// The tiles in rows, as near to a square as they come. Each is decoded when it is first seen.
class TileItem : public QGraphicsItem
{
public:
    explicit TileItem(const LevelData& level)
        : pixels_(level, PixelOrder::Rgb),
          count_(static_cast<int>(
              std::min<std::int64_t>(pixels_.NumRows() / kTileSide, kMostTilesShown))),
          columns_(std::max(1, static_cast<int>(std::ceil(std::sqrt(count_)))))
    {
        setFlag(QGraphicsItem::ItemUsesExtendedStyleOption); // tells what is seen
    }

    QRectF boundingRect() const override
    {
        return {0, 0, double(CellOf(columns_)), double(CellOf((count_ + columns_ - 1) / columns_))};
    }

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* /*on*/) override
    {
        for (int tile = 0; tile < count_; ++tile)
            if (const QPoint corner = CornerOf(tile);
                option->exposedRect.intersects(QRectF(corner, QSize(kTileSide, kTileSide))))
                painter->drawImage(corner, ImageOf(tile));
    }

    QPoint CornerOf(int tile) const { return {CellOf(tile % columns_), CellOf(tile / columns_)}; }

    /// The number of the tile at a place, or of one that isn't there.
    int TileAt(const QPointF& place) const
    {
        return boundingRect().contains(place) ? static_cast<int>(place.y()) / kTileSide * columns_ +
                                                    static_cast<int>(place.x()) / kTileSide
                                              : -1;
    }

    QRectF BoxOf(const TextInfo& texture) const
    {
        if (texture.Tile < 0 || texture.Tile >= count_)
            return {};
        const QPoint corner = CornerOf(texture.Tile) + QPoint(texture.X, texture.Y);
        return {corner, QSize(texture.Width + 1, texture.Height + 1)};
    }

private:
    QImage ImageOf(int tile)
    {
        if (const QImage* image = images_.object(tile); image != nullptr)
            return *image;
        auto* image = new QImage(kTileSide, kTileSide, QImage::Format_RGB888);
        for (int y = 0; y < kTileSide; ++y)
            pixels_.ConvertRow(std::int64_t{tile} * kTileSide + y,
                               reinterpret_cast<std::byte*>(image->scanLine(y)));
        QImage copy = *image;
        images_.insert(tile, image); // takes it
        return copy;
    }

    PixelConverter pixels_;
    int count_;
    int columns_;
    QCache<int, QImage> images_{128};
};

TexturesTab::TexturesTab() : view_(new QGraphicsView(&scene_))
{
    setObjectName("TexturesTab");
    view_->setObjectName("TileView");
    view_->setAccessibleName("Texture tiles");
    view_->setToolTip("Click a texture to learn of it; zoom with the wheel or + and -, see all "
                      "tiles by Home");
    view_->setDragMode(QGraphicsView::ScrollHandDrag);
    view_->setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
    view_->installEventFilter(this);
    view_->viewport()->installEventFilter(this);
    view_->viewport()->setCursor(Qt::ArrowCursor);
    facts_ = new QLabel;
    facts_->setObjectName("TextureFacts");
    facts_->setTextFormat(Qt::PlainText);
    facts_->setWordWrap(true);
    facts_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* column = new QVBoxLayout(this);
    column->addWidget(view_, 1);
    column->addWidget(facts_);
}

void TexturesTab::Show(const LevelData* level, std::function<QStringList(std::int32_t)> usersOf)
{
    level_ = level;
    usersOf_ = std::move(usersOf);
    outlined_.clear();
    scene_.clear();
    tiles_ = nullptr;
    facts_->clear();
    if (level == nullptr)
        return;
    tiles_ = new TileItem(*level);
    scene_.addItem(tiles_);
    QPen pen(Qt::yellow);
    pen.setCosmetic(true);
    outline_ = scene_.addPath({}, pen);
    pen.setColor(Qt::cyan);
    pen.setWidth(2);
    picked_ = scene_.addRect({}, pen);
    scene_.setSceneRect(tiles_->boundingRect());
    Fit();
}

void TexturesTab::Outline(const TextureList& textures)
{
    if (tiles_ == nullptr)
        return;
    outlined_ = textures;
    QPainterPath path;
    for (const std::int32_t texture : textures)
        path.addRect(tiles_->BoxOf(level_->Textures[static_cast<std::size_t>(texture)].Info));
    outline_->setPath(path);
}

QImage TexturesTab::Image() const
{
    if (tiles_ == nullptr || scene_.sceneRect().isEmpty())
        return {};
    QSize size = scene_.sceneRect().size().toSize();
    if (std::max(size.width(), size.height()) > kMostImageSide)
        size.scale(kMostImageSide, kMostImageSide, Qt::KeepAspectRatio);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    tiles_->scene()->render(&painter);
    return image;
}

void TexturesTab::Zoom(double times)
{
    constexpr double kLeast = 1.0 / 64;
    constexpr double kMost = 64;
    const double scale = std::clamp(view_->transform().m11() * times, kLeast, kMost);
    view_->setTransform(QTransform::fromScale(scale, scale));
}

void TexturesTab::Fit()
{
    view_->fitInView(scene_.sceneRect(), Qt::KeepAspectRatio);
}

/// Tells of the texture at a place: of those that overlap there one of the selected object, else
/// the smallest.
void TexturesTab::TellOf(const QPointF& place)
{
    if (tiles_ == nullptr)
        return;
    std::int32_t found = -1;
    std::pair<bool, double> best; // whether it is outlined, then how small it is
    for (std::size_t i = 0; i < level_->Textures.size(); ++i) {
        const LevelTexture& texture = level_->Textures[i];
        const auto number = static_cast<std::int32_t>(i);
        const QRectF box = tiles_->BoxOf(texture.Info);
        if (texture.TextureRemap != number || !box.contains(place))
            continue; // another one with the same box stands for it
        const std::pair rank{std::ranges::binary_search(outlined_, number),
                             1 / (box.width() * box.height())};
        if (found < 0 || rank > best) {
            found = number;
            best = rank;
        }
    }
    if (found < 0) {
        const int tile = tiles_->TileAt(place);
        picked_->setRect({});
        facts_->setText(tile < 0 ? QString() : QString("Tile %1: no texture here").arg(tile));
        return;
    }
    const LevelTexture& texture = level_->Textures[static_cast<std::size_t>(found)];
    picked_->setRect(tiles_->BoxOf(texture.Info));
    constexpr qsizetype kMostNames = 8;
    QStringList users = usersOf_(found);
    const qsizetype more = users.size() - kMostNames;
    if (more > 0)
        users = users.mid(0, kMostNames) << QString("%1 more").arg(more);
    facts_->setText(QString("Texture %1: tile %2, at %3, %4; %5 \u00d7 %6 pixels, attribute %7; ")
                        .arg(found)
                        .arg(texture.Info.Tile)
                        .arg(texture.Info.X)
                        .arg(texture.Info.Y)
                        .arg(texture.Info.Width + 1)
                        .arg(texture.Info.Height + 1)
                        .arg(texture.Attribute) +
                    (users.isEmpty() ? "no object uses it" : "used by " + users.join(", ")));
}

bool TexturesTab::eventFilter(QObject* object, QEvent* event)
{
    constexpr int kClickSlack = 3; // pixels that a hand moves in a click
    switch (event->type()) {
    case QEvent::Wheel:
        Zoom(std::pow(kZoomPerStep,
                      static_cast<QWheelEvent*>(event)->angleDelta().y() / kWheelStep));
        return true;
    case QEvent::MouseButtonPress:
        pressed_ = static_cast<QMouseEvent*>(event)->position().toPoint();
        break;
    case QEvent::MouseButtonRelease: {
        const QPoint at = static_cast<QMouseEvent*>(event)->position().toPoint();
        if ((at - pressed_).manhattanLength() <= kClickSlack)
            TellOf(view_->mapToScene(at));
        break;
    }
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Plus || key == Qt::Key_Equal)
            Zoom(kZoomPerStep);
        else if (key == Qt::Key_Minus)
            Zoom(1 / kZoomPerStep);
        else if (key == Qt::Key_Home)
            Fit();
        else
            break;
        return true;
    }
    default:
        break;
    }
    return QWidget::eventFilter(object, event);
}

} // namespace morlik
