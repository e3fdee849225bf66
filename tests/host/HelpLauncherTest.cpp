#include "HelpPageFile.h"
#include "HelpWindowFixture.h"
#include "WindowFixture.h"
#include "help/HelpTopics.h"
#include "help/TerrainHelpLauncher.h"
#include "support/MessageSpy.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>
#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <QtTest/QTest>
#include <QtWebKit/QWebHistory>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>

using namespace host_test;
using housekeeping::ApplicationManager;
using housekeeping::gui::HelpLauncherFactory;
using terrain::help_key;
using terrain::HelpPages;
using terrain::HelpWindow;
using terrain::TerrainHelpLauncher;
using terrain::Topic;

namespace {

class HelpLauncherTest : public HelpWindowTest
{
protected:
    TerrainHelpLauncher launcher;
};

HelpWindow* visible_help()
{
    for (QWidget* const p_widget : QApplication::topLevelWidgets()) {
        auto* const p_window = qobject_cast<HelpWindow*>(p_widget);
        if (p_window && p_window->isVisible()) {
            return p_window;
        }
    }
    return nullptr;
}

} // namespace

TEST_F(HelpLauncherTest, IsRegisteredUnderTheNameOfTheProduct)
{
    EXPECT_NE(dynamic_cast<TerrainHelpLauncher*>(HelpLauncherFactory::create("TarqTerrain").get()), nullptr);
    const std::unique_ptr<housekeeping::gui::HelpLauncher> unmanaged(
        HelpLauncherFactory::create_unmanaged("TarqTerrain"));
    EXPECT_NE(dynamic_cast<TerrainHelpLauncher*>(unmanaged.get()), nullptr);
}

TEST_F(HelpLauncherTest, MakesOneWindowWhenItIsFirstNeeded)
{
    EXPECT_EQ(launcher.window(), nullptr);
    launcher.show_page(help_key(Topic::Map), false);
    HelpWindow* const p_first = launcher.window();
    ASSERT_NE(p_first, nullptr);
    EXPECT_TRUE(p_first->isWindow());
    ShownHelp(*p_first).expect_page("map.html");
    EXPECT_FALSE(p_first->view().history()->canGoBack());
    launcher.show_page(help_key(Topic::Undo), false);
    EXPECT_EQ(launcher.window(), p_first);
    ShownHelp(*p_first).expect_page("undo.html");
    EXPECT_TRUE(opened.urls.empty());
}

TEST_F(HelpLauncherTest, OpensAPageOutsideAndMakesNoWindow)
{
    launcher.show_page(help_key(Topic::Map), true);
    launcher.show_page(help_key(Topic::Preferences) + "#viewer", true);
    ASSERT_EQ(opened.urls.size(), 2U);
    EXPECT_EQ(opened.urls[0], QUrl::fromLocalFile(help_file("map.html")));
    EXPECT_EQ(opened.urls[1].toLocalFile(), help_file("preferences.html"));
    EXPECT_EQ(opened.urls[1].fragment(), "viewer");
    EXPECT_EQ(launcher.window(), nullptr);
}

TEST_F(HelpLauncherTest, OpensPagesOutsideForThoseWhoPreferIt)
{
    ApplicationManager::instance().setUseExternalHelpViewer(true);
    launcher.show_page(help_key(Topic::Map), false);
    EXPECT_EQ(opened.urls.size(), 1U);
    EXPECT_EQ(launcher.window(), nullptr);
    ApplicationManager::instance().setUseExternalHelpViewer(false);
    launcher.show_page(help_key(Topic::Map), false);
    EXPECT_EQ(opened.urls.size(), 1U);
    EXPECT_NE(launcher.window(), nullptr);
}

TEST_F(HelpLauncherTest, ShowsThePageItselfWithoutAWebBrowser)
{
    const NoBrowser nothing;
    launcher.show_page(help_key(Topic::Map), true);
    ASSERT_NE(launcher.window(), nullptr);
    ShownHelp(*launcher.window()).expect_page("map.html");
    EXPECT_TRUE(log.take("No web browser was found that opens \"file:///"));
}

TEST_F(HelpLauncherTest, NamesAnUnknownTopicItselfEvenIfAskedToOpenItOutside)
{
    launcher.show_page("NO_SUCH_KEY", true);
    ASSERT_NE(launcher.window(), nullptr);
    ShownHelp(*launcher.window()).expect_text("The help has no page about \"NO_SUCH_KEY\".");
    EXPECT_TRUE(log.take("The help has no page about \"NO_SUCH_KEY\"."));
    EXPECT_TRUE(opened.urls.empty());
}

TEST_F(HelpLauncherTest, SaysThatTheHelpIsNotInstalledEvenIfAskedToOpenItOutside)
{
    TerrainHelpLauncher without_pages(HelpPages(own_folder() + "/not there"));
    without_pages.show_page(help_key(Topic::Map), true);
    ASSERT_NE(without_pages.window(), nullptr);
    ShownHelp(*without_pages.window()).expect_text("The help is not installed");
    EXPECT_TRUE(log.take("The help is not installed"));
    EXPECT_TRUE(opened.urls.empty());
}

TEST_F(HelpLauncherTest, TheWindowGoesWithIt)
{
    auto another = std::make_unique<TerrainHelpLauncher>();
    another->show_page(help_key(Topic::Map), false);
    EXPECT_NE(visible_help(), nullptr);
    another.reset();
    EXPECT_EQ(visible_help(), nullptr);
}

namespace {

/// The main window, with the program's own help behind its Help menu.
class HelpOfMainWindow : public WindowTest
{ };

} // namespace

TEST_F(HelpOfMainWindow, F1OnTheMapOpensThePageAboutIt)
{
    open_terrain_file("a.tif");
    window->view()->setFocus();
    QTest::keyClick(window->view(), Qt::Key_F1);
    HelpWindow* const p_help = visible_help();
    ASSERT_NE(p_help, nullptr);
    ShownHelp(*p_help).expect_page("map.html");
}

TEST_F(HelpOfMainWindow, TheShortcutsAreThoseOfTheCurrentDocument)
{
    open_terrain_file("a.tif");
    entry(" &Help", "&Shortcuts...").trigger();
    HelpWindow* const p_help = visible_help();
    ASSERT_NE(p_help, nullptr);
    const ShownHelp shown(*p_help);
    shown.expect_page("keyboard-shortcuts.html");
    shown.expect_text("What is possible with a, the raster that is on top");
    shown.expect_text("Write the raster or its contour lines to a file");
}
