#include "Check.h"
#include "FuzzApplication.h"
#include "LogWatch.h"
#include "Targets.h"

#include "io/AsciiGridWriter.h"
#include "io/GdalMessages.h"
#include "io/RasterMemory.h"
#include "io/RasterReader.h"
#include "io/RasterWriter.h"
#include "support/PrivateHome.h"

#include <tarqa/housekeeping/InvalidPath.h>

#include <cpl_conv.h>
#include <cpl_vsi.h>
#include <gdal_priv.h>

#include <cstring>
#include <optional>
#include <set>
#include <vector>

namespace fuzz {

using tarqa::housekeeping::InvalidPath;
using terrain::Raster;

namespace {

const char* const s_path = "/vsimem/fuzz/raster";
const double s_memory = 4e6; ///< bytes for a raster; for one that is written, too
const int s_longest_side = 20000; ///< of a raster whose overview is read
const std::size_t s_most_written = 4096; ///< cells

/// The formats of heights that are complete in one file. Others would let an input name files and addresses
/// of its own, and GDAL fetch them.
void choose_drivers()
{
    static const std::set<std::string> s_kept = {"GTiff", "COG", "AAIGrid", "GRASSASCIIGrid", "ISG", "GSAG",
        "GSBG", "GS7BG", "BT", "DTED", "USGSDEM", "PNG", "BMP", "PNM", "Terragen", "XYZ", "MEM", "NGSGEOID",
        "ZMap", "SIGDEM", "Leveller"};
    static auto* const s_p_others = new std::vector<GDALDriver*>; // not all of them can be deleted alone
    const terrain::GdalMessages registered;
    GDALDriverManager& manager = *GetGDALDriverManager();
    for (int i = manager.GetDriverCount() - 1; i >= 0; --i) {
        GDALDriver* const p_driver = manager.GetDriver(i);
        if (s_kept.count(p_driver->GetDescription()) == 0) {
            manager.DeregisterDriver(p_driver);
            s_p_others->push_back(p_driver);
        }
    }
    CPLSetConfigOption("GDAL_DISABLE_READDIR_ON_OPEN", "EMPTY_DIR");
    CPLSetConfigOption("GDAL_CACHEMAX", "16");
}

/// The input as a file of GDAL's.
class MemoryFile
{
public:
    explicit MemoryFile(const std::string& bytes)
        : m_bytes(bytes)
    {
        VSIFCloseL(VSIFileFromMemBuffer(s_path, reinterpret_cast<GByte*>(m_bytes.data()),
            static_cast<vsi_l_offset>(m_bytes.size()), FALSE));
    }
    ~MemoryFile() { VSIUnlink(s_path); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

private:
    std::string m_bytes;
};

bool same(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

bool same_cells(const Raster& a, const Raster& b)
{
    return a.columns == b.columns && a.rows == b.rows && a.cells.size() == b.cells.size()
        && std::memcmp(a.cells.data(), b.cells.data(), a.cells.size() * sizeof(double)) == 0;
}

void check_raster(const Raster& raster)
{
    check(raster.columns > 0 && raster.rows > 0 && raster.cells.size() == raster.index(0, raster.rows),
        "another number of cells than columns and rows");
    for (const double cell : raster.cells) {
        check(std::isfinite(cell) || same(cell, terrain::no_data), "a cell is neither a height nor no_data");
    }
}

void check_refusal(const InvalidPath& refusal, const std::string& begin)
{
    const std::string text = refusal.what();
    check(text.rfind(begin, 0) == 0 && text.size() > begin.size(), "a refusal without a reason: " + text);
}

/// An overview of a raster that is too large.
void check_overview(const terrain::RasterFile& file, const terrain::RasterTooLarge& refusal)
{
    if (file.columns() > s_longest_side || file.rows() > s_longest_side) {
        return;
    }
    const int reduction = refusal.reduction();
    const Raster overview = file.read(nullptr, reduction);
    check_raster(overview);
    check(overview.columns == terrain::reduced(file.columns(), reduction)
            && overview.rows == terrain::reduced(file.rows(), reduction),
        "the overview has another size");
}

std::optional<Raster> read()
{
    try {
        const terrain::RasterFile file(s_path);
        check(!file.format().empty(), "the format has no name");
        check(!file.is_plain_geotiff(), "what is no file of its own can be saved");
        try {
            const Raster raster = file.read();
            check_raster(raster);
            return raster;
        } catch (const terrain::RasterTooLarge& refusal) {
            check_overview(file, refusal);
            throw;
        }
    } catch (const InvalidPath& refusal) {
        check_refusal(refusal, "Cannot read \"" + std::string(s_path) + "\": ");
        return {};
    }
}

/// Writes the raster with @p write and reads it again, unless it cannot be written.
void check_writing(const Raster& raster, const char* name, void (*write)(const Raster&, const std::string&))
{
    const std::string path = support::PrivateHome::scratch_directory() + "/" + name;
    try {
        write(raster, path);
    } catch (const InvalidPath& refusal) {
        check_refusal(refusal, "Cannot write \"" + path + "\": ");
        return;
    }
    check(same_cells(terrain::read_raster(path), raster), "written and read differently: " + path);
}

} // namespace

void raster(const std::string& input)
{
    make_application_without_windows();
    static const bool s_drivers_are_chosen = (choose_drivers(), true);
    Q_UNUSED(s_drivers_are_chosen);
    terrain::memory_limit(s_memory);
    const LogWatch log;
    const MemoryFile file(input);
    const std::optional<Raster> first = read();
    const std::optional<Raster> second = read();
    check(first.has_value() == second.has_value() && (!first || same_cells(*first, *second)),
        "the same file is read differently");
    if (first && first->cells.size() <= s_most_written) {
        check_writing(*first, "out.tif",
            [](const Raster& raster, const std::string& path) { terrain::write_raster(raster, path); });
        check_writing(*first, "out.asc",
            [](const Raster& raster, const std::string& path) { terrain::write_ascii_grid(raster, path); });
    }
    log.check_assertions({});
}

} // namespace fuzz
