#include "views/ProfileLine.h"

#include "views/Footprint.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_core = 2; ///< how thick the lines are
const double s_casing = 4.4; ///< and what is light below them
const double s_ring = 5.5; ///< radius
const double s_dot = 4; ///< radius
const double s_bar = 10; ///< half its length
const double s_beyond = 8; ///< pixels that a line reaches beyond what is seen
const double s_near = 8; ///< pixels

const QColor s_dark(20, 20, 20);
const QColor s_light(255, 255, 255, 225);
const QColor s_signal(255, 120, 0); ///< of the dot; it has a rim of the other two

bool is_in_raster(const ProfileLine& line, const QSize& cells)
{
    return line.column >= 0 && line.row >= 0 && line.column < cells.width() && line.row < cells.height();
}

/// The middle of a cell that the raster counts, in the map's columns and rows.
QPointF middle_on_map(const ProfileLine& line, const CellsOnWidget& map)
{
    return map_of_cells(map.cells, map.footprint).map(QPointF(line.column + 0.5, line.row + 0.5));
}

/// Draws something twice: light and broad, then dark and thin.
template <class Draw>
void draw_twice(QPainter& painter, Draw draw)
{
    for (const auto& [colour, width] : {std::pair(s_light, s_casing), std::pair(s_dark, s_core)}) {
        painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::FlatCap));
        draw();
    }
}

/// A line through a point of the widget, as long as the raster, or as what is seen of it.
QLineF across(const ProfileLine& line, const CellsOnWidget& map, const QPointF& through, const QRectF& area)
{
    const QRectF raster = map.to_widget.mapRect(QRectF(QPointF(0, 0), QSizeF(map.cells)));
    const QRectF seen = raster & area.adjusted(-s_beyond, -s_beyond, s_beyond, s_beyond);
    return line.is_row ? QLineF(seen.left(), through.y(), seen.right(), through.y())
                       : QLineF(through.x(), seen.top(), through.x(), seen.bottom());
}

void draw_pointed(QPainter& painter, const QPointF& at, bool is_row)
{
    const QPointF half = is_row ? QPointF(0, s_bar) : QPointF(s_bar, 0);
    draw_twice(painter, [&] { painter.drawLine(at - half, at + half); });
    painter.setBrush(s_signal);
    draw_twice(painter, [&] { painter.drawEllipse(at, s_dot, s_dot); });
    painter.setBrush(Qt::NoBrush);
}

} // namespace

void draw_profile_line(
    QPainter& painter, const ProfileLine& line, const CellsOnWidget& map, const QRectF& area)
{
    if (!is_in_raster(line, map.cells)) {
        return;
    }
    const QPointF middle = middle_on_map(line, map);
    const QPointF at = map.to_widget.map(middle);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    draw_twice(painter, [&] { painter.drawLine(across(line, map, at, area)); });
    draw_twice(painter, [&] { painter.drawEllipse(at, s_ring, s_ring); });
    const int places = line.is_row ? map.cells.width() : map.cells.height();
    if (line.pointed && *line.pointed >= 0 && *line.pointed < places) {
        const double place = *line.pointed + 0.5;
        const QPointF pointed = line.is_row ? QPointF(place, middle.y()) : QPointF(middle.x(), place);
        draw_pointed(painter, map.to_widget.map(pointed), line.is_row);
    }
    painter.restore();
}

std::optional<int> place_on_line(const ProfileLine& line, const CellsOnWidget& map, const QPointF& point)
{
    if (!is_in_raster(line, map.cells)) {
        return {};
    }
    const QPointF away = point - map.to_widget.map(middle_on_map(line, map));
    const QPointF on_map = map.to_widget.inverted().map(point);
    const double place = line.is_row ? on_map.x() : on_map.y();
    const int places = line.is_row ? map.cells.width() : map.cells.height();
    const bool is_near = std::abs(line.is_row ? away.y() : away.x()) <= s_near;
    if (!is_near || !(place >= 0) || !(place < places)) {
        return {};
    }
    return static_cast<int>(place);
}

} // namespace terrain
