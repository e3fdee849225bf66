#pragma once

#include "commands/TerrainCommand.h"

namespace terrain {

/**
 * Raises the cells of every hollow to the height at which water would flow out of it. Water leaves the
 * terrain at its border and into cells without data, and flows to all eight neighbours.
 *
 * The priority-flood with a plain queue for the inside of hollows: R. Barnes, C. Lehman, D. Mulla (2014),
 * Priority-flood: An optimal depression-filling and watershed-labeling algorithm for digital elevation
 * models, Computers & Geosciences 62, 117-127, doi:10.1016/j.cageo.2013.04.024.
 */
class FillSinksCommand : public TerrainCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::FillSinksCommand)

public:
    explicit FillSinksCommand(housekeeping::DocumentId document_id);

protected:
    std::vector<double> new_cells(const Raster& raster) const override;
    QString parameters() const override;
};

} // namespace terrain
