#pragma once

#include "commands/CellPatch.h"
#include "commands/RasterCommand.h"

#include <QtCore/QRect>

#include <vector>

namespace terrain {

struct Raster;

/**
 * A command that gives the cells of some columns and rows of a terrain document new heights. What it computes
 * and keeps depends on these, not on the size of the raster.
 *
 * It keeps the old heights of the changed cells until it is undone. A redo computes the new cells again, from
 * the same cells as before and therefore with the same result.
 *
 * Derived commands give the columns and rows, the new cells and a text of their parameters.
 */
class AreaCommand : public RasterCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::AreaCommand)

public:
    std::size_t undo_bytes() const override { return RasterCommand::undo_bytes() + m_old_cells.bytes(); }

protected:
    using RasterCommand::RasterCommand;

    /// The columns and rows that may get other heights, inside of the raster; empty for none.
    /// @throws FailedCommandException if the parameters make no sense
    virtual QRect area(const Raster& raster) const = 0;

    /// The cells of the area after the command, row by row: finite where they were finite before, without
    /// data elsewhere. Calls report() every now and then, which is where the command may be cancelled. Not
    /// called for an empty area.
    /// @throws FailedCommandException if there is no way to compute them
    virtual std::vector<double> cells_after(const Raster& raster, const QRect& area) const = 0;

    QString change(TerrainModel& model) override;
    void take_back(TerrainModel& model) override;

    /// The cells of an area, row by row.
    static std::vector<double> cells_of(const Raster& raster, const QRect& area);

    /// What came out, for the description.
    QString changed_text() const;
    /// What the cells that the command changed held before.
    CellPatch& old_cells() { return m_old_cells; }

private:
    void note_changes(TerrainModel& model) const;

    CellPatch m_old_cells;
};

} // namespace terrain
