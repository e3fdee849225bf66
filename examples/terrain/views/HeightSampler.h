#pragma once

#include "documents/Raster.h"

class QRect;

namespace terrain {

struct Footprint;

/// What a pixel that stands for many cells shows.
enum class Sampling
{
    Mean,
    Nearest ///< much faster, but what is small may be missing
};

/**
 * Takes the heights of a map from the cells of a raster: north at the top, west at the left, one height for
 * each square of cells. Looks at raster and footprint, which must outlive it. Any thread, while nobody
 * changes the raster.
 */
class HeightSampler
{
public:
    /// @param cells_per_pixel the side of the squares
    HeightSampler(const Raster& raster, const Footprint& footprint, int cells_per_pixel, Sampling sampling);

    /// The heights of a part of the map, and nothing else of a raster. @param pixels inside of the
    /// map; the last ones may reach beyond the raster
    Raster heights(const QRect& pixels) const;

private:
    double nearest(int column, int row) const;
    double mean(int column, int row) const;
    double cell(int u, int v) const;

    const Raster& m_raster;
    const Footprint& m_footprint;
    int m_step;
    Sampling m_sampling;
};

} // namespace terrain
