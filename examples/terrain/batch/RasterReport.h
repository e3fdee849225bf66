#pragma once

#include <string>

namespace terrain {

class TerrainDocument;

/// Facts about a document's raster, a line each, with a checksum of the cells at the end.
std::string raster_report(const TerrainDocument& document);

} // namespace terrain
