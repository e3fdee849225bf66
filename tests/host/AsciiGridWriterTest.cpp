#include "io/AsciiGridWriter.h"
#include "CommandFixture.h"
#include "FileSizeLimit.h"
#include "RasterFiles.h"
#include "io/RasterReader.h"
#include "io/ReferenceSystem.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/InvalidPath.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace host_test;
using terrain::Raster;
using terrain::read_raster;
using terrain::write_ascii_grid;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::string refusal(const Raster& raster, const std::string& path)
{
    try {
        write_ascii_grid(raster, path);
    } catch (const tarqa::housekeeping::InvalidPath& exception) {
        EXPECT_THAT(exception.what(), HasSubstr("Cannot write \"" + path + "\": "));
        return exception.what();
    }
    return "(no refusal)";
}

Raster placed_raster()
{
    Raster raster = mixed_raster(40, 30);
    raster.geotransform = {440000, 30, 0, 5400000, 0, -30};
    return raster;
}

Raster written(const Raster& raster)
{
    write_ascii_grid(raster, scratch("out.asc"));
    return read_raster(scratch("out.asc"));
}

} // namespace

TEST(AsciiGridWriter, WritesAllDigitsOfAllHeights)
{
    const Raster raster = placed_raster();
    const Raster copy = written(raster);
    EXPECT_EQ(copy.columns, 40);
    EXPECT_EQ(copy.rows, 30);
    EXPECT_EQ(copy.cells.size(), raster.cells.size());
    for (std::size_t i = 0; i < copy.cells.size(); ++i) {
        EXPECT_TRUE(copy.cells[i] == raster.cells[i]
            || (terrain::is_no_data(copy.cells[i]) && terrain::is_no_data(raster.cells[i])));
    }
    EXPECT_EQ(copy.geotransform, raster.geotransform);
    EXPECT_EQ(written(make_raster(2, 1, {0.1, 1e300})).cells, (std::vector<double>{0.1, 1e300}));
}

TEST(AsciiGridWriter, LeavesReferenceSystemAndUnitBesideTheFile)
{
    const std::string directory = make_directory("out");
    Raster raster = placed_raster();
    raster.reference_system = terrain::reference_system_from_epsg(32632);
    raster.unit = "ft";
    write_ascii_grid(raster, directory + "/a.asc");
    EXPECT_THAT(names_in(directory), ElementsAre("a.asc", "a.asc.aux.xml", "a.prj"));
    const Raster copy = read_raster(directory + "/a.asc");
    EXPECT_THAT(terrain::reference_system_name(copy.reference_system), HasSubstr("UTM"));
    EXPECT_EQ(copy.unit, "ft");

    write_ascii_grid(placed_raster(), directory + "/a.asc");
    EXPECT_THAT(names_in(directory), ElementsAre("a.asc")) << "nothing of the old one stays";
}

TEST(AsciiGridWriter, LeavesAloneWhatStandsBesideANewFile)
{
    const std::string directory = make_directory("out");
    write_text(directory + "/a.prj", "of some a.shp");
    write_ascii_grid(placed_raster(), directory + "/a.asc");
    EXPECT_EQ(read_text(directory + "/a.prj"), "of some a.shp");
}

TEST(AsciiGridWriter, MarksCellsWithoutDataByANumberThatIsNoHeight)
{
    EXPECT_EQ(written(make_raster(2, 1, {N, 5})).file_no_data, -9999);
    const Raster copy = written(make_raster(4, 1, {N, -9999, -99999, 5}));
    EXPECT_EQ(copy.file_no_data, -999999);
    EXPECT_EQ(bits(copy.cells), bits({N, -9999, -99999, 5}));
    Raster raster = make_raster(2, 1, {N, 5});
    raster.file_no_data = -1;
    EXPECT_EQ(written(raster).file_no_data, -1);
    raster.file_no_data = -1.7976931348623157e308; // more than other programs read
    EXPECT_EQ(written(raster).file_no_data, -9999);
}

TEST(AsciiGridWriter, AlwaysTellsWhatMarksCellsWithoutData)
{
    EXPECT_EQ(bits(written(make_raster(2, 1, {-9999, 5})).cells), bits({-9999, 5}))
        << "some programs take that for granted";
    EXPECT_THAT(read_text(scratch("out.asc")), HasSubstr("NODATA_value"));
}

TEST(AsciiGridWriter, WritesCellsThatAreNotSquare)
{
    Raster raster = placed_raster();
    raster.geotransform = {10, 0.5, 0, 50, 0, -0.25};
    support::LogCapture log;
    EXPECT_EQ(written(raster).geotransform, raster.geotransform);
    EXPECT_TRUE(log.take("DX and DY")) << "GDAL's warning that few programs know them";
}

TEST(AsciiGridWriter, GivesARasterWithoutAPlaceOne)
{
    EXPECT_EQ(written(make_raster(2, 1, {3, 4})).geotransform, (std::array<double, 6>{0, 1, 0, 0, 0, -1}));
}

TEST(AsciiGridWriter, RefusesWhatTheFormatCannotHold)
{
    Raster raster = placed_raster();
    raster.geotransform = {440000, 30, 1, 5400000, 2, -30};
    EXPECT_THAT(refusal(raster, scratch("a.asc")), HasSubstr("cannot hold a rotated raster; GeoTIFF can"));
    raster.geotransform = {440000, 30, 0, 5400000, 0, 30};
    EXPECT_THAT(refusal(raster, scratch("a.asc")), HasSubstr("first row is not the northern one"));
    raster.geotransform = {440000, -30, 0, 5400000, 0, -30};
    EXPECT_THAT(refusal(raster, scratch("a.asc")), HasSubstr("first column is not the western one"));
    raster.geotransform = {0, 1e-13, 0, 0, 0, -1e-13};
    EXPECT_THAT(refusal(raster, scratch("a.asc")), HasSubstr("so small cells"));
}

TEST(AsciiGridWriter, LeavesNothingBehindWhenItRefuses)
{
    const std::string directory = make_directory("out");
    write_text(directory + "/a.asc", "the old file");
    Raster raster = placed_raster();
    raster.reference_system = terrain::reference_system_from_epsg(32632);
    raster.geotransform = {0, 1e-13, 0, 0, 0, -1e-13};
    EXPECT_NE(refusal(raster, directory + "/a.asc"), "(no refusal)");
    EXPECT_THAT(names_in(directory), ElementsAre("a.asc"));
    EXPECT_EQ(read_text(directory + "/a.asc"), "the old file");
}

TEST(AsciiGridWriter, AFullDiskLeavesTheOldFileAlone)
{
    const std::string directory = make_directory("out");
    write_text(directory + "/a.asc", "the old file");
    const Raster raster = mixed_raster(200, 200);
    {
        const FileSizeLimit limit(20000);
        EXPECT_NE(refusal(raster, directory + "/a.asc"), "(no refusal)");
    }
    EXPECT_EQ(read_text(directory + "/a.asc"), "the old file");
    EXPECT_THAT(names_in(directory), ElementsAre("a.asc"));
}

TEST(AsciiGridWriter, CanBeStopped)
{
    const std::string directory = make_directory("out");
    write_text(directory + "/a.asc", "the old file");
    for (const double stop : {0.0, 0.5, 0.9}) {
        EXPECT_THROW(write_ascii_grid(mixed_raster(20, 20), directory + "/a.asc",
                         [stop](double share) { return share < stop; }),
            terrain::FileCancelled)
            << stop;
    }
    EXPECT_EQ(read_text(directory + "/a.asc"), "the old file");
    EXPECT_THAT(names_in(directory), ElementsAre("a.asc"));
}
