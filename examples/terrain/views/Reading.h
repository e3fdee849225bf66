#pragma once

#include <QtCore/QString>

#include <optional>

class QPointF;

namespace terrain {

struct Footprint;
struct Raster;

/// What a map says about a place.
struct Reading
{
    int column; ///< of the cell, counted from 0
    int row;
    double height; ///< no_data if the cell holds none
};

/// @param place on the map: columns and rows of cells from its upper left corner @return nothing outside
std::optional<Reading> reading_at(const QPointF& place, const Raster& raster, const Footprint& footprint);

/// The same for people: height, cell and the coordinates of its middle.
/// @param raster that it was read from @param unit of the heights; may be empty
/// @param angular whether the coordinates are angles
QString reading_text(const Reading& reading, const Raster& raster, const QString& unit, bool angular);

} // namespace terrain
