#include "../host/RasterFiles.h"
#include "documents/Mesh.h"
#include "documents/Raster.h"
#include "faults/FaultRounds.h"
#include "io/AsciiGridWriter.h"
#include "io/ContourWriter.h"
#include "io/MeshWriter.h"
#include "io/RasterReader.h"
#include "io/RasterWriter.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"

#include <tarqa/housekeeping/InvalidPath.h>

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// What becomes of the host's files when the system refuses the calls that write them: the old file, or the
// new one, whole; and nothing else beside it.

namespace {

namespace fs = std::filesystem;
using faults::Call;
using faults::Fault;
using faults::FaultRounds;
using faults::Manner;
using host_test::names_in;
using host_test::read_text;
using host_test::write_text;
using terrain::Raster;

const char* const s_old = "what was there before";

Raster hill(int columns, int rows)
{
    Raster raster;
    raster.columns = columns;
    raster.rows = rows;
    raster.geotransform = {440000, 30, 0, 5400000, 0, -30};
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            raster.cells.push_back(100 + 20 * std::sin(column * 0.3) * std::cos(row * 0.2));
        }
    }
    return raster;
}

std::string directory()
{
    return support::PrivateHome::scratch_directory() + "/files";
}

/// Writes a file in rounds. @param is_whole whether what stands in the file is the new content
void expect_whole_or_old(const std::string& name, const std::string& file_name,
    const std::function<void(const std::string&)>& write,
    const std::function<bool(const std::string&)>& is_whole)
{
    const std::string path = directory() + "/" + file_name;
    support::LogCapture log; // of GDAL's warnings
    bool written = false;
    FaultRounds rounds(name, "/scratch/files/");
    rounds.keeps_descriptors = false; // some formats keep one open when they cannot close it
    rounds.is_repeatable = false; // GDAL's threads
    rounds.with_locks = false;
    rounds.prepare = [&] {
        fs::remove_all(directory());
        fs::create_directory(directory());
        write_text(path, s_old);
    };
    rounds.act = [&] {
        try {
            write(path);
            written = true;
        } catch (const tarqa::housekeeping::InvalidPath& exception) {
            EXPECT_EQ(exception.path(), path);
            written = false;
        }
    };
    rounds.check = [&](const Fault& fault) {
        if (written) {
            EXPECT_TRUE(is_whole(path));
        } else {
            EXPECT_EQ(read_text(path), s_old);
            EXPECT_TRUE(rounds.point()) << "without a fault";
        }
        // What could not be written can perhaps not be removed either.
        const bool may_stay
            = fault.manner == Manner::FromThenOn || (rounds.point() && rounds.point()->call == Call::Remove);
        EXPECT_TRUE(names_in(directory()).size() == 1 || may_stay)
            << testing::PrintToString(names_in(directory()));
        log.take_all();
    };
    rounds.run();
}

} // namespace

TEST(TerrainFilesUnderFaults, GeoTiffIsTheOldOrTheNewOne)
{
    const Raster raster = hill(40, 30);
    expect_whole_or_old(
        "GeoTiff", "out.tif", [&](const std::string& path) { write_raster(raster, path); },
        [&](const std::string& path) { return terrain::read_raster(path).cells == raster.cells; });
}

TEST(TerrainFilesUnderFaults, AsciiGridIsTheOldOrTheNewOne)
{
    const Raster raster = hill(12, 9);
    expect_whole_or_old(
        "AsciiGrid", "out.asc", [&](const std::string& path) { write_ascii_grid(raster, path); },
        [&](const std::string& path) {
            const Raster read = terrain::read_raster(path);
            return read.columns == raster.columns && read.rows == raster.rows;
        });
}

TEST(TerrainFilesUnderFaults, MeshIsTheOldOrTheNewOne)
{
    const Raster raster = hill(3, 3);
    terrain::Mesh mesh;
    mesh.vertices = {{0, 0, 1}, {2, 0, 2}, {0, 2, 3}, {2, 2, 4}};
    mesh.triangles = {{0, 1, 2}, {1, 3, 2}};
    std::string whole;
    expect_whole_or_old(
        "Mesh", "out.ply", [&](const std::string& path) { write_mesh(mesh, raster, path); },
        [&](const std::string& path) {
            whole = whole.empty() ? read_text(path) : whole;
            return whole != s_old && read_text(path) == whole;
        });
}

TEST(TerrainFilesUnderFaults, ContoursAreTheOldOrTheNewOnes)
{
    const Raster raster = hill(12, 9);
    std::size_t size = 0;
    expect_whole_or_old(
        "Contours", "out.gpkg", [&](const std::string& path) { terrain::write_contours(raster, 10, path); },
        [&](const std::string& path) {
            const std::string content = read_text(path); // the time stands in it
            size = size == 0 ? content.size() : size;
            return content.size() == size && content.compare(0, 15, "SQLite format 3") == 0;
        });
}
