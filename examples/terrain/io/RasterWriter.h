#pragma once

#include <string>

namespace terrain {

struct Raster;

/**
 * Writes a raster as a compressed GeoTIFF: with 32-bit numbers if they hold all heights exactly, else with
 * 64-bit numbers. Cells without data get the raster's own no-data number, or NaN if it has none or a height
 * equals it.
 *
 * The file appears, complete and read back, or it does not: it is written under another name beside its place
 * and moved there at the end, so whatever was there before stays if anything goes wrong.
 *
 * @param path the file, UTF-8; its directory must exist, and it is overwritten if it exists
 * @throws housekeeping::InvalidPath if it cannot be written
 */
void write_raster(const Raster& raster, const std::string& path);

} // namespace terrain
