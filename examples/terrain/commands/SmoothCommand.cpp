#include "commands/SmoothCommand.h"

#include "commands/RunningSum.h"
#include "documents/Raster.h"
#include "windows/Icons.h"

#include <algorithm>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/SmoothCommand";

/// Sum and number of the heights in a part of a row.
struct Part
{
    double sum = 0;
    std::size_t count = 0;
};

/// For each cell of a row the part of it that lies in the cell's window.
void sum_row(const Raster& raster, int row, int radius, Part* p_parts)
{
    const double* const p_cells = raster.cells.data() + raster.index(0, row);
    RunningSum window;
    for (long long column = -radius; column < raster.columns; ++column) {
        const long long entering = column + radius;
        if (entering < raster.columns && !is_no_data(p_cells[entering])) {
            window.enter(p_cells[entering], 1);
        }
        const long long leaving = column - radius - 1;
        if (leaving >= 0 && !is_no_data(p_cells[leaving])) {
            window.leave(p_cells[leaving], 1);
        }
        if (column >= 0) {
            p_parts[column] = {window.sum(), window.count()};
        }
    }
}

/// The windows of a row of cells, which move down row by row. They keep the row sums that will leave them
/// again.
class Windows
{
public:
    /// @param radius in cells
    Windows(const Raster& raster, int radius)
        : m_raster(raster)
        , m_column_radius(std::min(radius, raster.columns)) // a larger one reaches no more cells
        , m_row_radius(std::min(radius, raster.rows))
        , m_kept_rows(static_cast<int>(std::min<long long>(raster.rows, 2LL * m_row_radius + 1)))
        , m_kept(raster.index(0, m_kept_rows))
        , m_sums(static_cast<std::size_t>(raster.columns))
    {
        for (int row = 0; row < m_row_radius; ++row) {
            enter(row);
        }
    }

    /// Moves the windows to @p row, which is the first one or the one below.
    void move_to(int row)
    {
        if (row > m_row_radius) {
            leave(row - m_row_radius - 1);
        }
        if (row < m_raster.rows - m_row_radius) {
            enter(row + m_row_radius);
        }
    }

    double mean(int column) const
    {
        const RunningSum& window = m_sums[static_cast<std::size_t>(column)];
        return window.sum() / static_cast<double>(window.count());
    }

private:
    Part* kept(int row) { return m_kept.data() + m_raster.index(0, row % m_kept_rows); }

    void enter(int row)
    {
        Part* const p_parts = kept(row);
        sum_row(m_raster, row, m_column_radius, p_parts);
        for (std::size_t i = 0; i < m_sums.size(); ++i) {
            m_sums[i].enter(p_parts[i].sum, p_parts[i].count);
        }
    }

    void leave(int row)
    {
        const Part* const p_parts = kept(row);
        for (std::size_t i = 0; i < m_sums.size(); ++i) {
            m_sums[i].leave(p_parts[i].sum, p_parts[i].count);
        }
    }

    const Raster& m_raster;
    int m_column_radius;
    int m_row_radius;
    int m_kept_rows;
    std::vector<Part> m_kept; // row sums, each row in the place of the one that left the windows before
    std::vector<RunningSum> m_sums; // one for each column
};

} // namespace

SmoothCommand::SmoothCommand(housekeeping::DocumentId document_id, int radius)
    : TerrainCommand(document_id, tr("Smooth"))
    , m_radius(radius)
{
    setIcon(icon("smooth"));
}

std::vector<double> SmoothCommand::new_cells(const Raster& raster) const
{
    if (m_radius < 1) {
        fail(tr("The radius must be at least 1"), s_source, __LINE__);
    }
    std::vector<double> cells(raster.cells.size(), no_data);
    Windows windows(raster, m_radius);
    for (int row = 0; row < raster.rows; ++row) {
        windows.move_to(row);
        for (int column = 0; column < raster.columns; ++column) {
            if (!is_no_data(raster.cell(column, row))) {
                cells[raster.index(column, row)] = windows.mean(column);
            }
        }
        report(raster.index(0, row + 1), raster.cells.size());
    }
    return cells;
}

QString SmoothCommand::parameters() const
{
    return tr("radius %1").arg(m_radius);
}

} // namespace terrain
