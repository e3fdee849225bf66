#include "io/AsciiGridWriter.h"

#include "documents/Raster.h"
#include "io/GdalMessages.h"
#include "io/NewFile.h"

#include <QtCore/QObject>

#include <cpl_string.h>
#include <gdal_pam.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <exception>

namespace terrain {

namespace {

const char* const s_source = "terrain/io/AsciiGridWriter";

const int s_digits = 17; ///< tell any two numbers of 64 bits apart
const double s_usual_marker = -9999;
const double s_writing = 0.8; ///< its share of the time; the rest is reading back
const double s_tolerance = 1e-3; ///< by how much of a cell the place may be off

typedef std::array<double, 6> Geotransform;

Geotransform place_of(const Raster& raster)
{
    return raster.geotransform.value_or(Geotransform{0, 1, 0, 0, 0, -1});
}

/// A number for cells without data that is no height.
double marker_of(const Raster& raster)
{
    const auto is_free = [&raster](double number) {
        return std::find(raster.cells.begin(), raster.cells.end(), number) == raster.cells.end();
    };
    const double own = raster.file_no_data.value_or(s_usual_marker);
    // Other programs read the numbers with 32 bits, and know neither NaN nor infinity.
    const bool is_common = std::isfinite(own) && std::isfinite(static_cast<float>(own));
    double marker = is_common ? own : s_usual_marker;
    while (!is_free(marker)) {
        marker = marker < 0 ? marker * 10 - 9 : s_usual_marker; // -9999, -99999 …
    }
    return marker;
}

double number_of(double cell, double marker)
{
    return is_no_data(cell) ? marker : cell;
}

class EncodedRaster;

/// The rows of a raster as they stand in the file.
class EncodedBand : public GDALPamRasterBand
{
public:
    EncodedBand(GDALDataset& dataset, const Raster& raster, double marker)
        : m_raster(raster)
        , m_marker(marker)
    {
        poDS = &dataset;
        nBand = 1;
        eDataType = GDT_Float64;
        nRasterXSize = raster.columns;
        nRasterYSize = raster.rows;
        nBlockXSize = raster.columns;
        nBlockYSize = 1;
    }
    double GetNoDataValue(int* p_has_marker) override
    {
        if (p_has_marker) {
            *p_has_marker = TRUE; // always, as some programs take -9999 for granted else
        }
        return m_marker;
    }
    const char* GetUnitType() override { return m_raster.unit.c_str(); }

protected:
    CPLErr IReadBlock(int, int row, void* p_block) override
    {
        const double* const p_cells = m_raster.cells.data() + m_raster.index(0, row);
        std::transform(p_cells, p_cells + m_raster.columns, static_cast<double*>(p_block),
            [this](double cell) { return number_of(cell, m_marker); });
        return CE_None;
    }

private:
    const Raster& m_raster;
    double m_marker;
};

/// A raster as GDAL's drivers like to have one to copy it; holds no cells of its own.
class EncodedRaster : public GDALPamDataset
{
public:
    EncodedRaster(const Raster& raster, double marker)
        : m_place(place_of(raster))
    {
        nRasterXSize = raster.columns;
        nRasterYSize = raster.rows;
        m_system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
        m_has_system = !raster.reference_system.empty()
            && m_system.importFromWkt(raster.reference_system.c_str()) == OGRERR_NONE;
        SetBand(1, new EncodedBand(*this, raster, marker));
    }
    CPLErr GetGeoTransform(double* p_place) override
    {
        std::copy(m_place.begin(), m_place.end(), p_place);
        return CE_None;
    }
    const OGRSpatialReference* GetSpatialRef() const override { return m_has_system ? &m_system : nullptr; }

private:
    Geotransform m_place;
    OGRSpatialReference m_system;
    bool m_has_system = false;
};

/// Hands GDAL's progress on. No exception may cross GDAL, so it is kept meanwhile.
struct Progress
{
    const FileProgress& progress;
    std::exception_ptr failure;

    static int CPL_STDCALL report(double share, const char*, void* p_self)
    {
        auto& self = *static_cast<Progress*>(p_self);
        try {
            terrain::report(self.progress, s_writing * share);
            return TRUE;
        } catch (...) {
            self.failure = std::current_exception();
            return FALSE;
        }
    }
};

bool write_file(const Raster& raster, double marker, const std::string& path, const GdalMessages& messages,
    const FileProgress& progress)
{
    GDALDriver* const p_driver = GetGDALDriverManager()->GetDriverByName("AAIGrid");
    CPLStringList options;
    options.SetNameValue("SIGNIFICANT_DIGITS", std::to_string(s_digits).c_str());
    EncodedRaster source(raster, marker);
    Progress handed_on{progress, nullptr};
    GDALDatasetUniquePtr dataset(
        p_driver->CreateCopy(path.c_str(), &source, FALSE, options.List(), &Progress::report, &handed_on));
    if (handed_on.failure) {
        std::rethrow_exception(handed_on.failure);
    }
    if (!dataset) {
        return false;
    }
    dataset.reset();
    return !messages.failed(); // closing tells by a message only
}

bool same_place(const Geotransform& one, const Geotransform& other, int columns, int rows)
{
    const double across = s_tolerance * std::abs(one[1]);
    const double down = s_tolerance * std::abs(one[5]);
    return std::abs(one[0] - other[0]) < across && std::abs(one[3] - other[3]) < down
        && std::abs(one[1] - other[1]) * columns < across && std::abs(one[5] - other[5]) * rows < down;
}

void verify_file(const Raster& raster, double marker, const NewFile& file, const GdalMessages& messages,
    const FileProgress& progress)
{
    const char* const options[] = {"DATATYPE=Float64", nullptr};
    const GDALDatasetUniquePtr dataset(GDALDataset::Open(
        file.temporary().c_str(), GDAL_OF_RASTER | GDAL_OF_VERBOSE_ERROR, nullptr, options));
    Geotransform place = {};
    const bool is_readable = dataset && dataset->GetRasterXSize() == raster.columns
        && dataset->GetRasterYSize() == raster.rows && dataset->GetGeoTransform(place.data()) == CE_None;
    if (!is_readable) {
        file.fail(QObject::tr("what was written cannot be read back. %1").arg(messages.text().c_str()),
            s_source, __LINE__);
    }
    if (!same_place(place_of(raster), place, raster.columns, raster.rows)) {
        file.fail(QObject::tr("an ASCII grid cannot hold so small cells or so precise a place"), s_source,
            __LINE__);
    }
    std::vector<double> read(static_cast<std::size_t>(raster.columns));
    for (int row = 0; row < raster.rows; ++row) {
        report(progress, s_writing + (1 - s_writing) * row / raster.rows);
        const bool is_read = dataset->GetRasterBand(1)->RasterIO(GF_Read, 0, row, raster.columns, 1,
                                 read.data(), raster.columns, 1, GDT_Float64, 0, 0, nullptr)
            == CE_None;
        if (!is_read
            || !std::equal(read.begin(), read.end(), raster.cells.data() + raster.index(0, row),
                [marker](double number, double cell) { return number == number_of(cell, marker); })) {
            file.fail(QObject::tr("what was written cannot be read back. %1").arg(messages.text().c_str()),
                s_source, __LINE__);
        }
    }
}

} // namespace

void write_ascii_grid(const Raster& raster, const std::string& path, const FileProgress& progress)
{
    const NewFile file(path);
    const Geotransform place = place_of(raster);
    if (place[2] != 0 || place[4] != 0) {
        file.fail(QObject::tr("an ASCII grid cannot hold a rotated raster; GeoTIFF can"), s_source, __LINE__);
    }
    if (place[1] <= 0 || place[5] >= 0) {
        file.fail(
            QObject::tr("an ASCII grid cannot hold a raster whose first row is not the northern one, or "
                        "whose first column is not the western one; GeoTIFF can"),
            s_source, __LINE__);
    }
    const double marker = marker_of(raster);
    const GdalMessages messages;
    if (!write_file(raster, marker, file.temporary(), messages, progress)) {
        file.fail(messages, s_source, __LINE__);
    }
    verify_file(raster, marker, file, messages, progress);
    file.put_in_place();
}

} // namespace terrain
