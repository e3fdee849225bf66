#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace terrain {

/// What a cell without data holds: one and the same quiet NaN everywhere, so that cells compare bit by bit.
constexpr double no_data = std::numeric_limits<double>::quiet_NaN();

inline bool is_no_data(double cell)
{
    return std::isnan(cell);
}

/**
 * One band of heights and how it lies on the Earth. A plain value; texts are UTF-8.
 *
 * Cells are stored row by row, the first row first. A cell is a finite height or no_data, nothing else.
 */
struct Raster
{
    int columns = 0;
    int rows = 0;
    std::vector<double> cells;

    std::optional<std::array<double, 6>> geotransform; ///< as in GDAL: from column and row to coordinates
    std::string reference_system; ///< WKT; empty if unknown
    std::string area_or_point; ///< "Area", "Point" or empty: what a cell's height stands for
    std::string unit; ///< of the heights, as the file names it; empty if it does not
    std::string data_type; ///< of the cells in the file, for example "Float32"
    std::optional<double> file_no_data; ///< the number that marks cells without data in the file

    std::size_t index(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns)
            + static_cast<std::size_t>(column);
    }
    double cell(int column, int row) const { return cells[index(column, row)]; }
};

} // namespace terrain
