#pragma once

#include "commands/TerrainCommand.h"

namespace terrain {

/// Gives each cell the mean height of the square window around it, over the window's cells with data; cells
/// without data stay so. The time does not depend on the radius.
class SmoothCommand : public TerrainCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::SmoothCommand)

public:
    /// @param radius of the window, in cells: 2 gives windows of 5 x 5 cells. A run fails if it is below 1.
    SmoothCommand(housekeeping::DocumentId document_id, int radius);

protected:
    std::vector<double> new_cells(const Raster& raster) const override;
    QString parameters() const override;

private:
    int m_radius;
};

} // namespace terrain
