#include "commands/ClampCommand.h"

#include "documents/Raster.h"
#include "language/NumberText.h"
#include "windows/Icons.h"

#include <QtCore/QLocale>

#include <algorithm>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/ClampCommand";

} // namespace

ClampCommand::ClampCommand(housekeeping::DocumentId document_id, double lowest, double highest)
    : TerrainCommand(document_id, tr("Clamp"))
    , m_lowest(lowest)
    , m_highest(highest)
{
    setIcon(icon("clamp"));
}

std::vector<double> ClampCommand::new_cells(const Raster& raster) const
{
    if (!(m_lowest <= m_highest)) {
        fail(tr("The lower bound is above the upper one"), s_source, __LINE__);
    }
    return transformed(raster, [this](double height) { return std::clamp(height, m_lowest, m_highest); });
}

QString ClampCommand::parameters() const
{
    return tr("%1 to %2")
        .arg(number_text(m_lowest, 'g', QLocale::FloatingPointShortest),
            number_text(m_highest, 'g', QLocale::FloatingPointShortest));
}

} // namespace terrain
