#include "help/HelpIcons.h"

#include "help/HelpWindow.h"
#include "windows/Icons.h"

#include <QtGui/QPainter>

namespace terrain {

namespace {

void draw_back(QPainter& painter)
{
    painter.drawLine(QPointF(4, 12), QPointF(20, 12));
    painter.drawPolyline(QPolygonF({{10.5, 5.5}, {4, 12}, {10.5, 18.5}}));
}

void draw_forward(QPainter& painter)
{
    painter.drawLine(QPointF(4, 12), QPointF(20, 12));
    painter.drawPolyline(QPolygonF({{13.5, 5.5}, {20, 12}, {13.5, 18.5}}));
}

/// A list with its bullets.
void draw_contents(QPainter& painter)
{
    for (const double y : {6.0, 12.0, 18.0}) {
        painter.drawPoint(QPointF(4.5, y));
        painter.drawLine(QPointF(9, y), QPointF(20, y));
    }
}

/// A letter, and beside it what happens to it.
void draw_letter(QPainter& painter)
{
    painter.drawPolyline(QPolygonF({{2.5, 19}, {8, 5}, {13.5, 19}}));
    painter.drawLine(QPointF(4.6, 14), QPointF(11.4, 14));
    painter.drawLine(QPointF(16.5, 7.5), QPointF(22, 7.5));
}

void draw_larger(QPainter& painter)
{
    draw_letter(painter);
    painter.drawLine(QPointF(19.25, 4.75), QPointF(19.25, 10.25));
}

void draw_lens(QPainter& painter)
{
    painter.drawEllipse(QPointF(10.5, 10.5), 6.5, 6.5);
    painter.drawLine(QPointF(15.3, 15.3), QPointF(20.5, 20.5));
}

void draw_printer(QPainter& painter)
{
    painter.drawPolyline(QPolygonF({{7, 9}, {7, 3.5}, {17, 3.5}, {17, 9}}));
    painter.drawPolyline(QPolygonF({{7, 17}, {3.5, 17}, {3.5, 9}, {20.5, 9}, {20.5, 17}, {17, 17}}));
    painter.drawRect(QRectF(7, 13.5, 10, 7));
}

/// An arrow that leaves a window.
void draw_outside(QPainter& painter)
{
    painter.drawPolyline(QPolygonF({{10, 5}, {4, 5}, {4, 20}, {19, 20}, {19, 14}}));
    painter.drawLine(QPointF(11, 13), QPointF(20, 4));
    painter.drawPolyline(QPolygonF({{14, 4}, {20, 4}, {20, 10}}));
}

Drawing drawing_of(HelpDeed deed)
{
    switch (deed) {
    case HelpDeed::Back:
        return &draw_back;
    case HelpDeed::Forward:
        return &draw_forward;
    case HelpDeed::Contents:
        return &draw_contents;
    case HelpDeed::Larger:
        return &draw_larger;
    case HelpDeed::Smaller:
        return &draw_letter;
    case HelpDeed::Find:
        return &draw_lens;
    case HelpDeed::Print:
        return &draw_printer;
    case HelpDeed::OpenOutside:
        return &draw_outside;
    default:
        return nullptr;
    }
}

} // namespace

QIcon icon_of(HelpDeed deed, const QPalette& palette)
{
    return drawn_icon(drawing_of(deed), palette);
}

} // namespace terrain
