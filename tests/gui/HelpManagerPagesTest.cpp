#include "HelpFixture.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/Phases.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/pkProductInfo.h>

#include <QtTest/QSignalSpy>
#include <QtWidgets/QMenu>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// Pages, and who shows them; the log's viewer; beginning and end of the manager.

using namespace help_test;
using pkBase::pkProductInfo;
using pkBase::QLogFileViewer;
using support::LogCapture;
using tarqa::housekeeping::ErrorProtocol;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

class HelpManagerPages : public HelpFixture
{
protected:
    HelpManagerPages() { manager(); }

    /// Makes the actions.
    void open_window() { send(MainWindowMessage::ToolBar, nullptr, &window); }
};

} // namespace

// Inside or outside

TEST_F(HelpManagerPages, ContentsOpenOutsideBeforeThereAreActions)
{
    call("help_contents");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_CONTENTS, outside)"));
}

TEST_F(HelpManagerPages, ContentsOpenInsideOnceThereAreActions)
{
    open_window();
    call("help_contents");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_CONTENTS, inside)"));
}

TEST_F(HelpManagerPages, PageOpensOutsideBeforeThereAreActions)
{
    manager().onShowPage("TARQ_FAULTS");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_FAULTS, outside)"));
}

TEST_F(HelpManagerPages, PageOpensInsideOnceThereAreActions)
{
    open_window();
    manager().onShowPage("TARQ_FAULTS");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_FAULTS, inside)"));
}

TEST_F(HelpManagerPages, ExternalPageOpensOutsideAlways)
{
    manager().onShowPageExternal("TARQ_FAULTS");
    open_window();
    manager().onShowPageExternal("TARQ_WELLS");
    EXPECT_THAT(calls(),
        ElementsAre(
            "TarqHelpful 1.show_page(TARQ_FAULTS, outside)", "TarqHelpful 1.show_page(TARQ_WELLS, outside)"));
}

TEST_F(HelpManagerPages, PagesOpenOutsideAgainWhenTheWindowIsGone)
{
    auto owner = std::make_unique<QWidget>();
    send(MainWindowMessage::ToolBar, nullptr, owner.get());
    manager().onShowPage("TARQ_FAULTS");
    owner.reset();
    manager().onShowPage("TARQ_WELLS");
    EXPECT_THAT(calls(),
        ElementsAre(
            "TarqHelpful 1.show_page(TARQ_FAULTS, inside)", "TarqHelpful 1.show_page(TARQ_WELLS, outside)"));
}

TEST_F(HelpManagerPages, PageIsHandedOnAsItIs)
{
    manager().onShowPage(QString::fromUtf8(u8"Störungen/über uns.html#100%"));
    manager().onShowPage("");
    EXPECT_THAT(calls(),
        ElementsAre(u8"TarqHelpful 1.show_page(Störungen/über uns.html#100%, outside)",
            "TarqHelpful 1.show_page(, outside)"));
}

// Requests from elsewhere

TEST_F(HelpManagerPages, AnybodyMayAskForAPage)
{
    pkProductInfo::instance().show_help("TARQ_FAULTS");
    open_window();
    pkProductInfo::instance().show_help("TARQ_WELLS");
    EXPECT_THAT(calls(),
        ElementsAre(
            "TarqHelpful 1.show_page(TARQ_FAULTS, outside)", "TarqHelpful 1.show_page(TARQ_WELLS, inside)"));
}

TEST_F(HelpManagerPages, AnybodyMayAskForAPageOutside)
{
    pkProductInfo::instance().show_help_external("TARQ_FAULTS");
    open_window();
    pkProductInfo::instance().show_help_external("TARQ_WELLS");
    EXPECT_THAT(calls(),
        ElementsAre(
            "TarqHelpful 1.show_page(TARQ_FAULTS, outside)", "TarqHelpful 1.show_page(TARQ_WELLS, outside)"));
}

TEST_F(HelpManagerPages, NobodyAnswersOnceTheManagerIsGone)
{
    TestAccess::destroy<HelpManager>();
    calls();
    pkProductInfo::instance().show_help("TARQ_FAULTS");
    pkProductInfo::instance().show_help_external("TARQ_FAULTS");
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(HelpManagerPages, ShortcutsAreAPageThatIsAskedFor)
{
    const QSignalSpy asked(&pkProductInfo::instance(), &pkProductInfo::openHelp);
    const QSignalSpy asked_outside(&pkProductInfo::instance(), &pkProductInfo::openHelpExternal);
    call("showShortcuts");
    ASSERT_EQ(1, asked.count());
    EXPECT_EQ("TARQ_KEYBOARD_SHORTCUTS", asked.at(0).at(0).toString());
    EXPECT_EQ(0, asked_outside.count());
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_KEYBOARD_SHORTCUTS, outside)"));
}

// The current path

TEST_F(HelpManagerPages, TableOfContentsIsTheFirstPath)
{
    EXPECT_EQ("TARQ_CONTENTS", manager().currPath());
}

TEST_F(HelpManagerPages, CurrentPathIsWhatContentsShow)
{
    manager().setCurrPath("TARQ_FAULTS");
    EXPECT_EQ("TARQ_FAULTS", manager().currPath());
    call("help_contents");
    call("help_contents");
    EXPECT_THAT(calls(),
        ElementsAre("TarqHelpful 1.show_page(TARQ_FAULTS, outside)",
            "TarqHelpful 1.show_page(TARQ_FAULTS, outside)"));
}

TEST_F(HelpManagerPages, EmptyPathRestoresTheTableOfContents)
{
    manager().setCurrPath("TARQ_FAULTS");
    manager().setCurrPath("");
    EXPECT_EQ("TARQ_CONTENTS", manager().currPath());
    manager().setCurrPath("TARQ_FAULTS");
    manager().setCurrPath(QString());
    call("help_contents");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_CONTENTS, outside)"));
}

TEST_F(HelpManagerPages, ClearedPathIsTheTableOfContents)
{
    manager().setCurrPath("TARQ_FAULTS");
    manager().clearCurrPath();
    EXPECT_EQ("TARQ_CONTENTS", manager().currPath());
    call("help_contents");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_CONTENTS, outside)"));
}

TEST_F(HelpManagerPages, OtherPagesDoNotChangeTheCurrentPath)
{
    manager().setCurrPath("TARQ_FAULTS");
    manager().onShowPage("TARQ_WELLS");
    manager().onShowPageExternal("TARQ_WELLS");
    call("showShortcuts");
    EXPECT_EQ("TARQ_FAULTS", manager().currPath());
}

TEST_F(HelpManagerPages, LauncherMaySetAnotherPathWhileItShowsAPage)
{
    manager().setCurrPath("TARQ_WELLS");
    factory.on_show_page = [] { manager().setCurrPath("TARQ_FAULTS"); };
    action(Contents).trigger();
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_WELLS, inside)"));
    EXPECT_EQ("TARQ_FAULTS", manager().currPath());
}

TEST_F(HelpManagerPages, LauncherMayClearThePathWhileItShowsAPage)
{
    manager().setCurrPath("TARQ_WELLS");
    factory.on_show_page = [] { manager().clearCurrPath(); };
    call("help_contents");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_WELLS, outside)"));
    EXPECT_EQ("TARQ_CONTENTS", manager().currPath());
}

TEST_F(HelpManagerPages, CurrentPathIsShownAlsoIfTheLauncherSetsAnother)
{
    manager().setCurrPath("TARQ_WELLS");
    factory.on_show_page = [] { manager().setCurrPath("TARQ_FAULTS"); };
    manager().onShowPage(manager().currPath());
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_WELLS, outside)"));
}

// The launcher

TEST_F(HelpManagerPages, OneLauncherShowsAllPages)
{
    register_launcher("Another", true);
    call("help_contents");
    pkProductInfo::instance().product_name("Another"); // too late
    manager().onShowPage("TARQ_FAULTS");
    EXPECT_THAT(calls(),
        ElementsAre("TarqHelpful 1.show_page(TARQ_CONTENTS, outside)",
            "TarqHelpful 1.show_page(TARQ_FAULTS, outside)"));
}

TEST_F(HelpManagerPages, AboutIsShownByANewLauncherEachTime)
{
    call("help_about");
    call("help_about");
    EXPECT_THAT(calls(),
        ElementsAre("TarqHelpful 2.about", "TarqHelpful 2.destroyed", "TarqHelpful 3.about",
            "TarqHelpful 3.destroyed"));
    call("help_contents");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_CONTENTS, outside)"));
}

TEST_F(HelpManagerPages, AboutIsShownByTheLauncherOfTheProduct)
{
    register_launcher("Another", true); // the default too
    call("help_about");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 2.about", "TarqHelpful 2.destroyed"));
    pkProductInfo::instance().product_name("Another");
    call("help_about");
    EXPECT_THAT(calls(), ElementsAre("Another 1.about", "Another 1.destroyed"));
}

TEST_F(HelpManagerPages, LauncherGoesWithTheManager)
{
    TestAccess::destroy<HelpManager>();
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.destroyed"));
}

class HelpManagerProduct : public HelpWithoutLauncher
{ };

TEST_F(HelpManagerProduct, LauncherIsTheOneOfTheProductsName)
{
    register_launcher("Another", true);
    register_launcher();
    manager().onShowPage("TARQ_FAULTS");
    EXPECT_THAT(journal().entries(), ElementsAre("TarqHelpful 1.show_page(TARQ_FAULTS, outside)"));
}

TEST_F(HelpManagerProduct, LauncherOfAnotherProductServesIfItIsTheDefault)
{
    register_launcher("Another", true);
    manager().onShowPage("TARQ_FAULTS");
    EXPECT_THAT(journal().entries(), ElementsAre("Another 1.show_page(TARQ_FAULTS, outside)"));
}

// The log's viewer

namespace {

/// A whole program; the viewer goes with its end.
class HelpManagerLogFile : public testing::Test
{
protected:
    HelpManagerLogFile()
    {
        register_launcher();
        pkProductInfo::instance().product_name(s_product);
    }

    static void log(LogCapture& capture, const std::string& text)
    {
        ErrorProtocol::instance().log_message(text);
        EXPECT_TRUE(capture.take(text));
    }

    static void show_log_file()
    {
        EXPECT_TRUE(QMetaObject::invokeMethod(&HelpManager::instance(), "showLogFile"));
    }

    support::StartedApplication started;
    LogCapture capture;
};

/// Notes what happens to a widget.
class Events : public QObject
{
public:
    explicit Events(QObject& object) { object.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* p_event) override
    {
        types.push_back(p_event->type());
        return false;
    }

    std::vector<QEvent::Type> types;
};

} // namespace

TEST_F(HelpManagerLogFile, IsShown)
{
    log(capture, "a line to be read");
    ASSERT_FALSE(QLogFileViewer::instance().isVisible());
    show_log_file();
    EXPECT_TRUE(QLogFileViewer::instance().isVisible());
    EXPECT_TRUE(QLogFileViewer::instance().isWindow());
    EXPECT_TRUE(QLogFileViewer::instance().text().contains("a line to be read"));
}

TEST_F(HelpManagerLogFile, IsShownByItsAction)
{
    QWidget window;
    HelpManager::instance();
    QMenu menu(s_menu_title);
    const std::vector<QObject*> entries = send(MainWindowMessage::Menu, &menu, &window);
    ASSERT_EQ(6u, entries.size());
    qobject_cast<QAction*>(entries[3])->trigger();
    EXPECT_TRUE(QLogFileViewer::instance().isVisible());
}

TEST_F(HelpManagerLogFile, IsRaisedAndReadAgain)
{
    show_log_file();
    const Events events(QLogFileViewer::instance());
    log(capture, "a later line");
    ASSERT_FALSE(QLogFileViewer::instance().text().contains("a later line"));
    show_log_file();
    EXPECT_TRUE(QLogFileViewer::instance().text().contains("a later line"));
    EXPECT_THAT(events.types, testing::Contains(QEvent::ZOrderChange));
}

TEST_F(HelpManagerLogFile, IsShownAgainAfterItWasClosed)
{
    show_log_file();
    QLogFileViewer::instance().close();
    ASSERT_FALSE(QLogFileViewer::instance().isVisible());
    show_log_file();
    EXPECT_TRUE(QLogFileViewer::instance().isVisible());
}

// Beginning and end

TEST(HelpManager, IsMadeAtFirstUse)
{
    register_launcher();
    pkProductInfo::instance().product_name(s_product);
    EXPECT_FALSE(TestAccess::peek<HelpManager>());
    const HelpManager& manager = HelpManager::instance();
    EXPECT_EQ(&manager, &HelpManager::const_instance());
    EXPECT_EQ(&manager, &HelpManager::instance());
    EXPECT_EQ(&manager, TestAccess::peek<HelpManager>());
}

TEST(HelpManager, IsMadeBySomebodyWhoOnlyReads)
{
    register_launcher();
    pkProductInfo::instance().product_name(s_product);
    EXPECT_EQ("TARQ_CONTENTS", HelpManager::const_instance().currPath());
    EXPECT_TRUE(TestAccess::peek<HelpManager>());
}

TEST(HelpManager, GoesInPhaseFive)
{
    register_launcher();
    pkProductInfo::instance().product_name(s_product);
    EXPECT_TRUE(support::goes_in_phase_five<HelpManager>());
}

TEST(HelpManager, IsMadeAnewAfterItsDestruction)
{
    register_launcher();
    pkProductInfo::instance().product_name(s_product);
    HelpManager::instance().setCurrPath("TARQ_FAULTS");
    TestAccess::destroy<HelpManager>();
    EXPECT_EQ("TARQ_CONTENTS", HelpManager::instance().currPath());
    HelpManager::instance().onShowPage("TARQ_WELLS");
    EXPECT_THAT(journal().entries(),
        ElementsAre("TarqHelpful 1.destroyed", "TarqHelpful 2.show_page(TARQ_WELLS, outside)"));
}

TEST(HelpManager, SurvivesTheEndOfTheProgramWithItsWindowGone)
{
    register_launcher();
    pkProductInfo::instance().product_name(s_product);
    const support::StartedApplication started;
    HelpManager::instance();
    {
        QWidget window;
        send(MainWindowMessage::ToolBar, nullptr, &window);
    }
    pkBase::pkDestructor::run();
    EXPECT_FALSE(TestAccess::peek<HelpManager>());
}
