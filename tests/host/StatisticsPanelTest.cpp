#include "panels/StatisticsPanel.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "panels/HistogramPlot.h"
#include "panels/HomePanel.h"
#include "panels/ProfilePlot.h"
#include "support/MessageSpy.h"
#include "tour/TourSteps.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSpinBox>

#include <qwt_plot_curve.h>
#include <qwt_plot_histogram.h>
#include <qwt_plot_marker.h>

#include <boost/make_shared.hpp>

using namespace host_test;
using housekeeping::DocumentManager;
using terrain::StatisticsPanel;

namespace {

/// The panel by itself.
class StatisticsPanelTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QCoreApplication::setOrganizationName("Tarqa");
        panel.resize(300, 700);
        panel.show();
    }

    static terrain::TerrainDocument& document(int columns, int rows, const std::vector<double>& cells)
    {
        terrain::TerrainDocument& made = make_document(make_raster(columns, rows, cells));
        const auto source = boost::make_shared<housekeeping::DataSource>();
        source->z_units(housekeeping::DataSource::Feet);
        made.datasource(source);
        return made;
    }

    void show(const terrain::TerrainDocument& shown)
    {
        panel.show_document(shown.id());
        wait();
    }

    void wait()
    {
        EXPECT_TRUE(support::wait_until([this] { return panel.is_up_to_date(); }));
    }

    std::string figure(StatisticsPanel::Figure which) const
    {
        return panel.figure(which).text().toStdString();
    }

    support::App application;
    StatisticsPanel panel;
};

const std::vector<double> s_six = {1, 2, 3, 4, 5, 6}; // three columns, two rows

} // namespace

TEST_F(StatisticsPanelTest, SaysThatNoDocumentIsOpen)
{
    wait();
    EXPECT_EQ(panel.hint().text(), "No document is open.");
    EXPECT_TRUE(panel.hint().isVisible());
    EXPECT_FALSE(panel.histogram().isVisible());
    EXPECT_FALSE(panel.number().isVisible());
}

TEST_F(StatisticsPanelTest, ShowsTheFiguresOfADocument)
{
    show(document(5, 2, {2, 4, N, 4, 4, 5, 5, N, 7, 9}));
    EXPECT_FALSE(panel.hint().isVisible());
    EXPECT_EQ(figure(StatisticsPanel::Cells), "10");
    EXPECT_EQ(figure(StatisticsPanel::WithoutData), "2");
    EXPECT_EQ(figure(StatisticsPanel::Lowest), "2");
    EXPECT_EQ(figure(StatisticsPanel::Highest), "9");
    EXPECT_EQ(figure(StatisticsPanel::Mean), "5");
    EXPECT_EQ(figure(StatisticsPanel::Median), "4.5");
    EXPECT_EQ(figure(StatisticsPanel::Deviation), "2");
    EXPECT_EQ(panel.findChild<QGroupBox*>()->title(), "Heights in feet");
}

TEST_F(StatisticsPanelTest, DrawsTheShareOfEachBar)
{
    show(document(4, 1, {0, 0, 0, 10}));
    const QwtPlotHistogram& bars = panel.histogram().histogram();
    ASSERT_EQ(bars.dataSize(), 21u);
    EXPECT_EQ(bars.sample(0).value, 75);
    EXPECT_EQ(bars.sample(0).interval, QwtInterval(0, 0.5));
    EXPECT_EQ(bars.sample(1).value, 0);
    EXPECT_EQ(bars.sample(20).value, 25);
    EXPECT_EQ(panel.histogram().axisTitle(QwtPlot::xBottom).text(), "Height (feet)");
    EXPECT_EQ(panel.histogram().axisTitle(QwtPlot::yLeft).text(), "Share (%)");
}

TEST_F(StatisticsPanelTest, TakesRastersOfAllKinds)
{
    const double huge = 1.7e308;
    for (const std::vector<double>& cells : {std::vector<double>{5}, {7, 7, 7, 7}, {huge, -huge},
             {1e-310, 2e-310}, {1e9, 1e9 + 1e-6}, {0, N}, {-0.0, 0.0}}) {
        show(document(static_cast<int>(cells.size()), 1, cells));
        panel.show_profile(DocumentManager::instance().current_document_id(), {0, 0});
        wait();
        EXPECT_EQ(figure(StatisticsPanel::Cells), std::to_string(cells.size()));
        EXPECT_TRUE(terrain::is_varied(panel.grab().toImage()));
    }
}

TEST_F(StatisticsPanelTest, SaysSoWhenHeightsCannotBeDrawn)
{
    show(document(2, 1, {1.7e308, -1.7e308}));
    EXPECT_FALSE(panel.histogram().isVisible());
    EXPECT_EQ(figure(StatisticsPanel::Highest), "1.7e+308");
    show(document(2, 1, {1, 2}));
    EXPECT_TRUE(panel.histogram().isVisible());
}

TEST_F(StatisticsPanelTest, SaysThatThereAreNoHeights)
{
    show(document(2, 1, {N, N}));
    EXPECT_EQ(panel.hint().text(), "The raster has no heights.");
    show(document(0, 0, {}));
    EXPECT_EQ(panel.hint().text(), "The raster has no heights.");
    EXPECT_FALSE(panel.histogram().isVisible());
}

TEST_F(StatisticsPanelTest, FollowsFromDocumentToDocument)
{
    const terrain::TerrainDocument& first = document(3, 2, s_six);
    const terrain::TerrainDocument& second = document(2, 1, {100, 200});
    show(first);
    panel.show_profile(first.id(), {1, 1});
    show(second);
    EXPECT_EQ(figure(StatisticsPanel::Mean), "150");
    EXPECT_FALSE(panel.profile().isVisible()) << "nobody has chosen a cell of this one";
    show(first);
    EXPECT_EQ(figure(StatisticsPanel::Mean), "3.5");
    EXPECT_TRUE(panel.profile().isVisible());
    EXPECT_EQ(panel.profile().curve().sample(0).y(), 4);
    panel.show_document(housekeeping::DocumentId::null());
    EXPECT_EQ(panel.hint().text(), "No document is open.");
    EXPECT_FALSE(panel.profile().isVisible());
}

TEST_F(StatisticsPanelTest, CountsOnceForTheSameCells)
{
    const terrain::TerrainDocument& shown = document(3, 2, s_six);
    show(shown);
    EXPECT_EQ(panel.run().started(), 1);
    panel.show_document(shown.id());
    panel.hide();
    panel.show();
    wait();
    EXPECT_EQ(panel.run().started(), 1);
}

TEST_F(StatisticsPanelTest, CountsAgainWhenTheCellsHaveChanged)
{
    const terrain::TerrainDocument& shown = document(3, 2, s_six);
    show(shown);
    panel.show_profile(shown.id(), {0, 0});
    insert(boost::make_shared<terrain::ScaleCommand>(shown.id(), 2));
    wait();
    EXPECT_EQ(figure(StatisticsPanel::Mean), "7");
    EXPECT_EQ(panel.profile().curve().sample(2).y(), 6);
    EXPECT_EQ(panel.run().started(), 2);
    undo(shown);
    wait();
    EXPECT_EQ(figure(StatisticsPanel::Mean), "3.5");
}

TEST_F(StatisticsPanelTest, CountsNothingWhileNobodySees)
{
    const terrain::TerrainDocument& shown = document(3, 2, s_six);
    panel.hide();
    panel.show_document(shown.id());
    insert(boost::make_shared<terrain::ScaleCommand>(shown.id(), 2));
    QCoreApplication::processEvents();
    EXPECT_EQ(panel.run().started(), 0);
    panel.show();
    wait();
    EXPECT_EQ(figure(StatisticsPanel::Mean), "7");
    EXPECT_EQ(panel.run().started(), 1);
}

TEST_F(StatisticsPanelTest, ReadsNothingWhileTheDocumentIsBusy)
{
    const terrain::TerrainDocument& shown = document(2000, 1000, std::vector<double>(2000000, 3.0));
    panel.show_document(shown.id());
    ASSERT_TRUE(support::wait_until([this] { return panel.run().is_running(); }));
    DocumentManager::instance().document_busy(shown.id(), true);
    EXPECT_FALSE(panel.run().is_running()) << "the cells may change from now on";
    panel.show_profile(shown.id(), {0, 0});
    QCoreApplication::processEvents();
    EXPECT_EQ(panel.run().started(), 1);
    EXPECT_EQ(panel.profile().curve().dataSize(), 0u);
    DocumentManager::instance().document_busy(shown.id(), false);
    wait();
    EXPECT_EQ(figure(StatisticsPanel::Mean), "3");
    EXPECT_EQ(panel.profile().curve().dataSize(), 2000u);
}

TEST_F(StatisticsPanelTest, ADocumentMayGoWhileItIsCounted)
{
    terrain::TerrainDocument& shown = document(2000, 1000, std::vector<double>(2000000, 3.0));
    panel.show_document(shown.id());
    ASSERT_TRUE(support::wait_until([this] { return panel.run().is_running(); }));
    DocumentManager::instance().destroy_document(
        shown.id(), true, false, false, housekeeping::DocumentId::null());
    EXPECT_FALSE(panel.run().is_running());
    wait();
    EXPECT_EQ(panel.hint().text(), "No document is open.");
}

TEST_F(StatisticsPanelTest, AnotherDocumentsCommandChangesNothing)
{
    const terrain::TerrainDocument& shown = document(3, 2, s_six);
    const terrain::TerrainDocument& other = document(2, 1, {1, 2});
    show(shown);
    insert(boost::make_shared<terrain::ScaleCommand>(other.id(), 2));
    wait();
    EXPECT_EQ(panel.run().started(), 1);
}

// The profile

TEST_F(StatisticsPanelTest, AsksForAPlaceFirst)
{
    show(document(3, 2, s_six));
    EXPECT_FALSE(panel.profile().isVisible());
    EXPECT_EQ(panel.profile_text().text(), "Click on the map, or choose a number, for a profile.");
    EXPECT_EQ(panel.number().text(), "none");
}

TEST_F(StatisticsPanelTest, LeadsThroughTheCellThatWasChosen)
{
    const terrain::TerrainDocument& shown = document(3, 2, s_six);
    show(shown);
    panel.show_profile(shown.id(), {2, 1});
    wait();
    EXPECT_EQ(panel.profile().curve().dataSize(), 3u);
    EXPECT_EQ(panel.profile().marker().xValue(), 2);
    EXPECT_EQ(panel.number().value(), 1);
    EXPECT_EQ(panel.profile_text().text(), "Column 2, row 1: 6 feet");
    panel.direction().setCurrentIndex(1);
    EXPECT_EQ(panel.profile().curve().dataSize(), 2u);
    EXPECT_EQ(panel.number().value(), 2);
    EXPECT_EQ(panel.number().maximum(), 2);
}

TEST_F(StatisticsPanelTest, TheKeyboardChoosesTheProfileToo)
{
    show(document(3, 2, s_six));
    panel.number().setFocus();
    QTest::keyClick(&panel.number(), Qt::Key_Up);
    EXPECT_EQ(panel.profile_text().text(), "Column 1, row 0: 2 feet");
    QTest::keyClick(&panel.number(), Qt::Key_Up);
    EXPECT_EQ(panel.profile().curve().sample(0).y(), 4);
    QTest::keyClick(&panel.number(), Qt::Key_Down);
    QTest::keyClick(&panel.number(), Qt::Key_Down);
    EXPECT_FALSE(panel.profile().isVisible());
}

TEST_F(StatisticsPanelTest, SaysSoWhereAProfileHasNoHeights)
{
    const terrain::TerrainDocument& shown = document(2, 2, {1, 2, N, N});
    show(shown);
    panel.show_profile(shown.id(), {0, 1});
    wait();
    EXPECT_EQ(panel.profile_text().text(), "No heights here.");
    panel.direction().setCurrentIndex(1);
    EXPECT_EQ(panel.profile_text().text(), "Column 0, row 1: no data");
}

TEST_F(StatisticsPanelTest, ForgetsAPlaceThatTheRasterHasLost)
{
    terrain::TerrainDocument& shown = document(3, 2, s_six);
    show(shown);
    panel.show_profile(shown.id(), {2, 1});
    wait();
    DocumentManager::instance().document_busy(shown.id(), true);
    shown.terrain().raster(make_raster(2, 2, {1, 2, 3, 4}));
    DocumentManager::instance().document_busy(shown.id(), false);
    wait();
    EXPECT_FALSE(panel.profile().isVisible());
    EXPECT_EQ(figure(StatisticsPanel::Cells), "4");
}

// For everybody

TEST_F(StatisticsPanelTest, FitsIntoANarrowPanelInTextsOfAllSizes)
{
    const terrain::TerrainDocument& shown = document(3, 2, {10000.25, 2, 3, 4, 5, -60000.5});
    panel.show_profile(shown.id(), {1, 1});
    for (const int size : {9, 11, 14}) {
        QFont font = QApplication::font();
        font.setPointSize(size);
        QApplication::setFont(font);
        panel.resize(panel.minimumSize().width(), 640);
        show(shown);
        QCoreApplication::processEvents();
        const auto& area = *panel.findChild<QScrollArea*>();
        EXPECT_LE(panel.width(), 220) << size;
        EXPECT_LE(area.widget()->minimumSizeHint().width(), area.viewport()->width()) << size;
        for (const QLabel* const p_label : panel.findChildren<QLabel*>()) {
            if (p_label->isVisible() && !p_label->wordWrap()) {
                EXPECT_GE(p_label->width(), p_label->sizeHint().width())
                    << size << ": " << p_label->text().toStdString();
            }
        }
        EXPECT_GT(panel.histogram().canvas()->width(), 80) << size;
        EXPECT_GT(panel.profile().canvas()->height(), 40) << size;
    }
}

TEST_F(StatisticsPanelTest, PlotsTakeTheColoursOfADarkDesktop)
{
    show(document(3, 2, s_six));
    QPalette dark = panel.palette();
    dark.setColor(QPalette::Base, QColor("#202020"));
    dark.setColor(QPalette::Text, QColor("#eeeeee"));
    dark.setColor(QPalette::Highlight, QColor("#5599ff"));
    panel.setPalette(dark);
    EXPECT_EQ(panel.histogram().canvasBackground().color(), QColor("#202020"));
    EXPECT_EQ(panel.histogram().histogram().brush().color(), QColor("#5599ff"));
    EXPECT_EQ(panel.profile().curve().pen().color(), QColor("#5599ff"));
}

TEST_F(StatisticsPanelTest, WhatTakesTheKeyboardHasAName)
{
    show(document(3, 2, s_six));
    for (const QWidget* const p_widget :
        {static_cast<QWidget*>(&panel.direction()), static_cast<QWidget*>(&panel.number()),
            static_cast<QWidget*>(panel.findChild<QScrollArea*>())}) {
        EXPECT_FALSE(p_widget->accessibleName().isEmpty());
        EXPECT_TRUE(p_widget->focusPolicy() & Qt::TabFocus);
    }
}

// In the window

class StatisticsInWindow : public WindowTest
{
protected:
    void see_statistics()
    {
        window->show_panel(window->statistics());
        ASSERT_TRUE(support::wait_until([this] { return window->statistics().is_up_to_date(); }));
    }
};

TEST_F(StatisticsInWindow, AreThoseOfTheCurrentDocument)
{
    open_terrain_file("a.tif");
    see_statistics();
    EXPECT_EQ(window->statistics().figure(StatisticsPanel::Cells).text(), "300");
    const QString lowest = window->statistics().figure(StatisticsPanel::Lowest).text();
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 10));
    see_statistics();
    EXPECT_NE(window->statistics().figure(StatisticsPanel::Lowest).text(), lowest);
    window->view()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
    see_statistics();
    EXPECT_EQ(window->statistics().figure(StatisticsPanel::Lowest).text(), lowest);
    DocumentManager::instance().destroy_document(
        current().id(), true, false, false, housekeeping::DocumentId::null());
    EXPECT_EQ(window->statistics().hint().text(), "No document is open.");
}

TEST_F(StatisticsInWindow, AClickOnTheMapChoosesTheProfile)
{
    open_terrain_file("a.tif");
    see_statistics();
    terrain::TerrainView& view = *window->view();
    const QPoint at = view.widget_position({7.5, 3.5}).toPoint();
    QTest::mouseClick(&view, Qt::LeftButton, Qt::NoModifier, at);
    see_statistics();
    EXPECT_TRUE(window->statistics().profile_text().text().startsWith("Column 7, row 3: "));
    EXPECT_EQ(window->statistics().profile().curve().dataSize(), 20u);
}

TEST_F(StatisticsInWindow, MovingTheMapChoosesNone)
{
    open_terrain_file("a.tif");
    see_statistics();
    terrain::TerrainView& view = *window->view();
    terrain::drag(view, view.rect().center(), view.rect().center() + QPoint(60, 0));
    QTest::mouseClick(&view, Qt::RightButton, Qt::NoModifier, view.rect().center());
    QTest::mouseClick(&view, Qt::LeftButton, Qt::NoModifier, QPoint(1, 1)); // beside the raster
    see_statistics();
    EXPECT_FALSE(window->statistics().profile().isVisible());
}

TEST_F(StatisticsInWindow, FloatAndComeBack)
{
    open_terrain_file("a.tif");
    see_statistics();
    tear_off(window->statistics());
    see_statistics();
    EXPECT_TRUE(window->statistics().isVisible());
    EXPECT_GE(window->statistics().width(), 300) << "there is room for it";
    window->statistics().window()->close();
    EXPECT_EQ(window->statistics().window(), window.get());
    EXPECT_TRUE(window->statistics().isVisible());
    run(boost::make_shared<terrain::SmoothCommand>(current().id(), 1));
    see_statistics();
    EXPECT_EQ(window->statistics().figure(StatisticsPanel::Cells).text(), "300");
}
