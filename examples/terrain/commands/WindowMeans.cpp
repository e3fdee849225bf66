#include "commands/WindowMeans.h"

#include "commands/RunningSum.h"
#include "documents/Raster.h"
#include "parallel/LargeMemory.h"
#include "parallel/Workers.h"

#include <algorithm>
#include <array>

namespace terrain {

namespace {

const int s_rows_beside_each_other = 2; ///< their sums do not wait for one another
const int s_band = 512; ///< columns whose sums stay close to the processor from row to row

/// For each cell of a row the sum and the number of the heights in the part of the row that lies in the
/// cell's window.
struct Parts
{
    double* p_sums;
    double* p_counts;
};

/// The parts of some rows at once: the processor works on one while another's last addition is under way.
template <int rows>
void sum_rows(const double* p_cells, int columns, int radius, const std::array<Parts, rows>& parts)
{
    std::array<RunningSum, rows> windows;
    const auto cell = [p_cells, columns](int row, long long column) {
        return p_cells[static_cast<std::ptrdiff_t>(row) * columns + column];
    };
    const auto term = [](double height) { return is_no_data(height) ? 0 : height; };
    const auto number = [](double height) { return is_no_data(height) ? 0.0 : 1.0; };
    for (long long column = -radius; column < columns; ++column) {
        for (int row = 0; row < rows; ++row) {
            RunningSum& window = windows[static_cast<std::size_t>(row)];
            const long long entering = column + radius;
            if (entering < columns) {
                const double height = cell(row, entering);
                window.enter(term(height), number(height));
            }
            const long long leaving = column - radius - 1;
            if (leaving >= 0) {
                const double height = cell(row, leaving);
                window.leave(term(height), number(height));
            }
            if (column >= 0) {
                parts[static_cast<std::size_t>(row)].p_sums[column] = window.sum();
                parts[static_cast<std::size_t>(row)].p_counts[column] = window.count();
            }
        }
    }
}

/**
 * Windows that move down the raster, row by row. Three things happen in one step, each with the block of rows
 * that the one before made ready in the last step: the rows are summed up into parts; the windows of each
 * column take in the parts; the means become rows of the result. So all threads have something to do, and
 * rows that were just made are still close to the processor.
 *
 * The sums along a row and down a column are made by one thread each, one term after the other, so that they
 * are the same however many threads there are.
 */
class MovingWindows
{
public:
    MovingWindows(const Raster& raster, int radius, Workers& workers)
        : m_raster(raster)
        , m_workers(workers)
        , m_column_radius(std::min(radius, raster.columns)) // a larger one reaches no more cells
        , m_row_radius(std::min(radius, raster.rows))
        , m_block(std::min(rows_worth_a_thread(raster.columns) * workers.threads(), raster.rows))
        , m_kept_rows(
              static_cast<int>(std::min<long long>(raster.rows, 2LL * m_row_radius + 1 + 2LL * m_block)))
        , m_part_sums(raster.index(0, m_kept_rows))
        , m_part_counts(m_part_sums.size())
        , m_sums(static_cast<std::size_t>(raster.columns))
        , m_lost(m_sums.size())
        , m_counts(m_sums.size())
        , m_means{
              std::vector<double>(raster.index(0, m_block)), std::vector<double>(raster.index(0, m_block))}
    {
        reserve_large(m_result, raster.cells.size());
    }

    std::vector<double> run(const std::function<void(int row)>& row_done)
    {
        const long long entering_rows = static_cast<long long>(m_raster.rows) + m_row_radius;
        int reported = 0;
        for (long long first = 0; first < entering_rows + 2LL * m_block; first += m_block) {
            step(first);
            const auto done = static_cast<int>(m_result.size() / static_cast<std::size_t>(m_raster.columns));
            for (; reported < done; ++reported) {
                row_done(reported);
            }
        }
        return std::move(m_result);
    }

private:
    /// Sums up the block of rows from @p first on, moves the windows to the block before, and takes the means
    /// of the one before that.
    void step(long long first)
    {
        const std::size_t bands = static_cast<std::size_t>((m_raster.columns - 1) / s_band + 1);
        const std::size_t groups = static_cast<std::size_t>((m_block - 1) / s_rows_beside_each_other + 1);
        m_workers.run(1 + bands + groups, [&](std::size_t part) {
            if (part == 0) {
                append(first - 2LL * m_block);
            } else if (part <= bands) {
                move(first - m_block, static_cast<int>(part - 1) * s_band);
            } else {
                sum_up(first, static_cast<int>(part - 1 - bands) * s_rows_beside_each_other);
            }
        });
    }

    Parts parts_of(long long row)
    {
        const std::size_t first = m_raster.index(0, static_cast<int>(row % m_kept_rows));
        return {m_part_sums.data() + first, m_part_counts.data() + first};
    }

    void sum_up(long long block, int first)
    {
        const long long begin = block + first;
        const long long end = std::min<long long>(
            {begin + s_rows_beside_each_other, block + m_block, static_cast<long long>(m_raster.rows)});
        if (end - begin == s_rows_beside_each_other) {
            sum_rows<s_rows_beside_each_other>(
                cells_of(begin), m_raster.columns, m_column_radius, {parts_of(begin), parts_of(begin + 1)});
            return;
        }
        for (long long row = begin; row < end; ++row) {
            sum_rows<1>(cells_of(row), m_raster.columns, m_column_radius, {parts_of(row)});
        }
    }

    const double* cells_of(long long row) const
    {
        return m_raster.cells.data() + m_raster.index(0, static_cast<int>(row));
    }

    /// Moves the windows of a band of columns down, so that the rows of a block enter.
    void move(long long block, int first_column)
    {
        const long long rows = m_raster.rows;
        for (long long entering = std::max(block, 0LL); entering < block + m_block; ++entering) {
            const long long row = entering - m_row_radius;
            if (row >= rows) {
                return;
            }
            if (row > m_row_radius) {
                leave(parts_of(row - m_row_radius - 1), first_column);
            }
            if (entering < rows) {
                enter(parts_of(entering), first_column);
            }
            if (row >= 0) {
                take_means(static_cast<int>(row), means_of(block) + (entering - block) * m_raster.columns,
                    first_column);
            }
        }
    }

    int end_of(int first_column) const { return std::min(first_column + s_band, m_raster.columns); }

    void enter(const Parts& parts, int first_column)
    {
        double* const p_sums = m_sums.data();
        double* const p_lost = m_lost.data();
        double* const p_counts = m_counts.data();
        for (int column = first_column; column < end_of(first_column); ++column) {
            add_term(p_sums[column], p_lost[column], parts.p_sums[column]);
            p_counts[column] += parts.p_counts[column];
        }
    }

    void leave(const Parts& parts, int first_column)
    {
        double* const p_sums = m_sums.data();
        double* const p_lost = m_lost.data();
        double* const p_counts = m_counts.data();
        for (int column = first_column; column < end_of(first_column); ++column) {
            add_term(p_sums[column], p_lost[column], -parts.p_sums[column]);
            p_counts[column] -= parts.p_counts[column];
        }
        // Nothing is left in a window without heights. Two loops, each without a branch for the compiler.
        for (int column = first_column; column < end_of(first_column); ++column) {
            p_sums[column] = p_counts[column] == 0 ? 0 : p_sums[column];
        }
        for (int column = first_column; column < end_of(first_column); ++column) {
            p_lost[column] = p_counts[column] == 0 ? 0 : p_lost[column];
        }
    }

    void take_means(int row, double* p_means, int first_column) const
    {
        const double* const p_cells = cells_of(row);
        for (int column = first_column; column < end_of(first_column); ++column) {
            const double mean
                = (m_sums[static_cast<std::size_t>(column)] + m_lost[static_cast<std::size_t>(column)])
                / m_counts[static_cast<std::size_t>(column)];
            p_means[column] = is_no_data(p_cells[column]) ? no_data : mean;
        }
    }

    double* means_of(long long block)
    {
        return m_means[static_cast<std::size_t>(block / m_block % 2)].data();
    }

    /// Takes the rows of a block, which entered in the last step, over into the result.
    void append(long long block)
    {
        if (block < 0) {
            return;
        }
        const long long rows = m_raster.rows;
        const long long begin = std::clamp<long long>(block, m_row_radius, rows + m_row_radius) - block;
        const long long end
            = std::clamp<long long>(block + m_block, m_row_radius, rows + m_row_radius) - block;
        const double* const p_means = means_of(block);
        m_result.insert(m_result.end(), p_means + begin * m_raster.columns, p_means + end * m_raster.columns);
    }

    const Raster& m_raster;
    Workers& m_workers;
    int m_column_radius;
    int m_row_radius;
    int m_block; // rows
    int m_kept_rows;
    // The parts of rows, each row in the place of one that has left the windows; of any two one for all rows.
    std::vector<double> m_part_sums;
    std::vector<double> m_part_counts;
    // The windows, one for each column.
    std::vector<double> m_sums;
    std::vector<double> m_lost;
    std::vector<double> m_counts;
    std::array<std::vector<double>, 2> m_means; // of two blocks, by turns
    std::vector<double> m_result;
};

} // namespace

std::vector<double> window_means(
    const Raster& raster, int radius, Workers& workers, const std::function<void(int row)>& row_done)
{
    if (raster.cells.empty()) {
        return {};
    }
    return MovingWindows(raster, radius, workers).run(row_done);
}

} // namespace terrain
