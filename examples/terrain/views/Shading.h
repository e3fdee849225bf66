#pragma once

#include <QtCore/QSizeF>
#include <QtGui/QImage>

#include <vector>

namespace terrain {

struct Raster;

/// How heights become colours and shades; the same for all parts of a map, so that they fit together.
/// A plain value.
struct Shading
{
    double lowest = 0; ///< gets the first colour
    double highest = 0; ///< gets the last colour
    double exaggeration = 1; ///< of the slopes, see exaggeration()
};

/// How much steeper slopes must be drawn so that the relief shows, however low or steep the terrain is and
/// whatever its units are. @param heights of the whole map, from lowest to highest of @p shading
/// @param pixel its size on the ground; only the proportion to that of other parts counts
double exaggeration(const Raster& heights, const Shading& shading, const QSizeF& pixel);

/// The light on each pixel from the north-west, from 1 to 255. Not for an empty raster. @param pixel as in
/// exaggeration(). On all cores, in parts that overlap by what a pixel depends on.
/// @throws housekeeping::HousekeepingException if GDAL cannot shade
std::vector<unsigned char> light_on(const Raster& heights, const Shading& shading, const QSizeF& pixel);

/// A picture of heights; transparent where there are none.
/// @param light as from light_on(), or empty for even light @param colours for heights, instead of grey
QImage painted(
    const Raster& heights, const Shading& shading, const std::vector<unsigned char>& light, bool colours);

} // namespace terrain
