#include "batch/RasterReport.h"

#include "documents/Mesh.h"
#include "documents/RasterSummary.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/ReferenceSystem.h"
#include "language/UnitText.h"

#include <tarqa/housekeeping/DataSource.h>

#include <QtCore/QLocale>
#include <QtCore/QObject>

namespace terrain {

namespace {

QString number(double value)
{
    return QString::number(value, 'g', 10);
}

QString cell_size(const Raster& raster)
{
    if (!raster.geotransform) {
        return QObject::tr("unknown");
    }
    const std::array<double, 6>& g = *raster.geotransform;
    const QString unit = unit_text(reference_system_unit(raster.reference_system));
    return QObject::tr("%1 x %2 %3")
        .arg(number(std::hypot(g[1], g[4])), number(std::hypot(g[2], g[5])), unit)
        .trimmed();
}

QString or_unknown(const std::string& text)
{
    return text.empty() ? QObject::tr("unknown") : QString::fromStdString(text);
}

} // namespace

std::string raster_report(const TerrainDocument& document)
{
    const Raster& raster = document.terrain().raster();
    const RasterSummary summary(raster.cells);
    const QString none = QObject::tr("none, all cells are without data");
    const QString range = summary.valid == 0
        ? none
        : QObject::tr("%1 to %2").arg(number(summary.minimum), number(summary.maximum));
    const QString mean = summary.valid == 0 ? none : number(summary.mean);
    const auto source = document.datasource();

    QString text;
    const auto line
        = [&text](const QString& name, const QString& value) { text += name + ": " + value + "\n"; };
    line(QObject::tr("name"), QString::fromStdString(document.title()));
    line(QObject::tr("size"),
        QObject::tr("%1 x %2 cells").arg(QString::number(raster.columns), QString::number(raster.rows)));
    line(QObject::tr("cell size"), cell_size(raster));
    line(QObject::tr("reference system"), or_unknown(reference_system_name(raster.reference_system)));
    line(QObject::tr("data type"), or_unknown(raster.data_type));
    line(QObject::tr("unit"), source ? height_unit_text(source) : QObject::tr("unknown"));
    line(QObject::tr("range"), range);
    line(QObject::tr("mean"), mean);
    line(QObject::tr("no-data"), QObject::tr("%1 cells").arg(summary.without_data));
    if (const auto& sp_mesh = document.terrain().mesh()) {
        line(QObject::tr("triangulation"),
            QObject::tr("%1 vertices, %2 triangles, tolerance %3")
                .arg(QString::number(sp_mesh->vertices.size()), QString::number(sp_mesh->triangles.size()),
                    number(sp_mesh->tolerance)));
    }
    line(
        "checksum", QString::fromStdString(checksum(raster))); // scripts look for it, so it is not translated
    return text.toStdString();
}

} // namespace terrain
