#include "commands/SmoothCommand.h"

#include "commands/WindowMeans.h"
#include "documents/Raster.h"
#include "parallel/Workers.h"
#include "windows/Icons.h"

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/SmoothCommand";

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
    Workers workers;
    return window_means(raster, m_radius, workers,
        [this, &raster](int row) { report(raster.index(0, row + 1), raster.cells.size()); });
}

QString SmoothCommand::parameters() const
{
    return tr("radius %1").arg(m_radius);
}

} // namespace terrain
