#include "io/RasterReader.h"

#include "ErrorCode.h"
#include "io/GdalMessages.h"
#include "io/RasterMemory.h"

#include <tarqa/housekeeping/InvalidPath.h>

#include <QtCore/QObject>

#include <gdal_priv.h>

#include <algorithm>
#include <filesystem>
#include <new>

namespace terrain {

namespace {

const char* const s_source = "terrain/io/RasterReader";

const int s_rows_per_report = 16;

[[noreturn]] void fail(const std::string& path, const QString& reason, unsigned int line)
{
    throw tarqa::housekeeping::InvalidPath(CannotRead,
        QObject::tr("Cannot read \"%1\": %2").arg(QString::fromStdString(path), reason), s_source, line,
        path);
}

QString quoted(const GdalMessages& messages)
{
    return QString::fromStdString(messages.text());
}

/// What stands in the way of a file before GDAL looks at it.
void check_file(const std::string& path)
{
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        // Names with a colon may be those of subdatasets, those with "/vsi" of files inside others.
        if (path.find(':') == std::string::npos && path.rfind("/vsi", 0) != 0) {
            fail(path, QObject::tr("there is no such file"), __LINE__);
        }
        return;
    }
    if (error) {
        fail(path, QString::fromStdString(error.message()), __LINE__);
    }
    if (!fs::is_regular_file(status) && !fs::is_directory(status)) {
        fail(path, QObject::tr("it is not a regular file"), __LINE__);
    }
    if (fs::is_regular_file(status) && fs::file_size(path, error) == 0 && !error) {
        fail(path, QObject::tr("the file is empty"), __LINE__);
    }
}

bool holds_vector_data(const std::string& path)
{
    const GdalMessages dropped;
    const GDALDatasetUniquePtr dataset(GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY));
    return dataset && dataset->GetLayerCount() > 0;
}

/// How a file is to be opened: the numbers of an ASCII grid have as many digits as they have.
CPLStringList open_options(const std::string& path)
{
    const GdalMessages dropped;
    const GDALDriverH driver = GDALIdentifyDriver(path.c_str(), nullptr);
    CPLStringList options;
    if (driver && EQUAL(GDALGetDriverShortName(driver), "AAIGrid")) {
        options.SetNameValue("DATATYPE", "Float64");
    }
    return options;
}

std::unique_ptr<GDALDataset> open(const std::string& path, const GdalMessages& messages)
{
    check_file(path);
    std::unique_ptr<GDALDataset> dataset(GDALDataset::Open(path.c_str(),
        GDAL_OF_RASTER | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR, nullptr, open_options(path).List()));
    if (!dataset && holds_vector_data(path)) {
        fail(path, QObject::tr("it holds vector data, no raster"), __LINE__);
    }
    if (!dataset) {
        fail(path, quoted(messages), __LINE__);
    }
    return dataset;
}

[[noreturn]] void fail_without_bands(const std::string& path, GDALDataset& dataset)
{
    QString names;
    char** const p_metadata = dataset.GetMetadata("SUBDATASETS");
    for (int i = 1; CSLFetchNameValue(p_metadata, CPLSPrintf("SUBDATASET_%d_NAME", i)); ++i) {
        names += "\n  " + QString(CSLFetchNameValue(p_metadata, CPLSPrintf("SUBDATASET_%d_NAME", i)));
    }
    if (names.isEmpty()) {
        fail(path, QObject::tr("it holds no band"), __LINE__);
    }
    fail(path, QObject::tr("it holds several rasters; open one of them:%1").arg(names), __LINE__);
}

bool is_categorical(GDALRasterBand& band)
{
    return band.GetColorTable() || band.GetCategoryNames()
        || band.GetColorInterpretation() == GCI_PaletteIndex;
}

GDALRasterBand& usable_band(const std::string& path, GDALDataset& dataset, int number)
{
    if (dataset.GetRasterCount() == 0) {
        fail_without_bands(path, dataset);
    }
    if (number < 1 || number > dataset.GetRasterCount()) {
        fail(path, QObject::tr("it has no band %1").arg(number), __LINE__);
    }
    GDALRasterBand& band = *dataset.GetRasterBand(number);
    if (GDALDataTypeIsComplex(band.GetRasterDataType())) {
        fail(path, QObject::tr("its band %1 holds complex numbers, no heights").arg(number), __LINE__);
    }
    if (is_categorical(band)) {
        fail(path, QObject::tr("its band %1 holds categories, no heights").arg(number), __LINE__);
    }
    return band;
}

Raster description_of(GDALDataset& dataset, GDALRasterBand& band)
{
    Raster raster;
    raster.columns = dataset.GetRasterXSize();
    raster.rows = dataset.GetRasterYSize();
    std::array<double, 6> geotransform = {};
    if (dataset.GetGeoTransform(geotransform.data()) == CE_None) {
        raster.geotransform = geotransform;
    }
    raster.reference_system = dataset.GetProjectionRef();
    const char* const p_area_or_point = dataset.GetMetadataItem(GDALMD_AREA_OR_POINT);
    raster.area_or_point = p_area_or_point ? p_area_or_point : "";
    raster.unit = band.GetUnitType();
    raster.data_type = GDALGetDataTypeName(band.GetRasterDataType());
    int has_no_data = FALSE;
    const double file_no_data = band.GetNoDataValue(&has_no_data);
    if (has_no_data) {
        raster.file_no_data = file_no_data;
    }
    return raster;
}

/// Makes the description of a raster that of an overview.
void reduce(Raster& raster, int reduction)
{
    const double columns = raster.columns;
    const double rows = raster.rows;
    raster.columns = reduced(raster.columns, reduction);
    raster.rows = reduced(raster.rows, reduction);
    if (raster.geotransform) {
        for (const std::size_t across : {1u, 4u}) {
            (*raster.geotransform)[across] *= columns / raster.columns;
        }
        for (const std::size_t down : {2u, 5u}) {
            (*raster.geotransform)[down] *= rows / raster.rows;
        }
    }
}

/// Reads a row of cells, as heights, or some rows and columns as one.
class RowReader
{
public:
    /// @param columns, rows how many there are to be
    RowReader(GDALRasterBand& band, int columns, int rows)
        : m_band(band)
        , m_mask(static_cast<std::size_t>(band.GetMaskFlags() == GMF_ALL_VALID ? 0 : columns))
        , m_scale(band.GetScale())
        , m_offset(band.GetOffset())
        , m_is_scaled(m_scale != 1 || m_offset != 0)
        , m_columns(columns)
        , m_rows(rows)
    { }

    bool read(int row, double* p_cells)
    {
        const int first = row_in_file(row);
        const int count = row_in_file(row + 1) - first;
        const auto read_band = [&](GDALRasterBand& band, void* p_data, GDALDataType type) {
            return band.RasterIO(
                       GF_Read, 0, first, band.GetXSize(), count, p_data, m_columns, 1, type, 0, 0, nullptr)
                == CE_None;
        };
        if (!read_band(m_band, p_cells, GDT_Float64)
            || (!m_mask.empty() && !read_band(*m_band.GetMaskBand(), m_mask.data(), GDT_Byte))) {
            return false;
        }
        for (int column = 0; column < m_columns; ++column) {
            const bool masked = !m_mask.empty() && m_mask[static_cast<std::size_t>(column)] == 0;
            const double height = masked ? no_data : height_of(p_cells[column]);
            p_cells[column] = std::isfinite(height) ? height : no_data;
        }
        return true;
    }

private:
    int row_in_file(int row) const
    {
        return static_cast<int>(static_cast<long long>(row) * m_band.GetYSize() / m_rows);
    }
    double height_of(double number) const
    {
        return m_is_scaled ? number * m_scale + m_offset : number; // adding 0 would turn -0.0 into 0.0
    }

    GDALRasterBand& m_band;
    std::vector<unsigned char> m_mask; // empty if all cells are valid
    double m_scale;
    double m_offset;
    bool m_is_scaled;
    int m_columns;
    int m_rows;
};

void read_cells(const std::string& path, GDALRasterBand& band, Raster& raster, const GdalMessages& messages,
    const FileProgress& progress)
{
    try {
        raster.cells.resize(raster.index(0, raster.rows));
        RowReader reader(band, raster.columns, raster.rows);
        for (int row = 0; row < raster.rows; ++row) {
            if (row % s_rows_per_report == 0) {
                report(progress, static_cast<double>(row) / raster.rows);
            }
            if (!reader.read(row, raster.cells.data() + raster.index(0, row))) {
                fail(
                    path, QObject::tr("the file is broken or cut short: %1").arg(quoted(messages)), __LINE__);
            }
        }
    } catch (const std::bad_alloc&) {
        fail(path, QObject::tr("there is not enough memory for its cells"), __LINE__);
    }
}

} // namespace

RasterFile::RasterFile(const std::string& path, int band)
    : m_path(path)
{
    const GdalMessages messages;
    m_dataset = open(path, messages);
    m_p_band = &usable_band(path, *m_dataset, band);
}

RasterFile::~RasterFile()
{
    const GdalMessages dropped; // closing may complain about the file once more
    m_dataset.reset();
}

int RasterFile::columns() const
{
    return m_dataset->GetRasterXSize();
}

int RasterFile::rows() const
{
    return m_dataset->GetRasterYSize();
}

std::string RasterFile::format() const
{
    const char* const p_name = m_dataset->GetDriver()->GetMetadataItem(GDAL_DMD_LONGNAME);
    return p_name ? p_name : m_dataset->GetDriver()->GetDescription();
}

bool RasterFile::is_plain_geotiff() const
{
    std::error_code ignored;
    return std::filesystem::is_regular_file(m_path, ignored) // no part of one
        && EQUAL(m_dataset->GetDriver()->GetDescription(), "GTiff") && m_dataset->GetRasterCount() == 1
        && m_dataset->GetGCPCount() == 0 && CSLCount(m_dataset->GetMetadata("RPC")) == 0
        && CSLCount(m_dataset->GetMetadata("SUBDATASETS")) == 0;
}

Raster RasterFile::read(const FileProgress& progress, int reduction) const
{
    const GdalMessages messages;
    Raster raster = description_of(*m_dataset, *m_p_band);
    reduce(raster, reduction);
    if (memory_needed(raster.columns, raster.rows) > memory_limit()) {
        throw RasterTooLarge(m_path, raster.columns, raster.rows);
    }
    read_cells(m_path, *m_p_band, raster, messages, progress);
    return raster;
}

Raster read_raster(const std::string& path, int band)
{
    return RasterFile(path, band).read();
}

} // namespace terrain
