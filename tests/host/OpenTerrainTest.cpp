#include "documents/OpenTerrain.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "documents/RasterInformation.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/Controllers.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/InvalidPath.h>

#include <gtest/gtest.h>

#include <iterator>

using namespace host_test;
using housekeeping::DataSource;
using housekeeping::DocumentManager;
using terrain::open_terrain;
using terrain::TerrainDocument;

TEST(OpenTerrain, MakesTheRasterTheCurrentDocument)
{
    support::init_controllers();
    make_tiff(scratch("a b.tif"), 2, 1, GDT_Int16, {3, 4},
        [](GDALDatasetH, GDALRasterBandH band) { GDALSetRasterUnitType(band, "ft"); });
    const TerrainDocument& document = open_terrain(scratch("a b.tif"));
    EXPECT_EQ(&DocumentManager::instance().current_document(), &document);
    EXPECT_EQ(document.terrain().raster().cells, (std::vector<double>{3, 4}));
    EXPECT_EQ(document.title(), scratch("a b.tif"));
    EXPECT_EQ(document.short_title(), "a b");
    EXPECT_EQ(document.datasource()->url(), "file://" + scratch("a%20b.tif"));
    EXPECT_EQ(document.datasource()->key(), "raster");
    EXPECT_EQ(document.datasource()->z_units(), DataSource::Feet);
    EXPECT_EQ(document.datasource()->z_sign(), DataSource::Elevation);
    EXPECT_EQ(std::distance(document.history_begin(), document.history_end()), 1);
    EXPECT_FALSE(document.is_modified());
}

TEST(OpenTerrain, TheSameFileTwiceGivesTwoDocuments)
{
    support::init_controllers();
    const std::string path = make_terrain_file("a.tif");
    const TerrainDocument& first = open_terrain(path);
    const TerrainDocument& second = open_terrain(path);
    EXPECT_NE(first.id(), second.id());
    EXPECT_EQ(first.title(), path);
    EXPECT_EQ(second.title(), path + " 2");
}

TEST(OpenTerrain, AFailureLeavesTheCurrentDocumentCurrentAndNoOtherBehind)
{
    support::init_controllers();
    const TerrainDocument& document = open_terrain(make_terrain_file("a.tif"));
    write_text(scratch("broken.tif"), "no raster");
    EXPECT_THROW(open_terrain(scratch("broken.tif")), housekeeping::InvalidPath);
    EXPECT_THROW(open_terrain(scratch("missing.tif")), housekeeping::InvalidPath);
    EXPECT_EQ(DocumentManager::instance().num_documents(), 1u);
    EXPECT_EQ(&DocumentManager::instance().current_document(), &document);
}

TEST(OpenTerrain, UnderstandsManySpellingsOfUnits)
{
    using terrain::units_of;
    EXPECT_EQ(units_of("metre"), DataSource::Metres);
    EXPECT_EQ(units_of("m"), DataSource::Metres);
    EXPECT_EQ(units_of("ft"), DataSource::Feet);
    EXPECT_EQ(units_of("US survey foot"), DataSource::Feet);
    EXPECT_EQ(units_of(" Feet "), DataSource::Feet);
    EXPECT_EQ(units_of("km"), DataSource::Kilometres);
    EXPECT_EQ(units_of("ms"), DataSource::Milliseconds);
    EXPECT_EQ(units_of("s"), DataSource::Seconds);
    EXPECT_EQ(units_of("dm"), DataSource::Decimetres);
    EXPECT_EQ(units_of("in"), DataSource::Inches);
    EXPECT_EQ(units_of("mile"), DataSource::Miles);
    EXPECT_EQ(units_of(""), DataSource::Metres);
    EXPECT_EQ(units_of("parsecs"), DataSource::Metres); // and nothing is logged
}
