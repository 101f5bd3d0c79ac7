#include "shell/window/ObjectView.h"

#include "base/Bytes.h"
#include "shell/window/Text.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace morlik
{

namespace
{

constexpr double kDegreesPerPixel = 0.5;
constexpr double kDegreesPerKey = 10;
constexpr double kPartPerKey = 0.05;
constexpr double kZoomPerStep = 1.2;
constexpr double kWheelStep = 120; ///< of the toolkit's wheel angle
constexpr double kMostPan = 2;

Colour ColourOf(const QColor& colour)
{
    return Opaque(static_cast<std::uint32_t>(colour.red()),
                  static_cast<std::uint32_t>(colour.green()),
                  static_cast<std::uint32_t>(colour.blue()));
}

} // namespace

QImage ToImage(const Picture& picture)
{
    const QImage view(reinterpret_cast<const uchar*>(picture.Pixels.data()), picture.Width,
                      picture.Height, QImage::Format_RGBA8888);
    return view.copy();
}

ObjectView::ObjectView(const char* name)
{
    setObjectName(name);
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    setToolTip("Turn it with the left mouse button or the arrow keys, move it with the right one "
               "or with Shift, zoom with the wheel or + and -, see all of it by a double click or "
               "Home");
    setAccessibleName("Picture of the object");
}

void ObjectView::Show(Scene scene, TexturePixels& textures)
{
    scene_ = std::move(scene);
    textures_ = &textures;
    text_.clear();
    DrawAnew();
}

void ObjectView::ShowText(const QString& text)
{
    scene_.reset();
    textures_ = nullptr;
    text_ = text;
    DrawAnew();
}

void ObjectView::Frame()
{
    camera_.Zoom = 1;
    camera_.PanX = camera_.PanY = 0;
    if (scene_)
        FrameTo(camera_, *scene_, static_cast<double>(width()) / std::max(height(), 1));
    DrawAnew();
}

void ObjectView::FrameAnew()
{
    camera_ = ObliqueCamera();
    Frame();
}

void ObjectView::SetWireframe(bool isOn)
{
    wireframe_ = isOn;
    DrawAnew();
}

void ObjectView::DrawAnew()
{
    image_ = {};
    update();
}

QSize ObjectView::PixelSize() const
{
    const QSize size = (QSizeF(this->size()) * devicePixelRatioF()).toSize();
    return size.boundedTo({kMostPictureSide, kMostPictureSide}).expandedTo({1, 1});
}

QImage ObjectView::Image()
{
    const QSize size = PixelSize();
    if (!scene_ || image_.size() == size)
        return image_;
    const RenderOptions options{.Width = size.width(),
                                .Height = size.height(),
                                .Background = ColourOf(palette().color(QPalette::Base)),
                                .Wireframe = wireframe_,
                                .Edges = ColourOf(palette().color(QPalette::Text))};
    try {
        image_ = ToImage(Render(*scene_, camera_, options, *textures_));
    } catch (const ReadFailure& damage) {
        ShowText(FromText(damage.what()));
    }
    return image_;
}

void ObjectView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (const QImage image = Image(); !image.isNull())
        painter.drawImage(rect(), image);
    else
        painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, text_);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void ObjectView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    DrawAnew();
}

void ObjectView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        DrawAnew();
}

void ObjectView::Turn(double yaw, double pitch)
{
    camera_.Yaw = std::fmod(camera_.Yaw + yaw, 360.0);
    camera_.Pitch = std::clamp(camera_.Pitch + pitch, -90.0, 90.0);
    DrawAnew();
}

void ObjectView::Move(double x, double y)
{
    camera_.PanX = std::clamp(camera_.PanX + x, -kMostPan, kMostPan);
    camera_.PanY = std::clamp(camera_.PanY + y, -kMostPan, kMostPan);
    DrawAnew();
}

void ObjectView::Zoom(double times)
{
    camera_.Zoom = std::clamp(camera_.Zoom * times, kLeastZoom, kMostZoom);
    DrawAnew();
}

void ObjectView::mousePressEvent(QMouseEvent* event)
{
    last_ = event->position();
}

void ObjectView::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF way = event->position() - last_;
    last_ = event->position();
    if (event->buttons().testFlag(Qt::LeftButton))
        Turn(way.x() * kDegreesPerPixel, way.y() * kDegreesPerPixel);
    else
        Move(way.x() / std::max(height(), 1), way.y() / std::max(height(), 1));
}

void ObjectView::mouseDoubleClickEvent(QMouseEvent* event)
{
    last_ = event->position();
    Frame();
}

void ObjectView::wheelEvent(QWheelEvent* event)
{
    Zoom(std::pow(kZoomPerStep, event->angleDelta().y() / kWheelStep));
    event->accept();
}

void ObjectView::keyPressEvent(QKeyEvent* event)
{
    const bool moves = event->modifiers().testFlag(Qt::ShiftModifier);
    const auto turnOrMove = [&](int x, int y) {
        if (moves)
            Move(x * kPartPerKey, y * kPartPerKey);
        else
            Turn(x * kDegreesPerKey, y * kDegreesPerKey);
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return turnOrMove(-1, 0);
    case Qt::Key_Right:
        return turnOrMove(1, 0);
    case Qt::Key_Up:
        return turnOrMove(0, -1);
    case Qt::Key_Down:
        return turnOrMove(0, 1);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return Zoom(kZoomPerStep);
    case Qt::Key_Minus:
        return Zoom(1 / kZoomPerStep);
    case Qt::Key_Home:
        return Frame();
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace morlik
