#pragma once

#include <QtCore/QPointF>

namespace terrain {

/// How a map is looked at.
struct Camera
{
    double scale = 1; ///< pixels for the height of a cell
    QPointF centre; ///< what lies in the middle: columns and rows of cells from the upper left corner
};

/// A camera on the way from one to another: the map seems to be pulled straight to its new size and place.
/// @param part of the way, 0 to 1
Camera between(const Camera& from, const Camera& to, double part);

} // namespace terrain
