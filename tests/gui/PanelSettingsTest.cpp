#include "PanelFixture.h"
#include "support/ChildProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtGui/QCursor>
#include <QtGui/QScreen>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>

// What survives a restart.

using tarqa::housekeeping::gui::ChildDockWidget;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PanelSettings : public PanelFixture
{
protected:
    /// Where a floating window opens that nobody places.
    QPoint default_place()
    {
        ChildDockWidget window("Some", m_window.get());
        window.show();
        return window.pos();
    }
};

const QPoint s_cursor(231, 117);

} // namespace

// --- writeSettings

TEST_F(PanelSettings, WritesOrderFlagsAndGeometryAndNothingElse)
{
    add("Home");
    add("Second");
    m_window->tab_bar().moveTab(0, 1);
    QWidget* const p_panel = add_floating("Panel");
    m_window->writeSettings();
    EXPECT_EQ(stored_keys(),
        QStringList({"Home/floating", "Panel/dockSize", "Panel/floating", "Second/floating", "tabOrder"}));
    EXPECT_EQ(stored("tabOrder").type(), QVariant::StringList);
    EXPECT_EQ(stored("tabOrder").toStringList(), QStringList({"Second", "Home"}));
    for (const char* const title : {"Home", "Second"}) {
        EXPECT_EQ(stored(QString(title) + "/floating").type(), QVariant::Bool) << title;
        EXPECT_EQ(stored(QString(title) + "/floating"), QVariant(false)) << title;
    }
    EXPECT_EQ(stored("Panel/floating").type(), QVariant::Bool);
    EXPECT_EQ(stored("Panel/floating"), QVariant(true));
    EXPECT_EQ(stored("Panel/dockSize").type(), QVariant::ByteArray);
    EXPECT_EQ(stored("Panel/dockSize").toByteArray(), float_of(p_panel).saveGeometry());
}

TEST_F(PanelSettings, WritesAnEmptyOrderWithoutTabs)
{
    store("tabOrder", QStringList({"Old"}));
    m_window->writeSettings();
    EXPECT_EQ(stored_keys(), QStringList("tabOrder"));
    EXPECT_TRUE(stored("tabOrder").toStringList().isEmpty());
}

TEST_F(PanelSettings, WritesTheTextsOfTabsWithoutPanelsAndEqualOnesToo)
{
    add("Twice");
    m_window->tab_bar().addTab("Of the host");
    add("Twice");
    m_window->writeSettings();
    EXPECT_EQ(stored("tabOrder").toStringList(), QStringList({"Twice", "Twice", "Of the host"}));
    EXPECT_EQ(stored("Of the host/floating"), QVariant(false));
}

TEST_F(PanelSettings, OfEqualTitlesTheFloatingOneDecides)
{
    add("Twice");
    add("Twice");
    m_window->tear_off("Twice");
    m_window->writeSettings();
    EXPECT_EQ(stored("Twice/floating"), QVariant(true));
    EXPECT_EQ(stored("tabOrder").toStringList(), QStringList("Twice"));
}

TEST_F(PanelSettings, KeepsWhatIsStoredOfPanelsThatAreNotThere)
{
    store("Absent/floating", true);
    store("Absent/dockSize", QByteArray("bytes"));
    add("Home");
    m_window->writeSettings();
    EXPECT_EQ(stored("Absent/floating"), QVariant(true));
    EXPECT_EQ(stored("Absent/dockSize").toByteArray(), QByteArray("bytes"));
}

TEST_F(PanelSettings, AmpersandPanelIsWrittenUnderItsWindowsTitle)
{
    add_floating("A && B");
    m_window->writeSettings();
    EXPECT_EQ(stored("A & B/floating"), QVariant(true));
    EXPECT_FALSE(stored("A & B/dockSize").toByteArray().isEmpty());
    EXPECT_FALSE(stored("A && B/dockSize").isValid());
    EXPECT_EQ(stored("A && B/floating"), QVariant(true)); // by which addPanel asks
}

TEST_F(PanelSettings, GroupIsLeftAsItWas)
{
    QSettings("Maker", "Program").setValue("Other/value", 7);
    add("Home");
    m_window->writeSettings();
    m_window->readSettings();
    EXPECT_EQ(QSettings().value("Other/value").toInt(), 7);
    EXPECT_EQ(QSettings().value("Q4DAbstractControlPanel/tabOrder").toStringList(), QStringList("Home"));
}

TEST_F(PanelSettings, AddingAndTearingOffWriteNothing)
{
    add("Home");
    add_floating("Panel");
    m_window->readSettings();
    m_window->restoreChildWidgets();
    EXPECT_TRUE(stored_keys().isEmpty());
}

TEST_F(PanelSettings, ClosingAFloatWritesItsGeometryAlone)
{
    QWidget* const p_panel = add_floating("Panel");
    store("Panel/floating", true);
    float_of(p_panel).close();
    EXPECT_EQ(stored("Panel/dockGeom/").type(), QVariant::ByteArray);
    EXPECT_FALSE(stored("Panel/dockGeom/").toByteArray().isEmpty());
    EXPECT_EQ(stored_keys(), QStringList({"Panel/dockGeom", "Panel/floating"}));
    EXPECT_EQ(stored("Panel/floating"), QVariant(true)); // until writeSettings
    m_window->writeSettings();
    EXPECT_EQ(stored("Panel/floating"), QVariant(false));
}

TEST_F(PanelSettings, GeometryOfTheClosingIsThatOfTheFloat)
{
    m_window->move(10, 20);
    QWidget* const p_panel = add_floating("Panel");
    for (const QPoint& place : {QPoint(52, 64), QPoint(90, 95)}) {
        float_of(p_panel).move(place);
        const QByteArray geometry = float_of(p_panel).saveGeometry();
        ASSERT_NE(geometry, m_window->saveGeometry());
        float_of(p_panel).close();
        EXPECT_EQ(stored("Panel/dockGeom/").toByteArray(), geometry);
        m_window->tear_off("Panel");
    }
}

TEST_F(PanelSettings, GeometryOfAClosedAmpersandFloatIsUnderItsTab)
{
    QWidget* const p_panel = add_floating("A & B");
    float_of(p_panel).close();
    EXPECT_EQ(stored_keys(), QStringList("A && B/dockGeom"));
}

// --- readSettings

TEST_F(PanelSettings, TabsTakeTheStoredOrder)
{
    add("First");
    add("Second");
    QWidget* const p_third = add("Third");
    store("tabOrder", QStringList({"Third", "First", "Second"}));
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"Third", "First", "Second"}));
    EXPECT_EQ(m_window->stack().currentWidget(), p_third);
    EXPECT_EQ(m_window->stack().indexOf(p_third), 2); // the pages stay
}

TEST_F(PanelSettings, StoredTitlesWithoutPanelAreIgnored)
{
    add("First");
    add("Second");
    store("tabOrder", QStringList({"Gone", "Second", "Also gone", "First"}));
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"Second", "First"}));
}

TEST_F(PanelSettings, NewPanelsComeLastInTheirOrder)
{
    for (const char* const title : {"New", "First", "Newer", "Second"}) {
        add(title);
    }
    store("tabOrder", QStringList({"Second", "First"}));
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"Second", "First", "New", "Newer"}));
}

TEST_F(PanelSettings, OnlyUnknownTitlesLeaveTheTabs)
{
    add("First");
    add("Second");
    store("tabOrder", QStringList({"Gone"}));
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"First", "Second"}));
}

TEST_F(PanelSettings, TitleThatIsStoredTwiceGivesTwoTabs)
{
    add("First");
    add("Second");
    store("tabOrder", QStringList({"Second", "First", "Second"}));
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"Second", "First", "Second"}));
}

TEST_F(PanelSettings, TwoTabsThatAreStoredOnceBecomeOne)
{
    add("Twice");
    add("Other");
    add("Twice");
    store("tabOrder", QStringList({"Other", "Twice"}));
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"Other", "Twice"}));
    EXPECT_EQ(m_window->stack().count(), 3);
}

TEST_F(PanelSettings, EqualNewTabsAllStay)
{
    add("New");
    add("First");
    add("New");
    store("tabOrder", QStringList({"First"}));
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"First", "New", "New"}));
}

TEST_F(PanelSettings, WithoutStoredOrderTheTabsStay)
{
    QWidget* const p_first = add("Second");
    add("First");
    m_window->tab_bar().setCurrentIndex(1);
    for (const QVariant& order : {QVariant(), QVariant(QStringList())}) {
        store("tabOrder", order);
        QSignalSpy current(&m_window->tab_bar(), &QTabBar::currentChanged);
        m_window->readSettings();
        EXPECT_EQ(m_window->tabs(), QStringList({"Second", "First"}));
        EXPECT_EQ(m_window->stack().currentWidget(), p_first);
        EXPECT_EQ(current.count(), 0);
    }
}

TEST_F(PanelSettings, TabBarIsSilentWhileItIsOrdered)
{
    add("First");
    add("Second");
    store("tabOrder", QStringList({"Second", "First"}));
    QSignalSpy current(&m_window->tab_bar(), &QTabBar::currentChanged);
    QSignalSpy moved(&m_window->tab_bar(), &QTabBar::tabMoved);
    m_window->readSettings();
    EXPECT_EQ(current.count(), 0);
    EXPECT_EQ(moved.count(), 0);
    EXPECT_FALSE(m_window->tab_bar().signalsBlocked());
}

TEST_F(PanelSettings, ReadingShowsTheFloats)
{
    add("Home");
    ChildDockWidget& window = float_of(add_floating("Panel"));
    window.hide();
    m_window->readSettings();
    EXPECT_TRUE(window.isVisible());
    window.hide();
    store("tabOrder", QStringList("Home"));
    m_window->readSettings();
    EXPECT_TRUE(window.isVisible());
}

TEST_F(PanelSettings, EmptyWindowReadsAndWrites)
{
    m_window->readSettings();
    store("tabOrder", QStringList({"Gone"}));
    m_window->readSettings();
    EXPECT_TRUE(m_window->tabs().isEmpty());
}

TEST_F(PanelSettings, OddValueForTheOrderIsTakenForText)
{
    add("First");
    add("Second");
    store("tabOrder", QString("Second"));
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"Second", "First"}));
    store("tabOrder", QByteArray("\x01\xff"));
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"Second", "First"}));
}

// --- geometry

TEST_F(PanelSettings, FloatWithoutGroupOpensAtTheCursor)
{
    QCursor::setPos(s_cursor);
    store("Pane/floating", true);
    store("Other/Panel/floating", true);
    QWidget* const p_panel = add_floating("Panel");
    EXPECT_EQ(float_of(p_panel).pos(), s_cursor);
}

TEST_F(PanelSettings, FloatOpensWhereItWasWritten)
{
    QCursor::setPos(s_cursor);
    QWidget* const p_panel = add_floating("Panel");
    float_of(p_panel).move(52, 64);
    const QByteArray written = float_of(p_panel).saveGeometry();
    m_window->writeSettings();
    float_of(p_panel).move(300, 200);
    float_of(p_panel).close();
    m_window->tear_off("Panel");
    EXPECT_EQ(float_of(p_panel).pos(), QPoint(52, 64));
    EXPECT_EQ(float_of(p_panel).saveGeometry(), written);
}

TEST_F(PanelSettings, FloatOpensWhereItWasRemoved)
{
    add("Home");
    QWidget* const p_panel = add_floating("Panel");
    float_of(p_panel).move(71, 83);
    m_window->removePanel(1);
    m_window->addPanel(p_panel, QString());
    EXPECT_EQ(float_of(p_panel).pos(), QPoint(71, 83));
}

TEST_F(PanelSettings, AmpersandFloatOpensWhereItWasWritten)
{
    QWidget* const p_panel = add_floating("A && B");
    float_of(p_panel).move(52, 64);
    m_window->writeSettings();
    float_of(p_panel).move(300, 200);
    float_of(p_panel).close();
    m_window->tear_off("A && B");
    EXPECT_EQ(float_of(p_panel).pos(), QPoint(52, 64));
}

TEST_F(PanelSettings, GeometryOfTheClosingIsNeverRead)
{
    QCursor::setPos(s_cursor);
    QWidget* const p_panel = add_floating("Panel");
    float_of(p_panel).move(52, 64);
    float_of(p_panel).close();
    ASSERT_FALSE(stored("Panel/dockGeom/").toByteArray().isEmpty());
    const QPoint place = default_place();
    m_window->tear_off("Panel"); // there is a group now, but no geometry to read in it
    EXPECT_EQ(float_of(p_panel).pos(), place);
    EXPECT_NE(place, QPoint(52, 64));
    EXPECT_NE(place, s_cursor);
}

TEST_F(PanelSettings, EmptyGeometryLeavesTheDefaultPlace)
{
    QCursor::setPos(s_cursor);
    const QPoint place = default_place();
    ASSERT_NE(place, s_cursor);
    store("Empty/dockSize", QByteArray(""));
    store("Null/dockSize", QByteArray());
    store("Flag/floating", false);
    for (const char* const title : {"Empty", "Null", "Flag"}) {
        EXPECT_EQ(float_of(add_floating(title)).pos(), place) << title;
    }
}

TEST_F(PanelSettings, CorruptGeometryLeavesTheDefaultPlace)
{
    QCursor::setPos(s_cursor);
    const QPoint place = default_place();
    const QByteArray good = m_window->saveGeometry();
    const QByteArrayList corrupt = {"x", "no geometry at all", QByteArray(1000, '\xff'), good.mid(1)};
    for (int i = 0; i < corrupt.size(); ++i) {
        const QString title = QString("Panel %1").arg(i);
        store(title + "/dockSize", corrupt[i]);
        QWidget* const p_panel = add_floating(title);
        EXPECT_EQ(float_of(p_panel).pos(), place) << i;
        EXPECT_TRUE(float_of(p_panel).isVisible()) << i;
    }
}

// A byte is missing, so that the window seems to be some hundred million rows below the screen.
TEST_F(PanelSettings, GeometryThatQtTakesForGoodStillGivesAWindowOnTheScreen)
{
    const QByteArray damaged = QByteArray::fromHex(
        "01d9d0cb0003000000000064000000780000012b00000103000000680000008c00000127000000ff"
        "000000000000000003200000007c36380000008c00000127000000ff");
    QWidget lost;
    ASSERT_TRUE(lost.restoreGeometry(damaged));
    ASSERT_FALSE(lost.screen()->availableGeometry().intersects(lost.frameGeometry()));

    store("Panel/dockSize", damaged);
    const ChildDockWidget& window = float_of(add_floating("Panel"));
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.screen()->availableGeometry().intersects(window.frameGeometry()));
}

TEST_F(PanelSettings, FloatIsNeitherMaximisedNorFullScreenWhateverIsStored)
{
    QWidget large;
    for (const Qt::WindowState state : {Qt::WindowMaximized, Qt::WindowFullScreen}) {
        large.setWindowState(state);
        large.show();
        const QString title = QString("Panel %1").arg(state);
        store(title + "/dockSize", large.saveGeometry());
        const ChildDockWidget& window = float_of(add_floating(title));
        settle(); // the window system tells afterwards
        EXPECT_EQ(window.windowState(), Qt::WindowNoState);
    }
}

// Qt reads zeros where the value ends.
TEST_F(PanelSettings, TruncatedGeometryStillGivesAWindowOnTheScreen)
{
    const QByteArray good = m_window->saveGeometry();
    for (int size = 1; size < good.size(); ++size) {
        const QString title = QString("Panel %1").arg(size);
        store(title + "/dockSize", good.left(size));
        ChildDockWidget& window = float_of(add_floating(title));
        EXPECT_TRUE(window.isVisible()) << size;
        EXPECT_TRUE(window.screen()->geometry().intersects(window.geometry())) << size;
        EXPECT_GT(window.width(), 0) << size;
    }
}

// --- restarts

TEST_F(PanelSettings, RestartBringsFloatsAndOrderBack)
{
    for (const char* const title : {"Home", "Second", "Third"}) {
        add(title);
    }
    add_floating("Panel");
    float_of(m_window->floating().front()).move(52, 64);
    m_window->tab_bar().moveTab(2, 0);
    m_window->writeSettings();
    restart();
    for (const char* const title : {"Home", "Panel", "Second", "Third"}) {
        add(title);
    }
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList({"Third", "Home", "Second"}));
    ASSERT_EQ(m_window->floating().size(), 1u);
    EXPECT_EQ(m_window->floating().front()->windowTitle(), "Panel");
    EXPECT_EQ(float_of(m_window->floating().front()).pos(), QPoint(52, 64));
    EXPECT_EQ(m_window->stack().currentWidget()->windowTitle(), "Third");
}

TEST_F(PanelSettings, AmpersandPanelFloatsAfterARestart)
{
    add_floating("A && B");
    add_floating("A & B & C");
    m_window->writeSettings();
    restart();
    QWidget* const p_doubled = add("A && B");
    QWidget* const p_single = add("A & B & C");
    EXPECT_THAT(m_window->floating(), ElementsAre(p_doubled, p_single));
}

TEST_F(PanelSettings, FileIsForThisUserOnly)
{
    const QString file = QSettings().fileName();
    ASSERT_FALSE(QFileInfo::exists(file));
    add("First");
    m_window->writeSettings();
    ASSERT_FALSE(stored_keys().isEmpty());
    ASSERT_TRUE(QFileInfo::exists(file));
    EXPECT_EQ(QFile::permissions(file)
            & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
        QFile::Permissions());
}

TEST_F(PanelSettings, ClosedFloatIsDockedAfterARestart)
{
    QWidget* const p_panel = add_floating("Panel");
    m_window->writeSettings();
    float_of(p_panel).close();
    m_window->writeSettings();
    restart();
    add("Panel");
    m_window->readSettings();
    EXPECT_EQ(m_window->tabs(), QStringList("Panel"));
    EXPECT_THAT(m_window->floating(), IsEmpty());
}

TEST_F(PanelSettings, FloatThatWasNeverWrittenIsDockedAfterARestart)
{
    add_floating("Panel");
    restart();
    add("Panel");
    EXPECT_EQ(m_window->tabs(), QStringList("Panel"));
}

TEST(PanelSettingsOfAnotherProcess, BringFloatsOrderAndGeometryBack)
{
    support::ChildProcess writing([] {
        Panels panels;
        for (const char* const title : {"Home", "Höhen", "B, C", "D = E"}) {
            panels.add(title);
        }
        panels.float_of(panels.add_floating("A && B")).move(52, 64);
        panels.m_window->tab_bar().moveTab(3, 0);
        panels.m_window->writeSettings();
        return panels.m_window->tabs().join("|").toStdString();
    });
    ASSERT_EQ(writing.report(), "D = E|Home|Höhen|B, C");
    writing.let_go();

    Panels panels;
    EXPECT_EQ(Panels::stored("Home/floating").toString(), "false");
    QWidget* const p_panel = panels.add("A && B");
    for (const char* const title : {"Home", "B, C", "D = E", "Höhen"}) {
        panels.add(title);
    }
    panels.m_window->readSettings();
    EXPECT_EQ(panels.m_window->tabs(), QStringList({"D = E", "Home", "Höhen", "B, C"}));
    ASSERT_THAT(panels.m_window->floating(), ElementsAre(p_panel));
    EXPECT_EQ(panels.float_of(p_panel).pos(), QPoint(52, 64));
    EXPECT_EQ(panels.float_of(p_panel).windowTitle(), "A & B");
}

TEST(PanelSettingsOfAnotherProcess, OrdersOfOneTabAndOfNoneAreListsToo)
{
    for (const QStringList& order : {QStringList("Second, with a comma"), QStringList()}) {
        support::ChildProcess writing([&order] {
            Panels panels;
            for (const QString& title : order) {
                panels.add(title);
            }
            panels.m_window->writeSettings();
            return std::string("written");
        });
        ASSERT_EQ(writing.report(), "written");
        writing.let_go();
        support::ChildProcess reading([] {
            Panels panels;
            panels.add("First");
            panels.add("Second, with a comma");
            panels.m_window->readSettings();
            return panels.m_window->tabs().join("|").toStdString();
        });
        EXPECT_EQ(
            reading.report(), order.isEmpty() ? "First|Second, with a comma" : "Second, with a comma|First");
        reading.let_go();
    }
}
