#include "sample/FractalTerrain.h"
#include "CommandFixture.h"
#include "commands/FillSinksCommand.h"
#include "documents/RasterSummary.h"
#include "documents/TerrainDocument.h"
#include "io/ReferenceSystem.h"

#include <gtest/gtest.h>

using namespace host_test;
using terrain::checksum;
using terrain::fractal_terrain;
using terrain::Raster;
using terrain::RasterSummary;

TEST(FractalTerrain, IsTheSameForASeed)
{
    EXPECT_EQ(checksum(fractal_terrain(100, 1)), checksum(fractal_terrain(100, 1)));
    EXPECT_NE(checksum(fractal_terrain(100, 1)), checksum(fractal_terrain(100, 2)));
    EXPECT_EQ(checksum(fractal_terrain(100, 1)),
        "eea03b8e120474bcc4fc6b97a2137e04ae6d69f1f07337440b8bdc3ff2e01fa8");
}

TEST(FractalTerrain, HasMountainsPitsAndACornerWithoutData)
{
    const Raster raster = fractal_terrain(128, 1);
    const RasterSummary summary(raster.cells);
    EXPECT_GE(summary.minimum, 50);
    EXPECT_LE(summary.maximum, 900);
    EXPECT_GT(summary.maximum - summary.minimum, 700);
    EXPECT_EQ(summary.without_data, 16u * 17 / 2);
    EXPECT_TRUE(terrain::is_no_data(raster.cell(127, 127)));
    EXPECT_FALSE(terrain::is_no_data(raster.cell(0, 0)));

    terrain::TerrainDocument& document = make_document(raster);
    const auto sp_fill = boost::make_shared<terrain::FillSinksCommand>(document.id());
    insert(sp_fill);
    EXPECT_NE(sp_fill->details().description(), "0 cells changed");
}

TEST(FractalTerrain, LiesOnTheEarth)
{
    const Raster raster = fractal_terrain(2, 1);
    EXPECT_EQ(terrain::reference_system_name(raster.reference_system), "WGS 84 / UTM zone 32N (EPSG:32632)");
    EXPECT_EQ(terrain::reference_system_unit(raster.reference_system), "metre");
    ASSERT_TRUE(raster.geotransform);
    EXPECT_EQ((*raster.geotransform)[1], 30);
}

TEST(FractalTerrain, MayBeTiny)
{
    for (const int size : {1, 2, 3, 4, 5}) {
        EXPECT_EQ(fractal_terrain(size, 1).cells.size(), static_cast<std::size_t>(size * size));
    }
}

TEST(ReferenceSystem, NamesNothingForNothing)
{
    EXPECT_EQ(terrain::reference_system_name(""), "");
    EXPECT_EQ(terrain::reference_system_name("nonsense"), "");
    EXPECT_EQ(terrain::reference_system_unit(""), "");
    EXPECT_EQ(terrain::reference_system_from_epsg(-1), "");
}

TEST(ReferenceSystem, NamesOnesWithoutACode)
{
    const std::string wkt
        = R"(LOCAL_CS["Mine grid",UNIT["metre",1],AXIS["Easting",EAST],AXIS["Northing",NORTH]])";
    EXPECT_EQ(terrain::reference_system_name(wkt), "Mine grid");
    EXPECT_EQ(terrain::reference_system_unit(terrain::reference_system_from_epsg(4326)), "degree");
}
