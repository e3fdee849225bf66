#include "windows/Icons.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPalette>

namespace terrain {

namespace {

const double s_grid = 24; ///< the drawings are made for a square of this size
const double s_pen_width = 1.7;

/// An open folder.
void draw_open(QPainter& painter)
{
    QPainterPath back(QPointF(3, 19));
    back.lineTo(3, 6);
    back.lineTo(9, 6);
    back.lineTo(11.5, 8.5);
    back.lineTo(18, 8.5);
    back.lineTo(18, 11.5);
    painter.drawPath(back);
    painter.drawPolygon(QPolygonF({{3, 19}, {6.5, 11.5}, {22, 11.5}, {18.5, 19}}));
}

/// A floppy disk.
void draw_save(QPainter& painter)
{
    painter.drawPolygon(QPolygonF({{4, 4}, {16.5, 4}, {20, 7.5}, {20, 20}, {4, 20}}));
    painter.drawPolyline(QPolygonF({{8, 4}, {8, 9}, {15, 9}, {15, 4}}));
    painter.drawPolyline(QPolygonF({{7, 20}, {7, 13.5}, {17, 13.5}, {17, 20}}));
}

/// An arrow that leaves a tray.
void draw_export(QPainter& painter)
{
    painter.drawLine(QPointF(12, 3.5), QPointF(12, 15));
    painter.drawPolyline(QPolygonF({{7.5, 8}, {12, 3.5}, {16.5, 8}}));
    painter.drawPolyline(QPolygonF({{4, 14}, {4, 20}, {20, 20}, {20, 14}}));
}

void draw_lens(QPainter& painter)
{
    painter.drawEllipse(QPointF(10.5, 10.5), 6.5, 6.5);
    painter.drawLine(QPointF(15.3, 15.3), QPointF(20.5, 20.5));
    painter.drawLine(QPointF(7.5, 10.5), QPointF(13.5, 10.5));
}

void draw_zoom_in(QPainter& painter)
{
    draw_lens(painter);
    painter.drawLine(QPointF(10.5, 7.5), QPointF(10.5, 13.5));
}

/// A raster between four corners.
void draw_fit(QPainter& painter)
{
    for (int i = 0; i < 4; ++i) {
        painter.drawPolyline(QPolygonF({{3.5, 8}, {3.5, 3.5}, {8, 3.5}}));
        painter.translate(s_grid / 2, s_grid / 2);
        painter.rotate(90);
        painter.translate(-s_grid / 2, -s_grid / 2);
    }
    painter.drawRect(QRectF(8, 8, 8, 8));
}

void draw_help(QPainter& painter)
{
    painter.drawEllipse(QPointF(12, 12), 9, 9);
    QPainterPath mark(QPointF(9.2, 9.6));
    mark.cubicTo(9.2, 5.6, 15.2, 6, 15, 9.6);
    mark.cubicTo(14.8, 11.6, 12, 11.6, 12, 14);
    painter.drawPath(mark);
    painter.drawPoint(QPointF(12, 17.2));
}

Drawing drawing_of(Deed deed)
{
    switch (deed) {
    case Deed::Open:
        return &draw_open;
    case Deed::Save:
        return &draw_save;
    case Deed::Export:
        return &draw_export;
    case Deed::ZoomIn:
        return &draw_zoom_in;
    case Deed::ZoomOut:
        return &draw_lens;
    case Deed::Fit:
        return &draw_fit;
    case Deed::QuickHelp:
        return &draw_help;
    default:
        return nullptr;
    }
}

QPixmap drawn(Drawing drawing, int size, const QColor& colour)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / s_grid, size / s_grid);
    painter.setPen(QPen(colour, s_pen_width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    drawing(painter);
    return pixmap;
}

} // namespace

QIcon drawn_icon(Drawing drawing, const QPalette& palette)
{
    QIcon icon;
    if (!drawing) {
        return icon;
    }
    for (const int size : {16, 24, 32, 48}) {
        icon.addPixmap(drawn(drawing, size, palette.color(QPalette::Active, QPalette::ButtonText)));
        icon.addPixmap(
            drawn(drawing, size, palette.color(QPalette::Disabled, QPalette::ButtonText)), QIcon::Disabled);
    }
    return icon;
}

QIcon icon_of(Deed deed, const QPalette& palette)
{
    return drawn_icon(drawing_of(deed), palette);
}

} // namespace terrain
