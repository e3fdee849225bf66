#include "panels/HeightStatistics.h"

#include "documents/Raster.h"
#include "documents/RoundStep.h"

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const std::size_t s_block = 65536; ///< cells between two looks at whether to stop
const std::size_t s_classes = 65536; ///< of heights, to find the median in
const int s_fewest_bars = 20; ///< with round edges; there are at most about 50
const int s_even_bars = 50;
const double s_flat_bar_width = 0.1; ///< of a single height, in proportion to it
const double s_largest_round = 1e15; ///< a multiple of a round width that a number can still tell apart

/// Calls @p use with each height. @return false if it was cancelled meanwhile
template <class Use>
bool for_each_height(const std::vector<double>& cells, const std::atomic<bool>& cancelled, Use use)
{
    for (std::size_t begin = 0; begin < cells.size(); begin += s_block) {
        if (cancelled) {
            return false;
        }
        const std::size_t end = std::min(begin + s_block, cells.size());
        for (std::size_t i = begin; i < end; ++i) {
            if (!is_no_data(cells[i])) {
                use(cells[i]);
            }
        }
    }
    return true;
}

/// Where heights lie between the lowest, 0, and the highest, 1. The distance of the two may be too large for
/// a number, and then half of it is not.
class Range
{
public:
    Range(double lowest, double highest)
        : m_factor(std::isfinite(highest - lowest) ? 1 : 0.5)
        , m_lowest(lowest * m_factor)
        , m_extent(highest * m_factor - m_lowest)
    { }

    bool is_flat() const { return m_extent == 0; }
    double position(double height) const { return is_flat() ? 0 : (height * m_factor - m_lowest) / m_extent; }
    double height(double position) const { return (m_lowest + position * m_extent) / m_factor; }
    /// @param position_width at most 1/2 if the range is too large for a number
    double width(double position_width) const { return position_width / m_factor * m_extent; }

    /// One of @p count classes of equal width. A higher height is never in a lower class.
    std::size_t class_of(double height, std::size_t count) const
    {
        return std::min(static_cast<std::size_t>(position(height) * static_cast<double>(count)), count - 1);
    }

private:
    double m_factor;
    double m_lowest;
    double m_extent;
};

/**
 * Mean and standard deviation while the numbers go by, without the cancellation that a sum of squares suffers
 * from: B. P. Welford, "Note on a Method for Calculating Corrected Sums of Squares and Products",
 * Technometrics 4 (3), 1962, pages 419-420.
 */
class Moments
{
public:
    void add(double number)
    {
        const double from_old_mean = number - m_mean;
        m_mean += from_old_mean / ++m_count;
        m_squares += from_old_mean * (number - m_mean);
    }
    double mean() const { return m_mean; }
    double deviation() const { return std::sqrt(m_squares / m_count); }

private:
    double m_count = 0;
    double m_mean = 0;
    double m_squares = 0; // of the differences from the mean
};

/// The bars of a histogram. Their edges are round numbers where numbers are fine enough for that, so that
/// whole heights do not fall into some bars more often than into others.
class Bars
{
public:
    Bars(HeightStatistics& result, const Range& range)
        : m_result(result)
        , m_range(range)
    {
        if (range.is_flat()) {
            lay_around(result.lowest);
        } else if (!lay_round()) {
            lay_evenly();
        }
    }

    void add(double height) { ++m_result.bars[bar_of(height)]; }

private:
    std::size_t bar_of(double height) const
    {
        const std::size_t last = m_result.bars.size() - 1;
        if (!m_round) {
            return m_range.class_of(height, last + 1);
        }
        return std::min(static_cast<std::size_t>(std::floor(height / m_result.bar_width) - m_first), last);
    }

    void lay_around(double height)
    {
        m_result.bar_width = height == 0 ? 1 : std::abs(height) * s_flat_bar_width;
        m_result.first_edge = height - m_result.bar_width / 2;
        m_result.bars.assign(1, 0);
    }

    bool lay_round()
    {
        const double width = round_step((m_result.highest - m_result.lowest) / s_fewest_bars);
        const double largest = std::max(std::abs(m_result.lowest), std::abs(m_result.highest));
        if (!(width > 0) || !std::isfinite(width) || !(largest / width < s_largest_round)) {
            return false;
        }
        m_first = std::floor(m_result.lowest / width);
        m_result.first_edge = m_first * width;
        m_result.bar_width = width;
        m_result.bars.assign(static_cast<std::size_t>(std::floor(m_result.highest / width) - m_first) + 1, 0);
        m_round = true;
        return true;
    }

    void lay_evenly()
    {
        const double width = m_range.width(1.0 / s_even_bars);
        m_result.first_edge = m_result.lowest;
        m_result.bar_width = width > 0 ? width : m_range.width(1);
        m_result.bars.assign(width > 0 ? s_even_bars : 1, 0);
    }

    HeightStatistics& m_result;
    const Range& m_range;
    bool m_round = false;
    double m_first = 0; // edge, in widths, if they are round
};

/// The height that has @p rank heights before it when they are sorted: the classes tell which few to sort.
std::optional<double> height_of_rank(const std::vector<double>& cells, const std::atomic<bool>& cancelled,
    const Range& range, const std::vector<std::size_t>& classes, std::size_t rank)
{
    std::size_t wanted = 0;
    while (rank >= classes[wanted]) {
        rank -= classes[wanted++];
    }
    std::vector<double> found;
    found.reserve(classes[wanted]);
    const bool is_complete = for_each_height(cells, cancelled, [&](double height) {
        if (range.class_of(height, classes.size()) == wanted) {
            found.push_back(height);
        }
    });
    if (!is_complete) {
        return {};
    }
    const auto place = found.begin() + static_cast<std::ptrdiff_t>(rank);
    std::nth_element(found.begin(), place, found.end());
    return *place;
}

bool find_range(
    HeightStatistics& result, const std::vector<double>& cells, const std::atomic<bool>& cancelled)
{
    std::size_t heights = 0;
    const bool is_complete = for_each_height(cells, cancelled, [&](double height) {
        result.lowest = heights == 0 ? height : std::min(result.lowest, height);
        result.highest = heights == 0 ? height : std::max(result.highest, height);
        ++heights;
    });
    result.cells = cells.size();
    result.without_data = cells.size() - heights;
    return is_complete;
}

} // namespace

std::optional<HeightStatistics> height_statistics(
    const std::vector<double>& cells, const std::atomic<bool>& cancelled)
{
    HeightStatistics result;
    if (!find_range(result, cells, cancelled)) {
        return {};
    }
    if (result.heights() == 0) {
        return result;
    }
    // Everything else is reckoned in parts of the range, where squares neither overflow nor vanish.
    const Range range(result.lowest, result.highest);
    Moments moments;
    Bars bars(result, range);
    std::vector<std::size_t> classes(s_classes, 0);
    if (!for_each_height(cells, cancelled, [&](double height) {
            moments.add(range.position(height));
            bars.add(height);
            ++classes[range.class_of(height, classes.size())];
        })) {
        return {};
    }
    result.mean = range.height(moments.mean());
    result.deviation = range.width(moments.deviation());

    const std::size_t middle = result.heights() / 2;
    const auto upper = height_of_rank(cells, cancelled, range, classes, middle);
    const auto lower
        = result.heights() % 2 == 1 ? upper : height_of_rank(cells, cancelled, range, classes, middle - 1);
    if (!lower || !upper) {
        return {};
    }
    result.median = *lower == *upper ? *lower : *lower / 2 + *upper / 2;
    return result;
}

} // namespace terrain
