#include "commands/TriangulateCommand.h"

#include "commands/Triangulation.h"
#include "documents/TerrainModel.h"
#include "io/RasterMemory.h"
#include "windows/Icons.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/TriangulateCommand";

const std::size_t s_steps = 100; ///< of the progress

/// How many vertices there is memory for, beside the raster.
std::size_t most_vertices(const Raster& raster)
{
    const double memory = memory_limit() - memory_needed(raster.columns, raster.rows);
    const double number_of_last = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::size_t>(std::clamp(memory / bytes_per_vertex, 0.0, number_of_last));
}

} // namespace

TriangulateCommand::TriangulateCommand(housekeeping::DocumentId document_id, double tolerance)
    : RasterCommand(document_id, tr("Triangulate"))
    , m_tolerance(tolerance)
{
    setIcon(icon("triangulate"));
}

QString TriangulateCommand::change(TerrainModel& model)
{
    if (!std::isfinite(m_tolerance) || m_tolerance <= 0) {
        fail(tr("The tolerance must be a number above 0"), s_source, __LINE__);
    }
    Triangulated made;
    try {
        made = triangulate(model.raster(), m_tolerance, most_vertices(model.raster()),
            [this](double share) { report(static_cast<std::size_t>(share * s_steps), s_steps); });
    } catch (const TriangulationFailure& failure) {
        fail(failure.what(), s_source, __LINE__);
    }
    report(1, 1);
    QString outcome = tr("%1 triangles").arg(made.mesh.triangles.size());
    if (made.left_out > 0) {
        outcome += ", " + tr("cells left out: %1").arg(made.left_out);
    }
    model.mesh(boost::make_shared<const Mesh>(std::move(made.mesh)));
    return outcome;
}

void TriangulateCommand::take_back(TerrainModel&)
{
    // The heights are as they were, and the triangulation comes back by itself.
}

QString TriangulateCommand::parameters() const
{
    return tr("tolerance %1").arg(height_text(m_tolerance));
}

} // namespace terrain
