#include "io/RasterWriter.h"

#include "documents/Raster.h"
#include "io/GdalMessages.h"
#include "io/NewFile.h"

#include <QtCore/QObject>

#include <cpl_string.h>
#include <gdal_priv.h>

#include <algorithm>

namespace terrain {

namespace {

const char* const s_source = "terrain/io/RasterWriter";

const int s_tile = 256; ///< side of a tile, in cells
const double s_writing = 0.8; ///< its share of the time; the rest is reading back

bool fits_float(double cell)
{
    return is_no_data(cell) || static_cast<double>(static_cast<float>(cell)) == cell;
}

/// How heights become numbers of the file.
class Encoding
{
public:
    explicit Encoding(const Raster& raster)
        : m_type(
            std::all_of(raster.cells.begin(), raster.cells.end(), fits_float) ? GDT_Float32 : GDT_Float64)
        , m_has_marker(raster.file_no_data.has_value())
        , m_marker(raster.file_no_data.value_or(no_data))
    {
        const bool representable = m_type == GDT_Float64 || fits_float(m_marker);
        const bool is_a_height
            = std::find(raster.cells.begin(), raster.cells.end(), m_marker) != raster.cells.end();
        if (!representable || is_a_height) {
            m_marker = no_data;
        }
        m_has_marker = m_has_marker || std::any_of(raster.cells.begin(), raster.cells.end(), is_no_data);
    }

    GDALDataType type() const { return m_type; }
    /// Whether the file tells which number marks cells without data.
    bool has_marker() const { return m_has_marker; }
    double marker() const { return m_marker; }

    /// Some rows as they stand in the file.
    void encode(const Raster& raster, int first_row, int rows, std::vector<double>& numbers) const
    {
        const auto begin = raster.cells.begin() + static_cast<std::ptrdiff_t>(raster.index(0, first_row));
        const auto end = begin + static_cast<std::ptrdiff_t>(raster.index(0, rows));
        numbers.assign(begin, end);
        std::replace_if(numbers.begin(), numbers.end(), is_no_data, m_marker);
    }

private:
    GDALDataType m_type;
    bool m_has_marker;
    double m_marker;
};

CPLStringList creation_options(const Raster& raster)
{
    CPLStringList options;
    options.AddString("COMPRESS=DEFLATE");
    options.AddString("PREDICTOR=3"); // for floating-point numbers
    options.AddString("NUM_THREADS=ALL_CPUS");
    options.AddString("BIGTIFF=IF_SAFER");
    if (raster.columns > 2 * s_tile || raster.rows > 2 * s_tile) {
        options.AddString("TILED=YES");
    }
    return options;
}

bool describe(GDALDataset& dataset, const Raster& raster, const Encoding& encoding)
{
    GDALRasterBand& band = *dataset.GetRasterBand(1);
    bool good = true;
    if (raster.geotransform) {
        std::array<double, 6> geotransform = *raster.geotransform;
        good = good && dataset.SetGeoTransform(geotransform.data()) == CE_None;
    }
    if (!raster.reference_system.empty()) {
        good = good && dataset.SetProjection(raster.reference_system.c_str()) == CE_None;
    }
    if (!raster.area_or_point.empty()) {
        good = good && dataset.SetMetadataItem(GDALMD_AREA_OR_POINT, raster.area_or_point.c_str()) == CE_None;
    }
    if (!raster.unit.empty()) {
        good = good && band.SetUnitType(raster.unit.c_str()) == CE_None;
    }
    if (encoding.has_marker()) {
        good = good && band.SetNoDataValue(encoding.marker()) == CE_None;
    }
    return good;
}

/// Calls @p use with the first row, the number of rows and their numbers, for blocks as high as a tile.
template <class Use>
bool for_blocks(const Raster& raster, const Encoding& encoding, Use use)
{
    std::vector<double> numbers;
    for (int row = 0; row < raster.rows; row += s_tile) {
        const int rows = std::min(s_tile, raster.rows - row);
        encoding.encode(raster, row, rows, numbers);
        if (!use(row, rows, numbers)) {
            return false;
        }
    }
    return true;
}

bool write_file(const Raster& raster, const Encoding& encoding, const std::string& path,
    const GdalMessages& messages, const FileProgress& progress)
{
    GDALDriver* const p_driver = GetGDALDriverManager()->GetDriverByName("GTiff");
    GDALDatasetUniquePtr dataset(p_driver->Create(
        path.c_str(), raster.columns, raster.rows, 1, encoding.type(), creation_options(raster).List()));
    if (!dataset || !describe(*dataset, raster, encoding)) {
        return false;
    }
    GDALRasterBand& band = *dataset->GetRasterBand(1);
    const auto write_block = [&](int row, int rows, std::vector<double>& numbers) {
        report(progress, s_writing * row / raster.rows);
        return band.RasterIO(GF_Write, 0, row, raster.columns, rows, numbers.data(), raster.columns, rows,
                   GDT_Float64, 0, 0, nullptr)
            == CE_None;
    };
    if (!for_blocks(raster, encoding, write_block)) {
        return false;
    }
    dataset->FlushCache(true);
    dataset.reset();
    return !messages.failed(); // closing tells by a message only
}

bool same_number(double one, double other)
{
    return one == other || (std::isnan(one) && std::isnan(other));
}

/// Reads the file back.
bool verify_file(
    const Raster& raster, const Encoding& encoding, const std::string& path, const FileProgress& progress)
{
    const GDALDatasetUniquePtr dataset(
        GDALDataset::Open(path.c_str(), GDAL_OF_RASTER | GDAL_OF_VERBOSE_ERROR));
    if (!dataset || dataset->GetRasterXSize() != raster.columns || dataset->GetRasterYSize() != raster.rows) {
        return false;
    }
    GDALRasterBand& band = *dataset->GetRasterBand(1);
    std::vector<double> read;
    return for_blocks(raster, encoding, [&](int row, int rows, const std::vector<double>& numbers) {
        report(progress, s_writing + (1 - s_writing) * row / raster.rows);
        read.resize(numbers.size());
        return band.RasterIO(GF_Read, 0, row, raster.columns, rows, read.data(), raster.columns, rows,
                   GDT_Float64, 0, 0, nullptr)
            == CE_None
            && std::equal(read.begin(), read.end(), numbers.begin(), same_number);
    });
}

} // namespace

void write_raster(const Raster& raster, const std::string& path, const FileProgress& progress)
{
    const NewFile file(path);
    const Encoding encoding(raster);
    const GdalMessages messages;
    if (!write_file(raster, encoding, file.temporary(), messages, progress)) {
        file.fail(messages, s_source, __LINE__);
    }
    if (!verify_file(raster, encoding, file.temporary(), progress)) {
        file.fail(QObject::tr("what was written cannot be read back. %1").arg(messages.text().c_str()),
            s_source, __LINE__);
    }
    file.put_in_place();
}

} // namespace terrain
