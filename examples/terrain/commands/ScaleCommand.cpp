#include "commands/ScaleCommand.h"

#include "documents/Raster.h"
#include "language/NumberText.h"
#include "windows/Icons.h"

#include <QtCore/QLocale>

namespace terrain {

ScaleCommand::ScaleCommand(housekeeping::DocumentId document_id, double factor)
    : TerrainCommand(document_id, tr("Scale"))
    , m_factor(factor)
{
    setIcon(icon("scale"));
}

std::vector<double> ScaleCommand::new_cells(const Raster& raster) const
{
    return transformed(raster, [this](double height) { return height * m_factor; });
}

QString ScaleCommand::parameters() const
{
    return tr("factor %1").arg(number_text(m_factor, 'g', QLocale::FloatingPointShortest));
}

} // namespace terrain
