#include "PanelFixture.h"
#include "support/LogCapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>

#include <limits>

// Adding panels, finding them, and taking them out.

using support::LogCapture;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PanelList : public PanelFixture
{ };

} // namespace

// --- addPanel

TEST_F(PanelList, PanelBecomesPageAndTab)
{
    QWidget* const p_first = make_panel("First");
    QWidget* const p_second = make_panel("Second");
    EXPECT_EQ(m_window->addPanel(p_first, QString()), 0);
    EXPECT_EQ(m_window->addPanel(p_second, QString()), 1);
    EXPECT_THAT(m_window->docked(), ElementsAre(p_first, p_second));
    EXPECT_EQ(m_window->tabs(), QStringList({"First", "Second"}));
    EXPECT_THAT(m_window->floating(), IsEmpty());
    EXPECT_TRUE(stored_keys().isEmpty());
}

TEST_F(PanelList, TextArgumentIsNotConsulted)
{
    m_window->addPanel(make_panel("Title"), "Text");
    EXPECT_EQ(m_window->tabs(), QStringList("Title"));
}

TEST_F(PanelList, TabIsInsertedAtTheIndexOfThePage)
{
    add("First");
    QWidget* const p_second = add("Second");
    m_window->tab_bar().addTab("Of the host");
    QWidget* const p_third = make_panel("Third");
    EXPECT_EQ(m_window->addPanel(p_third, QString()), 2);
    EXPECT_EQ(m_window->tabs(), QStringList({"First", "Second", "Third", "Of the host"}));
    EXPECT_EQ(m_window->stack().indexOf(p_second), 1);
}

TEST_F(PanelList, DockedPanelIsAtMost600PixelsWide)
{
    EXPECT_EQ(add("Panel")->maximumWidth(), 600);
}

TEST_F(PanelList, AddedPanelGetsTheFinalPolish)
{
    QWidget* const p_panel = make_panel("Panel");
    auto* const p_box = new QSpinBox(p_panel);
    p_box->setValue(50);
    m_window->addPanel(p_panel, QString());
    QWheelEvent wheel(QPointF(1, 1), QPointF(1, 1), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
        Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(p_box, &wheel);
    EXPECT_EQ(p_box->value(), 50);
}

TEST_F(PanelList, EmptyTitleIsLoggedAndThePanelAdded)
{
    LogCapture log;
    QWidget* const p_panel = make_panel(QString());
    EXPECT_EQ(m_window->addPanel(p_panel, "Text"), 0);
    EXPECT_TRUE(log.took_assert(
        "!w->windowTitle().isEmpty()", "addPanel", "housekeeping/gui/src/AbstractMainWindow"));
    EXPECT_THAT(m_window->docked(), ElementsAre(p_panel));
    EXPECT_EQ(m_window->tabs(), QStringList(""));
}

TEST_F(PanelList, StoredFlagMakesThePanelFloatAtOnce)
{
    store("Second/floating", true);
    store("Third/floating", true);
    QSignalSpy detaching(m_window.get(), SIGNAL(detachingPanel(int)));
    add("First");
    QWidget* const p_second = make_panel("Second");
    QWidget* const p_third = make_panel("Third");
    EXPECT_EQ(m_window->addPanel(p_second, QString()), 0); // the position among the floating ones
    EXPECT_EQ(m_window->addPanel(p_third, QString()), 1);
    EXPECT_EQ(m_window->tabs(), QStringList("First"));
    EXPECT_THAT(m_window->floating(), ElementsAre(p_second, p_third));
    EXPECT_TRUE(float_of(p_second).isVisible());
    EXPECT_EQ(p_second->maximumWidth(), 9999);
    EXPECT_EQ(m_window->stack().count(), 1);
    EXPECT_EQ(detaching.count(), 0);
}

TEST_F(PanelList, StoredFlagOfFalseDocks)
{
    store("Panel/floating", false);
    QWidget* const p_panel = add("Panel");
    EXPECT_THAT(m_window->docked(), ElementsAre(p_panel));
}

TEST_F(PanelList, FlagIsThatOfTheTitleAlone)
{
    store("Other/floating", true);
    store("panel/floating", true);
    store("floating", true);
    add("Panel");
    EXPECT_EQ(m_window->tabs(), QStringList("Panel"));
}

TEST_F(PanelList, StoredOrderDoesNotMoveAnAddedPanel)
{
    store("tabOrder", QStringList({"Second", "First"}));
    add("First");
    add("Second");
    EXPECT_EQ(m_window->tabs(), QStringList({"First", "Second"}));
}

// --- indexOf

TEST_F(PanelList, IndexOfADockedPanelIsThatOfThePage)
{
    QWidget* const p_first = add("First");
    QWidget* const p_second = add("Second");
    m_window->tab_bar().moveTab(0, 1);
    EXPECT_EQ(m_window->indexOf(p_first), 0);
    EXPECT_EQ(m_window->indexOf(p_second), 1);
}

TEST_F(PanelList, IndexOfAFloatingPanelFollowsTheTabs)
{
    add("Home");
    QWidget* const p_first = add_floating("First");
    QWidget* const p_second = add_floating("Second");
    m_window->tab_bar().addTab("Of the host");
    EXPECT_EQ(m_window->indexOf(p_first), 2);
    EXPECT_EQ(m_window->indexOf(p_second), 3);
}

TEST_F(PanelList, IndexOfAnyOtherWidgetIsMinusOne)
{
    QWidget* const p_panel = add_floating("Panel");
    QWidget other;
    EXPECT_EQ(m_window->indexOf(&other), -1);
    EXPECT_EQ(m_window->indexOf(nullptr), -1);
    EXPECT_EQ(m_window->indexOf(&float_of(p_panel)), -1);
    EXPECT_EQ(m_window->indexOf(m_window.get()), -1);
}

// --- removePanel

TEST_F(PanelList, RemovedPanelLosesPageAndTabAndLives)
{
    add("First");
    const QPointer<QWidget> second = add("Second");
    QWidget* const p_third = add("Third");
    m_window->removePanel(1);
    EXPECT_EQ(m_window->tabs(), QStringList({"First", "Third"}));
    EXPECT_EQ(m_window->stack().count(), 2);
    EXPECT_EQ(m_window->indexOf(p_third), 1);
    settle();
    ASSERT_FALSE(second.isNull());
    EXPECT_EQ(m_window->indexOf(second), -1);
    EXPECT_TRUE(stored_keys().isEmpty());
    EXPECT_EQ(m_window->addPanel(second, QString()), 2);
}

TEST_F(PanelList, NegativeIndexRemovesNothing)
{
    add("First");
    QWidget* const p_floating = add_floating("Second");
    m_window->removePanel(-1);
    m_window->removePanel(std::numeric_limits<int>::min());
    EXPECT_EQ(m_window->tabs(), QStringList("First"));
    EXPECT_EQ(m_window->stack().count(), 1);
    EXPECT_THAT(m_window->floating(), ElementsAre(p_floating));
}

TEST_F(PanelList, IndexBeyondAllRemovesNothingWithoutFloatingPanels)
{
    add("First");
    for (const int index : {1, 2, std::numeric_limits<int>::max()}) {
        m_window->removePanel(index);
    }
    EXPECT_EQ(m_window->tabs(), QStringList("First"));
    EXPECT_EQ(m_window->stack().count(), 1);
    EXPECT_TRUE(stored_keys().isEmpty());
}

TEST_F(PanelList, RemovalGoesByTheIndexOfThePageNotOfTheTab)
{
    add("First");
    QWidget* const p_second = add("Second");
    m_window->tab_bar().moveTab(0, 1);
    m_window->removePanel(0);
    EXPECT_EQ(m_window->tabs(), QStringList("Second"));
    EXPECT_THAT(m_window->docked(), ElementsAre(p_second));
}

TEST_F(PanelList, SecondOfTwoEqualTabsAtTheFrontStays)
{
    add("Twice");
    QWidget* const p_second = add("Twice");
    add("Other");
    m_window->removePanel(0);
    EXPECT_EQ(m_window->tabs(), QStringList({"Twice", "Other"}));
    EXPECT_EQ(m_window->stack().widget(0), p_second);
    EXPECT_EQ(m_window->stack().count(), 2);
}

TEST_F(PanelList, EqualTabsFurtherBackAllGo)
{
    add("Home");
    add("Twice");
    QWidget* const p_second = add("Twice");
    m_window->removePanel(1);
    EXPECT_EQ(m_window->tabs(), QStringList("Home"));
    EXPECT_EQ(m_window->indexOf(p_second), 1);
}

TEST_F(PanelList, ScanGoesOnAtTheSecondTabAfterEachRemoval)
{
    for (const char* const title : {"X", "X", "X", "Y", "X"}) {
        add(title);
    }
    m_window->removePanel(2);
    EXPECT_EQ(m_window->tabs(), QStringList({"X", "Y"}));
    EXPECT_EQ(m_window->stack().count(), 4);
}

TEST_F(PanelList, EqualTabAtTheFrontGoesWhenItIsTheFirstFound)
{
    for (const char* const title : {"X", "Y", "X"}) {
        add(title);
    }
    m_window->removePanel(2);
    EXPECT_EQ(m_window->tabs(), QStringList("Y"));
    EXPECT_EQ(m_window->stack().widget(0)->windowTitle(), "X");
    EXPECT_EQ(m_window->stack().count(), 2);
}

TEST_F(PanelList, RemovedFloatingPanelIsStoredAndLives)
{
    add("Home");
    const QPointer<QWidget> panel = add_floating("Panel");
    const QPointer<QWidget> window = &float_of(panel);
    window->move(61, 73);
    const QByteArray geometry = window->saveGeometry();
    m_window->removePanel(1);
    settle();
    EXPECT_TRUE(window.isNull());
    EXPECT_THAT(m_window->floating(), IsEmpty());
    EXPECT_EQ(stored("Panel/floating").type(), QVariant::Bool);
    EXPECT_EQ(stored("Panel/floating"), QVariant(true));
    EXPECT_EQ(stored("Panel/dockSize").type(), QVariant::ByteArray);
    EXPECT_EQ(stored("Panel/dockSize").toByteArray(), geometry);
    EXPECT_EQ(stored_keys(), QStringList({"Panel/dockSize", "Panel/floating"}));
    EXPECT_EQ(m_window->tabs(), QStringList("Home"));
    ASSERT_FALSE(panel.isNull());
    EXPECT_EQ(panel->parent(), nullptr);
    EXPECT_EQ(m_window->indexOf(panel), -1);
    delete panel.data();
}

TEST_F(PanelList, WindowOfARemovedPanelIsDeletedAtOnceWhenAllElseIsDone)
{
    add("Home");
    const std::unique_ptr<QWidget> panel(add_floating("Panel"));
    int calls = 0;
    QObject::connect(&float_of(panel.get()), &QObject::destroyed, [&] {
        ++calls;
        EXPECT_EQ(stored_keys(), QStringList({"Panel/dockSize", "Panel/floating"}));
        EXPECT_EQ(panel->parent(), nullptr);
        EXPECT_THAT(m_window->floating(), IsEmpty());
    });
    m_window->removePanel(1);
    EXPECT_EQ(calls, 1);
}

TEST_F(PanelList, RemovedFloatingPanelFloatsWhenItIsAddedAgain)
{
    add("Home");
    QWidget* const p_panel = add_floating("Panel");
    m_window->removePanel(1);
    EXPECT_EQ(m_window->addPanel(p_panel, QString()), 0);
    EXPECT_THAT(m_window->floating(), ElementsAre(p_panel));
    EXPECT_EQ(m_window->tabs(), QStringList("Home"));
}

TEST_F(PanelList, FirstFloatingPanelGoesWhicheverTheIndexNames)
{
    add("Home");
    const std::unique_ptr<QWidget> first(add_floating("First"));
    QWidget* const p_second = add_floating("Second");
    const std::unique_ptr<QWidget> third(add_floating("Third"));
    m_window->removePanel(m_window->indexOf(p_second));
    EXPECT_THAT(m_window->floating(), ElementsAre(p_second, third.get()));
    m_window->removePanel(std::numeric_limits<int>::max());
    EXPECT_THAT(m_window->floating(), ElementsAre(third.get()));
    delete p_second;
    m_window->removePanel(1);
    EXPECT_THAT(m_window->floating(), IsEmpty());
}

TEST_F(PanelList, FloatingPanelStaysWhileThereIsATabOfThatIndex)
{
    add("Home");
    m_window->tab_bar().addTab("Of the host");
    const std::unique_ptr<QWidget> panel(make_panel("Panel"));
    store("Panel/floating", true);
    m_window->addPanel(panel.get(), QString());
    m_window->removePanel(1);
    EXPECT_THAT(m_window->floating(), ElementsAre(panel.get()));
    EXPECT_EQ(m_window->tabs(), QStringList({"Home", "Of the host"}));
    m_window->removePanel(2);
    EXPECT_THAT(m_window->floating(), IsEmpty());
}

TEST_F(PanelList, OnlyFloatingPanelGoesByIndexZero)
{
    const std::unique_ptr<QWidget> panel(add_floating("Panel"));
    m_window->removePanel(0);
    EXPECT_THAT(m_window->floating(), IsEmpty());
    EXPECT_TRUE(m_window->tabs().isEmpty());
}

// --- currentTabChanged

TEST_F(PanelList, CurrentTabShowsItsPanel)
{
    QWidget* const p_first = add("First");
    QWidget* const p_second = add("Second");
    m_window->tab_bar().setCurrentIndex(1);
    EXPECT_EQ(m_window->stack().currentWidget(), p_second);
    m_window->tab_bar().setCurrentIndex(0);
    EXPECT_EQ(m_window->stack().currentWidget(), p_first);
    m_window->tab_bar().moveTab(0, 1);
    m_window->current_tab_changed(0);
    EXPECT_EQ(m_window->stack().currentWidget(), p_second);
}

TEST_F(PanelList, TabWithoutPanelShowsNothingElse)
{
    add("First");
    QWidget* const p_second = add("Second");
    m_window->tab_bar().addTab("Of the host");
    m_window->tab_bar().setCurrentIndex(1);
    for (const int index : {2, 3, -1, 1000}) {
        m_window->current_tab_changed(index);
        EXPECT_EQ(m_window->stack().currentWidget(), p_second) << index;
    }
}

TEST_F(PanelList, OfEqualTitlesTheFirstInTheStackIsShown)
{
    QWidget* const p_first = add("Twice");
    add("Twice");
    m_window->tab_bar().setCurrentIndex(1);
    EXPECT_EQ(m_window->stack().currentWidget(), p_first);
}

TEST_F(PanelList, TabOutOfRangeIsNotThePanelWithoutTitle)
{
    LogCapture log;
    QWidget* const p_first = add("First");
    add(QString());
    log.take_all();
    m_window->stack().setCurrentWidget(p_first);
    m_window->current_tab_changed(-1);
    m_window->current_tab_changed(2);
    EXPECT_EQ(m_window->stack().currentWidget(), p_first);
}
