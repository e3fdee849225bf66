#include "commands/ReshapeCommand.h"

#include "documents/TerrainModel.h"

namespace terrain {

std::size_t ReshapeCommand::undo_bytes() const
{
    return RasterCommand::undo_bytes() + (m_old ? m_old->cells.capacity() * sizeof(double) : 0);
}

Raster ReshapeCommand::description_of(const Raster& raster)
{
    Raster description;
    description.geotransform = raster.geotransform;
    description.reference_system = raster.reference_system;
    description.area_or_point = raster.area_or_point;
    description.unit = raster.unit;
    description.data_type = raster.data_type;
    description.file_no_data = raster.file_no_data;
    return description;
}

QString ReshapeCommand::change(TerrainModel& model)
{
    std::optional<Raster> made = new_raster(model.raster());
    report(1, 1);
    if (!made) {
        return tr("nothing changed");
    }
    const auto size_of = [](const Raster& raster) {
        return tr("%1 x %2").arg(QString::number(raster.columns), QString::number(raster.rows));
    };
    const QString outcome = tr("%1 cells became %2").arg(size_of(model.raster()), size_of(*made));
    m_old = std::move(made);
    model.swap(*m_old); // nothing fails or is cancelled from here on
    return outcome;
}

void ReshapeCommand::take_back(TerrainModel& model)
{
    if (m_old) { // not after a run that did not come to its end
        model.swap(*m_old);
        m_old.reset();
    }
}

} // namespace terrain
