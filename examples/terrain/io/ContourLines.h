#pragma once

#include <QtCore/QPointF>

#include <vector>

namespace terrain {

struct Raster;

/// A line of equal height.
struct ContourLine
{
    double height; ///< in the raster's units
    std::vector<QPointF> points; ///< columns and rows of cells, from the upper left corner of the raster
};

/**
 * The contour lines of a raster, from GDAL's contour generator, at all multiples of an interval. Heights
 * stand for the middles of cells; lines end where cells hold no data.
 *
 * Any thread, while nobody changes the raster.
 * @param interval in the raster's units, above 0
 * @throws housekeeping::HousekeepingException if GDAL cannot make them, or there would be more than
 * most_contour_heights heights
 */
std::vector<ContourLine> contour_lines(const Raster& raster, double interval);

constexpr int most_contour_heights = 1000;

/// An interval that is easy to read, 1, 2 or 5 times a power of ten, and gives about ten to twenty heights
/// between two heights; 1 if they are equal or no numbers.
double contour_interval(double lowest, double highest);

} // namespace terrain
