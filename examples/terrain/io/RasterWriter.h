#pragma once

#include "io/FileProgress.h"

#include <string>

namespace terrain {

struct Raster;

/**
 * Writes a raster as a compressed GeoTIFF: with 32-bit numbers if they hold all heights exactly, else with
 * 64-bit numbers. Cells without data get the raster's own no-data number, or NaN if it has none or a height
 * equals it.
 *
 * The file appears, complete and read back, or it does not; see NewFile.
 *
 * @param path the file, UTF-8; its directory must exist, and it is overwritten if it exists
 * @throws housekeeping::InvalidPath if it cannot be written; FileCancelled
 */
void write_raster(const Raster& raster, const std::string& path, const FileProgress& progress = nullptr);

} // namespace terrain
