#pragma once

#include "commands/RasterCommand.h"

namespace terrain {

/**
 * Gives a terrain document a triangulation: a surface of triangles from which no cell's height is further
 * away than a tolerance; see triangulate(). The heights stay as they are.
 *
 * The triangulation of before comes back when it is undone; a redo makes the same one again.
 */
class TriangulateCommand : public RasterCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::TriangulateCommand)

public:
    /// @param tolerance in the document's units, above 0
    TriangulateCommand(housekeeping::DocumentId document_id, double tolerance);

private:
    QString change(TerrainModel& model) override;
    void take_back(TerrainModel& model) override;
    QString parameters() const override;

    double m_tolerance;
};

} // namespace terrain
