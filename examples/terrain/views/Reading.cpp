#include "views/Reading.h"

#include "documents/Raster.h"
#include "language/NumberText.h"
#include "views/Footprint.h"
#include "views/MapFurniture.h"

#include <QtCore/QObject>
#include <QtCore/QPointF>

namespace terrain {

namespace {

QString number(double value, bool angular)
{
    return number_text(value, 'f', angular ? 5 : 1);
}

} // namespace

std::optional<Reading> reading_at(const QPointF& place, const Raster& raster, const Footprint& footprint)
{
    if (place.x() < 0 || place.y() < 0 || place.x() >= raster.columns || place.y() >= raster.rows) {
        return {};
    }
    const int column = static_cast<int>(place.x());
    const int row = static_cast<int>(place.y());
    Reading found{footprint.columns_run_west ? raster.columns - 1 - column : column,
        footprint.rows_run_north ? raster.rows - 1 - row : row, no_data};
    found.height = raster.cell(found.column, found.row);
    return found;
}

QString reading_text(const Reading& reading, const Raster& raster, const QString& unit, bool angular)
{
    const QString height = is_no_data(reading.height)
        ? QObject::tr("no data")
        : QString("%1 %2").arg(height_text(reading.height), unit).trimmed();
    const QString cell = QObject::tr("column %1, row %2").arg(reading.column).arg(reading.row);
    if (!raster.geotransform) {
        return QObject::tr("%1   at %2").arg(height, cell);
    }
    const std::array<double, 6>& g = *raster.geotransform;
    const double column = reading.column + 0.5;
    const double row = reading.row + 0.5;
    const double x = g[0] + column * g[1] + row * g[2];
    const double y = g[3] + column * g[4] + row * g[5];
    return QObject::tr("%1   at %2, %3   (%4)").arg(height, number(x, angular), number(y, angular), cell);
}

} // namespace terrain
