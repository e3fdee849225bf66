#include "views/BrushTool.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/App.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gtest/gtest.h>

using namespace host_test;
using terrain::Brush;
using terrain::BrushTool;
using terrain::TerrainView;

namespace {

/// A brush on the map of a raster whose cells are as they are stored in the file.
class BrushToolTest : public testing::Test
{
protected:
    explicit BrushToolTest(const std::optional<std::array<double, 6>>& geotransform = {})
        : document(made_document(geotransform))
    { }

    static terrain::TerrainDocument& made_document(const std::optional<std::array<double, 6>>& geotransform)
    {
        terrain::Raster raster = raster_of(20, 15, [](int column, int row) { return 100.0 * row + column; });
        raster.geotransform = geotransform;
        return make_document(raster);
    }

    void SetUp() override
    {
        QCoreApplication::setOrganizationName("Tarqa");
        housekeeping::ApplicationManager::instance().setAnimateCameraJumps(false);
        view.resize(400, 300);
        view.show();
        QObject::connect(&tool, &BrushTool::drawn, [this](const auto& path) { strokes.push_back(path); });
        QObject::connect(&tool, &terrain::MapTool::said, [this](const QString& text) { said.append(text); });
        QObject::connect(&tool, &BrushTool::radius_chosen, [this](double radius) {
            radii.push_back(radius);
            tool.set_brush({Brush::Direction::Raise, radius, 5});
        });
        tool.set_brush({Brush::Direction::Raise, 2, 5});
        view.set_tool(&tool);
    }

    /// Where a stored cell is on the widget.
    QPoint on_widget(double column, double row) const
    {
        return view.widget_of_cells().map(QPointF(column, row)).toPoint();
    }
    void move_held(const QPoint& to) { terrain::move_pointer(view, to, Qt::LeftButton); }
    void turn_wheel_with_control(int angle)
    {
        const QPoint at(200, 150);
        QWheelEvent event(at, view.mapToGlobal(at), QPoint(), QPoint(0, angle), Qt::NoButton,
            Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&view, &event);
    }

    support::App application;
    terrain::TerrainDocument& document;
    QString objection;
    BrushTool tool{[this](const housekeeping::DocumentId&) { return objection; }};
    TerrainView view{document.id()};
    std::vector<terrain::BrushCommand::Path> strokes;
    std::vector<double> radii;
    QStringList said;
};

/// The same of a raster that is stored with the first column in the east and the first row in the south.
class TurnedBrushToolTest : public BrushToolTest
{
protected:
    TurnedBrushToolTest()
        : BrushToolTest(std::array<double, 6>{0, -10, 0, 0, 0, 10})
    { }
};

void expect_near(const QPointF& a, const QPointF& b)
{
    EXPECT_NEAR(a.x(), b.x(), 0.1);
    EXPECT_NEAR(a.y(), b.y(), 0.1);
}

} // namespace

TEST_F(BrushToolTest, DraggingDrawsAStrokeAndTellsItWhenTheButtonIsReleased)
{
    const QPointF place = view.map_position({200, 150});
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, on_widget(3, 4));
    EXPECT_TRUE(tool.is_under_way());
    move_held(on_widget(9, 4));
    move_held(on_widget(9, 11));
    EXPECT_TRUE(strokes.empty());
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, on_widget(12, 11));
    EXPECT_FALSE(tool.is_under_way());
    ASSERT_EQ(strokes.size(), 1u);
    expect_near(strokes[0].front(), {3, 4});
    expect_near(strokes[0].back(), {12, 11});
    EXPECT_GE(strokes[0].size(), 2u);
    EXPECT_EQ(view.map_position({200, 150}), place) << "the map stays where it is";
}

TEST_F(BrushToolTest, AClickIsADab)
{
    terrain::click(view, on_widget(5.5, 6.5));
    ASSERT_EQ(strokes.size(), 1u);
    ASSERT_EQ(strokes[0].size(), 1u);
    expect_near(strokes[0][0], {5.5, 6.5});
    QTest::mouseDClick(&view, Qt::LeftButton, Qt::NoModifier, on_widget(5.5, 6.5));
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, on_widget(5.5, 6.5));
    EXPECT_FALSE(tool.is_under_way());
    EXPECT_GE(strokes.size(), 2u) << "the second click is a dab, too";
}

TEST_F(TurnedBrushToolTest, PositionsAreThoseOfTheStoredCells)
{
    terrain::click(view, QPoint(view.widget_position({0.5, 0.5}).toPoint()));
    ASSERT_EQ(strokes.size(), 1u);
    expect_near(strokes[0][0], {19.5, 14.5});
    EXPECT_EQ(on_widget(19.5, 14.5), view.widget_position({0.5, 0.5}).toPoint());
}

TEST_F(BrushToolTest, EscapeGivesAStrokeUp)
{
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, on_widget(3, 4));
    move_held(on_widget(9, 4));
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_FALSE(tool.is_under_way());
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, on_widget(9, 4));
    EXPECT_TRUE(strokes.empty());
    EXPECT_EQ(said, QStringList{"The stroke was given up."});
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_EQ(said.size(), 1) << "there is nothing to give up";
}

TEST_F(BrushToolTest, AStrokeWhoseReleaseNobodyToldIsGivenUp)
{
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, on_widget(3, 4));
    move_held(on_widget(6, 4));
    terrain::move_pointer(view, on_widget(9, 4));
    EXPECT_FALSE(tool.is_under_way());
    EXPECT_EQ(said, QStringList{"The stroke was given up."});
    terrain::move_pointer(view, on_widget(9, 9));
    EXPECT_EQ(said.size(), 1);
    EXPECT_TRUE(strokes.empty());
    terrain::drag(view, on_widget(3, 4), on_widget(9, 4));
    EXPECT_EQ(strokes.size(), 1u) << "the next one is as ever";
}

TEST_F(BrushToolTest, TheRightAndTheMiddleButtonMoveTheMap)
{
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        const QPointF place = view.map_position({200, 150});
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(200, 150), button, button, Qt::NoModifier);
        QMouseEvent move(QEvent::MouseMove, QPointF(180, 150), Qt::NoButton, button, Qt::NoModifier);
        QMouseEvent release(
            QEvent::MouseButtonRelease, QPointF(180, 150), button, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&view, &press);
        EXPECT_EQ(view.cursor().shape(), Qt::ClosedHandCursor);
        QApplication::sendEvent(&view, &move);
        QApplication::sendEvent(&view, &release);
        EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
        EXPECT_GT(view.map_position({200, 150}).x(), place.x());
    }
    EXPECT_TRUE(strokes.empty());
}

TEST_F(BrushToolTest, KeysAndTheWheelWithControlChangeTheRadius)
{
    const double scale = view.scale();
    QTest::keyClick(&view, Qt::Key_BracketRight);
    EXPECT_EQ(tool.brush().radius, 2.5);
    QTest::keyClick(&view, Qt::Key_BracketLeft);
    EXPECT_EQ(tool.brush().radius, 2);
    turn_wheel_with_control(120);
    EXPECT_EQ(tool.brush().radius, 2.5);
    EXPECT_EQ(view.scale(), scale);
    turn_wheel_with_control(0);
    EXPECT_EQ(radii.size(), 3u);
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(&view, Qt::Key_BracketRight);
    }
    EXPECT_EQ(tool.brush().radius, 500);
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(&view, Qt::Key_BracketLeft);
    }
    EXPECT_EQ(tool.brush().radius, 0.5);
    terrain::turn_wheel(view, {200, 150}, 1);
    EXPECT_GT(view.scale(), scale) << "without Ctrl the wheel zooms";
}

TEST_F(BrushToolTest, AStrokeHasOneRadius)
{
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, on_widget(3, 4));
    QTest::keyClick(&view, Qt::Key_BracketRight);
    EXPECT_EQ(tool.brush().radius, 2);
    EXPECT_TRUE(tool.is_under_way());
}

TEST_F(BrushToolTest, NoStrokeBeginsWhereItMayNot)
{
    objection = "Not now";
    terrain::drag(view, on_widget(3, 4), on_widget(9, 4));
    EXPECT_TRUE(strokes.empty());
    EXPECT_EQ(said, QStringList{"Not now"});
}

TEST_F(BrushToolTest, DrawsACircleAtThePointerAndABandWhereTheStrokeWas)
{
    const QImage without = view.grab().toImage();
    terrain::move_pointer(view, on_widget(10, 7));
    const QImage circle = view.grab().toImage();
    EXPECT_NE(circle, without);
    EXPECT_EQ(circle.pixel(on_widget(10, 7)), without.pixel(on_widget(10, 7))) << "empty inside";
    EXPECT_NE(circle.pixel(on_widget(12, 7)), without.pixel(on_widget(12, 7))) << "at the radius";
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, on_widget(3, 7));
    move_held(on_widget(10, 7));
    const QImage band = view.grab().toImage();
    EXPECT_NE(band.pixel(on_widget(6, 7)), without.pixel(on_widget(6, 7)));
    EXPECT_EQ(band.pixel(on_widget(6, 12)), without.pixel(on_widget(6, 12)));
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, on_widget(10, 7));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&view, &leave);
    EXPECT_EQ(view.grab().toImage(), without);
}

TEST_F(BrushToolTest, AnEmptyRasterIsNotDrawnOn)
{
    terrain::TerrainDocument& empty = make_document(make_raster(0, 0, {}));
    TerrainView other(empty.id());
    other.resize(200, 200);
    other.show();
    view.set_tool(nullptr);
    other.set_tool(&tool);
    terrain::click(other, {100, 100});
    EXPECT_TRUE(strokes.empty());
    EXPECT_EQ(said, QStringList{"The raster has no heights to draw on."});
    other.set_tool(nullptr);
}

TEST_F(BrushToolTest, LeavingTheMapGivesUpAndBringsTheHandBack)
{
    EXPECT_EQ(view.cursor().shape(), Qt::CrossCursor);
    QTest::mousePress(&view, Qt::LeftButton, Qt::NoModifier, on_widget(3, 4));
    view.set_tool(nullptr);
    EXPECT_FALSE(tool.is_under_way());
    EXPECT_EQ(tool.view(), nullptr);
    EXPECT_EQ(view.cursor().shape(), Qt::OpenHandCursor);
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::NoModifier, on_widget(3, 4));
    EXPECT_TRUE(strokes.empty());
}

TEST_F(BrushToolTest, ToolAndMapMayGoInAnyOrder)
{
    auto other_view = std::make_unique<TerrainView>(document.id());
    auto other_tool = std::make_unique<BrushTool>([](const housekeeping::DocumentId&) { return QString(); });
    other_view->set_tool(other_tool.get());
    other_view.reset();
    EXPECT_EQ(other_tool->view(), nullptr);
    view.set_tool(other_tool.get());
    other_tool.reset();
    EXPECT_EQ(view.tool(), nullptr);
    terrain::click(view, {200, 150});
    EXPECT_FALSE(view.grab().isNull());
}
