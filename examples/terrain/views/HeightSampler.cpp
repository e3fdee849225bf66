#include "views/HeightSampler.h"

#include "parallel/Workers.h"
#include "views/Footprint.h"

#include <QtCore/QRect>

#include <algorithm>

namespace terrain {

HeightSampler::HeightSampler(
    const Raster& raster, const Footprint& footprint, int cells_per_pixel, Sampling sampling)
    : m_raster(raster)
    , m_footprint(footprint)
    , m_step(cells_per_pixel)
    , m_sampling(sampling)
{ }

Raster HeightSampler::heights(const QRect& pixels) const
{
    Raster heights;
    heights.columns = pixels.width();
    heights.rows = pixels.height();
    heights.cells.resize(heights.index(0, heights.rows));
    const int cells_of_row = std::min(heights.columns * m_step, m_raster.columns) * m_step;
    Workers workers;
    workers.run_rows(heights.rows, rows_worth_a_thread(cells_of_row), [&](int first, int end) {
        double* p_height = heights.cells.data() + heights.index(0, first);
        for (int row = pixels.top() + first; row < pixels.top() + end; ++row) {
            for (int column = pixels.left(); column <= pixels.right(); ++column) {
                *p_height++ = m_sampling == Sampling::Mean ? mean(column, row) : nearest(column, row);
            }
        }
    });
    return heights;
}

/// The height in the middle of a square; no_data where that cell holds none.
double HeightSampler::nearest(int column, int row) const
{
    return cell(std::min(column * m_step + m_step / 2, m_raster.columns - 1),
        std::min(row * m_step + m_step / 2, m_raster.rows - 1));
}

/// The mean of all heights, row by row; no_data where no cell of the square holds one.
double HeightSampler::mean(int column, int row) const
{
    if (m_step == 1) {
        return cell(column, row);
    }
    const int last_column = std::min((column + 1) * m_step, m_raster.columns);
    const int last_row = std::min((row + 1) * m_step, m_raster.rows);
    // Divided before they are added up, or huge heights overflow.
    const double share = 1.0 / (m_step * m_step);
    double sum = 0;
    int count = 0;
    for (int v = row * m_step; v < last_row; ++v) {
        for (int u = column * m_step; u < last_column; ++u) {
            const double height = cell(u, v);
            if (!is_no_data(height)) {
                sum += height * share;
                ++count;
            }
        }
    }
    return count == 0 ? no_data : sum / (count * share);
}

/// Counted from the upper left corner of the map.
double HeightSampler::cell(int u, int v) const
{
    return m_raster.cell(m_footprint.columns_run_west ? m_raster.columns - 1 - u : u,
        m_footprint.rows_run_north ? m_raster.rows - 1 - v : v);
}

} // namespace terrain
