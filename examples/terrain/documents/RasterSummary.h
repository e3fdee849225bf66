#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace terrain {

struct Raster;

/// Range and mean of the cells that hold a height.
struct RasterSummary
{
    explicit RasterSummary(const std::vector<double>& cells);

    std::size_t valid = 0; ///< cells that hold a height
    std::size_t without_data = 0;
    double minimum = 0; ///< this and the next two are meaningless if no cell is valid
    double maximum = 0;
    double mean = 0;
};

/// SHA-256 over the size and all cells, in hexadecimal: equal exactly if two rasters have the same cells, bit
/// by bit, on every machine.
std::string checksum(const Raster& raster);

} // namespace terrain
