#include "commands/TerrainCommand.h"

#include "documents/Raster.h"

namespace terrain {

std::vector<double> TerrainCommand::transformed(
    const Raster& raster, const std::function<double(double)>& change) const
{
    std::vector<double> cells(raster.cells.size(), no_data);
    for (int row = 0; row < raster.rows; ++row) {
        for (std::size_t i = raster.index(0, row); i < raster.index(0, row + 1); ++i) {
            cells[i] = is_no_data(raster.cells[i]) ? no_data : change(raster.cells[i]);
        }
        report(raster.index(0, row + 1), raster.cells.size());
    }
    return cells;
}

QRect TerrainCommand::area(const Raster& raster) const
{
    return {0, 0, raster.columns, raster.rows};
}

std::vector<double> TerrainCommand::cells_after(const Raster& raster, const QRect&) const
{
    return new_cells(raster);
}

} // namespace terrain
