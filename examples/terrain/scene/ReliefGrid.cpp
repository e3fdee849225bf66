#include "scene/ReliefGrid.h"

#include "views/HeightSampler.h"
#include "views/HillShade.h"

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

int divided_up(int number, int divisor)
{
    return number == 0 ? 0 : (number - 1) / divisor + 1;
}

/// Some heights of a grid.
Raster sampled(const HillShade& shade, int reduction, const QRect& cells)
{
    const Footprint as_it_lies{Raster()};
    return HeightSampler(shade.heights(), as_it_lies, reduction, Sampling::Mean).heights(cells);
}

} // namespace

ReliefGrid::ReliefGrid(const HillShade& shade, const SceneSpace& space, const QSize& cells)
    : m_space(space)
    , m_cells(cells)
{
    const QSize pixels(shade.heights().columns, shade.heights().rows);
    m_reduction = std::max(divided_up(std::max(pixels.width(), pixels.height()), max_side), 1);
    m_step = m_reduction * shade.cells_per_pixel();
    const QSize size(divided_up(pixels.width(), m_reduction), divided_up(pixels.height(), m_reduction));
    m_heights = sampled(shade, m_reduction, QRect(QPoint(0, 0), size));
    find_range();
}

QRect ReliefGrid::refresh(const HillShade& shade, const QRect& pixels)
{
    const QRect changed(QPoint(pixels.left() / m_reduction, pixels.top() / m_reduction),
        QPoint(pixels.right() / m_reduction, pixels.bottom() / m_reduction));
    const Raster part = sampled(shade, m_reduction, changed);
    for (int row = 0; row < part.rows; ++row) {
        const auto first = part.cells.begin() + static_cast<std::ptrdiff_t>(part.index(0, row));
        std::copy(first, first + part.columns,
            m_heights.cells.begin()
                + static_cast<std::ptrdiff_t>(m_heights.index(changed.left(), changed.top() + row)));
    }
    find_range();
    return changed;
}

void ReliefGrid::find_range()
{
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (const double height : m_heights.cells) {
        if (!is_no_data(height)) {
            lowest = std::min(lowest, m_space.level(height));
            highest = std::max(highest, m_space.level(height));
        }
    }
    m_lowest = lowest <= highest ? lowest : 0;
    m_highest = lowest <= highest ? highest : 0;
}

bool ReliefGrid::has(int column, int row) const
{
    return column >= 0 && row >= 0 && column < m_heights.columns && row < m_heights.rows
        && !is_no_data(m_heights.cell(column, row));
}

double ReliefGrid::left(int column) const
{
    return std::min(column * m_step, m_cells.width()); // the last one may be narrower
}

double ReliefGrid::top(int row) const
{
    return std::min(row * m_step, m_cells.height());
}

QPointF ReliefGrid::middle(int column, int row) const
{
    return {(left(column) + left(column + 1)) / 2, (top(row) + top(row + 1)) / 2};
}

std::optional<double> ReliefGrid::level_at(const QPointF& place) const
{
    const QPointF at = m_space.map(place) / m_step;
    if (!has(static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y())))) {
        return {};
    }
    const int column = static_cast<int>(std::floor(at.x() - 0.5));
    const int row = static_cast<int>(std::floor(at.y() - 0.5));
    const double right = at.x() - 0.5 - column;
    const double down = at.y() - 0.5 - row;
    double sum = 0;
    double weights = 0;
    for (const int u : {0, 1}) {
        for (const int v : {0, 1}) {
            if (has(column + u, row + v)) {
                const double weight = (u == 0 ? 1 - right : right) * (v == 0 ? 1 - down : down);
                sum += weight * level(column + u, row + v);
                weights += weight;
            }
        }
    }
    return weights > 0 ? std::make_optional(sum / weights) : std::nullopt;
}

} // namespace terrain
