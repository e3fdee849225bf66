#include "views/HillShade.h"

#include "views/Footprint.h"

#include <algorithm>

namespace terrain {

namespace {

const std::vector<unsigned char> s_even_light;

int divided_up(int number, int divisor)
{
    return number == 0 ? 0 : (number - 1) / divisor + 1;
}

} // namespace

HillShade::HillShade(const Raster& raster, const Footprint& footprint, Sampling sampling, const Look& look)
    : m_footprint(footprint)
    , m_sampling(sampling)
    , m_cells(raster.columns, raster.rows)
    , m_look(look)
{
    for (const double cell : raster.cells) {
        if (!is_no_data(cell)) {
            m_shading.lowest = m_has_heights ? std::min(m_shading.lowest, cell) : cell;
            m_shading.highest = m_has_heights ? std::max(m_shading.highest, cell) : cell;
            m_has_heights = true;
        }
    }
    if (raster.cells.empty()) {
        return;
    }
    m_cells_per_pixel = divided_up(std::max(raster.columns, raster.rows), max_side);
    const HeightSampler sampler(raster, m_footprint, m_cells_per_pixel, sampling);
    m_heights = sampler.heights(QRect(QPoint(0, 0), size_in_detail(m_cells_per_pixel)));
    m_shading.exaggeration = exaggeration(m_heights, m_shading, pixel_size(m_cells_per_pixel));
    paint();
}

void HillShade::show(const Look& look)
{
    if (look.colours != m_look.colours || look.relief != m_look.relief) {
        m_look = look;
        paint();
    }
}

void HillShade::paint()
{
    if (m_heights.cells.empty()) {
        return;
    }
    if (m_look.relief && m_light.empty()) {
        m_light = light_on(m_heights, m_shading, pixel_size(m_cells_per_pixel));
    }
    m_picture = painted(m_heights, m_shading, m_look.relief ? m_light : s_even_light, m_look.colours);
}

QImage HillShade::detail(const Raster& raster, int cells_per_pixel, const QRect& pixels) const
{
    const QRect map(QPoint(0, 0), size_in_detail(cells_per_pixel));
    const QRect inside = pixels & map;
    if (inside.isEmpty()) {
        return QImage();
    }
    const HeightSampler sampler(raster, m_footprint, cells_per_pixel, m_sampling);
    if (!m_look.relief) {
        return painted(sampler.heights(inside), m_shading, s_even_light, m_look.colours);
    }
    // The light on a pixel depends on its neighbours.
    const QRect around = inside.adjusted(-1, -1, 1, 1) & map;
    const Raster heights = sampler.heights(around);
    const auto light = light_on(heights, m_shading, pixel_size(cells_per_pixel));
    return painted(heights, m_shading, light, m_look.colours).copy(inside.translated(-around.topLeft()));
}

QSize HillShade::size_in_detail(int cells_per_pixel) const
{
    return {divided_up(m_cells.width(), cells_per_pixel), divided_up(m_cells.height(), cells_per_pixel)};
}

/// In proportion to a pixel of the whole picture; numbers near 1 are the safest.
QSizeF HillShade::pixel_size(int cells_per_pixel) const
{
    const double longer = std::max(m_footprint.cell_width, m_footprint.cell_height);
    const double part = static_cast<double>(cells_per_pixel) / m_cells_per_pixel;
    return QSizeF(m_footprint.cell_width / longer, m_footprint.cell_height / longer) * part;
}

} // namespace terrain
