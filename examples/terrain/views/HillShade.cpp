#include "views/HillShade.h"

#include "views/Footprint.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <limits>
#include <optional>
#include <tuple>
#include <utility>

namespace terrain {

namespace {

const std::vector<unsigned char> s_even_light;

int divided_up(int number, int divisor)
{
    return number == 0 ? 0 : (number - 1) / divisor + 1;
}

/// Lowest and highest height; nothing if there is none.
std::optional<std::pair<double, double>> range_of(const std::vector<double>& cells)
{
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (const double cell : cells) { // comparisons with no_data are false
        lowest = cell < lowest ? cell : lowest;
        highest = cell > highest ? cell : highest;
    }
    return lowest <= highest ? std::make_optional(std::make_pair(lowest, highest)) : std::nullopt;
}

/// Some of the heights of a picture, and nothing else of a raster.
Raster part_of(const Raster& heights, const QRect& pixels)
{
    Raster part;
    part.columns = pixels.width();
    part.rows = pixels.height();
    for (int row = pixels.top(); row <= pixels.bottom(); ++row) {
        const auto first
            = heights.cells.begin() + static_cast<std::ptrdiff_t>(heights.index(pixels.left(), row));
        part.cells.insert(part.cells.end(), first, first + pixels.width());
    }
    return part;
}

} // namespace

HillShade::HillShade(const Raster& raster, const Footprint& footprint, Sampling sampling, const Look& look)
    : m_footprint(footprint)
    , m_sampling(sampling)
    , m_cells(raster.columns, raster.rows)
    , m_look(look)
{
    if (const auto range = range_of(raster.cells)) {
        std::tie(m_shading.lowest, m_shading.highest) = *range;
        m_has_heights = true;
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

bool HillShade::refresh(const Raster& raster, const QRect& cells)
{
    const auto range = range_of(raster.cells);
    const auto shown = std::make_pair(m_shading.lowest, m_shading.highest);
    if (!m_has_heights || range != shown || m_cells != QSize(raster.columns, raster.rows)) {
        *this = HillShade(raster, m_footprint, m_sampling, m_look);
        return false;
    }
    const QRect places = on_map(cells);
    const QRect pixels(QPoint(places.left() / m_cells_per_pixel, places.top() / m_cells_per_pixel),
        QPoint(places.right() / m_cells_per_pixel, places.bottom() / m_cells_per_pixel));
    const Raster part = HeightSampler(raster, m_footprint, m_cells_per_pixel, m_sampling).heights(pixels);
    for (int row = 0; row < part.rows; ++row) {
        const auto first = part.cells.begin() + static_cast<std::ptrdiff_t>(part.index(0, row));
        std::copy(first, first + part.columns,
            m_heights.cells.begin()
                + static_cast<std::ptrdiff_t>(m_heights.index(pixels.left(), pixels.top() + row)));
    }
    paint_part(pixels);
    return true;
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

/// Paints pixels whose heights have changed, and those beside, on which the light is another one.
void HillShade::paint_part(const QRect& pixels)
{
    const QRect all(QPoint(0, 0), m_picture.size());
    const QRect lit = pixels.adjusted(-1, -1, 1, 1) & all;
    const QRect around = lit.adjusted(-1, -1, 1, 1) & all;
    const Raster heights = part_of(m_heights, around);
    std::vector<unsigned char> light;
    if (!m_light.empty()) {
        light = light_on(heights, m_shading, pixel_size(m_cells_per_pixel));
        for (int row = lit.top(); row <= lit.bottom(); ++row) {
            const auto first = light.begin()
                + static_cast<std::ptrdiff_t>(heights.index(lit.left() - around.left(), row - around.top()));
            std::copy(first, first + lit.width(),
                m_light.begin() + static_cast<std::ptrdiff_t>(m_heights.index(lit.left(), row)));
        }
    }
    const QImage part = painted(heights, m_shading, m_look.relief ? light : s_even_light, m_look.colours);
    QPainter painter(&m_picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(lit, part, lit.translated(-around.topLeft()));
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

QRect HillShade::on_map(const QRect& cells) const
{
    return terrain::on_map(cells, m_cells, m_footprint);
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
