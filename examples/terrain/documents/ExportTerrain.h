#pragma once

#include <string>

namespace terrain {

class TerrainDocument;

/// Whether a file of this name can be exported: it ends in ".tif" or ".tiff".
bool is_export_name(const std::string& path);

/// Writes the document's raster as GeoTIFF and says so in the error log.
/// @throws housekeeping::InvalidPath if that fails; see write_raster()
void export_terrain(const TerrainDocument& document, const std::string& path);

} // namespace terrain
