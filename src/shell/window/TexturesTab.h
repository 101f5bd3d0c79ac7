#pragma once

#include "convert/ObjectNeeds.h"
#include "level/LevelData.h"

#include <QGraphicsView>
#include <QLabel>
#include <functional>

namespace morlik
{

class TileItem;

/// All tiles of a level in one picture, with the textures of the selected object outlined. A click
/// on a texture tells of it; the wheel zooms, a drag moves, + and - zoom, Home shows all.
class TexturesTab : public QWidget
{
public:
    TexturesTab();

    /// Shows the tiles of a level, or none; the level must stay until the next call. `usersOf`
    /// gives the names of the objects that use a texture.
    void Show(const LevelData* level, std::function<QStringList(std::int32_t)> usersOf);
    /// Outlines the boxes of these textures.
    void Outline(const TextureList& textures);

    QImage Image() const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Zoom(double times);
    void Fit();
    void TellOf(const QPointF& place);

    const LevelData* level_ = nullptr;
    std::function<QStringList(std::int32_t)> usersOf_;
    TextureList outlined_;
    QGraphicsScene scene_;
    QGraphicsView* view_;
    QLabel* facts_;
    TileItem* tiles_ = nullptr; ///< owned by the scene, as the next two
    QGraphicsPathItem* outline_ = nullptr;
    QGraphicsRectItem* picked_ = nullptr;
    QPoint pressed_; ///< where the mouse button went down
};

} // namespace morlik
