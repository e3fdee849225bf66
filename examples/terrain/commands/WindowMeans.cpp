#include "commands/WindowMeans.h"

#include "commands/TileMeans.h"
#include "documents/Raster.h"
#include "parallel/LargeMemory.h"
#include "parallel/Workers.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>

namespace terrain {

namespace {

const int s_least_rows = 64; ///< of a tile; what it reads around itself costs little beside
const int s_least_columns = 512; ///< whose sums stay close to the processor from row to row

/**
 * The raster is divided into tiles that need nothing from each other: in each the sums are begun anew. How it
 * is divided depends on the raster and the radius alone, so the means are the same however many threads there
 * are. Large windows make large tiles, so that what a tile reads around itself stays in proportion.
 */
class WindowMeans
{
public:
    WindowMeans(const Raster& raster, int radius, const std::function<void(int row)>& row_done)
        : m_raster(raster)
        , m_row_done(row_done)
        , m_column_radius(std::min(radius, raster.columns)) // a larger one reaches no more cells
        , m_row_radius(std::min(radius, raster.rows))
        , m_tile_columns(std::max<long long>(s_least_columns, 4LL * m_column_radius))
        , m_tile_rows(std::max<long long>(s_least_rows, 2LL * m_row_radius))
        , m_tiles_of_row(static_cast<std::size_t>((raster.columns - 1) / m_tile_columns + 1))
        , m_rows_done(m_tiles_of_row * static_cast<std::size_t>((raster.rows - 1) / m_tile_rows + 1))
    {
        reserve_large(m_result, raster.cells.size());
        m_p_means = m_result.data();
    }

    std::vector<double> run(Workers& workers)
    {
        workers.run(m_rows_done.size(), [this](std::size_t index) { take(index); });
        report();
        return std::move(m_result);
    }

private:
    void take(std::size_t index)
    {
        const long long left = static_cast<long long>(index % m_tiles_of_row) * m_tile_columns;
        const long long top = static_cast<long long>(index / m_tiles_of_row) * m_tile_rows;
        const Tile tile = {left, std::min<long long>(left + m_tile_columns, m_raster.columns), top,
            std::min<long long>(top + m_tile_rows, m_raster.rows)};
        make_room(tile);
        TileMeans(m_raster, m_column_radius, m_row_radius, tile, m_p_means).take([&](int rows) {
            m_rows_done[index].store(rows, std::memory_order_release);
            if (std::this_thread::get_id() == m_owner) {
                report();
            }
            return !m_ended;
        });
    }

    /// Each tile has room, and makes its share of that for the row of tiles below: not all at once, so that
    /// it is close to the processor when it is filled, and ahead, so that hardly any thread waits for another
    /// one. Moves no cells, there is memory for all.
    void make_room(const Tile& tile)
    {
        const std::size_t needed = m_raster.index(0, static_cast<int>(tile.bottom));
        if (m_room.load(std::memory_order_acquire) < needed) {
            const std::lock_guard<std::mutex> lock(m_growing);
            grow(needed);
        }
        const std::unique_lock<std::mutex> lock(m_growing, std::try_to_lock);
        if (lock) {
            grow(std::min(needed + static_cast<std::size_t>((tile.bottom - tile.top) * tile.right),
                m_raster.cells.size()));
        }
    }

    void grow(std::size_t cells)
    {
        if (m_result.size() < cells) {
            m_result.resize(cells);
            m_room.store(cells, std::memory_order_release);
        }
    }

    /// Tells of the rows that are done in all tiles.
    void report()
    {
        try {
            while (m_reported < m_raster.rows && is_done(m_reported)) {
                m_row_done(m_reported++);
            }
        } catch (...) {
            m_ended = true;
            throw;
        }
    }

    bool is_done(int row) const
    {
        const auto first = m_rows_done.begin()
            + static_cast<std::ptrdiff_t>(row / m_tile_rows) * static_cast<std::ptrdiff_t>(m_tiles_of_row);
        return std::all_of(
            first, first + static_cast<std::ptrdiff_t>(m_tiles_of_row), [&](const std::atomic<int>& rows) {
                return rows.load(std::memory_order_acquire) > row % m_tile_rows;
            });
    }

    const Raster& m_raster;
    const std::function<void(int row)>& m_row_done;
    const std::thread::id m_owner = std::this_thread::get_id();
    const int m_column_radius;
    const int m_row_radius;
    const long long m_tile_columns;
    const long long m_tile_rows;
    const std::size_t m_tiles_of_row;
    std::vector<std::atomic<int>> m_rows_done; // of each tile
    std::atomic<bool> m_ended = false;
    std::mutex m_growing;
    std::vector<double> m_result; // its size is guarded by m_growing
    std::atomic<std::size_t> m_room = 0; // the same, for those who only look
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
    return WindowMeans(raster, radius, row_done).run(workers);
}

} // namespace terrain
