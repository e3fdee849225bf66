#pragma once

#include "io/FileProgress.h"

#include <string>

namespace terrain {

struct Raster;

/**
 * Writes a raster as an ASCII grid, with so many digits that all heights can be read back exactly. Cells
 * without data get the raster's own no-data number, or one that is no height. What the grid itself cannot
 * hold, the reference system and the unit, GDAL puts beside it: a.prj and a.asc.aux.xml.
 *
 * A raster without a place on the Earth gets one, cells of size 1 from x = 0 to the right and from y = 0
 * downwards, as the format always has one. Cells need not be square. The file appears, complete and read
 * back, or it does not; see NewFile.
 *
 * @throws housekeeping::InvalidPath if it cannot be written; if the raster is rotated or upside down; if the
 * twelve decimals of the format are not enough for its place; FileCancelled
 */
void write_ascii_grid(const Raster& raster, const std::string& path, const FileProgress& progress = nullptr);

} // namespace terrain
