#include "commands/TerrainCommand.h"

#include "documents/Raster.h"
#include "documents/TerrainModel.h"

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/TerrainCommand";

} // namespace

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

QString TerrainCommand::change(TerrainModel& model)
{
    std::vector<double> cells = new_cells(model.raster());
    check_numbers(model.raster(), cells);
    report(1, 1);
    m_old_cells = CellPatch(model.cells(), cells);
    model.cells().swap(cells); // nothing fails or is cancelled from here on
    const std::size_t changed = m_old_cells.changed();
    return changed == 1 ? tr("1 cell changed") : tr("%1 cells changed").arg(changed);
}

void TerrainCommand::undo_command()
{
    m_old_cells.restore(TerrainModel::of(document_id()).cells());
    m_old_cells = CellPatch();
}

/// Heights may have got too large for a number, or cancelled each other out on the way there.
void TerrainCommand::check_numbers(const Raster& before, const std::vector<double>& cells)
{
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (std::isinf(cells[i]) || is_no_data(cells[i]) != is_no_data(before.cells[i])) {
            const auto columns = static_cast<std::size_t>(before.columns);
            fail(tr("The result in column %1 and row %2 is too large for a number")
                     .arg(QString::number(i % columns), QString::number(i / columns)),
                s_source, __LINE__);
        }
    }
}

} // namespace terrain
