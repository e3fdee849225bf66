#include "commands/WindowMeans.h"

#include "commands/RunningSum.h"
#include "documents/Raster.h"
#include "parallel/LargeMemory.h"
#include "parallel/Workers.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

namespace terrain {

namespace {

const int s_rows_at_once = 2; ///< of which a Pair has the numbers; of columns as many
const int s_block = 16; ///< rows that are worth asking for something to do; even
const int s_widest_band = 512; ///< columns whose sums stay close to the processor from row to row; even
const int s_narrowest_band = 64; ///< that is worth it; even
const int s_bands_of_thread = 4; ///< so that hardly any thread has to wait for another one

const int s_short_tries = 100; ///< to find that what is waited for is done, before the thread sleeps
constexpr std::chrono::microseconds s_pause(50);

typedef RunningSumOf<Pair> PairOfWindows;

/// For each cell in a part of a row the sum and the number of the heights in the same row of its window.
struct Parts
{
    double* p_sums;
    double* p_counts;
};

/// The columns from @c begin to before @c end, and how far their windows have come.
struct Band
{
    int begin = 0;
    int end = 0;
    std::vector<PairOfWindows> windows;
    // The parts of rows, each row in the place of one that has left the windows.
    std::vector<double> sums;
    std::vector<double> counts;
    std::atomic<int> blocks_done = 0;
};

/// What happens when the windows of a band move down by a row; null: nothing of it.
struct Move
{
    Parts leaving;
    Parts entering;
    const double* p_cells; ///< whose means are to be taken, into @c p_means
    double* p_means;
};

Pair load(const double* p_numbers)
{
    Pair result;
    std::memcpy(&result, p_numbers, sizeof(result));
    return result;
}

/// The means of the windows around two cells.
Pair means_of(const PairOfWindows& windows, const Pair& cells)
{
    const PairBits known = cells == cells; // as is_no_data() says
    const PairBits means = reinterpret_cast<PairBits>(windows.sum() / windows.count());
    const PairBits nothing = reinterpret_cast<PairBits>(Pair{no_data, no_data});
    return reinterpret_cast<Pair>((means & known) | (nothing & ~known));
}

/// Moves the windows of two columns down by a row.
void move_down(PairOfWindows& windows, const Move& move, int column)
{
    if (move.leaving.p_sums) {
        windows.leave(load(move.leaving.p_sums + column), load(move.leaving.p_counts + column));
    }
    if (move.entering.p_sums) {
        windows.enter(load(move.entering.p_sums + column), load(move.entering.p_counts + column));
    }
}

/// Takes the means of two columns, or of the last one alone.
void take_means(const PairOfWindows& windows, const Move& move, int column, int columns)
{
    if (column + 1 < columns) {
        const Pair means = means_of(windows, load(move.p_cells + column));
        std::memcpy(move.p_means + column, &means, sizeof(means));
    } else {
        const double cell = move.p_cells[column];
        move.p_means[column] = means_of(windows, Pair{cell, cell})[0];
    }
}

/**
 * Windows that move down the raster, row by row. First the rows that enter are summed up into parts, of which
 * the windows of each column then take in theirs. Both happen two at a time, and soon one after the other: so
 * the parts are still close to the processor.
 *
 * The work is divided into bands of columns and blocks of rows. The threads go through them along diagonals:
 * what a piece needs is done in the same band above it, and in the same block to the left, so that nearly
 * always all is there when its turn comes.
 *
 * The sums along a row and down a column are made from the beginning, one term after the other, so that they
 * are the same however many threads there are.
 */
class MovingWindows
{
public:
    MovingWindows(
        const Raster& raster, int radius, Workers& workers, const std::function<void(int row)>& row_done)
        : m_raster(raster)
        , m_row_done(row_done)
        , m_column_radius(std::min(radius, raster.columns)) // a larger one reaches no more cells
        , m_row_radius(std::min(radius, raster.rows))
        , m_kept_rows(
              static_cast<int>(std::min<long long>(raster.rows, 2LL * m_row_radius + 1 + s_rows_at_once)))
        , m_blocks(static_cast<int>((static_cast<long long>(raster.rows) + m_row_radius - 1) / s_block + 1))
        , m_width(std::min(raster.columns + raster.columns % 2,
              std::clamp(raster.columns / (s_bands_of_thread * workers.threads()) / 2 * 2, s_narrowest_band,
                  s_widest_band)))
        , m_bands(static_cast<std::size_t>((raster.columns - 1) / m_width + 1))
        , m_row_windows(static_cast<std::size_t>((raster.rows - 1) / s_rows_at_once + 1))
    {
        reserve_large(m_result, raster.cells.size());
        m_p_means = m_result.data();
        for (std::size_t i = 0; i < m_bands.size(); ++i) {
            Band& band = m_bands[i];
            band.begin = static_cast<int>(i) * m_width;
            band.end = std::min(band.begin + m_width, raster.columns);
            band.windows.resize(static_cast<std::size_t>(m_width / 2));
            band.sums.resize(static_cast<std::size_t>(m_kept_rows) * static_cast<std::size_t>(m_width));
            band.counts.resize(band.sums.size());
        }
    }

    std::vector<double> run(Workers& workers)
    {
        const std::size_t bands = m_bands.size();
        if (bands == 1) {
            for (int block = 0; block < m_blocks; ++block) {
                do_block(block, 0);
            }
        } else {
            // By diagonals, from the left down; at both ends they lie outside of the raster in part.
            workers.run(
                (static_cast<std::size_t>(m_blocks) + bands - 1) * bands, [this, bands](std::size_t part) {
                    const std::size_t band = part % bands;
                    const long long block
                        = static_cast<long long>(part / bands) - static_cast<long long>(band);
                    if (block >= 0 && block < m_blocks) {
                        do_block(static_cast<int>(block), band);
                    }
                });
        }
        report();
        return std::move(m_result);
    }

private:
    /// Hardly ever waits: somebody is at it already. Who does, and was put aside for another program, may go
    /// on in this thread's place meanwhile.
    static void wait_for(const std::atomic<int>& blocks_done, int blocks)
    {
        for (int tries = 0; blocks_done.load(std::memory_order_acquire) < blocks; ++tries) {
            if (tries < s_short_tries) {
                std::this_thread::yield();
            } else {
                std::this_thread::sleep_for(s_pause);
            }
        }
    }

    /// Moves the windows of a band down as a block of rows enters, and tells of the rows that are done if
    /// this is the caller's thread.
    void do_block(int block, std::size_t index)
    {
        Band& band = m_bands[index];
        wait_for(band.blocks_done, block);
        if (index > 0) {
            wait_for(m_bands[index - 1].blocks_done, block + 1);
        } else {
            m_result.resize(m_raster.index(0, rows_after(block + 1))); // moves none: there is room for all
        }
        const long long first = static_cast<long long>(block) * s_block;
        const long long end = std::min(first + s_block, static_cast<long long>(m_raster.rows) + m_row_radius);
        for (long long row = first; row < end; row += s_rows_at_once) {
            if (row < m_raster.rows) {
                sum_up(static_cast<int>(row), band);
            }
            move_band(row, band);
        }
        band.blocks_done.store(block + 1, std::memory_order_release);
        if (std::this_thread::get_id() == m_owner) {
            report();
        }
    }

    /// How many rows have their means after so many blocks.
    int rows_after(int blocks) const
    {
        return static_cast<int>(
            std::clamp<long long>(static_cast<long long>(blocks) * s_block - m_row_radius, 0, m_raster.rows));
    }

    /// Tells of the rows that are done in all bands.
    void report()
    {
        const int done = rows_after(m_bands.back().blocks_done.load(std::memory_order_acquire));
        while (m_reported < done) {
            m_row_done(m_reported++);
        }
    }

    /// Null if the raster has no such row.
    Parts parts_of(long long row, Band& band)
    {
        if (row < 0 || row >= m_raster.rows) {
            return {nullptr, nullptr};
        }
        const auto first = static_cast<std::size_t>(row % m_kept_rows) * static_cast<std::size_t>(m_width);
        return {band.sums.data() + first, band.counts.data() + first};
    }

    /// Makes the parts of two rows; of the last one alone twice.
    void sum_up(int row, Band& band)
    {
        const int other_row = std::min(row + 1, m_raster.rows - 1);
        const Parts parts = parts_of(row, band);
        const Parts other_parts = parts_of(other_row, band);
        const double* const p_cells = m_raster.cells.data() + m_raster.index(0, row);
        const double* const p_other_cells = m_raster.cells.data() + m_raster.index(0, other_row);
        PairOfWindows windows = m_row_windows[static_cast<std::size_t>(row / s_rows_at_once)];
        const int begin = band.begin;
        for (long long column = begin == 0 ? -m_column_radius : begin; column < band.end; ++column) {
            const long long entering = column + m_column_radius;
            if (entering < m_raster.columns) {
                const Pair heights = {p_cells[entering], p_other_cells[entering]};
                windows.enter(where(heights == heights, heights), where(heights == heights, Pair{1, 1}));
            }
            const long long leaving = column - m_column_radius - 1;
            if (leaving >= 0) {
                const Pair heights = {p_cells[leaving], p_other_cells[leaving]};
                windows.leave(where(heights == heights, heights), where(heights == heights, Pair{1, 1}));
            }
            if (column >= begin) {
                const Pair sums = windows.sum();
                const Pair counts = windows.count();
                parts.p_sums[column - begin] = sums[0];
                parts.p_counts[column - begin] = counts[0];
                other_parts.p_sums[column - begin] = sums[1];
                other_parts.p_counts[column - begin] = counts[1];
            }
        }
        m_row_windows[static_cast<std::size_t>(row / s_rows_at_once)] = windows;
    }

    /// What happens in a band when a row enters, or would if there was one.
    Move move_of(long long entering, Band& band)
    {
        const long long row = entering - m_row_radius;
        Move result{parts_of(row - m_row_radius - 1, band), parts_of(entering, band), nullptr, nullptr};
        if (row >= 0 && row < m_raster.rows) {
            const std::size_t first = m_raster.index(band.begin, static_cast<int>(row));
            result.p_cells = m_raster.cells.data() + first;
            result.p_means = m_p_means + first;
        }
        return result;
    }

    /// Moves the windows of a band down by two rows.
    void move_band(long long entering, Band& band)
    {
        const Move moves[] = {move_of(entering, band), move_of(entering + 1, band)};
        const int columns = band.end - band.begin;
        for (int column = 0; column < columns; column += 2) {
            PairOfWindows& windows = band.windows[static_cast<std::size_t>(column / 2)];
            PairOfWindows moved = windows;
            for (const Move& move : moves) {
                move_down(moved, move, column);
                if (move.p_means) {
                    take_means(moved, move, column, columns);
                }
            }
            windows = moved;
        }
    }

    const Raster& m_raster;
    const std::function<void(int row)>& m_row_done;
    const std::thread::id m_owner = std::this_thread::get_id();
    int m_column_radius;
    int m_row_radius;
    int m_kept_rows;
    int m_blocks; // of the rows that enter, and as many more as it takes the windows to reach the last one
    int m_width; // of a band, in columns
    std::vector<Band> m_bands;
    std::vector<PairOfWindows> m_row_windows; // how far they have come, along every two rows
    std::vector<double> m_result;
    double* m_p_means = nullptr;
    int m_reported = 0;
};

} // namespace

std::vector<double> window_means(
    const Raster& raster, int radius, Workers& workers, const std::function<void(int row)>& row_done)
{
    if (raster.cells.empty()) {
        return {};
    }
    return MovingWindows(raster, radius, workers, row_done).run(workers);
}

} // namespace terrain
