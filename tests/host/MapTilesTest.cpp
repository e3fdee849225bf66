#include "views/MapTiles.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/App.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <gtest/gtest.h>

using namespace host_test;
using terrain::Footprint;
using terrain::HillShade;
using terrain::MapTiles;
using terrain::Raster;
using terrain::Sampling;
using terrain::TerrainView;

namespace {

double hills(int column, int row)
{
    return 100 * std::sin(column / 9.0) * std::cos(row / 7.0) + column / 3.0;
}

Raster hilly_raster(int columns, int rows)
{
    Raster raster = raster_of(columns, rows, hills);
    raster.cells[raster.index(30, 20)] = N;
    return raster;
}

/// Puts a map together from parts of this size.
QImage patchwork(const HillShade& shade, const Raster& raster, int step, int side)
{
    QImage whole(shade.size_in_detail(step), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < whole.height(); y += side) {
        for (int x = 0; x < whole.width(); x += side) {
            const QImage part = shade.detail(raster, step, QRect(x, y, side, side));
            for (int row = 0; row < part.height(); ++row) {
                for (int column = 0; column < part.width(); ++column) {
                    whole.setPixel(x + column, y + row, part.pixel(column, row));
                }
            }
        }
    }
    return whole;
}

} // namespace

// Parts of a picture

TEST(HillShadeDetail, PartsMakeUpTheWholePictureWithoutSeams)
{
    const Raster raster = hilly_raster(150, 110);
    for (const HillShade::Look look : {HillShade::Look{true, true}, HillShade::Look{false, true},
             HillShade::Look{true, false}, HillShade::Look{false, false}}) {
        const HillShade shade(raster, Footprint(raster), Sampling::Mean, look);
        for (const int side : {1, 16, 64, 150}) {
            EXPECT_EQ(patchwork(shade, raster, 1, side), shade.picture()) << side;
        }
    }
}

TEST(HillShadeDetail, PartsOfTurnedRastersLieWhereTheyBelong)
{
    Raster raster = hilly_raster(90, 70);
    raster.geotransform = {0, -30, 0, 0, 0, 20};
    const HillShade shade(raster, Footprint(raster));
    EXPECT_EQ(patchwork(shade, raster, 1, 32), shade.picture());
}

TEST(HillShadeDetail, OfALargeRasterHasAPixelForEachCell)
{
    const int columns = HillShade::max_side * 2;
    const Raster raster
        = raster_of(columns, 6, [](int column, int) { return column % 2 == 0 ? 0.0 : 100.0; });
    const HillShade shade(raster, Footprint(raster), Sampling::Mean, {true, false});
    ASSERT_EQ(shade.cells_per_pixel(), 2);
    EXPECT_EQ(shade.size_in_detail(1), QSize(columns, 6));
    const QImage detail = shade.detail(raster, 1, QRect(1000, 0, 10, 6));
    EXPECT_NE(detail.pixel(0, 0), detail.pixel(1, 0));
    EXPECT_EQ(detail.pixel(0, 0), detail.pixel(2, 0));
    EXPECT_EQ(shade.picture().pixel(500, 0), shade.picture().pixel(501, 0)) << "their means are the same";
}

TEST(HillShadeDetail, TheRelationOfLightAndSlopeIsThatOfTheWholePicture)
{
    // An even slope has the same light however finely one looks.
    const Raster raster
        = raster_of(HillShade::max_side * 2, 8, [](int column, int row) { return column + 2.0 * row; });
    const HillShade shade(raster, Footprint(raster), Sampling::Mean, {false, true});
    const QImage detail = shade.detail(raster, 1, QRect(2000, 0, 20, 8));
    EXPECT_EQ(detail.pixel(10, 4), shade.picture().pixel(1005, 2));
}

TEST(HillShadeDetail, OutsideOfTheMapThereIsNothing)
{
    const Raster raster = hilly_raster(50, 40);
    const HillShade shade(raster, Footprint(raster));
    EXPECT_TRUE(shade.detail(raster, 1, QRect(50, 0, 10, 10)).isNull());
    EXPECT_EQ(shade.detail(raster, 1, QRect(45, 35, 100, 100)).size(), QSize(5, 5));
}

// Tiles

TEST(MapTiles, AreMadeWhereOneLooksAndKept)
{
    const Raster raster = hilly_raster(MapTiles::side * 3, MapTiles::side * 2);
    const HillShade shade(raster, Footprint(raster));
    MapTiles tiles;
    const QRect there(MapTiles::side - 10, 5, 20, 20); // on two tiles
    const MapTiles::Part part = tiles.part(there, 1, {shade, &raster, 10});
    EXPECT_TRUE(part.has_all_tiles);
    EXPECT_EQ(part.picture, shade.picture().copy(there));
    EXPECT_EQ(tiles.count(), 2);
    const MapTiles::Part again = tiles.part(there, 1, {shade, nullptr, 0});
    EXPECT_TRUE(again.has_all_tiles) << "nothing is made a second time";
    EXPECT_EQ(again.picture, part.picture);
}

TEST(MapTiles, TheWholePictureStandsInForMissingOnes)
{
    const Raster raster = hilly_raster(MapTiles::side * 2, MapTiles::side);
    const HillShade shade(raster, Footprint(raster));
    MapTiles tiles;
    const QRect all(QPoint(0, 0), shade.picture().size());
    const MapTiles::Part part = tiles.part(all, 1, {shade, nullptr, 10});
    EXPECT_FALSE(part.has_all_tiles);
    EXPECT_EQ(part.picture, shade.picture());
    EXPECT_EQ(tiles.count(), 0);
}

TEST(MapTiles, NoMoreAreMadeAtOnceThanAllowed)
{
    const Raster raster = hilly_raster(MapTiles::side * 3, 30);
    const HillShade shade(raster, Footprint(raster));
    MapTiles tiles;
    const QRect all(QPoint(0, 0), shade.picture().size());
    EXPECT_FALSE(tiles.part(all, 1, {shade, &raster, 2}).has_all_tiles);
    EXPECT_EQ(tiles.count(), 2);
    EXPECT_TRUE(tiles.part(all, 1, {shade, &raster, 2}).has_all_tiles);
    EXPECT_EQ(tiles.count(), 3);
}

TEST(MapTiles, NoMoreAreKeptThanAllowed)
{
    const Raster raster = raster_of(1, MapTiles::side * (MapTiles::most_kept + 2), hills);
    const HillShade shade(raster, Footprint(raster), Sampling::Nearest, {true, false});
    MapTiles tiles;
    for (int tile = 0; tile < MapTiles::most_kept + 2; ++tile) {
        EXPECT_TRUE(tiles.part(QRect(0, tile * MapTiles::side, 1, 1), 1, {shade, &raster, 1}).has_all_tiles);
    }
    EXPECT_EQ(tiles.count(), MapTiles::most_kept);
}

TEST(MapTiles, AllOfAPartAreKeptHoweverManyTheyAre)
{
    const int count = MapTiles::most_kept + 40;
    const Raster raster = raster_of(1, MapTiles::side * count, hills);
    const HillShade shade(raster, Footprint(raster), Sampling::Nearest, {true, false});
    MapTiles tiles;
    const QRect all(0, 0, 1, MapTiles::side * count);
    EXPECT_FALSE(tiles.part(all, 1, {shade, &raster, count - 1}).has_all_tiles);
    EXPECT_TRUE(tiles.part(all, 1, {shade, &raster, 1}).has_all_tiles);
    EXPECT_TRUE(tiles.part(all, 1, {shade, nullptr, 0}).has_all_tiles) << "there is nothing left to make";
    EXPECT_EQ(tiles.count(), count);
    tiles.part(QRect(0, 0, 1, 1), 1, {shade, nullptr, 0});
    EXPECT_EQ(tiles.count(), MapTiles::most_kept) << "as many as are usual";
}

// On a map

namespace {

/// A map of a raster that is drawn from means when it is shown whole: stripes of single columns.
class MapDetailTest : public testing::Test
{
protected:
    static Raster striped_raster()
    {
        return raster_of(
            HillShade::max_side * 2, 300, [](int column, int) { return column % 2 == 0 ? 0.0 : 100.0; });
    }

    void SetUp() override
    {
        QCoreApplication::setOrganizationName("Tarqa"); // for a place to store preferences
        housekeeping::ApplicationManager::instance().setAnimateCameraJumps(false);
        view.resize(500, 300);
        view.show();
        terrain::MapLayers layers;
        layers.relief = layers.legend = layers.scale_bar = false;
        view.set_layers(layers);
    }
    /// As large as possible, the middle of the raster.
    void look_closely() { view.zoom(1e9, {250, 150}); }
    QImage picture() { return view.grab().toImage(); }
    QRgb colour_at(double column, double row)
    {
        return picture().pixel(view.widget_position({column, row}).toPoint());
    }

    support::App application;
    terrain::TerrainDocument& document = make_document(striped_raster());
    TerrainView view{document.id()};
};

} // namespace

TEST_F(MapDetailTest, ShowsTheCellsThemselvesWhereOneLooksClosely)
{
    EXPECT_EQ(colour_at(2000.5, 150.5), colour_at(2001.5, 150.5)) << "the means are the same everywhere";
    EXPECT_EQ(view.picture().tiles().count(), 0);
    look_closely();
    EXPECT_NE(colour_at(2000.5, 150.5), colour_at(2001.5, 150.5));
    EXPECT_EQ(colour_at(2000.5, 150.5), colour_at(2002.5, 150.5));
    EXPECT_GT(view.picture().tiles().count(), 0);
}

TEST_F(MapDetailTest, NothingIsMadeWhereNobodyLooks)
{
    look_closely();
    picture();
    EXPECT_LE(view.picture().tiles().count(), 4);
}

TEST_F(MapDetailTest, CatchesUpByItselfWhenThereIsMuchToMake)
{
    view.zoom(1.0 / view.scale(), {250, 150});
    view.resize(4000, 300);
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents(); // it paints itself again until all is there
    }
    EXPECT_EQ(view.picture().tiles().count(), 32) << "16 across, 2 down";
}

TEST_F(MapDetailTest, ChangedCellsAreSeenAfterARefresh)
{
    look_closely();
    const QRgb low = colour_at(2000.5, 150.5);
    std::vector<double>& cells = document.terrain().cells();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells[i] = 100 - cells[i];
    }
    EXPECT_EQ(colour_at(2000.5, 150.5), low);
    view.refresh();
    EXPECT_NE(colour_at(2000.5, 150.5), low);
    EXPECT_EQ(colour_at(2001.5, 150.5), low);
}

TEST_F(MapDetailTest, CellsOfABusyDocumentAreNotLookedAt)
{
    auto& documents = housekeeping::DocumentManager::instance();
    documents.document_busy(document.id(), true);
    look_closely();
    picture();
    EXPECT_EQ(view.picture().tiles().count(), 0);
    documents.document_busy(document.id(), false);
    picture();
    EXPECT_GT(view.picture().tiles().count(), 0);
}

TEST_F(MapDetailTest, StaysWhenTheDocumentHasGone)
{
    look_closely();
    const QImage before = picture();
    housekeeping::DocumentManager::instance().destroy_document(
        document.id(), true, false, false, housekeeping::DocumentId::null());
    EXPECT_EQ(picture(), before);
}

TEST_F(MapDetailTest, FollowsTheLayers)
{
    look_closely();
    const QRgb coloured = colour_at(2000.5, 150.5);
    terrain::MapLayers layers = view.layers();
    layers.colours = false;
    view.set_layers(layers);
    const QRgb grey = colour_at(2000.5, 150.5);
    EXPECT_NE(grey, coloured);
    EXPECT_EQ(qRed(grey), qGreen(grey));
}
