#include "io/RasterReader.h"

#include "ErrorCode.h"
#include "io/GdalMessages.h"

#include <tarqa/housekeeping/InvalidPath.h>
#include <tarqa/utilities/Hardware.h>

#include <QtCore/QObject>

#include <gdal_priv.h>

#include <algorithm>
#include <filesystem>
#include <new>

namespace terrain {

namespace {

const char* const s_source = "terrain/io/RasterReader";

/// The work on a raster needs the cells before and after a command.
const unsigned long long s_bytes_per_cell = 2 * sizeof(double);

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

GDALDatasetUniquePtr open(const std::string& path, const GdalMessages& messages)
{
    check_file(path);
    GDALDatasetUniquePtr dataset(
        GDALDataset::Open(path.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR));
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

void check_memory(const std::string& path, const Raster& raster)
{
    const auto cells
        = static_cast<unsigned long long>(raster.columns) * static_cast<unsigned long long>(raster.rows);
    const unsigned long long memory = tarqa::utilities::Hardware::physical_memory();
    if (memory == 0 || cells <= memory / s_bytes_per_cell) {
        return;
    }
    const double gigabyte = 1e9;
    const auto in_gigabytes = [gigabyte](double bytes) { return QString::number(bytes / gigabyte, 'f', 1); };
    fail(path,
        QObject::tr("its %1 x %2 cells need %3 GB of memory, and this machine has %4 GB")
            .arg(QString::number(raster.columns), QString::number(raster.rows),
                in_gigabytes(static_cast<double>(cells) * s_bytes_per_cell),
                in_gigabytes(static_cast<double>(memory))),
        __LINE__);
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

/// Reads a row of cells, as heights.
class RowReader
{
public:
    RowReader(GDALRasterBand& band, int columns)
        : m_band(band)
        , m_mask(static_cast<std::size_t>(band.GetMaskFlags() == GMF_ALL_VALID ? 0 : columns))
        , m_scale(band.GetScale())
        , m_offset(band.GetOffset())
        , m_is_scaled(m_scale != 1 || m_offset != 0)
        , m_columns(columns)
    { }

    bool read(int row, double* p_cells)
    {
        if (m_band.RasterIO(GF_Read, 0, row, m_columns, 1, p_cells, m_columns, 1, GDT_Float64, 0, 0, nullptr)
            != CE_None) {
            return false;
        }
        if (!m_mask.empty()
            && m_band.GetMaskBand()->RasterIO(
                   GF_Read, 0, row, m_columns, 1, m_mask.data(), m_columns, 1, GDT_Byte, 0, 0, nullptr)
                != CE_None) {
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
};

void read_cells(const std::string& path, GDALRasterBand& band, Raster& raster, const GdalMessages& messages)
{
    try {
        raster.cells.resize(raster.index(0, raster.rows));
        RowReader reader(band, raster.columns);
        for (int row = 0; row < raster.rows; ++row) {
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

Raster read_raster(const std::string& path, int band_number)
{
    const GdalMessages messages;
    const GDALDatasetUniquePtr dataset = open(path, messages);
    GDALRasterBand& band = usable_band(path, *dataset, band_number);
    Raster raster = description_of(*dataset, band);
    check_memory(path, raster);
    read_cells(path, band, raster, messages);
    return raster;
}

} // namespace terrain
