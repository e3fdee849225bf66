#pragma once

#include <atomic>
#include <cstddef>
#include <optional>
#include <vector>

namespace terrain {

/// How the heights of a raster are distributed. A plain value; of the numbers from "lowest" on none means
/// anything if no cell holds a height.
struct HeightStatistics
{
    std::size_t cells = 0;
    std::size_t without_data = 0;

    double lowest = 0;
    double highest = 0;
    double mean = 0;
    double median = 0; ///< exact; of an even number of heights the mean of the two in the middle
    double deviation = 0; ///< the standard deviation of all heights, not an estimate from a part of them

    // The histogram: bars of one width side by side, each with the number of heights from its left edge up
    // to, but not including, its right one; the highest height is in the last bar.
    double first_edge = 0;
    double bar_width = 0;
    std::vector<std::size_t> bars;

    std::size_t heights() const { return cells - without_data; }
};

/// Goes over the cells three times. Any thread, while nobody changes them.
/// @param cancelled set in another thread to have it come back soon @return nothing if it was cancelled
std::optional<HeightStatistics> height_statistics(
    const std::vector<double>& cells, const std::atomic<bool>& cancelled);

} // namespace terrain
