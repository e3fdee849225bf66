#pragma once

#include <tarqa/housekeeping/DataSource.h>

#include <string>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainDocument;

/**
 * Opens an elevation raster as a new document, which becomes the current one. Main thread.
 *
 * @param path a file (or whatever else GDAL opens, such as the name of a subdataset)
 * @throws housekeeping::InvalidPath if it cannot be read; no document was made then, and the current one
 * stays current
 */
TerrainDocument& open_terrain(const std::string& path);

/// Says in the error log that a document was opened, and by which run of the program.
void log_opened(const TerrainDocument& document, const std::string& path);

/// The unit of heights that a file names, in its many spellings; metres for an empty or unknown name.
housekeeping::DataSource::Units units_of(const std::string& unit);

} // namespace terrain
