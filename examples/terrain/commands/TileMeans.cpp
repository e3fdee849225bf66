#include "commands/TileMeans.h"

#include "documents/Raster.h"

#include <algorithm>
#include <cstring>

namespace terrain {

namespace {

const int s_rows_of_report = 16; ///< even

Pair load(const double* p_numbers)
{
    Pair result;
    std::memcpy(&result, p_numbers, sizeof(result));
    return result;
}

/// Some heights, added up, and how many they are.
struct Part
{
    Pair sum;
    Pair count;
};

Part operator+(const Part& one, const Part& other)
{
    return {one.sum + other.sum, one.count + other.count};
}

/// Heights, of which some may be no_data.
struct WithGaps
{
    typedef RunningSumOf<Pair> Core;
    static constexpr bool has_gaps = true;
    static constexpr double nothing = no_data;
    static Part part(const Pair& heights)
    {
        const PairBits known = heights == heights; // as is_no_data() says
        return {where(known, heights), where(known, Pair{1, 1})};
    }
};

/// Heights that are all known: nobody needs to count them.
struct WithoutGaps
{
    typedef RunningTotalOf<Pair> Core;
    static constexpr bool has_gaps = false;
    static constexpr double nothing = 0;
    static Part part(const Pair& heights) { return {heights, Pair{}}; }
};

/// A core of the windows: it moves by two at a time, so that what enters stays together until it leaves.
template <class Core>
void move(Core& core, const Part& leaving, const Part& entering)
{
    core.leave(leaving.sum, leaving.count);
    core.enter(entering.sum, entering.count);
}

template <class Core>
Part part_of(const Core& core)
{
    return {core.sum(), core.count()};
}

/// How many rows, or columns, of a window are those of the raster.
double in_raster(long long centre, int radius, int size)
{
    return static_cast<double>(std::min(centre + radius, size - 1LL) - std::max(centre - radius, 0LL) + 1);
}

} // namespace

TileMeans::TileMeans(
    const Raster& raster, int column_radius, int row_radius, const Tile& tile, double* p_means)
    : m_raster(raster)
    , m_column_radius(column_radius)
    , m_row_radius(row_radius)
    , m_tile(tile)
    , m_p_means(p_means)
    , m_first(tile.left - column_radius - 1)
    , m_begin(std::max(m_first, 0LL))
    , m_end(std::min(tile.right + column_radius + 1, static_cast<long long>(raster.columns)))
{ }

void TileMeans::take(const std::function<bool(int rows)>& rows_done)
{
    if (has_gaps()) {
        take_rows<WithGaps>(rows_done);
    } else {
        take_rows<WithoutGaps>(rows_done);
    }
}

/// Whether any of the heights that the tile needs is unknown.
bool TileMeans::has_gaps() const
{
    const long long top = std::max(m_tile.top - m_row_radius - 1, 0LL);
    const long long bottom
        = std::min(m_tile.bottom + m_row_radius + 1, static_cast<long long>(m_raster.rows));
    for (long long row = top; row < bottom; ++row) {
        const double* const p_heights = heights_of(row);
        PairBits unknown = {};
        long long column = 0;
        for (; column + 1 < m_end - m_begin; column += 2) {
            const Pair heights = load(p_heights + column);
            unknown |= heights != heights;
        }
        if ((unknown[0] | unknown[1]) != 0 || (column < m_end - m_begin && is_no_data(p_heights[column]))) {
            return true;
        }
    }
    return false;
}

/// Those from m_begin on. Outside of the raster there is nothing.
const double* TileMeans::heights_of(long long row) const
{
    return row < 0 || row >= m_raster.rows
        ? m_outside.data()
        : m_raster.cells.data() + m_raster.index(static_cast<int>(m_begin), static_cast<int>(row));
}

template <class Heights>
std::vector<typename Heights::Core>& TileMeans::cores()
{
    if constexpr (Heights::has_gaps) {
        return m_cores;
    } else {
        return m_totals;
    }
}

template <class Heights>
void TileMeans::take_rows(const std::function<bool(int rows)>& rows_done)
{
    begin<Heights>();
    for (long long row = m_tile.top; row < m_tile.bottom; row += 2) {
        sum_down<Heights>(row);
        take_two_rows<Heights>(row);
        const long long done = std::min(row + 2, m_tile.bottom) - m_tile.top;
        if ((done % s_rows_of_report == 0 || row + 2 >= m_tile.bottom)
            && !rows_done(static_cast<int>(done))) {
            return;
        }
    }
}

/// The cores as they are two rows above the first one.
template <class Heights>
void TileMeans::begin()
{
    const auto columns = static_cast<std::size_t>(m_end - m_begin);
    const auto places = static_cast<std::size_t>(m_tile.right - m_first + m_column_radius + 2);
    m_outside.assign(columns, Heights::nothing);
    m_sums.assign(places, Pair{}); // outside of the raster it stays so
    m_counts.assign(places, Pair{});
    auto& cores = this->cores<Heights>();
    cores.assign((columns + 1) / 2, typename Heights::Core());
    const long long first = m_tile.top - m_row_radius - 1;
    const long long end = std::min(first + 2LL * m_row_radius, static_cast<long long>(m_raster.rows));
    for (long long row = first + (first < -1 ? -first / 2 * 2 : 0); row < end; row += 2) {
        const double* const p_one = heights_of(row);
        const double* const p_other = heights_of(row + 1);
        for_pairs([&](long long column, const auto& at) {
            const Part part = Heights::part(at(p_one)) + Heights::part(at(p_other));
            cores[static_cast<std::size_t>(column / 2)].enter(part.sum, part.count);
        });
    }
    m_widths.clear();
    for (long long column = m_tile.left; column < m_tile.right; ++column) {
        m_widths.push_back(in_raster(column, m_column_radius, m_raster.columns));
    }
}

/// Calls @p work with every second column, from 0 on, and with what gets the heights there and beside.
template <class Work>
void TileMeans::for_pairs(const Work& work) const
{
    const long long columns = m_end - m_begin;
    long long column = 0;
    for (; column + 1 < columns; column += 2) {
        work(column, [column](const double* p_heights) { return load(p_heights + column); });
    }
    if (column < columns) {
        work(column, [column](const double* p_heights) {
            return Pair{p_heights[column], p_heights[column]};
        });
    }
}

/// For each column the sums of two windows, one below the other.
template <class Heights>
void TileMeans::sum_down(long long row)
{
    const double* const p_leaving = heights_of(row - m_row_radius - 1);
    const double* const p_above = heights_of(row - m_row_radius);
    const double* const p_entering = heights_of(row + m_row_radius - 1);
    const double* const p_also_entering = heights_of(row + m_row_radius);
    const double* const p_below = heights_of(row + m_row_radius + 1);
    auto& cores = this->cores<Heights>();
    Pair* const p_sums = m_sums.data() + (m_begin - m_first);
    Pair* const p_counts = m_counts.data() + (m_begin - m_first);
    const long long columns = m_end - m_begin;
    for_pairs([&](long long column, const auto& at) {
        auto core = cores[static_cast<std::size_t>(column / 2)];
        const Part above = Heights::part(at(p_above));
        move(core, Heights::part(at(p_leaving)) + above,
            Heights::part(at(p_entering)) + Heights::part(at(p_also_entering)));
        cores[static_cast<std::size_t>(column / 2)] = core;
        const Part upper = part_of(core) + above;
        const Part lower = part_of(core) + Heights::part(at(p_below));
        p_sums[column] = Pair{upper.sum[0], lower.sum[0]};
        if constexpr (Heights::has_gaps) {
            p_counts[column] = Pair{upper.count[0], lower.count[0]};
        }
        if (column + 1 < columns) {
            p_sums[column + 1] = Pair{upper.sum[1], lower.sum[1]};
            if constexpr (Heights::has_gaps) {
                p_counts[column + 1] = Pair{upper.count[1], lower.count[1]};
            }
        }
    });
}

/// Of a row and, where the tile has it, the one below.
template <class Heights>
void TileMeans::take_two_rows(long long row)
{
    const bool has_lower = row + 1 < m_tile.bottom;
    const std::size_t upper = m_raster.index(static_cast<int>(m_tile.left), static_cast<int>(row));
    const std::size_t lower = has_lower ? upper + static_cast<std::size_t>(m_raster.columns) : upper;
    const Pair heights
        = {in_raster(row, m_row_radius, m_raster.rows), in_raster(row + 1, m_row_radius, m_raster.rows)};
    const auto take = [&](long long column, const Part& window) {
        const auto i = static_cast<std::size_t>(column);
        Pair means;
        if constexpr (Heights::has_gaps) {
            const Pair cells = {m_raster.cells[upper + i], m_raster.cells[lower + i]};
            means = either(cells == cells, window.sum / window.count, Pair{no_data, no_data});
        } else {
            means = window.sum / (heights * Pair{m_widths[i], m_widths[i]});
        }
        if (has_lower) {
            m_p_means[lower + i] = means[1];
        }
        m_p_means[upper + i] = means[0];
    };
    const auto part_at = [this](long long place) {
        const auto i = static_cast<std::size_t>(place);
        return Part{m_sums[i], Heights::has_gaps ? m_counts[i] : Pair{}};
    };
    typename Heights::Core core;
    const long long diameter = 2LL * m_column_radius;
    for (long long place = 0; place < diameter; place += 2) {
        const Part part = part_at(place) + part_at(place + 1);
        core.enter(part.sum, part.count);
    }
    const long long columns = m_tile.right - m_tile.left;
    for (long long column = 0; column < columns; column += 2) {
        const Part left = part_at(column + 1);
        move(core, part_at(column) + left, part_at(column + diameter) + part_at(column + diameter + 1));
        const Part common = part_of(core);
        take(column, common + left);
        if (column + 1 < columns) {
            take(column + 1, common + part_at(column + diameter + 2));
        }
    }
}

} // namespace terrain
