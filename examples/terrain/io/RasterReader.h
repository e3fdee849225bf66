#pragma once

#include "documents/Raster.h"

#include <string>

namespace terrain {

/**
 * Reads one band of a raster with GDAL.
 *
 * The band's scale and offset are applied. Cells that the file marks as without data (by a number, a mask or
 * transparency) and cells that are not finite become no_data. A raster of one cell and one without any data
 * are fine.
 *
 * @param path a file, or whatever else GDAL opens; UTF-8
 * @param band the band's number, counted from 1
 * @throws housekeeping::InvalidPath if there is no such file; if it is empty, broken, cut short or no raster;
 * if the band is missing, complex or categorical; if the raster does not fit into memory
 */
Raster read_raster(const std::string& path, int band = 1);

} // namespace terrain
