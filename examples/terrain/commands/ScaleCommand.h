#pragma once

#include "commands/TerrainCommand.h"

namespace terrain {

/// Multiplies all heights by a factor; fails if a height gets too large for a number.
class ScaleCommand : public TerrainCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::ScaleCommand)

public:
    ScaleCommand(housekeeping::DocumentId document_id, double factor);

protected:
    std::vector<double> new_cells(const Raster& raster) const override;
    QString parameters() const override;

private:
    double m_factor;
};

} // namespace terrain
