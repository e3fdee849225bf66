#include "commands/CropCommand.h"

#include "windows/Icons.h"

#include <algorithm>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/CropCommand";

bool has_data(double cell)
{
    return !is_no_data(cell);
}

/// The same cells lie elsewhere in the raster, and in the same place on the Earth.
void move_origin(std::array<double, 6>& g, int columns, int rows)
{
    g[0] += columns * g[1] + rows * g[2];
    g[3] += columns * g[4] + rows * g[5];
}

} // namespace

std::optional<CellRange> range_of_data(const Raster& raster)
{
    std::optional<CellRange> range;
    for (int row = 0; row < raster.rows; ++row) {
        const auto begin = raster.cells.begin() + static_cast<std::ptrdiff_t>(raster.index(0, row));
        const auto end = begin + raster.columns;
        const auto first = std::find_if(begin, end, has_data);
        if (first == end) {
            continue;
        }
        const auto last
            = std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(first), has_data);
        const int first_column = static_cast<int>(first - begin);
        const int last_column = static_cast<int>(last.base() - begin) - 1;
        if (!range) {
            range = CellRange{first_column, last_column, row, row};
        }
        range->first_column = std::min(range->first_column, first_column);
        range->last_column = std::max(range->last_column, last_column);
        range->last_row = row;
    }
    return range;
}

CropCommand::CropCommand(housekeeping::DocumentId document_id, const CellRange& range)
    : ReshapeCommand(document_id, tr("Crop"))
    , m_range(range)
{
    setIcon(icon("crop"));
}

QString CropCommand::objection(const CellRange& range, int columns, int rows)
{
    if (range.first_column > range.last_column) {
        return tr("The first column is behind the last one");
    }
    if (range.first_row > range.last_row) {
        return tr("The first row is behind the last one");
    }
    if (columns < 1 || rows < 1) {
        return tr("The raster has no cells");
    }
    if (range.first_column < 0 || range.last_column >= columns) {
        return tr("The raster has the columns 0 to %1").arg(columns - 1);
    }
    if (range.first_row < 0 || range.last_row >= rows) {
        return tr("The raster has the rows 0 to %1").arg(rows - 1);
    }
    return QString();
}

std::optional<Raster> CropCommand::new_raster(const Raster& raster) const
{
    const QString objection = CropCommand::objection(m_range, raster.columns, raster.rows);
    if (!objection.isEmpty()) {
        fail(objection, s_source, __LINE__);
    }
    if (m_range.columns() == raster.columns && m_range.rows() == raster.rows) {
        return {};
    }
    Raster kept = description_of(raster);
    if (kept.geotransform) {
        move_origin(*kept.geotransform, m_range.first_column, m_range.first_row);
    }
    kept.columns = m_range.columns();
    kept.rows = m_range.rows();
    kept.cells.reserve(kept.index(0, kept.rows));
    for (int row = m_range.first_row; row <= m_range.last_row; ++row) {
        const auto first
            = raster.cells.begin() + static_cast<std::ptrdiff_t>(raster.index(m_range.first_column, row));
        kept.cells.insert(kept.cells.end(), first, first + kept.columns);
        report(kept.cells.size(), kept.index(0, kept.rows));
    }
    return kept;
}

QString CropCommand::parameters() const
{
    return tr("columns %1 to %2, rows %3 to %4")
        .arg(QString::number(m_range.first_column), QString::number(m_range.last_column),
            QString::number(m_range.first_row), QString::number(m_range.last_row));
}

} // namespace terrain
