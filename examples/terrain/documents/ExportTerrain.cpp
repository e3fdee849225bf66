#include "documents/ExportTerrain.h"

#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/RasterWriter.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>

namespace terrain {

bool is_export_name(const std::string& path)
{
    const QString suffix = QFileInfo(QString::fromStdString(path)).suffix().toLower();
    return suffix == "tif" || suffix == "tiff";
}

void export_terrain(const TerrainDocument& document, const std::string& path)
{
    write_raster(document.terrain().raster(), path);
    housekeeping::ErrorProtocol::instance().log_message(
        QObject::tr("Exported \"%1\"").arg(path.c_str()).toStdString());
}

} // namespace terrain
