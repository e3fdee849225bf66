#pragma once

#include "io/FileProgress.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <string>
#include <vector>

namespace terrain {

struct Raster;

/// What a raster can be written as.
enum class ExportFormat
{
    GeoTiff, ///< the only one that holds all there is
    AsciiGrid,
    Contours
};

struct ExportFormatEntry
{
    ExportFormat format;
    QString name; ///< for people
    QStringList extensions; ///< without dots; the first one is the usual one
};

/// One for each format, in their order.
const std::vector<ExportFormatEntry>& export_formats();

/// The format that a file's name asks for; none for an unknown extension.
std::optional<ExportFormat> export_format(const std::string& path);
/// Why a file of an unknown extension is not written.
QString unknown_export_format();

/// What the interval between contour lines is, where nobody names one.
double usual_interval(const Raster& raster);

/**
 * Writes a raster in the format that the file's name asks for, which must be known. Any thread, while nobody
 * changes the raster.
 * @param interval between contour lines; does not matter to other formats
 * @throws housekeeping::HousekeepingException if that fails; see write_raster(), write_ascii_grid() and
 * write_contours(); FileCancelled
 */
void export_raster(
    const Raster& raster, const std::string& path, double interval, const FileProgress& progress = nullptr);

/// Says in the error log that a file was exported.
void log_exported(const std::string& path);

} // namespace terrain
