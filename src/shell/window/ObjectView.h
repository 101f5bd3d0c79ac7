#pragma once

#include "picture/Render.h"

#include <QImage>
#include <QWidget>
#include <optional>

namespace morlik
{

/// A picture for the toolkit.
QImage ToImage(const Picture& picture);

/// An object, seen from all sides. The left mouse button turns it, the others move it, the wheel
/// zooms, a double click frames it; the arrow keys turn it and, with Shift, move it, + and - zoom,
/// Home frames it.
class ObjectView : public QWidget
{
public:
    explicit ObjectView(const char* name);

    /// Shows a scene from where the last one was seen. The textures must stay as long as it.
    void Show(Scene scene, TexturePixels& textures);
    /// Shows a text in place of an object.
    void ShowText(const QString& text);
    /// Looks at the whole of the object, from where the camera is or from where it was first.
    void Frame();
    void FrameAnew();
    void SetWireframe(bool isOn);

    /// What is to be seen, without anything around it; null where that is no object.
    QImage Image();

    QSize sizeHint() const override { return {360, 320}; }
    QSize minimumSizeHint() const override { return {160, 120}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Turn(double yaw, double pitch);
    /// By parts of the picture's height.
    void Move(double x, double y);
    void Zoom(double times);
    void DrawAnew();
    QSize PixelSize() const;

    std::optional<Scene> scene_;
    TexturePixels* textures_ = nullptr;
    Camera camera_ = ObliqueCamera();
    bool wireframe_ = false;
    QString text_; ///< where there is no scene, or it can't be drawn
    QImage image_; ///< null where it is to be drawn
    QPointF last_; ///< of the mouse, while a button is held
};

} // namespace morlik
