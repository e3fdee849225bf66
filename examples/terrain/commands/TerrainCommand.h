#pragma once

#include "commands/AreaCommand.h"

#include <functional>
#include <vector>

namespace terrain {

/// A command that gives all cells of a terrain document new heights. Derived commands give the new cells and
/// a text of their parameters.
class TerrainCommand : public AreaCommand
{
protected:
    using AreaCommand::AreaCommand;

    /// The cells after the command: finite where they were finite before, without data elsewhere. Calls
    /// report() every now and then, which is where the command may be cancelled.
    /// @throws FailedCommandException if there is no way to compute them
    virtual std::vector<double> new_cells(const Raster& raster) const = 0;

    /// The cells with @p change applied to every height, row by row; for new_cells().
    std::vector<double> transformed(const Raster& raster, const std::function<double(double)>& change) const;

private:
    QRect area(const Raster& raster) const override;
    std::vector<double> cells_after(const Raster& raster, const QRect& area) const override;
};

} // namespace terrain
