#include "scene/SceneSpace.h"

#include "documents/Raster.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace terrain {

namespace {

const double s_least_relief = 0.08; ///< of the side: terrain that is flatter is exaggerated to this
const double s_most_relief = 0.4; ///< of the side: terrain that is steeper is flattened to this
const double s_least_exaggeration = 0.01; ///< beyond these bounds the units are not what they seem
const double s_most_exaggeration = 1000;
const double s_most_change = 16; ///< of the range, until levels are counted anew
const std::array<double, 10> s_round_numbers = {1, 1.2, 1.5, 2, 2.5, 3, 4, 5, 6, 8};

/// The greatest round number that is not above @p number.
double rounded_down(double number)
{
    const double decade = std::pow(10, std::floor(std::log10(number)));
    double found = decade;
    for (const double round : s_round_numbers) {
        if (round * decade <= number) {
            found = round * decade;
        }
    }
    return found;
}

double half_range(double lowest, double highest)
{
    return highest / 2 - lowest / 2;
}

} // namespace

SceneSpace::SceneSpace(const Raster& raster, const HeightMeaning& meaning, double lowest, double highest)
    : m_cells(std::max(raster.columns, 1), std::max(raster.rows, 1))
    , m_depth(meaning.depth)
    , m_lowest(lowest)
    , m_half_range(half_range(lowest, highest))
{
    const Footprint footprint(raster);
    m_map_of_cells = map_of_cells(QSize(raster.columns, raster.rows), footprint);
    // In proportion to each other first: their products might overflow.
    const double longer_cell = std::max(footprint.cell_width, footprint.cell_height);
    const double width = m_cells.width() * (footprint.cell_width / longer_cell);
    const double height = m_cells.height() * (footprint.cell_height / longer_cell);
    const double longest = std::max(width, height);
    const QSizeF size(width / longest * side, height / longest * side);
    m_ground = QRectF(QPointF(-size.width() / 2, -size.height() / 2), size);
    const bool lengths = footprint.in_metres && meaning.metres > 0;
    choose_scale(lengths ? m_half_range / longer_cell * meaning.metres / longest * 2 : 0);
}

/// @param range_in_sides of the heights, as a part of the raster's longer side; 0 if unknown
void SceneSpace::choose_scale(double range_in_sides)
{
    if (range_in_sides > 0) {
        double wanted = 1;
        if (range_in_sides < s_least_relief) {
            wanted = rounded_down(s_least_relief / range_in_sides);
        } else if (range_in_sides > s_most_relief) {
            wanted = rounded_down(s_most_relief / range_in_sides);
        }
        if (wanted >= s_least_exaggeration && wanted <= s_most_exaggeration) {
            m_natural = range_in_sides * side;
            m_default_exaggeration = wanted;
            m_to_scale = true;
            return;
        }
    }
    m_natural = m_half_range > 0 ? s_least_relief * side : 0;
}

QPointF SceneSpace::place(const QPointF& map) const
{
    return {m_ground.left() + map.x() / m_cells.width() * m_ground.width(),
        m_ground.bottom() - map.y() / m_cells.height() * m_ground.height()};
}

QPointF SceneSpace::map(const QPointF& place) const
{
    return {(place.x() - m_ground.left()) / m_ground.width() * m_cells.width(),
        (m_ground.bottom() - place.y()) / m_ground.height() * m_cells.height()};
}

QPointF SceneSpace::place_of_cells(const QPointF& cells) const
{
    return place(m_map_of_cells.map(cells));
}

double SceneSpace::level(double height) const
{
    if (!(m_half_range > 0)) {
        return 0;
    }
    const double level = (height / 2 - m_lowest / 2) / m_half_range;
    return m_depth ? -level : level;
}

bool SceneSpace::suits(double lowest, double highest) const
{
    const double now = half_range(lowest, highest);
    return now <= m_half_range * s_most_change && now * s_most_change >= m_half_range
        && std::abs(level(lowest)) <= s_most_change;
}

} // namespace terrain
