#include "views/ProfileLine.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/CropCommand.h"
#include "documents/TerrainDocument.h"
#include "panels/HomePanel.h"
#include "panels/ProfilePlot.h"
#include "panels/StatisticsPanel.h"
#include "support/MessageSpy.h"
#include "tour/UserInput.h"
#include "views/Footprint.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtGui/QPainter>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QSpinBox>

#include <qwt_plot_canvas.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_map.h>

#include <boost/make_shared.hpp>

using namespace host_test;
using housekeeping::DocumentManager;
using terrain::CellsOnWidget;
using terrain::Footprint;
using terrain::ProfileLine;

namespace {

const QSize s_picture(200, 150);
const QSize s_cells(20, 15); // of ten pixels each

/// What is drawn on a ground of one colour.
QImage drawn(const ProfileLine& line, const QColor& ground, const Footprint& footprint,
    const QTransform& to_widget = QTransform::fromScale(10, 10))
{
    QImage picture(s_picture, QImage::Format_RGB32);
    picture.fill(ground);
    QPainter painter(&picture);
    terrain::draw_profile_line(painter, line, {s_cells, footprint, to_widget}, picture.rect());
    return picture;
}

/// The greatest difference in lightness to the ground that a column of pixels has.
int contrast(const QImage& picture, int x, const QColor& ground)
{
    int greatest = 0;
    for (int y = 0; y < picture.height(); ++y) {
        greatest = std::max(greatest, std::abs(picture.pixelColor(x, y).lightness() - ground.lightness()));
    }
    return greatest;
}

Footprint plain()
{
    return Footprint(terrain::Raster());
}

} // namespace

TEST(ProfileLine, IsSeenOnEveryGround)
{
    for (const QColor& ground :
        {QColor(Qt::white), QColor(Qt::black), QColor(Qt::gray), QColor(60, 120, 60)}) {
        const QImage row = drawn({true, 7, 3, {}}, ground, plain());
        EXPECT_GT(contrast(row, 20, ground), 90) << ground.name().toStdString();
        EXPECT_GT(contrast(row, 180, ground), 90) << ground.name().toStdString();
    }
}

TEST(ProfileLine, RunsAlongItsRowOrColumn)
{
    const QColor ground(Qt::gray);
    const QImage row = drawn({true, 7, 3, {}}, ground, plain());
    EXPECT_LT(row.pixelColor(150, 35).lightness(), 60);
    EXPECT_EQ(row.pixelColor(150, 45), ground);
    const QImage column = drawn({false, 7, 3, {}}, ground, plain());
    EXPECT_LT(column.pixelColor(75, 120).lightness(), 60);
    EXPECT_EQ(column.pixelColor(95, 120), ground);
}

TEST(ProfileLine, FollowsRastersThatAreStoredUpsideDown)
{
    Footprint footprint = plain();
    footprint.rows_run_north = true;
    const QImage row = drawn({true, 7, 3, {}}, Qt::gray, footprint);
    EXPECT_LT(row.pixelColor(150, 115).lightness(), 60);
    EXPECT_EQ(row.pixelColor(150, 35), QColor(Qt::gray));
}

TEST(ProfileLine, MarksItsCellAndWhatIsPointedAt)
{
    const QImage bare = drawn({true, 7, 3, {}}, Qt::gray, plain());
    EXPECT_NE(bare.pixelColor(75, 29), QColor(Qt::gray)) << "a ring around the cell";
    EXPECT_EQ(bare.pixelColor(125, 29), QColor(Qt::gray));
    const QImage pointed = drawn({true, 7, 3, 12}, Qt::gray, plain());
    EXPECT_NE(pointed.pixelColor(125, 29), QColor(Qt::gray));
    EXPECT_GT(pointed.pixelColor(125, 35).saturation(), 200);
}

TEST(ProfileLine, IsNotDrawnOutsideOfTheRaster)
{
    QImage empty(s_picture, QImage::Format_RGB32);
    empty.fill(Qt::gray);
    for (const ProfileLine& line : {ProfileLine{true, 20, 3, {}}, ProfileLine{true, 3, 15, {}},
             ProfileLine{false, -1, 0, {}}, ProfileLine{false, 0, -1, {}}}) {
        EXPECT_EQ(drawn(line, Qt::gray, plain()), empty);
    }
    const ProfileLine line{true, 7, 3, {}};
    EXPECT_EQ(drawn({true, 7, 3, 20}, Qt::gray, plain()), drawn(line, Qt::gray, plain()));
    EXPECT_EQ(drawn({true, 7, 3, -1}, Qt::gray, plain()), drawn(line, Qt::gray, plain()));
}

TEST(ProfileLine, IsDrawnHoweverFarInTheMapIsZoomed)
{
    const QTransform far_in = QTransform::fromTranslate(-1e9, -3.5e7 + 75).scale(1e7, 1e7);
    EXPECT_LT(drawn({true, 7, 3, {}}, Qt::gray, plain(), far_in * QTransform::fromTranslate(9.5e8, 0))
                  .pixelColor(100, 75)
                  .lightness(),
        60);
}

TEST(ProfileLine, KnowsThePlaceBesideThePointer)
{
    const Footprint footprint = plain();
    const QTransform to_widget = QTransform::fromScale(10, 10);
    const CellsOnWidget map{s_cells, footprint, to_widget};
    const ProfileLine row{true, 7, 3, {}};
    EXPECT_EQ(terrain::place_on_line(row, map, {125, 35}), 12);
    EXPECT_EQ(terrain::place_on_line(row, map, {125, 42}), 12) << "near";
    EXPECT_EQ(terrain::place_on_line(row, map, {125, 46}), std::nullopt);
    EXPECT_EQ(terrain::place_on_line(row, map, {-1, 35}), std::nullopt);
    EXPECT_EQ(terrain::place_on_line(row, map, {200, 35}), std::nullopt);
    const ProfileLine column{false, 7, 3, {}};
    EXPECT_EQ(terrain::place_on_line(column, map, {75, 149}), 14);
    EXPECT_EQ(terrain::place_on_line(column, map, {90, 100}), std::nullopt);
}

// In the window

class ProfileLineInWindow : public WindowTest
{
protected:
    void see_statistics()
    {
        window->show_panel(window->statistics());
        wait();
    }
    void wait()
    {
        ASSERT_TRUE(support::wait_until([this] { return window->statistics().is_up_to_date(); }));
    }
    /// Opens a raster, and a profile through column 7 and row 3.
    void see_profile()
    {
        open_terrain_file("a.tif");
        see_statistics();
        terrain::click(view(), on_cell(7, 3));
        wait();
    }

    terrain::TerrainView& view() const { return *window->view(); }
    QPoint on_cell(int column, int row) const
    {
        return view().widget_position({column + 0.5, row + 0.5}).toPoint();
    }
    std::optional<int> pointed() const
    {
        return view().profile_line() ? view().profile_line()->pointed : std::nullopt;
    }
    const terrain::ProfilePlot& plot() const { return window->statistics().profile(); }
    /// Where a distance is in the plot.
    QPoint in_plot(double x) const
    {
        return {qRound(plot().canvasMap(QwtPlot::xBottom).transform(x)), plot().canvas()->height() / 2};
    }
    /// Moves the pointer without a window system that could lose it.
    static void move(QWidget& widget, const QPoint& to)
    {
        QMouseEvent event(
            QEvent::MouseMove, to, widget.mapToGlobal(to), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
    static void leave(QWidget& widget)
    {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(&widget, &event);
    }
};

TEST_F(ProfileLineInWindow, IsWhereTheProfileRuns)
{
    open_terrain_file("a.tif");
    see_statistics();
    EXPECT_FALSE(view().profile_line());
    const QImage bare = view().grab().toImage();
    terrain::click(view(), on_cell(7, 3));
    wait();
    EXPECT_EQ(view().profile_line(), (ProfileLine{true, 7, 3, {}}));
    EXPECT_NE(view().grab().toImage(), bare);
    window->statistics().direction().setCurrentIndex(1);
    EXPECT_EQ(view().profile_line(), (ProfileLine{false, 7, 3, {}}));
    window->statistics().number().setValue(11);
    EXPECT_EQ(view().profile_line(), (ProfileLine{false, 11, 3, {}}));
}

TEST_F(ProfileLineInWindow, GoesWithTheProfile)
{
    see_profile();
    window->statistics().number().setValue(-1); // none
    EXPECT_FALSE(view().profile_line());
    terrain::click(view(), on_cell(2, 2));
    wait();
    EXPECT_TRUE(view().profile_line());
    window->show_panel(window->home());
    EXPECT_FALSE(view().profile_line()) << "the profile is not to be seen";
    see_statistics();
    EXPECT_EQ(view().profile_line(), (ProfileLine{true, 2, 2, {}}));
    tear_off(window->statistics());
    EXPECT_TRUE(view().profile_line());
    window->statistics().window()->close();
    window->show_panel(window->home());
    EXPECT_FALSE(view().profile_line());
}

TEST_F(ProfileLineInWindow, AClickWhileThePanelIsHiddenLeavesNoLine)
{
    open_terrain_file("a.tif");
    terrain::click(view(), on_cell(7, 3));
    EXPECT_FALSE(view().profile_line());
}

TEST_F(ProfileLineInWindow, EachDocumentHasItsOwn)
{
    see_profile();
    terrain::TerrainView& first = view();
    open_terrain_file("b.tif");
    wait();
    EXPECT_FALSE(view().profile_line());
    EXPECT_FALSE(first.profile_line());
    DocumentManager::instance().current_document(first.document());
    wait();
    EXPECT_EQ(first.profile_line(), (ProfileLine{true, 7, 3, {}}));
    window->close_document();
    wait();
    window->close_document();
    EXPECT_EQ(window->view(), nullptr);
}

TEST_F(ProfileLineInWindow, GoesWhenItsCellIsCutOff)
{
    see_profile();
    run(boost::make_shared<terrain::CropCommand>(current().id(), terrain::CellRange{0, 5, 0, 5}));
    wait();
    EXPECT_FALSE(view().profile_line());
}

TEST_F(ProfileLineInWindow, ThePointerOverThePlotMarksThePlaceOnTheMap)
{
    see_profile();
    QWidget& canvas = *plot().findChild<QwtPlotCanvas*>();
    EXPECT_FALSE(plot().pointer().isVisible());
    move(canvas, in_plot(12));
    EXPECT_EQ(pointed(), 12);
    EXPECT_TRUE(plot().pointer().isVisible());
    EXPECT_EQ(plot().pointer().xValue(), 12);
    move(canvas, in_plot(0) - QPoint(20, 0));
    EXPECT_EQ(pointed(), 0) << "the nearest";
    leave(canvas);
    EXPECT_EQ(pointed(), std::nullopt);
    EXPECT_FALSE(plot().pointer().isVisible());
    EXPECT_TRUE(view().profile_line());
}

TEST_F(ProfileLineInWindow, ThePointerOverTheLineMarksThePlaceInThePlot)
{
    see_profile();
    move(view(), on_cell(16, 3));
    EXPECT_EQ(pointed(), 16);
    EXPECT_TRUE(plot().pointer().isVisible());
    EXPECT_EQ(plot().pointer().xValue(), 16);
    move(view(), on_cell(16, 9));
    EXPECT_FALSE(plot().pointer().isVisible());
    move(view(), on_cell(16, 3));
    leave(view());
    EXPECT_FALSE(plot().pointer().isVisible());
}

TEST_F(ProfileLineInWindow, APlaceWithoutDataIsMarkedToo)
{
    see_profile(); // cell 29 has no data: column 9, row 1
    terrain::click(view(), on_cell(4, 1));
    wait();
    move(view(), on_cell(9, 1));
    EXPECT_EQ(pointed(), 9);
    EXPECT_TRUE(std::isfinite(plot().pointer().yValue()));
}

TEST_F(ProfileLineInWindow, NothingIsPointedAtWithoutAProfile)
{
    open_terrain_file("a.tif");
    see_statistics();
    move(view(), on_cell(4, 4));
    window->statistics().point_at(4);
    EXPECT_FALSE(view().profile_line());
    EXPECT_FALSE(plot().pointer().isVisible());
}
