#include "io/ContourWriter.h"
#include "CommandFixture.h"
#include "FileSizeLimit.h"
#include "RasterFiles.h"
#include "io/ReferenceSystem.h"

#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/housekeeping/InvalidPath.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

#include <set>

using namespace host_test;
using terrain::Raster;
using terrain::write_contours;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const double s_near = 1e-3; ///< heights are not compared to the last digit

/// A slope that rises by 10 per column, 100 metres above the sea in the first one.
Raster slope()
{
    Raster raster = make_raster(10, 5, {});
    for (int row = 0; row < raster.rows; ++row) {
        for (int column = 0; column < raster.columns; ++column) {
            raster.cells.push_back(100 + 10 * column);
        }
    }
    raster.geotransform = {440000, 30, 0, 5400000, 0, -30};
    raster.reference_system = terrain::reference_system_from_epsg(32632);
    return raster;
}

/// What stands in a file of contour lines.
struct Lines
{
    explicit Lines(const std::string& path)
        : dataset(GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR))
        , p_layer(dataset ? dataset->GetLayerByName("contours") : nullptr)
    {
        if (!p_layer) {
            return;
        }
        for (const auto& feature : *p_layer) {
            heights.insert(feature->GetFieldAsDouble("height"));
            EXPECT_EQ(wkbFlatten(feature->GetGeometryRef()->getGeometryType()), wkbLineString);
        }
        EXPECT_EQ(p_layer->GetExtent(&extent), OGRERR_NONE);
    }
    GDALDatasetUniquePtr dataset;
    OGRLayer* p_layer;
    std::set<double> heights;
    OGREnvelope extent;
};

} // namespace

TEST(ContourWriter, WritesOneLayerOfLinesWithTheirHeights)
{
    write_contours(slope(), 25, scratch("out.gpkg"));
    const Lines lines(scratch("out.gpkg"));
    ASSERT_NE(lines.p_layer, nullptr);
    EXPECT_EQ(lines.dataset->GetLayerCount(), 1);
    EXPECT_EQ(lines.heights, (std::set<double>{125, 150, 175}));
    EXPECT_EQ(lines.p_layer->GetLayerDefn()->GetFieldCount(), 1);
}

TEST(ContourWriter, UsesTheCoordinatesAndTheReferenceSystemOfTheRaster)
{
    write_contours(slope(), 115, scratch("out.gpkg")); // between the second and the third column
    const Lines lines(scratch("out.gpkg"));
    ASSERT_NE(lines.p_layer, nullptr);
    EXPECT_NEAR(lines.extent.MinX, 440000 + 2 * 30, s_near);
    EXPECT_NEAR(lines.extent.MaxX, 440000 + 2 * 30, s_near);
    EXPECT_LE(lines.extent.MaxY, 5400000);
    EXPECT_GE(lines.extent.MinY, 5400000 - 5 * 30);
    ASSERT_NE(lines.p_layer->GetSpatialRef(), nullptr);
    EXPECT_STREQ(lines.p_layer->GetSpatialRef()->GetAuthorityCode(nullptr), "32632");
}

TEST(ContourWriter, FollowsARotatedRaster)
{
    Raster raster = slope();
    raster.geotransform = {1000, 0, 30, 2000, 30, 0}; // columns go north, rows go east
    write_contours(raster, 115, scratch("out.gpkg"));
    const Lines lines(scratch("out.gpkg"));
    EXPECT_NEAR(lines.extent.MinY, 2000 + 2 * 30, s_near);
    EXPECT_NEAR(lines.extent.MaxY, 2000 + 2 * 30, s_near);
}

TEST(ContourWriter, CountsCellsWhereTheRasterHasNoPlace)
{
    Raster raster = slope();
    raster.geotransform.reset();
    raster.reference_system.clear();
    write_contours(raster, 115, scratch("out.gpkg"));
    const Lines lines(scratch("out.gpkg"));
    EXPECT_NEAR(lines.extent.MinX, 2, s_near);
    EXPECT_LE(lines.extent.MaxY, 0) << "rows go down, as in other programs";
    EXPECT_GE(lines.extent.MinY, -5);
}

TEST(ContourWriter, RefusesWhatGivesNoLines)
{
    const std::string directory = make_directory("out");
    const auto refusal = [&directory](const Raster& raster) -> std::string {
        try {
            write_contours(raster, 10, directory + "/a.gpkg");
        } catch (const tarqa::housekeeping::HousekeepingException& exception) {
            return exception.what();
        }
        return "(no refusal)";
    };
    EXPECT_THAT(refusal(make_raster(2, 2, {5, 5, 5, 5})), HasSubstr("no contour lines at an interval of 10"));
    EXPECT_THAT(refusal(make_raster(2, 2, {N, N, N, N})), HasSubstr("no contour lines at an interval of 10"));
    EXPECT_NE(refusal(make_raster(2, 2, {0, 1e9, 0, 1e9})), "(no refusal)") << "too many heights";
    EXPECT_THAT(names_in(directory), ElementsAre());
}

TEST(ContourWriter, ReplacesAnExistingFile)
{
    const std::string directory = make_directory("out");
    write_contours(slope(), 10, directory + "/a.gpkg");
    write_contours(slope(), 50, directory + "/a.gpkg");
    EXPECT_THAT(names_in(directory), ElementsAre("a.gpkg"));
    EXPECT_EQ(Lines(directory + "/a.gpkg").heights, std::set<double>{150});
}

TEST(ContourWriter, AFullDiskLeavesTheOldFileAlone)
{
    const std::string directory = make_directory("out");
    write_text(directory + "/a.gpkg", "the old file");
    for (const auto size : {0u, 20000u, 100000u}) {
        const FileSizeLimit limit(size);
        EXPECT_THROW(write_contours(mixed_raster(200, 200), 0.5, directory + "/a.gpkg"),
            tarqa::housekeeping::HousekeepingException)
            << size;
    }
    EXPECT_EQ(read_text(directory + "/a.gpkg"), "the old file");
    EXPECT_THAT(names_in(directory), ElementsAre("a.gpkg"));
}

TEST(ContourWriter, CanBeStopped)
{
    const std::string directory = make_directory("out");
    for (const double stop : {0.0, 0.7}) {
        EXPECT_THROW(
            write_contours(slope(), 5, directory + "/a.gpkg", [stop](double share) { return share < stop; }),
            terrain::FileCancelled);
    }
    EXPECT_THAT(names_in(directory), ElementsAre());
}
