#include "documents/ExportTerrain.h"

#include "ErrorCode.h"
#include "documents/Raster.h"
#include "documents/RasterSummary.h"
#include "documents/TerrainModel.h"
#include "io/AsciiGridWriter.h"
#include "io/ContourLines.h"
#include "io/ContourWriter.h"
#include "io/MeshWriter.h"
#include "io/RasterWriter.h"

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/InvalidPath.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>

namespace terrain {

namespace {

const char* const s_source = "terrain/documents/ExportTerrain";

/// @throws housekeeping::InvalidPath if there is none
const Mesh& triangulation_of(const TerrainModel& terrain, const std::string& path)
{
    if (!terrain.mesh()) {
        throw housekeeping::InvalidPath(CannotWrite,
            QObject::tr("Cannot write \"%1\": there is no triangulation. Triangulate first")
                .arg(QString::fromStdString(path)),
            s_source, __LINE__, path);
    }
    return *terrain.mesh();
}

} // namespace

const std::vector<ExportFormatEntry>& export_formats()
{
    static const std::vector<ExportFormatEntry> s_formats = {
        {ExportFormat::GeoTiff, QObject::tr("GeoTIFF"), {"tif", "tiff"}},
        {ExportFormat::AsciiGrid, QObject::tr("ASCII grid"), {"asc"}},
        {ExportFormat::Contours, QObject::tr("Contour lines"), {"gpkg"}},
        {ExportFormat::Mesh, QObject::tr("Triangulation as PLY"), {"ply"}},
        {ExportFormat::Mesh, QObject::tr("Triangulation as OBJ"), {"obj"}},
        {ExportFormat::Mesh, QObject::tr("Triangulation as OFF"), {"off"}},
        {ExportFormat::Mesh, QObject::tr("Triangulation as STL"), {"stl"}},
    };
    return s_formats;
}

std::optional<ExportFormat> export_format(const std::string& path)
{
    const QString extension = QFileInfo(QString::fromStdString(path)).suffix().toLower();
    for (const ExportFormatEntry& entry : export_formats()) {
        if (entry.extensions.contains(extension)) {
            return entry.format;
        }
    }
    return std::nullopt;
}

bool holds_raster(const std::string& path)
{
    const std::optional<ExportFormat> format = export_format(path);
    return format == ExportFormat::GeoTiff || format == ExportFormat::AsciiGrid;
}

QString unknown_export_format()
{
    QStringList list;
    for (const ExportFormatEntry& entry : export_formats()) {
        list.append(QObject::tr("\".%1\" (%2)").arg(entry.extensions.first(), entry.name));
    }
    return QObject::tr("the name of an exported file must end in one of %1").arg(list.join(", "));
}

double usual_interval(const Raster& raster)
{
    const RasterSummary summary(raster.cells);
    return contour_interval(summary.minimum, summary.maximum);
}

void export_terrain(
    const TerrainModel& terrain, const std::string& path, double interval, const FileProgress& progress)
{
    const Raster& raster = terrain.raster();
    switch (export_format(path).value()) {
    case ExportFormat::GeoTiff:
        write_raster(raster, path, progress);
        break;
    case ExportFormat::AsciiGrid:
        write_ascii_grid(raster, path, progress);
        break;
    case ExportFormat::Contours:
        write_contours(raster, interval, path, progress);
        break;
    case ExportFormat::Mesh:
        write_mesh(triangulation_of(terrain, path), raster, path, progress);
        break;
    }
}

void log_exported(const std::string& path)
{
    tarqa::housekeeping::ErrorProtocol::instance().log_message(
        QObject::tr("Exported \"%1\"").arg(path.c_str()).toStdString());
}

} // namespace terrain
