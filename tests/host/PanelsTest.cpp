#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/SmoothCommand.h"
#include "documents/TerrainDocument.h"
#include "panels/HistoryModel.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTabBar>

#include <boost/make_shared.hpp>

using namespace host_test;
using housekeeping::DocumentManager;
using terrain::Deed;

namespace {

class PanelsTest : public WindowTest
{
protected:
    QStringList tabs() const
    {
        QStringList texts;
        for (int i = 0; i < window->panel_tabs().count(); ++i) {
            texts.append(window->panel_tabs().tabText(i));
        }
        return texts;
    }

    QPoint middle_of_tab(const QString& text) const
    {
        const QTabBar& bar = window->panel_tabs();
        return bar.tabRect(tabs().indexOf(text)).center();
    }

    void choose_tab(const QString& text) const
    {
        QTest::mouseClick(&window->panel_tabs(), Qt::LeftButton, Qt::NoModifier, middle_of_tab(text));
    }

    /// Drags with the left button held, from the middle of a tab.
    void drag_tab(const QString& text, const QPoint& by) const
    {
        QTabBar& bar = window->panel_tabs();
        const QPoint from = middle_of_tab(text);
        QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, from);
        for (const QPoint& at : {from + by / 2, from + by}) {
            QMouseEvent move(
                QEvent::MouseMove, at, bar.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&bar, &move);
        }
        QTest::mouseRelease(&bar, Qt::LeftButton, Qt::NoModifier, from + by);
    }

    bool floats(const QWidget& panel) const { return panel.window() != window.get(); }

    QStringList history() const
    {
        QStringList texts;
        for (const terrain::HistoryLine& line : window->history().model().lines()) {
            if (line.kind == terrain::HistoryLine::Kind::Done
                || line.kind == terrain::HistoryLine::Kind::Undone) {
                texts.append(line.text);
            }
        }
        return texts;
    }
};

const QStringList s_all = {"Home", "Quick Help", "History", "Statistics", "Layers"};

} // namespace

TEST_F(PanelsTest, BeginWithHomeInFront)
{
    EXPECT_EQ(tabs(), s_all);
    EXPECT_TRUE(window->home().isVisible());
    EXPECT_FALSE(window->quick_help().isVisible());
    EXPECT_EQ(window->home().documents().count(), 0);
    EXPECT_FALSE(window->home().documents().isVisible()) << "a text says that there is none";
}

TEST_F(PanelsTest, HaveTitlesThatMakeTheWayToAWindowAndBack)
{
    for (const QString& title : tabs()) {
        EXPECT_FALSE(title.isEmpty() || title.contains('/') || title.contains('&')) << title.toStdString();
    }
}

TEST_F(PanelsTest, AClickOnATabShowsItsPanel)
{
    choose_tab("History");
    EXPECT_TRUE(window->history().isVisible());
    EXPECT_FALSE(window->home().isVisible());
    choose_tab("Home");
    EXPECT_TRUE(window->home().isVisible());
}

TEST_F(PanelsTest, ATabThatIsDraggedAwayFloats)
{
    drag_tab("Quick Help", {20, 200});
    EXPECT_EQ(tabs(), (QStringList{"Home", "History", "Statistics", "Layers"}));
    EXPECT_TRUE(floats(window->quick_help()));
    EXPECT_TRUE(window->quick_help().isVisible());
    EXPECT_EQ(window->quick_help().window()->windowTitle(), "Quick Help");
}

TEST_F(PanelsTest, AFloatingPanelComesBackWhenItsWindowIsClosed)
{
    drag_tab("Quick Help", {20, 200});
    window->quick_help().window()->close();
    EXPECT_EQ(tabs(), (QStringList{"Home", "History", "Statistics", "Layers", "Quick Help"}));
    EXPECT_FALSE(floats(window->quick_help()));
    EXPECT_TRUE(window->quick_help().isVisible()) << "it is the one in front";
    drag_tab("Quick Help", {20, 200}); // and again
    EXPECT_TRUE(floats(window->quick_help()));
}

TEST_F(PanelsTest, HomeNeverFloats)
{
    drag_tab("Home", {20, 200});
    EXPECT_EQ(tabs(), s_all);
    EXPECT_FALSE(floats(window->home()));
}

TEST_F(PanelsTest, ATabThatIsDraggedALittleOrAlongTheBarStays)
{
    drag_tab("History", {0, 4});
    EXPECT_EQ(tabs(), s_all);
    drag_tab("History", {-150, 0});
    EXPECT_EQ(tabs().size(), s_all.size());
    EXPECT_FALSE(floats(window->history()));
}

TEST_F(PanelsTest, TheRightButtonTearsNothingOff)
{
    QTabBar& bar = window->panel_tabs();
    const QPoint from = middle_of_tab("History");
    QTest::mousePress(&bar, Qt::RightButton, Qt::NoModifier, from);
    const QPoint at = from + QPoint(0, 300);
    QMouseEvent move(
        QEvent::MouseMove, at, bar.mapToGlobal(at), Qt::NoButton, Qt::RightButton, Qt::NoModifier);
    QApplication::sendEvent(&bar, &move);
    QTest::mouseRelease(&bar, Qt::RightButton, Qt::NoModifier, at);
    EXPECT_EQ(tabs(), s_all);
}

TEST_F(PanelsTest, TheQuickHelpIsShownWhereverItIs)
{
    window->action(Deed::QuickHelp).trigger();
    EXPECT_TRUE(window->quick_help().isVisible());
    EXPECT_EQ(window->panel_tabs().tabText(window->panel_tabs().currentIndex()), "Quick Help");
    drag_tab("Quick Help", {20, 200});
    QApplication::setActiveWindow(window.get());
    window->action(Deed::QuickHelp).trigger();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window->quick_help().window()));
    EXPECT_TRUE(floats(window->quick_help()));
}

TEST_F(PanelsTest, AreWhereTheyWereAfterARestart)
{
    drag_tab("Quick Help", {20, 200});
    drag_tab("History", {-70, 0}); // before Home
    const QStringList order = tabs();
    window->resize(900, 600);
    ASSERT_TRUE(window->close());
    make_window_anew();
    EXPECT_EQ(tabs(), order);
    EXPECT_TRUE(floats(window->quick_help()));
    EXPECT_TRUE(window->quick_help().isVisible());
    EXPECT_EQ(window->size(), QSize(900, 600));

    window->quick_help().window()->close();
    ASSERT_TRUE(window->close());
    make_window_anew();
    EXPECT_EQ(tabs(), order + QStringList{"Quick Help"});
    EXPECT_FALSE(floats(window->quick_help()));
}

TEST_F(PanelsTest, AFloatingPanelDoesNotKeepTheProgramAlive)
{
    drag_tab("Quick Help", {20, 200});
    QTimer::singleShot(0, window.get(), [this] { EXPECT_TRUE(window->close()); });
    const int too_long = 10000; // milliseconds
    QTimer::singleShot(too_long, qApp, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0) << "the main loop ends with the main window";
}

TEST_F(PanelsTest, HomeTellsWhereDocumentsComeFromAndHowLargeTheyAre)
{
    open_terrain_file("a.tif");
    ASSERT_EQ(window->home().documents().count(), 1);
    EXPECT_EQ(
        window->home().documents().item(0)->text().toStdString(), "a\n20 × 15 cells\n" + scratch("a.tif"));
    EXPECT_TRUE(window->home().documents().isVisible());
}

TEST_F(PanelsTest, AClickInHomeChangesEverythingToThatDocument)
{
    open_terrain_file("a.tif");
    const housekeeping::DocumentId first = current().id();
    run(boost::make_shared<terrain::SmoothCommand>(first, 1));
    open_terrain_file("b.tif");
    QListWidget& list = window->home().documents();
    EXPECT_EQ(list.currentRow(), 1);
    EXPECT_EQ(history(), QStringList());
    EXPECT_FALSE(window->isWindowModified());

    QTest::mouseClick(
        list.viewport(), Qt::LeftButton, Qt::NoModifier, list.visualItemRect(list.item(0)).center());
    EXPECT_EQ(DocumentManager::instance().current_document_id(), first);
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_EQ(window->quick_help().sheet().title(), "a");
    EXPECT_EQ(history().size(), 1);
    EXPECT_TRUE(window->isWindowModified());
}

TEST_F(PanelsTest, TheHistoryTellsWhatWasDoneAndUndone)
{
    open_terrain_file("a.tif");
    run(boost::make_shared<terrain::SmoothCommand>(current().id(), 1));
    run(boost::make_shared<terrain::SmoothCommand>(current().id(), 2));
    ASSERT_EQ(history().size(), 2);
    EXPECT_TRUE(history()[0].startsWith("Smooth: radius 2, ")) << history()[0].toStdString();
    EXPECT_TRUE(history()[0].endsWith("cells changed")) << "what came out is known by now";
    EXPECT_TRUE(history()[1].startsWith("Smooth: radius 1, "));
    EXPECT_FALSE(window->history().model().index(0).data(terrain::HistoryModel::IsUndone).toBool());

    window->view()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
    ASSERT_EQ(history().size(), 2);
    EXPECT_TRUE(window->history().model().index(0).data(terrain::HistoryModel::IsUndone).toBool())
        << "what is undone stands on top";
    EXPECT_TRUE(history()[0].startsWith("Smooth: radius 2"));
}

TEST_F(PanelsTest, AreEmptyWhenTheLastDocumentIsClosed)
{
    open_terrain_file("a.tif");
    run(boost::make_shared<terrain::SmoothCommand>(current().id(), 1));
    DocumentManager::instance().destroy_document(
        current().id(), true, false, false, housekeeping::DocumentId::null());
    EXPECT_EQ(window->home().documents().count(), 0);
    EXPECT_EQ(history(), QStringList());
    EXPECT_EQ(window->quick_help().sheet().title(), "Tarq Terrain");
    EXPECT_FALSE(window->isWindowModified());
}
