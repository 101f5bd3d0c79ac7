#include "shell/window/ToolIcons.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <functional>

namespace morlik
{

namespace
{

// Tones that stand out from a light and from a dark toolbar.
const QColor kOutline(0x50, 0x58, 0x64);
const QColor kFolder(0xe8, 0xb0, 0x3c);
const QColor kBlue(0x3c, 0x84, 0xd0);
const QColor kPaper(0xf4, 0xf4, 0xf0);
const QColor kGreen(0x48, 0xa0, 0x58);
const QColor kStone(0xb0, 0x98, 0x78);

void DrawFolder(QPainter& p)
{
    p.setBrush(kFolder.darker(115));
    p.drawPolygon(QPolygonF({{1, 13}, {1, 3}, {6, 3}, {7.5, 5}, {13, 5}, {13, 13}}));
    p.setBrush(kFolder);
    p.drawPolygon(QPolygonF({{1, 14}, {4, 7}, {15.5, 7}, {13, 14}}));
}

void DrawDisk(QPainter& p)
{
    p.setBrush(kBlue);
    p.drawPolygon(QPolygonF({{2, 2}, {12, 2}, {14, 4}, {14, 14}, {2, 14}}));
    p.setBrush(kPaper);
    p.drawRect(QRectF(5, 2, 6, 4));
    p.drawRect(QRectF(4, 9, 8, 5));
}

/// A figure that walks: what moves.
void DrawFigure(QPainter& p)
{
    p.setBrush(kGreen);
    p.drawEllipse(QPointF(8.5, 3), 2, 2);
    p.setPen(QPen(kGreen, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPolyline(QPolygonF({{4, 9}, {6, 6.5}, {8.5, 6}, {11, 8.5}, {13, 8}}));
    p.drawPolyline(QPolygonF({{8.5, 6}, {8, 10}, {5, 12}, {3.5, 14.5}}));
    p.drawPolyline(QPolygonF({{8, 10}, {10.5, 12}, {11, 14.5}}));
}

/// A pillar: what stands.
void DrawPillar(QPainter& p)
{
    p.setBrush(kStone);
    p.drawRect(QRectF(3, 1.5, 10, 2.5));
    p.drawRect(QRectF(5, 4, 6, 8));
    p.drawRect(QRectF(3, 12, 10, 2.5));
    p.drawLine(QPointF(7, 5), QPointF(7, 11));
    p.drawLine(QPointF(9, 5), QPointF(9, 11));
}

/// A star: a flat picture.
void DrawStar(QPainter& p)
{
    p.setBrush(QColor(0xe8, 0xd0, 0x40));
    p.drawPolygon(QPolygonF({{8, 1},
                             {9.8, 6},
                             {15, 6.2},
                             {10.9, 9.4},
                             {12.4, 14.5},
                             {8, 11.5},
                             {3.6, 14.5},
                             {5.1, 9.4},
                             {1, 6.2},
                             {6.2, 6}}));
}

void Draw(QPainter& p, ToolPicture picture)
{
    switch (picture) {
    case ToolPicture::Open:
        return DrawFolder(p);
    case ToolPicture::Save:
        return DrawDisk(p);
    case ToolPicture::Moveables:
        return DrawFigure(p);
    case ToolPicture::Statics:
        return DrawPillar(p);
    case ToolPicture::Sprites:
        return DrawStar(p);
    }
}

/// A crate, as in the picture of the desktop entry: on the left side a texture of four squares.
void DrawCrate(QPainter& p)
{
    const QPen edge(kOutline, 0.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(edge);
    p.setBrush(QColor(0xf0, 0xc8, 0x68));
    p.drawPolygon(QPolygonF({{8, 1}, {14.5, 4.25}, {8, 7.5}, {1.5, 4.25}}));
    p.setBrush(kFolder);
    p.drawPolygon(QPolygonF({{1.5, 4.25}, {8, 7.5}, {8, 15}, {1.5, 11.75}}));
    p.setBrush(QColor(0xb8, 0x8a, 0x2c));
    p.drawPolygon(QPolygonF({{14.5, 4.25}, {8, 7.5}, {8, 15}, {14.5, 11.75}}));
    p.setPen(QPen(kOutline, 0.3));
    int square = 0;
    for (const QColor& colour : {kGreen, kPaper, kStone, kBlue}) {
        const int column = square % 2;
        const int row = square / 2;
        ++square;
        const QPointF at(2.5 + column * 2.5, 5.9 + column * 1.25 + row * 2.9);
        p.setBrush(colour);
        p.drawPolygon(
            QPolygonF({at, at + QPointF(2, 1), at + QPointF(2, 3.2), at + QPointF(0, 2.2)}));
    }
}

/// Draws at each of these multiples of 16 pixels.
QIcon MakeIcon(std::initializer_list<int> scales, const std::function<void(QPainter&)>& draw)
{
    QIcon icon;
    for (const int scale : scales) {
        QPixmap pixmap(16 * scale, 16 * scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        draw(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

QIcon ProgramIcon()
{
    return MakeIcon({1, 2, 3, 4, 8, 16}, DrawCrate);
}

QIcon ToolIcon(ToolPicture picture)
{
    return MakeIcon({1, 2, 3}, [picture](QPainter& painter) {
        painter.setPen(QPen(kOutline, 0.8));
        Draw(painter, picture);
    });
}

} // namespace morlik
