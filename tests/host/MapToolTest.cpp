#include "CommandFixture.h"
#include "HeightsOf.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/CommandQueue.h"
#include "commands/CommandsController.h"
#include "commands/SmoothCommand.h"
#include "documents/RasterSummary.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "presentations/CommandsPresentation.h"
#include "presentations/ProgressPresentation.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"
#include "tour/Gate.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/BrushBar.h"
#include "windows/DocumentViews.h"
#include "windows/MapClicks.h"
#include "windows/MapTools.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QStatusBar>

#include <boost/make_shared.hpp>

using namespace host_test;
using terrain::CommandsPresentation;
using terrain::Deed;
using terrain::MapTools;
using terrain::TerrainView;

namespace {

class MapToolsTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        runner().report_also_to(&gate);
        open_terrain_file("a.tif");
    }
    void TearDown() override
    {
        gate.open();
        runner().abandon();
        runner().report_also_to(nullptr);
        WindowTest::TearDown();
    }

    MapTools& tools() const { return window->views().tools(); }
    TerrainView& view() const { return *window->view(); }
    void choose(Deed deed) const { window->action(deed).trigger(); }
    QString message() const { return window->statusBar()->currentMessage(); }

    QPoint on_widget(double column, double row) const
    {
        return view().widget_of_cells().map(QPointF(column, row)).toPoint();
    }
    void draw(double column, double row) const
    {
        terrain::drag(view(), on_widget(column, row), on_widget(column + 3, row + 2));
    }
    void wait_for_strokes() const
    {
        ASSERT_TRUE(
            support::wait_until([this] { return tools().queue().waiting() == 0 && !runner().is_running(); }));
    }
    const terrain::Brush& brush() const
    {
        return dynamic_cast<const terrain::BrushTool&>(*tools().tool()).brush();
    }
    /// Writes over what is in a box, key by key.
    static void write(QDoubleSpinBox& box, const QString& text)
    {
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, Qt::Key_Return);
    }
    void click_triangle() const
    {
        terrain::click(view(), on_widget(4, 4));
        terrain::click(view(), on_widget(12, 4));
        terrain::click(view(), on_widget(12, 10));
    }
    static unsigned long long steps() { return current().document_history().undoSize(); }
    static std::string sum() { return terrain::checksum(current().terrain().raster()); }

    /// Begins a command that is none of the tools', and waits until the gate holds it up.
    void begin_and_hold()
    {
        gate.close();
        ASSERT_TRUE(runner().start(boost::make_shared<terrain::SmoothCommand>(current().id(), 2)));
        ASSERT_TRUE(support::wait_until([this] { return gate.holds(); }));
    }

    terrain::Gate gate{40};
};

} // namespace

TEST_F(MapToolsTest, TheMapIsMovedUntilAToolIsChosen)
{
    EXPECT_EQ(view().tool(), nullptr);
    EXPECT_TRUE(window->action(Deed::ToolNavigate).isChecked());
    EXPECT_FALSE(tools().bar().radius().isVisibleTo(&tools().bar()));
    QTest::keyClick(&view(), Qt::Key_R);
    EXPECT_TRUE(window->action(Deed::ToolRaise).isChecked());
    EXPECT_FALSE(window->action(Deed::ToolNavigate).isChecked()) << "one at a time";
    EXPECT_NE(view().tool(), nullptr);
    EXPECT_TRUE(tools().bar().radius().isVisibleTo(&tools().bar()));
    QTest::keyClick(&view(), Qt::Key_P);
    EXPECT_FALSE(tools().bar().radius().isVisibleTo(&tools().bar())) << "a polygon has no radius";
    QTest::keyClick(&view(), Qt::Key_H);
    EXPECT_EQ(view().tool(), nullptr);
}

TEST_F(MapToolsTest, AStrokeIsAnEntryInTheHistoryAndUndoTakesItBack)
{
    const std::string before = sum();
    choose(Deed::ToolRaise);
    draw(5, 5);
    wait_for_strokes();
    EXPECT_NE(sum(), before);
    EXPECT_EQ(steps(), 1u);
    EXPECT_EQ(message(), "Raise: done");
    undo(current());
    EXPECT_EQ(sum(), before);
}

TEST_F(MapToolsTest, TwoStrokesAreStillOneEntry)
{
    const std::string before = sum();
    choose(Deed::ToolLower);
    draw(5, 5);
    wait_for_strokes();
    draw(9, 4);
    wait_for_strokes();
    EXPECT_EQ(steps(), 1u);
    undo(current());
    EXPECT_EQ(sum(), before);
}

TEST_F(MapToolsTest, TheMapAfterAStrokeIsThatOfANewMap)
{
    choose(Deed::ToolRaise);
    tools().bar().radius().setValue(2);
    draw(5, 5);
    wait_for_strokes();
    const TerrainView fresh(current().id());
    EXPECT_EQ(view().picture().shade().picture(), fresh.picture().shade().picture());
}

TEST_F(MapToolsTest, StrokesThatAreDrawnWhileOneIsCarriedOutWaitForIt)
{
    const std::string before = sum();
    choose(Deed::ToolRaise);
    gate.close();
    draw(5, 5);
    ASSERT_TRUE(support::wait_until([this] { return gate.holds(); }));
    draw(9, 4);
    draw(3, 8);
    EXPECT_EQ(tools().queue().waiting(), 2u);
    gate.open();
    wait_for_strokes();
    EXPECT_EQ(steps(), 1u);
    EXPECT_NE(current().document_history().getUndoCommandDetails(1).front().description().find("3 strokes"),
        std::string::npos);
    undo(current());
    EXPECT_EQ(sum(), before);
}

TEST_F(MapToolsTest, CancellingAStrokeDropsThoseThatWait)
{
    const std::string before = sum();
    choose(Deed::ToolRaise);
    gate.close();
    draw(5, 5);
    ASSERT_TRUE(support::wait_until([this] { return gate.holds(); }));
    draw(9, 4);
    QStringList messages;
    QObject::connect(window->statusBar(), &QStatusBar::messageChanged,
        [&](const QString& text) { messages.append(text); });
    runner().cancel();
    gate.open();
    wait_for_strokes();
    EXPECT_TRUE(messages.contains("1 stroke was not carried out"));
    EXPECT_EQ(sum(), before);
}

TEST_F(MapToolsTest, StrokesOfADocumentThatIsClosedAreDropped)
{
    open_terrain_file("b.tif");
    choose(Deed::ToolRaise);
    gate.close();
    draw(5, 5);
    ASSERT_TRUE(support::wait_until([this] { return gate.holds(); }));
    open_terrain_file("c.tif");
    EXPECT_EQ(view().tool(), tools().tool()) << "the tool goes along";
    draw(5, 5);
    draw(6, 6);
    EXPECT_EQ(tools().queue().waiting(), 2u);
    window->close_document();
    EXPECT_EQ(tools().queue().waiting(), 0u);
    EXPECT_EQ(message(), "2 strokes were not carried out");
    gate.open();
    wait_for_strokes();
}

TEST_F(MapToolsTest, NothingBeginsWhileAnotherCommandRuns)
{
    choose(Deed::ToolRaise);
    begin_and_hold();
    draw(5, 5);
    EXPECT_EQ(message(), CommandsPresentation::wait_text());
    EXPECT_EQ(tools().queue().waiting(), 0u);
    choose(Deed::ToolFlatten);
    terrain::click(view(), on_widget(5, 5));
    EXPECT_FALSE(tools().tool()->is_under_way());
    gate.open();
    runner().wait();
    EXPECT_EQ(steps(), 1u);
}

TEST_F(MapToolsTest, WhatHasBegunIsGivenUpWhenAnotherCommandRuns)
{
    choose(Deed::ToolFlatten);
    terrain::click(view(), on_widget(5, 5));
    terrain::click(view(), on_widget(9, 5));
    ASSERT_TRUE(tools().tool()->is_under_way());
    begin_and_hold();
    EXPECT_FALSE(tools().tool()->is_under_way());
    gate.open();
    runner().wait();
}

TEST_F(MapToolsTest, WhatHasBegunIsGivenUpWhenAnotherDocumentBecomesCurrent)
{
    TerrainView& first = view();
    choose(Deed::ToolRaise);
    QTest::mousePress(&first, Qt::LeftButton, Qt::NoModifier, on_widget(5, 5));
    ASSERT_TRUE(tools().tool()->is_under_way());
    open_terrain_file("b.tif");
    EXPECT_FALSE(tools().tool()->is_under_way());
    EXPECT_EQ(first.tool(), nullptr);
    EXPECT_EQ(tools().tool()->view(), &view());
    window->close_document();
    EXPECT_EQ(tools().tool()->view(), &first);
    window->close_document();
    EXPECT_EQ(tools().tool()->view(), nullptr);
    EXPECT_FALSE(window->action(Deed::ToolRaise).isEnabled());
}

TEST_F(MapToolsTest, EachDocumentRemembersItsBrush)
{
    choose(Deed::ToolRaise);
    const double usual = tools().bar().height().value();
    EXPECT_GT(usual, 0);
    tools().bar().radius().setValue(4.5);
    tools().bar().height().setValue(33);
    open_terrain_file("b.tif");
    EXPECT_EQ(tools().bar().radius().value(), 10);
    EXPECT_EQ(tools().bar().height().value(), usual);
    QTest::keyClick(&view(), Qt::Key_BracketLeft);
    EXPECT_EQ(tools().bar().radius().value(), 8);
    window->close_document();
    EXPECT_EQ(tools().bar().radius().value(), 4.5);
    EXPECT_EQ(tools().bar().height().value(), 33);
    EXPECT_EQ(tools().bar().height().suffix(), " metres");
}

TEST_F(MapToolsTest, RadiusAndHeightCanBeWrittenWithDecimals)
{
    choose(Deed::ToolRaise);
    const double height = tools().bar().height().value();
    write(tools().bar().radius(), "2.5");
    EXPECT_EQ(brush().radius, 2.5);
    EXPECT_EQ(tools().bar().radius().value(), 2.5);
    write(tools().bar().height(), "12.5");
    EXPECT_EQ(brush().height, 12.5);
    EXPECT_NE(height, 12.5);
    write(tools().bar().height(), "0.125");
    EXPECT_EQ(brush().height, 0.125);
    EXPECT_EQ(brush().radius, 2.5);
}

TEST_F(MapToolsTest, WhatIsBeingWrittenIsForTheDocumentThatIsShown)
{
    choose(Deed::ToolRaise);
    tools().bar().radius().setFocus();
    tools().bar().radius().selectAll();
    QTest::keyClicks(&tools().bar().radius(), "7.5");
    EXPECT_EQ(brush().radius, 10) << "not before it is complete";
    open_terrain_file("b.tif");
    EXPECT_EQ(brush().radius, 10);
    window->close_document();
    EXPECT_EQ(brush().radius, 7.5);
}

TEST_F(MapToolsTest, TheBarShowsTheHeightThatTheBrushHas)
{
    for (const double range : {0.01, 1e-9, 5.0, 1e9, 1e15}) {
        terrain::TerrainDocument& document = make_document(
            raster_of(20, 15, [range](int column, int row) { return (column + 20 * row) / 299.0 * range; }));
        housekeeping::DocumentManager::instance().current_document(document.id());
        TerrainView map(document.id());
        choose(Deed::ToolRaise);
        tools().use_on(&map);
        EXPECT_NEAR(brush().height, range / 50, range / 1000);
        EXPECT_EQ(tools().bar().height().value(), brush().height) << range;
        const double height = brush().height;
        tools().bar().radius().setValue(20);
        EXPECT_EQ(brush().height, height) << "another radius is no other height";
        tools().bar().height().setValue(1);
        tools().bar().height().setValue(height);
        EXPECT_EQ(brush().height, height) << "and back";
        tools().use_on(nullptr);
    }
}

TEST_F(MapToolsTest, ClicksOfAToolAreNoneForTheProfile)
{
    terrain::MapClicks clicks;
    clicks.follow(view());
    QSignalSpy clicked(&clicks, &terrain::MapClicks::clicked);
    choose(Deed::ToolNavigate);
    terrain::click(view(), on_widget(5, 5));
    EXPECT_EQ(clicked.size(), 1);
    choose(Deed::ToolFlatten);
    terrain::click(view(), on_widget(5, 5));
    EXPECT_EQ(clicked.size(), 1);
}

TEST_F(MapToolsTest, AStrokeShowsNoProgressForAMoment)
{
    choose(Deed::ToolRaise);
    gate.close();
    draw(5, 5);
    ASSERT_TRUE(runner().is_running());
    EXPECT_FALSE(terrain::ProgressPresentation::instance().bar()->isVisible()) << "at first";
    ASSERT_TRUE(support::wait_until([this] { return gate.holds(); }));
    EXPECT_TRUE(support::wait_until([] {
        return terrain::ProgressPresentation::instance().bar()->isVisible();
    })) << "but when it lasts";
    gate.open();
    wait_for_strokes();
    EXPECT_FALSE(terrain::ProgressPresentation::instance().bar()->isVisible());
}

// --- polygons

TEST_F(MapToolsTest, APolygonIsFlattenedToTheHeightThatIsAskedFor)
{
    choose(Deed::ToolFlatten);
    double proposed = 0;
    support::DialogDriver dialogs;
    dialogs.answer([&](QDialog& dialog) {
        auto* const p_height = dialog.findChild<QDoubleSpinBox*>();
        ASSERT_TRUE(p_height);
        proposed = p_height->value();
        EXPECT_EQ(p_height->suffix(), " metres");
        p_height->setValue(321.5);
        dialog.accept();
    });
    terrain::click(view(), on_widget(4, 4));
    terrain::click(view(), on_widget(12, 4));
    terrain::click(view(), on_widget(12, 10));
    QTest::keyClick(&view(), Qt::Key_Return);
    ASSERT_TRUE(support::wait_until([] { return !runner().is_running() && steps() == 1; }));
    EXPECT_EQ(dialogs.shown().at(0).title, "Flatten");
    EXPECT_NE(proposed, 0);
    EXPECT_EQ(current().terrain().raster().cell(11, 5), 321.5);
    EXPECT_NE(current().terrain().raster().cell(4, 9), 321.5);
}

TEST_F(MapToolsTest, ADoubleClickClosesThePolygon)
{
    choose(Deed::ToolFlatten);
    support::DialogDriver dialogs;
    dialogs.cancel();
    terrain::click(view(), on_widget(4, 4));
    terrain::click(view(), on_widget(12, 4));
    terrain::click(view(), on_widget(12, 10));
    EXPECT_EQ(dialogs.shown().size(), 0u);
    QTest::mouseDClick(&view(), Qt::LeftButton, Qt::NoModifier, on_widget(12, 10));
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(steps(), 0u);
}

TEST_F(MapToolsTest, APolygonWhoseDialogIsCancelledGoesOn)
{
    choose(Deed::ToolFlatten);
    const auto& polygon = dynamic_cast<const terrain::PolygonTool&>(*tools().tool());
    support::DialogDriver dialogs;
    dialogs.cancel();
    click_triangle();
    const std::vector<QPointF> corners = polygon.corners();
    QTest::keyClick(&view(), Qt::Key_Return);
    EXPECT_EQ(polygon.corners(), corners);
    dialogs.answer([](QDialog& dialog) { dialog.accept(); });
    QTest::keyClick(&view(), Qt::Key_Return);
    EXPECT_TRUE(polygon.corners().empty());
    EXPECT_TRUE(support::wait_until([] { return !runner().is_running() && steps() == 1; }));
}

TEST_F(MapToolsTest, APolygonThatMayNotBeClosedNowGoesOn)
{
    open_terrain_file("b.tif");
    const housekeeping::DocumentId other = current().id();
    open_terrain_file("c.tif");
    choose(Deed::ToolFlatten);
    const auto& polygon = dynamic_cast<const terrain::PolygonTool&>(*tools().tool());
    click_triangle();
    housekeeping::DocumentManager::instance().document_busy(other, true);
    QTest::keyClick(&view(), Qt::Key_Return);
    EXPECT_EQ(message(), CommandsPresentation::wait_text());
    EXPECT_EQ(polygon.corners().size(), 3u);
    housekeeping::DocumentManager::instance().document_busy(other, false);
    support::DialogDriver dialogs;
    dialogs.cancel();
    QTest::keyClick(&view(), Qt::Key_Return);
    EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST_F(MapToolsTest, TheProposedHeightHasTheDecimalsThatItTakes)
{
    struct Case
    {
        double lowest;
        double range;
    };
    for (const Case& heights : {Case{0, 0.0008}, Case{0.0004, 0}, Case{3e10, 1e10}, Case{100, 50}}) {
        terrain::TerrainDocument& document = make_document(raster_of(
            20, 15, [&](int column, int) { return heights.lowest + (column < 10 ? 0 : heights.range); }));
        housekeeping::DocumentManager::instance().current_document(document.id());
        double proposed = 0;
        support::DialogDriver dialogs;
        dialogs.answer([&](QDialog& dialog) {
            proposed = dialog.findChild<QDoubleSpinBox*>()->value();
            dialog.reject();
        });
        EXPECT_FALSE(CommandsPresentation::instance().flatten({{0, 0}, {20, 0}, {20, 15}, {0, 15}}));
        EXPECT_DOUBLE_EQ(proposed, heights.lowest + heights.range / 2);
    }
}

TEST_F(MapToolsTest, CornersCanBeTakenBackAndThePolygonGivenUp)
{
    choose(Deed::ToolFlatten);
    const auto& polygon = dynamic_cast<const terrain::PolygonTool&>(*tools().tool());
    const QImage without = view().grab().toImage();
    terrain::click(view(), on_widget(4, 4));
    terrain::click(view(), on_widget(12, 4));
    EXPECT_EQ(polygon.corners().size(), 2u);
    EXPECT_NE(view().grab().toImage(), without);
    QTest::keyClick(&view(), Qt::Key_Return);
    EXPECT_EQ(message(), "A polygon needs three corners that are not on a line.");
    EXPECT_EQ(polygon.corners().size(), 2u) << "and can go on";
    QTest::keyClick(&view(), Qt::Key_Backspace);
    EXPECT_EQ(polygon.corners().size(), 1u);
    QTest::keyClick(&view(), Qt::Key_Escape);
    EXPECT_EQ(message(), "The polygon was given up.");
    EXPECT_TRUE(polygon.corners().empty());
    QTest::keyClick(&view(), Qt::Key_Backspace);
    QTest::keyClick(&view(), Qt::Key_Return);
    EXPECT_EQ(view().grab().toImage(), without);
}

TEST_F(MapToolsTest, APolygonWithoutCellsSaysSo)
{
    choose(Deed::ToolFlatten);
    terrain::click(view(), on_widget(4.1, 4.1));
    terrain::click(view(), on_widget(4.3, 4.1));
    terrain::click(view(), on_widget(4.3, 4.3));
    QTest::keyClick(&view(), Qt::Key_Enter);
    EXPECT_EQ(message(), "No cell with data lies in the polygon.");
    EXPECT_EQ(steps(), 0u);
}
