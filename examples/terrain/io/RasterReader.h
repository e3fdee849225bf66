#pragma once

#include "documents/Raster.h"
#include "io/FileProgress.h"

#include <memory>
#include <string>

class GDALDataset;
class GDALRasterBand;

namespace terrain {

/**
 * An open raster file, of which one band is read with GDAL.
 *
 * The band's scale and offset are applied. Cells that the file marks as without data (by a number, a mask or
 * transparency) and cells that are not finite become no_data. A raster of one cell and one without any data
 * are fine.
 *
 * Lives on the stack of whoever reads. It may be made in one thread and read in another, but used in one at a
 * time only.
 */
class RasterFile
{
public:
    /// @param path a file, or whatever else GDAL opens; UTF-8 @param band the band's number, counted from 1
    /// @throws housekeeping::InvalidPath if there is no such file; if it is empty, broken or no raster; if
    /// the band is missing, complex or categorical
    explicit RasterFile(const std::string& path, int band = 1);
    ~RasterFile();
    RasterFile(const RasterFile&) = delete;
    RasterFile& operator=(const RasterFile&) = delete;

    int columns() const;
    int rows() const;
    /// The format for people, for example "GeoTIFF".
    std::string format() const;

    /// Whether write_raster() loses nothing of the file that matters to people: it is a GeoTIFF with one band
    /// and an ordinary place, or none. Colours, overviews and remarks do not count.
    bool is_plain_geotiff() const;

    /// Reads all cells, or an overview of them.
    /// @param reduction how many columns and rows one stands for; the cell in their middle does, unless the
    /// file has overviews of its own
    /// @throws RasterTooLarge if the cells do not fit into the memory, before any is read;
    /// housekeeping::InvalidPath if the file is cut short; FileCancelled
    Raster read(const FileProgress& progress = nullptr, int reduction = 1) const;

private:
    std::string m_path;
    std::unique_ptr<GDALDataset> m_dataset;
    GDALRasterBand* m_p_band; // the dataset's
};

/// Reads one band of a raster; see RasterFile, whose exceptions it throws.
Raster read_raster(const std::string& path, int band = 1);

} // namespace terrain
