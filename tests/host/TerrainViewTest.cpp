#include "views/TerrainView.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "commands/BrushCommand.h"
#include "commands/CropCommand.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/App.h"
#include "support/LogCapture.h"
#include "tour/UserInput.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <boost/make_shared.hpp>
#include <gdal_priv.h>
#include <gtest/gtest.h>

using namespace host_test;
using terrain::TerrainView;

namespace {

const QSize s_size(400, 300);

/// A view of a document of 20 columns and 15 rows; the height of a cell is 100 * row + column.
class TerrainViewTest : public testing::Test
{
protected:
    static terrain::TerrainDocument& made_document()
    {
        std::vector<double> cells;
        for (int row = 0; row < 15; ++row) {
            for (int column = 0; column < 20; ++column) {
                cells.push_back(100 * row + column);
            }
        }
        cells[0] = terrain::no_data;
        terrain::TerrainDocument& made = make_document(make_raster(20, 15, cells));
        const auto source = boost::make_shared<housekeeping::DataSource>();
        source->z_units(housekeeping::DataSource::Feet);
        made.datasource(source);
        return made;
    }

    void SetUp() override
    {
        QCoreApplication::setOrganizationName("Tarqa"); // for a place to store preferences
        housekeeping::ApplicationManager::instance().setAnimateCameraJumps(false);
        view.resize(s_size);
        view.show();
    }

    QPointF on_cell(double column, double row) const { return view.widget_position({column, row}); }

    support::App application;
    terrain::TerrainDocument& document = made_document();
    TerrainView view{document.id()};
};

void expect_near(const QPointF& a, const QPointF& b)
{
    EXPECT_NEAR(a.x(), b.x(), 1e-6);
    EXPECT_NEAR(a.y(), b.y(), 1e-6);
}

} // namespace

TEST_F(TerrainViewTest, BeginsWithTheWholeRaster)
{
    const QRectF raster(on_cell(0, 0), on_cell(20, 15));
    EXPECT_TRUE(QRectF(view.rect()).contains(raster));
    EXPECT_GT(raster.height(), 270) << "with a narrow margin";
    expect_near(raster.center(), QPointF(200, 150));
}

TEST_F(TerrainViewTest, GoesOnShowingTheWholeRasterWhenItsSizeChanges)
{
    view.resize(200, 400);
    const QRectF raster(on_cell(0, 0), on_cell(20, 15));
    EXPECT_TRUE(QRectF(view.rect()).contains(raster));
    EXPECT_GT(raster.width(), 170);
}

TEST_F(TerrainViewTest, TheWheelZoomsAtThePointer)
{
    const QPoint pointer(250, 120);
    const QPointF place = view.map_position(pointer);
    const double scale = view.scale();
    terrain::turn_wheel(view, pointer, 1);
    EXPECT_DOUBLE_EQ(view.scale(), scale * 1.25);
    expect_near(view.map_position(pointer), place);
    terrain::turn_wheel(view, pointer, 3);
    expect_near(view.map_position(pointer), place);
    terrain::turn_wheel(view, pointer, -4);
    EXPECT_NEAR(view.scale(), scale, 1e-9);
    expect_near(view.map_position(pointer), place);
}

TEST_F(TerrainViewTest, KeepsThePlaceWhenTheSizeChangesAfterAZoom)
{
    view.zoom_in();
    const double scale = view.scale();
    const QPointF place = view.map_position({200, 150});
    view.resize(300, 500);
    EXPECT_EQ(view.scale(), scale);
    expect_near(view.map_position({150, 250}), place);
}

TEST_F(TerrainViewTest, ZoomHasBounds)
{
    const double whole = view.scale();
    for (int i = 0; i < 100; ++i) {
        view.zoom_in();
    }
    EXPECT_DOUBLE_EQ(view.scale(), 8 * whole);
    for (int i = 0; i < 100; ++i) {
        view.zoom_out();
    }
    EXPECT_EQ(view.scale(), 1);
}

TEST_F(TerrainViewTest, FitShowsTheWholeRasterAgain)
{
    const double scale = view.scale();
    view.zoom(5, {10, 10});
    view.fit();
    EXPECT_EQ(view.scale(), scale);
    expect_near(view.map_position({200, 150}), QPointF(10, 7.5));
}

TEST_F(TerrainViewTest, TellsTheScaleOnlyWhenItChanges)
{
    const QSignalSpy spy(&view, &TerrainView::scale_changed);
    view.zoom_in();
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0).at(0).toDouble(), view.scale());
    view.pan({5, 5});
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(TerrainViewTest, DraggingMovesTheMapWithThePointer)
{
    view.zoom_in();
    const QPointF place = view.map_position({200, 150});
    terrain::drag(view, {200, 150}, {230, 140});
    expect_near(view.map_position({230, 140}), place);
    terrain::move_pointer(view, {100, 100});
    expect_near(view.map_position({230, 140}), place);
}

TEST_F(TerrainViewTest, OtherButtonsDoNotMoveTheMap)
{
    const QPointF place = view.map_position({200, 150});
    QTest::mousePress(&view, Qt::RightButton, Qt::NoModifier, {200, 150});
    terrain::move_pointer(view, {230, 140});
    QTest::mouseRelease(&view, Qt::RightButton, Qt::NoModifier, {230, 140});
    expect_near(view.map_position({200, 150}), place);
}

TEST_F(TerrainViewTest, MovesInTheFourDirections)
{
    view.zoom_in();
    const QPointF centre(200, 150);
    const QPointF before = view.map_position(centre);
    view.pan_left();
    EXPECT_LT(view.map_position(centre).x(), before.x());
    view.pan_right();
    expect_near(view.map_position(centre), before);
    view.pan_up();
    EXPECT_LT(view.map_position(centre).y(), before.y());
    view.pan_down();
    expect_near(view.map_position(centre), before);
}

TEST_F(TerrainViewTest, TheMapStaysInSight)
{
    view.pan({100000, -100000});
    expect_near(view.map_position({200, 150}), QPointF(0, 15));
}

TEST_F(TerrainViewTest, ReadsTheCellUnderAPoint)
{
    const auto reading = view.reading(on_cell(3.5, 7.2));
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->column, 3);
    EXPECT_EQ(reading->row, 7);
    EXPECT_EQ(reading->height, 703);
    EXPECT_TRUE(view.reading(on_cell(0.01, 0.01)));
    EXPECT_TRUE(view.reading(on_cell(19.99, 14.99)));
}

TEST_F(TerrainViewTest, ReadsNothingOutside)
{
    EXPECT_FALSE(view.reading(on_cell(-0.01, 5)));
    EXPECT_FALSE(view.reading(on_cell(5, -0.01)));
    EXPECT_FALSE(view.reading(on_cell(20, 5)));
    EXPECT_FALSE(view.reading(on_cell(5, 15)));
    EXPECT_EQ(view.reading_text(on_cell(-1, 5)), "");
}

TEST_F(TerrainViewTest, TellsWhatIsUnderThePointerInTheDocumentsUnits)
{
    const QSignalSpy spy(&view, &TerrainView::reading_changed);
    terrain::move_pointer(view, on_cell(3.5, 7.5).toPoint());
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0).at(0).toString(), "703 feet   at column 3, row 7");
    terrain::move_pointer(view, on_cell(0.5, 0.5).toPoint());
    EXPECT_EQ(spy.at(1).at(0).toString(), "no data   at column 0, row 0");
    terrain::move_pointer(view, {1, 1});
    EXPECT_EQ(spy.at(2).at(0).toString(), "");
    terrain::move_pointer(view, on_cell(3.5, 7.5).toPoint());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&view, &leave);
    EXPECT_EQ(spy.at(4).at(0).toString(), "");
}

TEST_F(TerrainViewTest, TellsWhatComesUnderAPointerThatHoldsStill)
{
    const QPoint pointer = on_cell(3.5, 7.5).toPoint();
    terrain::move_pointer(view, pointer);
    const QString before = view.reading_text(pointer);
    const QSignalSpy spy(&view, &TerrainView::reading_changed);
    view.zoom(3, {0, 0});
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0).at(0).toString(), view.reading_text(pointer));
    EXPECT_NE(spy.at(0).at(0).toString(), before);
}

TEST_F(TerrainViewTest, CoordinatesAreThoseOfTheCellsCentre)
{
    terrain::Raster raster = make_raster(2, 2, {1, 2, 3, 4});
    raster.geotransform = {1000, 10, 0, 500, 0, 10}; // the first row is in the south
    const TerrainView small(make_document(raster).id());
    EXPECT_EQ(
        small.reading_text(small.widget_position({1.5, 0.5})), "4   at 1015.0, 515.0   (column 1, row 1)");
}

TEST_F(TerrainViewTest, ADocumentWithoutARasterHasAnEmptyMap)
{
    TerrainView empty(make_document(terrain::Raster()).id());
    empty.resize(s_size);
    empty.zoom_in();
    EXPECT_FALSE(empty.reading({200, 150}));
    EXPECT_EQ(empty.grab().toImage().pixelColor(200, 150), empty.palette().color(QPalette::Base));
}

TEST_F(TerrainViewTest, NothingIsDrawnWhereThereIsNoData)
{
    const QImage picture = view.grab().toImage();
    const QColor corner = picture.pixelColor(1, 1);
    EXPECT_EQ(corner, view.palette().color(QPalette::Base));
    EXPECT_NE(picture.pixelColor(200, 150), corner);
    const QPoint hole = on_cell(0.5, 0.5).toPoint();
    EXPECT_EQ(picture.pixelColor(hole), corner) << "cells without data show the ground";
}

TEST_F(TerrainViewTest, RefreshDrawsTheCellsAsTheyAre)
{
    view.zoom_in();
    const QImage before = view.grab().toImage();
    const QPointF place = view.map_position({0, 0});
    for (double& cell : document.terrain().cells()) {
        cell = -cell * cell;
    }
    EXPECT_EQ(view.grab().toImage(), before);
    view.refresh();
    EXPECT_NE(view.grab().toImage(), before);
    expect_near(view.map_position({0, 0}), place);
}

TEST_F(TerrainViewTest, KeepsThePictureOfBeforeIfAChangeCannotBeDrawn)
{
    support::LogCapture log;
    view.zoom_in();
    const QImage before = view.picture().shade().picture();
    const QImage map = view.grab().toImage();
    GDALDriver* const p_memory = GetGDALDriverManager()->GetDriverByName("MEM");
    GetGDALDriverManager()->DeregisterDriver(p_memory);
    insert(boost::make_shared<terrain::CropCommand>(document.id(), terrain::CellRange{2, 10, 2, 8}));
    EXPECT_TRUE(view.problem().startsWith("The relief cannot be shaded"));
    EXPECT_TRUE(log.take("The relief cannot be shaded"));
    log.take_all();
    EXPECT_EQ(view.picture().shade().picture(), before);
    EXPECT_NE(view.grab().toImage(), map) << "there is a note";
    EXPECT_FALSE(view.reading({200, 150})) << "the map is of other cells";
    GetGDALDriverManager()->RegisterDriver(p_memory);
    insert(boost::make_shared<terrain::BrushCommand>(document.id(),
        terrain::Brush{terrain::Brush::Direction::Raise, 2, 5}, terrain::BrushCommand::Path{{3, 3}}));
    EXPECT_EQ(view.problem(), "");
    const TerrainView fresh(document.id());
    EXPECT_EQ(view.picture().shade().picture(), fresh.picture().shade().picture());
    EXPECT_TRUE(view.reading({200, 150}));
}

TEST_F(TerrainViewTest, OutlivesItsDocument)
{
    housekeeping::DocumentManager::instance().destroy_document(
        document.id(), true, false, false, housekeeping::DocumentId::null());
    view.refresh();
    terrain::move_pointer(view, {200, 150});
    EXPECT_FALSE(view.reading({200, 150}));
    EXPECT_EQ(view.reading_text({200, 150}), "");
    EXPECT_FALSE(view.grab().isNull());
}
