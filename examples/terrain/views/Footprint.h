#pragma once

#include <QtCore/QRect>
#include <QtGui/QTransform>

#include <optional>

namespace terrain {

struct Raster;

/// How the cells of a raster lie on the ground, as far as a map needs to know: rotations are not looked at.
struct Footprint
{
    explicit Footprint(const Raster& raster);

    double cell_width = 1; ///< metres; only in proportion to cell_height if not in_metres
    double cell_height = 1; ///< both are positive
    bool in_metres = false;
    bool angular = false; ///< the coordinates are angles
    bool columns_run_west = false; ///< the first column lies in the east
    bool rows_run_north = false; ///< the first row lies in the south
};

/// From a map's columns and rows, counted from its upper left corner, to the coordinates of the raster's
/// reference system; nothing if the raster does not say where it lies.
std::optional<QTransform> ground_of_map(const Raster& raster, const Footprint& footprint);

/// Between columns and rows as a map counts them, from its upper left corner, and as the raster stores them;
/// the same both ways.
QTransform map_of_cells(const QSize& cells, const Footprint& footprint);
/// The same for whole cells.
QRect on_map(const QRect& cells, const QSize& size, const Footprint& footprint);

} // namespace terrain
