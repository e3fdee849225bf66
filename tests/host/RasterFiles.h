#pragma once

#include <gdal.h>

#include <functional>
#include <string>
#include <vector>

namespace host_test {

/// The path of a file in the test's scratch directory.
std::string scratch(const std::string& name);

void write_text(const std::string& path, const std::string& text);
std::string read_text(const std::string& path);
/// Cuts a file down to @p bytes.
void cut_file(const std::string& path, unsigned long long bytes);
/// The names of what lies in a directory, sorted.
std::vector<std::string> names_in(const std::string& directory);
/// A new, empty directory in the scratch directory.
std::string make_directory(const std::string& name);

/// What else to do with a file that is being made.
typedef std::function<void(GDALDatasetH dataset, GDALRasterBandH band)> Decoration;

/**
 * Makes a GeoTIFF with GDAL.
 * @param cells row by row, as they are to stand in the file; empty for zeros
 * @param options creation options, "KEY=VALUE"
 */
void make_tiff(const std::string& path, int columns, int rows, GDALDataType type,
    const std::vector<double>& cells, const Decoration& decorate = nullptr,
    const std::vector<std::string>& options = {}, int bands = 1);

/// An ordinary raster of heights, 20 columns and 15 rows, with hollows and cells without data.
std::string make_terrain_file(const std::string& name);

} // namespace host_test
