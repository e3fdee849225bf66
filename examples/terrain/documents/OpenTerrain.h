#pragma once

#include "documents/Raster.h"
#include "io/FileProgress.h"
#include "io/FileStamp.h"

#include <tarqa/housekeeping/DataSource.h>

#include <string>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainDocument;

/// A raster that was read and is no document yet.
struct TerrainFile
{
    std::string path;
    Raster raster;
    bool can_be_saved = false; ///< nothing is lost when the file is overwritten with the document
    FileStamp stamp; ///< what the file was like before it was read
    int reduction = 1; ///< of how many columns and rows of the file one stands for
    std::string format; ///< of the file, for people
};

/**
 * Reads an elevation raster. Any thread.
 *
 * @param path a file (or whatever else GDAL opens, such as the name of a subdataset)
 * @param reduction 1, or more for an overview; see RasterFile::read()
 * @throws RasterTooLarge, housekeeping::InvalidPath if it cannot be read; FileCancelled
 */
TerrainFile read_terrain(const std::string& path, const FileProgress& progress = nullptr, int reduction = 1);

/// Makes a document of a raster that was read, the current one. Main thread.
TerrainDocument& open_terrain(TerrainFile file);

/// Reads a raster and makes a document of it. Main thread.
/// @throws housekeeping::InvalidPath if it cannot be read; no document was made then, and the current one
/// stays current
TerrainDocument& open_terrain(const std::string& path);

/// Says in the error log that a document was opened, and by which run of the program.
void log_opened(const TerrainDocument& document, const std::string& path);

/// The unit of heights that a file names, in its many spellings; metres for an empty or unknown name.
housekeeping::DataSource::Units units_of(const std::string& unit);

} // namespace terrain
