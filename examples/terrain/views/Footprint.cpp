#include "views/Footprint.h"

#include "documents/Raster.h"
#include "io/ReferenceSystem.h"

#include <algorithm>

namespace terrain {

namespace {

const double s_earth_radius = 6371000; ///< metres
const double s_lowest_cosine = 0.05; ///< keeps cells at the poles from shrinking to nothing

bool is_length(double number)
{
    return std::isfinite(number) && number > 0;
}

} // namespace

Footprint::Footprint(const Raster& raster)
{
    if (!raster.geotransform) {
        return;
    }
    const std::array<double, 6>& g = *raster.geotransform;
    double width = std::hypot(g[1], g[4]);
    double height = std::hypot(g[2], g[5]);
    if (!is_length(width) || !is_length(height)) {
        return;
    }
    const CoordinateUnit unit = coordinate_unit(raster.reference_system);
    if (is_length(unit.factor)) {
        const double factor = unit.angular ? unit.factor * s_earth_radius : unit.factor;
        width *= factor;
        height *= factor;
        in_metres = true;
    }
    if (unit.angular) {
        const double latitude = (g[3] + g[4] * raster.columns / 2 + g[5] * raster.rows / 2) * unit.factor;
        width *= std::max(std::cos(latitude), s_lowest_cosine);
    }
    angular = unit.angular;
    cell_width = width;
    cell_height = height;
    columns_run_west = g[1] < 0;
    rows_run_north = g[5] > 0;
}

std::optional<QTransform> ground_of_map(const Raster& raster, const Footprint& footprint)
{
    if (!raster.geotransform) {
        return {};
    }
    const std::array<double, 6>& g = *raster.geotransform;
    const QTransform ground(g[1], g[4], g[2], g[5], g[0], g[3]);
    if (!ground.isInvertible()) {
        return {};
    }
    return map_of_cells(QSize(raster.columns, raster.rows), footprint) * ground;
}

QTransform map_of_cells(const QSize& cells, const Footprint& footprint)
{
    const bool west = footprint.columns_run_west;
    const bool north = footprint.rows_run_north;
    return QTransform(
        west ? -1 : 1, 0, 0, north ? -1 : 1, west ? cells.width() : 0, north ? cells.height() : 0);
}

QRect on_map(const QRect& cells, const QSize& size, const Footprint& footprint)
{
    return map_of_cells(size, footprint).mapRect(cells);
}

} // namespace terrain
