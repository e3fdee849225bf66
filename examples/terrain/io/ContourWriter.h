#pragma once

#include "io/FileProgress.h"

#include <string>

namespace terrain {

struct Raster;

/**
 * Writes the contour lines of a raster as a GeoPackage: one layer "contours" of lines with a field "height",
 * in the raster's coordinates and reference system. Without a place on the Earth the coordinates are columns
 * and, downwards from 0, rows of cells. The file appears, complete, or it does not; see NewFile.
 *
 * @param interval between the heights of lines, in the raster's units, above 0
 * @throws housekeeping::InvalidPath if it cannot be written, or there are no lines at this interval;
 * housekeeping::HousekeepingException as contour_lines(); FileCancelled
 */
void write_contours(
    const Raster& raster, double interval, const std::string& path, const FileProgress& progress = nullptr);

} // namespace terrain
