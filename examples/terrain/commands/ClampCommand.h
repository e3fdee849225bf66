#pragma once

#include "commands/TerrainCommand.h"

namespace terrain {

/// Raises all heights below a bound to it, and lowers those above another one.
class ClampCommand : public TerrainCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::ClampCommand)

public:
    /// @param lowest, highest the bounds, in the unit of the heights. A run fails if the first is above the
    /// second.
    ClampCommand(housekeeping::DocumentId document_id, double lowest, double highest);

protected:
    std::vector<double> new_cells(const Raster& raster) const override;
    QString parameters() const override;

private:
    double m_lowest;
    double m_highest;
};

} // namespace terrain
