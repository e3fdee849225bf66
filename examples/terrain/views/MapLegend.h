#pragma once

#include <QtCore/QRectF>
#include <QtCore/QString>

#include <vector>

class QPainter;
class QPalette;

namespace terrain {

/// What the legend of a map tells.
struct MapLegend
{
    double lowest = 0;
    double highest = 0;
    QString unit; ///< of the heights; may be empty
    bool colours = true; ///< whether colours stand for heights; there are only the heights themselves without
    double contour_interval = 0; ///< 0 if there are no contour lines
};

/// Numbers on the scale of a legend: the ends as they are, round ones between them.
struct LegendTick
{
    double height;
    QString text;
    double fraction; ///< where it stands, from 0 at the lowest height to 1 at the highest one
};

/// The numbers from the lowest to the highest one; a single one if these are equal.
/// @param smallest_fraction how far from each other they must stand at least, from 0 to 1
std::vector<LegendTick> legend_ticks(double lowest, double highest, double smallest_fraction);

/// Draws a legend into the upper right corner of @p area. Texts are in the painter's font.
void draw_legend(QPainter& painter, const QRectF& area, const QPalette& palette, const MapLegend& legend);

} // namespace terrain
