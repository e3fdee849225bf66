#pragma once

#include "commands/CellPatch.h"
#include "commands/RasterCommand.h"

#include <functional>
#include <vector>

namespace terrain {

struct Raster;

/**
 * A command that gives the cells of a terrain document new heights.
 *
 * It keeps the old heights of the changed cells until it is undone. A redo computes the new cells again, from
 * the same cells as before and therefore with the same result.
 *
 * Derived commands give the new cells and a text of their parameters.
 */
class TerrainCommand : public RasterCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::TerrainCommand)

public:
    std::size_t undo_bytes() const override { return m_old_cells.bytes(); }

protected:
    using RasterCommand::RasterCommand;

    /// The cells after the command: finite where they were finite before, without data elsewhere. Calls
    /// report() every now and then, which is where the command may be cancelled.
    /// @throws FailedCommandException if there is no way to compute them
    virtual std::vector<double> new_cells(const Raster& raster) const = 0;

    /// The cells with @p change applied to every height, row by row; for new_cells().
    std::vector<double> transformed(const Raster& raster, const std::function<double(double)>& change) const;

private:
    QString change(TerrainModel& model) override;
    void undo_command() override;

    static void check_numbers(const Raster& before, const std::vector<double>& cells);

    CellPatch m_old_cells; // of the cells that the command changed
};

} // namespace terrain
