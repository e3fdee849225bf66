#pragma once

#include "CommandFixture.h"

#include <functional>
#include <vector>

namespace host_test {

/// A raster whose heights follow a rule.
inline terrain::Raster raster_of(
    int columns, int rows, const std::function<double(int column, int row)>& height)
{
    std::vector<double> cells;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            cells.push_back(height(column, row));
        }
    }
    return make_raster(columns, rows, cells);
}

} // namespace host_test
