#pragma once

#include <QtGui/QImage>

namespace terrain {

struct Footprint;
struct Raster;

/**
 * A picture of a raster as a map: the colours show the height, the shading is that of a light in the
 * north-west. Cells without data are transparent. North is at the top, west at the left.
 *
 * The heights are exaggerated so that the relief shows, however low or steep the terrain is and whatever its
 * units are. Large rasters are drawn smaller: one pixel then stands for a square of cells, for their mean or
 * for the one in the middle.
 *
 * A plain value; it may be made in any thread while nobody changes the raster.
 */
class HillShade
{
public:
    static constexpr int max_side = 2000; ///< pixels

    /// What a pixel that stands for many cells shows.
    enum class Sampling
    {
        Mean,
        Nearest ///< much faster, but what is small may be missing
    };

    /// @throws housekeeping::HousekeepingException if GDAL cannot shade
    HillShade(const Raster& raster, const Footprint& footprint, Sampling sampling = Sampling::Mean);

    const QImage& picture() const { return m_picture; }
    /// How many cells, along a side, a pixel stands for. The last pixels may reach beyond the raster.
    int cells_per_pixel() const { return m_cells_per_pixel; }

    /// Whether any cell holds a height.
    bool has_heights() const { return m_has_heights; }
    /// The range of the heights; meaningless if there are none.
    double lowest() const { return m_lowest; }
    double highest() const { return m_highest; }

private:
    QImage m_picture;
    int m_cells_per_pixel = 1;
    bool m_has_heights = false;
    double m_lowest = 0;
    double m_highest = 0;
};

} // namespace terrain
