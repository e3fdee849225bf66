#include "PanelFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtGui/QCloseEvent>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>

// Closing floating windows, and panels and windows that go in between.

using tarqa::housekeeping::gui::ChildDockWidget;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ClosedFloat : public PanelFixture
{ };

} // namespace

TEST_F(ClosedFloat, PanelIsBackInTheLastTab)
{
    QWidget* const p_panel = add_floating("Panel");
    add("First");
    add("Second");
    const QPointer<QWidget> window = &float_of(p_panel);
    EXPECT_TRUE(window->close());
    EXPECT_EQ(m_window->tabs(), QStringList({"First", "Second", "Panel"}));
    EXPECT_EQ(m_window->stack().indexOf(p_panel), 2);
    EXPECT_EQ(m_window->tab_bar().currentIndex(), 2);
    EXPECT_EQ(m_window->stack().currentWidget(), p_panel);
    EXPECT_THAT(m_window->floating(), IsEmpty());
    EXPECT_EQ(m_window->indexOf(p_panel), 2);
    EXPECT_EQ(p_panel->maximumWidth(), 9999); // nothing takes it back
    ASSERT_FALSE(window.isNull()); // it handles its event still
    EXPECT_FALSE(window->isVisible());
    settle();
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(m_window->stack().currentWidget(), p_panel);
}

TEST_F(ClosedFloat, DockedPanelIsVisibleAgain)
{
    m_window->show();
    add("Home");
    QWidget* const p_panel = add_floating("Panel");
    float_of(p_panel).close();
    settle();
    EXPECT_TRUE(p_panel->isVisible());
    EXPECT_TRUE(m_window->isAncestorOf(p_panel));
}

TEST_F(ClosedFloat, CloseEventIsConsumed)
{
    QWidget* const p_panel = add_floating("Panel");
    QCloseEvent event;
    EXPECT_TRUE(m_window->filters(&float_of(p_panel), &event));
    EXPECT_THAT(m_window->docked(), ElementsAre(p_panel));
}

TEST_F(ClosedFloat, WindowIsTheFilterOfItsFloats)
{
    QWidget* const p_panel = add_floating("Panel");
    QCloseEvent event;
    QCoreApplication::sendEvent(&float_of(p_panel), &event);
    EXPECT_THAT(m_window->docked(), ElementsAre(p_panel));
}

TEST_F(ClosedFloat, OtherEventsGoToTheBaseClass)
{
    QWidget* const p_panel = add_floating("Panel");
    for (const QEvent::Type type :
        {QEvent::Hide, QEvent::Show, QEvent::DeferredDelete, QEvent::User, QEvent::WindowDeactivate}) {
        QEvent event(type);
        EXPECT_FALSE(m_window->filters(&float_of(p_panel), &event)) << type;
    }
    EXPECT_THAT(m_window->floating(), ElementsAre(p_panel));
    EXPECT_TRUE(m_window->tabs().isEmpty());
}

TEST_F(ClosedFloat, NoWatchedObjectIsTrue)
{
    QWidget* const p_panel = add_floating("Panel");
    QCloseEvent close;
    EXPECT_TRUE(m_window->filters(nullptr, &close));
    QEvent user(QEvent::User);
    EXPECT_TRUE(m_window->filters(nullptr, &user));
    EXPECT_THAT(m_window->floating(), ElementsAre(p_panel));
}

TEST_F(ClosedFloat, ClosingOfOtherWindowsGoesToTheBaseClassToo)
{
    QWidget* const p_panel = add_floating("Panel");
    m_window->tab_bar().hide();
    QWidget other;
    QCloseEvent event;
    EXPECT_FALSE(m_window->filters(&other, &event));
    EXPECT_FALSE(m_window->filters(m_window.get(), &event));
    EXPECT_FALSE(m_window->filters(p_panel, &event));
    EXPECT_THAT(m_window->floating(), ElementsAre(p_panel));
    EXPECT_TRUE(m_window->tab_bar().isHidden());
}

TEST_F(ClosedFloat, TabComesAfterTheGeometryAndBeforeThePage)
{
    QWidget* const p_panel = add_floating("Panel");
    int calls = 0;
    QObject::connect(&m_window->tab_bar(), &QTabBar::currentChanged, [&](int index) {
        ++calls;
        EXPECT_EQ(index, 0);
        EXPECT_EQ(m_window->tabs(), QStringList("Panel"));
        EXPECT_EQ(stored_keys(), QStringList("Panel/dockGeom"));
        EXPECT_THAT(m_window->floating(), IsEmpty());
        EXPECT_THAT(m_window->docked(), IsEmpty());
        EXPECT_EQ(p_panel->parent(), nullptr);
    });
    float_of(p_panel).close();
    EXPECT_EQ(calls, 1);
    EXPECT_THAT(m_window->docked(), ElementsAre(p_panel));
}

TEST_F(ClosedFloat, TabBecomesCurrentWithItsPageAndBeforeAttachedComes)
{
    QWidget* const p_home = add("Home");
    QWidget* const p_panel = add_floating("Panel");
    QSignalSpy attached(m_window.get(), SIGNAL(attachedPanel(int)));
    int calls = 0;
    QObject::connect(&m_window->tab_bar(), &QTabBar::currentChanged, [&](int index) {
        ++calls;
        EXPECT_EQ(index, 1);
        EXPECT_THAT(m_window->docked(), ElementsAre(p_home, p_panel));
        EXPECT_EQ(attached.count(), 0);
    });
    float_of(p_panel).close();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(attached.count(), 1);
}

TEST_F(ClosedFloat, AttachedComesWhenAllButTheTabBarIsDone)
{
    add("Home");
    QWidget* const p_panel = add_floating("Panel");
    m_window->tab_bar().hide();
    int calls = 0;
    QObject::connect(m_window.get(), &PanelWindow::attachedPanel, [&](int index) {
        ++calls;
        EXPECT_EQ(index, 1);
        EXPECT_EQ(m_window->tabs(), QStringList({"Home", "Panel"}));
        EXPECT_EQ(m_window->tab_bar().currentIndex(), 1);
        EXPECT_EQ(m_window->stack().currentWidget(), p_panel);
        EXPECT_THAT(m_window->floating(), IsEmpty());
        EXPECT_EQ(stored_keys(), QStringList("Panel/dockGeom"));
        EXPECT_TRUE(m_window->tab_bar().isHidden());
    });
    float_of(p_panel).close();
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(m_window->tab_bar().isHidden());
}

TEST_F(ClosedFloat, AttachedNamesTheTabNotThePage)
{
    add("Home");
    QWidget* const p_panel = add_floating("Panel");
    m_window->tab_bar().addTab("Of the host");
    QSignalSpy attached(m_window.get(), SIGNAL(attachedPanel(int)));
    float_of(p_panel).close();
    ASSERT_EQ(attached.count(), 1);
    EXPECT_EQ(attached.at(0).at(0).toInt(), 2);
    EXPECT_EQ(m_window->stack().indexOf(p_panel), 1);
}

TEST_F(ClosedFloat, SignalsComeOncePerWay)
{
    add("Home");
    QStringList signals_seen;
    QObject::connect(m_window.get(), &PanelWindow::detachingPanel,
        [&](int index) { signals_seen.append(QString("detaching %1").arg(index)); });
    QObject::connect(m_window.get(), &PanelWindow::attachedPanel,
        [&](int index) { signals_seen.append(QString("attached %1").arg(index)); });
    QWidget* const p_panel = add_floating("Panel");
    EXPECT_EQ(signals_seen, QStringList("detaching 1"));
    float_of(p_panel).close();
    EXPECT_EQ(signals_seen, QStringList({"detaching 1", "attached 1"}));
}

TEST_F(ClosedFloat, OnlyTheClosedOneLeavesTheList)
{
    QWidget* const p_first = add_floating("First");
    QWidget* const p_second = add_floating("Second");
    QWidget* const p_third = add_floating("Third");
    float_of(p_second).close();
    EXPECT_THAT(m_window->floating(), ElementsAre(p_first, p_third));
    EXPECT_THAT(m_window->docked(), ElementsAre(p_second));
}

TEST_F(ClosedFloat, WindowThatLostItsPanelOnlyShowsTheTabBar)
{
    add("Home");
    const std::unique_ptr<QWidget> panel(add_floating("Panel"));
    ChildDockWidget& window = float_of(panel.get());
    m_window->tab_bar().hide();
    QSignalSpy attached(m_window.get(), SIGNAL(attachedPanel(int)));
    panel->setParent(nullptr);
    QCloseEvent event;
    EXPECT_TRUE(m_window->filters(&window, &event));
    EXPECT_FALSE(m_window->tab_bar().isHidden());
    EXPECT_EQ(m_window->tabs(), QStringList("Home"));
    EXPECT_EQ(attached.count(), 0);
    EXPECT_TRUE(stored_keys().isEmpty());
}

TEST_F(ClosedFloat, WindowThatLostItsPanelIsForgottenWhenClosed)
{
    const std::unique_ptr<QWidget> panel(add_floating("Panel"));
    const QPointer<QWidget> window = &float_of(panel.get());
    panel->setParent(nullptr);
    window->close();
    settle();
    ASSERT_TRUE(window.isNull());
    ASSERT_THAT(m_window->floating(), IsEmpty()); // or the next three use a window that is gone
    m_window->restoreChildWidgets();
    m_window->writeSettings();
    m_window->removePanel(0);
}

// --- lifetimes

TEST_F(ClosedFloat, PanelDeletedWhileItFloatsTakesItsWindowAlong)
{
    add("Home");
    QWidget* const p_panel = add_floating("Panel");
    QWidget* const p_other = add_floating("Other");
    const QPointer<QWidget> window = &float_of(p_panel);
    delete p_panel;
    EXPECT_THAT(m_window->floating(), ElementsAre(p_other));
    settle();
    EXPECT_TRUE(window.isNull());
    m_window->writeSettings();
    m_window->restoreChildWidgets();
    EXPECT_EQ(stored("Panel/floating"), QVariant());
    EXPECT_EQ(stored("Other/floating"), QVariant(true));
}

TEST_F(ClosedFloat, WindowOfADeletedPanelCanStillBeClosed)
{
    add("Home");
    QWidget* const p_panel = add_floating("Panel");
    const QPointer<QWidget> window = &float_of(p_panel);
    QSignalSpy attached(m_window.get(), SIGNAL(attachedPanel(int)));
    delete p_panel;
    ASSERT_FALSE(window.isNull());
    window->close();
    settle();
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(m_window->tabs(), QStringList("Home"));
    EXPECT_EQ(attached.count(), 0);
}

TEST_F(ClosedFloat, PanelDeletedWhileDockedLeavesAnEmptyTab)
{
    QWidget* const p_home = add("Home");
    QWidget* const p_panel = add("Panel");
    delete p_panel;
    EXPECT_THAT(m_window->docked(), ElementsAre(p_home));
    EXPECT_EQ(m_window->tabs(), QStringList({"Home", "Panel"}));
    m_window->tab_bar().setCurrentIndex(1);
    EXPECT_EQ(m_window->stack().currentWidget(), p_home);
    m_window->tear_off("Panel");
    EXPECT_THAT(m_window->floating(), IsEmpty());
    m_window->removePanel(1);
    m_window->writeSettings();
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"Home", "Panel"}));
}

TEST_F(ClosedFloat, PanelDeletedAfterItCameBackIsNoneOfTheListsBusiness)
{
    QWidget* const p_first = add_floating("First");
    QWidget* const p_second = add_floating("Second");
    float_of(p_first).close();
    settle();
    delete p_first;
    EXPECT_THAT(m_window->floating(), ElementsAre(p_second));
    EXPECT_EQ(m_window->stack().count(), 0);
}

TEST_F(ClosedFloat, HostHearsOfADeletedPanelThatFloatedOnce)
{
    QWidget* const p_docked = make_panel("Docked");
    QWidget* const p_removed = make_panel("Removed");
    int heard = 0;
    for (QWidget* const p_panel : {p_docked, p_removed}) {
        QObject::connect(p_panel, &QObject::destroyed, m_window.get(), [&heard] { ++heard; });
        m_window->addPanel(p_panel, QString());
        m_window->tear_off(p_panel->windowTitle());
    }
    float_of(p_docked).close();
    delete p_docked;
    EXPECT_EQ(heard, 1);
    m_window->removePanel(0);
    delete p_removed;
    EXPECT_EQ(heard, 2);
}

TEST_F(ClosedFloat, FloatsAndPanelsGoWithTheMainWindow)
{
    const QPointer<QWidget> docked = add("Home");
    const QPointer<QWidget> floating = add_floating("Panel");
    const QPointer<QWidget> window = &float_of(floating);
    m_window.reset();
    EXPECT_TRUE(docked.isNull());
    EXPECT_TRUE(floating.isNull());
    EXPECT_TRUE(window.isNull());
    EXPECT_TRUE(stored_keys().isEmpty());
}

TEST_F(ClosedFloat, MainWindowGoesWhileAClosedFloatWaitsForItsEnd)
{
    const QPointer<QWidget> panel = add_floating("Panel");
    const QPointer<QWidget> window = &float_of(panel);
    window->close();
    m_window.reset();
    EXPECT_TRUE(window.isNull());
    EXPECT_TRUE(panel.isNull());
    settle();
}

TEST_F(ClosedFloat, ClosedMainWindowLeavesItsFloatsFloating)
{
    m_window->show();
    QWidget* const p_panel = add_floating("Panel");
    m_window->close();
    EXPECT_THAT(m_window->floating(), ElementsAre(p_panel));
    EXPECT_TRUE(m_window->tabs().isEmpty());
}
