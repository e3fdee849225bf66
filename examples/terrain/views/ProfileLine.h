#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSize>

#include <optional>

class QPainter;
class QTransform;

namespace terrain {

struct Footprint;

/// Where a profile runs on a map: along a row or a column of cells, through a cell that is marked. A plain
/// value.
struct ProfileLine
{
    bool is_row = true; ///< else a column
    int column = 0; ///< the marked cell, as the raster counts it
    int row = 0;
    /// The place on the line that is marked besides: a column or row, as the map counts them from its left or
    /// upper edge.
    std::optional<int> pointed;
};

inline bool operator==(const ProfileLine& one, const ProfileLine& other)
{
    return one.is_row == other.is_row && one.column == other.column && one.row == other.row
        && one.pointed == other.pointed;
}

/// How a map's cells lie in a widget.
struct CellsOnWidget
{
    QSize cells; ///< columns and rows of the raster
    const Footprint& footprint;
    const QTransform& to_widget; ///< from columns and rows of the map
};

/// Draws the line across the map, with light and dark beside each other, so that it is seen on every ground;
/// a ring at its cell, and a dot with a bar across the line at the place that is pointed at. Nothing where
/// the cell is not in the raster. @param area what is seen of the widget
void draw_profile_line(
    QPainter& painter, const ProfileLine& line, const CellsOnWidget& map, const QRectF& area);

/// The place on the line, as ProfileLine::pointed, that is beside a point of the widget; nothing if the line
/// is not near.
std::optional<int> place_on_line(const ProfileLine& line, const CellsOnWidget& map, const QPointF& point);

} // namespace terrain
