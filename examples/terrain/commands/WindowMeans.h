#pragma once

#include <functional>
#include <vector>

namespace terrain {

class Workers;
struct Raster;

/**
 * The mean height of the square window around each cell, over the window's cells with data; no_data for cells
 * without data. The time does not depend on the radius, nor the result on the number of threads.
 * @param radius of the windows, in cells; at least 1
 * @param row_done called in this thread for each row, from the first one on, some time after it was done;
 * what it throws ends the computation and is thrown here
 */
std::vector<double> window_means(
    const Raster& raster, int radius, Workers& workers, const std::function<void(int row)>& row_done);

} // namespace terrain
