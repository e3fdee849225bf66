#include "PlainOperations.h"

#include <algorithm>
#include <queue>

namespace plain {

namespace {

using terrain::is_no_data;
using terrain::Raster;

/// Adds a row to the sums over columns, or takes it away again.
void add_row(const Raster& raster, int row, int sign, std::vector<double>& sums, std::vector<int>& counts)
{
    const double* const p_cells = raster.cells.data() + raster.index(0, row);
    for (int column = 0; column < raster.columns; ++column) {
        if (!is_no_data(p_cells[column])) {
            sums[column] += sign * p_cells[column];
            counts[column] += sign;
        }
    }
}

struct Cell
{
    double height;
    int column;
    int row;
    bool operator>(const Cell& other) const { return height > other.height; }
};

bool is_outlet(const Raster& raster, int column, int row)
{
    if (column == 0 || row == 0 || column == raster.columns - 1 || row == raster.rows - 1) {
        return true;
    }
    for (int y = row - 1; y <= row + 1; ++y) {
        for (int x = column - 1; x <= column + 1; ++x) {
            if (is_no_data(raster.cell(x, y))) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

std::vector<double> smoothed(const Raster& raster, int radius)
{
    std::vector<double> cells(raster.cells.size(), terrain::no_data);
    std::vector<double> sums(static_cast<std::size_t>(raster.columns));
    std::vector<int> counts(sums.size());
    for (int row = 0; row < std::min(radius, raster.rows); ++row) {
        add_row(raster, row, 1, sums, counts);
    }
    for (int row = 0; row < raster.rows; ++row) {
        if (row + radius < raster.rows) {
            add_row(raster, row + radius, 1, sums, counts);
        }
        if (row - radius - 1 >= 0) {
            add_row(raster, row - radius - 1, -1, sums, counts);
        }
        double sum = 0;
        int count = 0;
        for (int column = -radius; column < raster.columns; ++column) {
            if (column + radius < raster.columns) {
                sum += sums[column + radius];
                count += counts[column + radius];
            }
            if (column - radius - 1 >= 0) {
                sum -= sums[column - radius - 1];
                count -= counts[column - radius - 1];
            }
            if (column >= 0 && !is_no_data(raster.cell(column, row))) {
                cells[raster.index(column, row)] = sum / count;
            }
        }
    }
    return cells;
}

std::vector<double> filled(const Raster& raster)
{
    std::vector<double> heights = raster.cells;
    std::vector<char> closed(heights.size(), false);
    std::priority_queue<Cell, std::vector<Cell>, std::greater<Cell>> open;
    for (int row = 0; row < raster.rows; ++row) {
        for (int column = 0; column < raster.columns; ++column) {
            const std::size_t index = raster.index(column, row);
            if (is_no_data(heights[index])) {
                closed[index] = true;
            } else if (is_outlet(raster, column, row)) {
                open.push({heights[index], column, row});
                closed[index] = true;
            }
        }
    }
    while (!open.empty()) {
        const Cell cell = open.top();
        open.pop();
        for (int row = std::max(cell.row - 1, 0); row <= std::min(cell.row + 1, raster.rows - 1); ++row) {
            for (int column = std::max(cell.column - 1, 0);
                 column <= std::min(cell.column + 1, raster.columns - 1); ++column) {
                const std::size_t index = raster.index(column, row);
                if (!closed[index]) {
                    heights[index] = std::max(heights[index], cell.height);
                    closed[index] = true;
                    open.push({heights[index], column, row});
                }
            }
        }
    }
    return heights;
}

} // namespace plain
