#pragma once

#include "io/FileProgress.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <string>
#include <vector>

namespace terrain {

struct Raster;

class TerrainModel;

/// What a terrain can be written as.
enum class ExportFormat
{
    GeoTiff, ///< the only one that holds all there is
    AsciiGrid,
    Contours,
    Mesh ///< the triangulation
};

struct ExportFormatEntry
{
    ExportFormat format;
    QString name; ///< for people
    QStringList extensions; ///< without dots; the first one is the usual one
};

/// At least one for each format, in their order.
const std::vector<ExportFormatEntry>& export_formats();

/// The format that a file's name asks for; none for an unknown extension.
std::optional<ExportFormat> export_format(const std::string& path);
/// Whether a file of that name would be a raster, which can be opened again.
bool holds_raster(const std::string& path);
/// Why a file of an unknown extension is not written.
QString unknown_export_format();

/// What the interval between contour lines is, where nobody names one.
double usual_interval(const Raster& raster);

/**
 * Writes a terrain in the format that the file's name asks for, which must be known. Any thread, while nobody
 * changes the terrain.
 * @param interval between contour lines; does not matter to other formats
 * @throws housekeeping::HousekeepingException if that fails; see write_raster(), write_ascii_grid(),
 * write_contours() and write_mesh(), for which there must be a triangulation; FileCancelled
 */
void export_terrain(const TerrainModel& terrain, const std::string& path, double interval,
    const FileProgress& progress = nullptr);

/// Says in the error log that a file was exported.
void log_exported(const std::string& path);

} // namespace terrain
