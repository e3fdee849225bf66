#pragma once

#include "commands/RunningSum.h"

#include <functional>
#include <vector>

namespace terrain {

struct Raster;

/// Rows from @c top to before @c bottom, columns from @c left to before @c right.
struct Tile
{
    long long left = 0;
    long long right = 0;
    long long top = 0;
    long long bottom = 0;
};

/**
 * The means of the windows around the cells of a tile, without anything from other tiles. For one thread.
 *
 * First the heights in each column are summed up, of windows that move down by two rows at a time; then these
 * sums along both rows, of windows that move by two columns at a time. Windows that lie next to each other
 * share all but one row, or column, each: the core, to which each of them adds its own.
 */
class TileMeans
{
public:
    /// @param column_radius, row_radius of the windows, at least 1 @param p_means of all cells of the raster
    TileMeans(const Raster& raster, int column_radius, int row_radius, const Tile& tile, double* p_means);

    /// @param rows_done called with the number of rows that are done, every now and then; false ends it
    void take(const std::function<bool(int rows)>& rows_done);

private:
    bool has_gaps() const;
    const double* heights_of(long long row) const;
    template <class Heights>
    std::vector<typename Heights::Core>& cores();
    template <class Heights>
    void take_rows(const std::function<bool(int rows)>& rows_done);
    template <class Heights>
    void begin();
    template <class Work>
    void for_pairs(const Work& work) const;
    template <class Heights>
    void sum_down(long long row);
    template <class Heights>
    void take_two_rows(long long row);

    const Raster& m_raster;
    const int m_column_radius;
    const int m_row_radius;
    const Tile m_tile;
    double* const m_p_means;
    const long long m_first; // column that the first window needs, in the raster or not
    const long long m_begin; // columns of the raster that the tile needs
    const long long m_end;

    std::vector<double> m_outside; // a row
    std::vector<RunningSumOf<Pair>> m_cores; // of two columns each; either these
    std::vector<RunningTotalOf<Pair>> m_totals; // or these
    std::vector<Pair> m_sums; // of two rows each, from m_first on
    std::vector<Pair> m_counts;
    std::vector<double> m_widths; // of the windows, as far as they lie in the raster
};

} // namespace terrain
