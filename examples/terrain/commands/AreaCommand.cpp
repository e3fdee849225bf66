#include "commands/AreaCommand.h"

#include "documents/Raster.h"
#include "documents/TerrainModel.h"

#include <algorithm>
#include <optional>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/AreaCommand";

/// Heights may have got too large for a number, or cancelled each other out on the way there. @return the
/// first such cell
std::optional<QPoint> find_bad_number(
    const Raster& before, const QRect& area, const std::vector<double>& cells)
{
    std::size_t next = 0;
    for (int row = area.top(); row <= area.bottom(); ++row) {
        for (int column = area.left(); column <= area.right(); ++column, ++next) {
            const double cell = cells[next];
            if (std::isinf(cell) || is_no_data(cell) != is_no_data(before.cell(column, row))) {
                return QPoint(column, row);
            }
        }
    }
    return {};
}

void put_in_place(TerrainModel& model, const QRect& area, std::vector<double>& cells)
{
    if (cells.size() == model.cells().size()) {
        model.cells().swap(cells);
        return;
    }
    auto from = cells.begin();
    for (int row = area.top(); row <= area.bottom(); ++row, from += area.width()) {
        const auto first = static_cast<std::ptrdiff_t>(model.raster().index(area.left(), row));
        std::copy(from, from + area.width(), model.cells().begin() + first);
    }
}

} // namespace

QString AreaCommand::change(TerrainModel& model)
{
    const Raster& raster = model.raster();
    const QRect place = area(raster);
    std::vector<double> cells = place.isEmpty() ? std::vector<double>() : cells_after(raster, place);
    if (const auto bad = find_bad_number(raster, place, cells)) {
        fail(tr("The result in column %1 and row %2 is too large for a number")
                 .arg(QString::number(bad->x()), QString::number(bad->y())),
            s_source, __LINE__);
    }
    report(1, 1);
    m_old_cells = CellPatch(raster.cells, raster.columns, place, cells);
    put_in_place(model, place, cells); // nothing fails or is cancelled from here on
    note_changes(model);
    return changed_text();
}

void AreaCommand::take_back(TerrainModel& model)
{
    m_old_cells.restore(model.cells());
    note_changes(model);
    m_old_cells = CellPatch();
}

void AreaCommand::note_changes(TerrainModel& model) const
{
    if (m_old_cells.changed() > 0) {
        model.cells_changed(m_old_cells.area(model.raster().columns));
    }
}

std::vector<double> AreaCommand::cells_of(const Raster& raster, const QRect& area)
{
    std::vector<double> cells;
    cells.reserve(static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(area.height()));
    for (int row = area.top(); row <= area.bottom(); ++row) {
        const auto first = raster.cells.begin() + static_cast<std::ptrdiff_t>(raster.index(area.left(), row));
        cells.insert(cells.end(), first, first + area.width());
    }
    return cells;
}

QString AreaCommand::changed_text() const
{
    const std::size_t changed = m_old_cells.changed();
    return changed == 1 ? tr("1 cell changed") : tr("%1 cells changed").arg(changed);
}

} // namespace terrain
