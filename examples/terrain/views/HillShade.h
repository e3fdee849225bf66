#pragma once

#include "documents/Raster.h"
#include "views/Footprint.h"
#include "views/HeightSampler.h"
#include "views/Shading.h"

#include <QtCore/QSizeF>
#include <QtGui/QImage>

#include <vector>

namespace terrain {

/**
 * A picture of a raster as a map: the colours show the height, the shading is that of a light in the
 * north-west. Cells without data are transparent. North is at the top, west at the left.
 *
 * The heights are exaggerated so that the relief shows, however low or steep the terrain is and whatever its
 * units are. Large rasters are drawn smaller: one pixel then stands for a square of cells, for their mean or
 * for the one in the middle.
 *
 * A plain value, which does not look at the raster any more; it may be made in any thread while nobody
 * changes the raster.
 */
class HillShade
{
public:
    static constexpr int max_side = 2000; ///< pixels
    using Sampling = terrain::Sampling;

    /// What the picture shows.
    struct Look
    {
        bool colours = true; ///< for heights; grey without
        bool relief = true; ///< the shading; even light without
    };

    /// @throws housekeeping::HousekeepingException if GDAL cannot shade
    HillShade(const Raster& raster, const Footprint& footprint, Sampling sampling = Sampling::Mean)
        : HillShade(raster, footprint, sampling, Look())
    { }
    HillShade(const Raster& raster, const Footprint& footprint, Sampling sampling, const Look& look);

    /**
     * Shows that some cells have other heights, of a raster of the same shape. Paints only what changed and,
     * if that is enough, keeps how the heights become colours and shades.
     * @param cells columns and rows, as the raster stores them
     * @return whether it was enough; if not, all of the picture is new
     * @throws housekeeping::HousekeepingException if GDAL cannot shade
     */
    bool refresh(const Raster& raster, const QRect& cells);

    /// Paints the picture anew if it looks different. @throws housekeeping::HousekeepingException if GDAL
    /// cannot shade
    void show(const Look& look);

    /**
     * A part of the same picture in more detail, or in less: with the same colours and light, so that it fits
     * to other parts.
     * @param raster as it was when the picture was made @param cells_per_pixel of the part
     * @param pixels of the part; what lies outside of the map is left out
     * @throws housekeeping::HousekeepingException if GDAL cannot shade
     */
    QImage detail(const Raster& raster, int cells_per_pixel, const QRect& pixels) const;
    /// The size of the whole picture in such detail.
    QSize size_in_detail(int cells_per_pixel) const;

    /// Where cells, as the raster stores them, lie on the map.
    QRect on_map(const QRect& cells) const;

    const QImage& picture() const { return m_picture; }
    /// How many cells, along a side, a pixel stands for. The last pixels may reach beyond the raster.
    int cells_per_pixel() const { return m_cells_per_pixel; }
    /// The height of each pixel; nothing else of a raster.
    const Raster& heights() const { return m_heights; }
    /// How the heights became colours and shades.
    const Shading& shading() const { return m_shading; }

    /// Whether any cell holds a height.
    bool has_heights() const { return m_has_heights; }
    /// The range of the heights, of all cells; meaningless if there are none.
    double lowest() const { return m_shading.lowest; }
    double highest() const { return m_shading.highest; }

private:
    void paint();
    void paint_part(const QRect& pixels);
    QSizeF pixel_size(int cells_per_pixel) const;

    Footprint m_footprint;
    Sampling m_sampling;
    QSize m_cells; // columns and rows
    Raster m_heights;
    Shading m_shading;
    std::vector<unsigned char> m_light; // empty until the relief is shown
    Look m_look;
    QImage m_picture;
    int m_cells_per_pixel = 1;
    bool m_has_heights = false;
};

} // namespace terrain
