#include "HelpRecorder.h"
#include "WindowFixture.h"
#include "help/HelpTopics.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/LayersPanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/StatisticsPanel.h"
#include "presentations/CommandsPresentation.h"
#include "support/DialogDriver.h"
#include "support/EmptyRegistry.h"
#include "support/MessageSpy.h"
#include "views/TerrainView.h"
#include "windows/DocumentBox.h"
#include "windows/DocumentViews.h"
#include "windows/StartPage.h"

#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/QPKHelpButton.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>
#include <tarqa/housekeeping/gui/HelpManager.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

using namespace host_test;
using housekeeping::gui::HelpManager;
using support::DialogDriver;
using terrain::CommandsPresentation;
using terrain::help_key;
using terrain::Topic;

namespace {

/// A window whose help only notes what it was asked for.
class WindowHelpTest : public WindowTest
{
protected:
    void SetUp() override
    {
        register_recorded_help();
        WindowTest::SetUp();
    }
    std::string product() const override { return s_recorded_product; }

    /// Something in a panel that takes the keyboard.
    static QWidget& inside(const QWidget& panel)
    {
        for (QWidget* const p_widget : panel.findChildren<QWidget*>()) {
            if (p_widget->focusPolicy() != Qt::NoFocus && !p_widget->isHidden()) {
                return *p_widget;
            }
        }
        throw std::runtime_error("nothing takes the keyboard");
    }

    /// The pages that open when F1 is pressed in a widget.
    static QStringList pages_about(QWidget& widget)
    {
        QApplication::setActiveWindow(widget.window());
        widget.setFocus();
        EXPECT_EQ(QApplication::focusWidget(), &widget);
        QTest::keyClick(&widget, Qt::Key_F1);
        return take_pages();
    }

    QStringList pages_about_panel(QWidget& panel)
    {
        window->show_panel(panel);
        return pages_about(inside(panel));
    }
};

} // namespace

TEST_F(WindowHelpTest, F1OpensThePageAboutThePanelThatHasTheKeyboard)
{
    open_terrain_file("a.tif");
    EXPECT_EQ(pages_about_panel(window->home()), QStringList{help_key(Topic::HomePanel)});
    EXPECT_EQ(pages_about_panel(window->quick_help()), QStringList{help_key(Topic::QuickHelpPanel)});
    EXPECT_EQ(pages_about_panel(window->history()), QStringList{help_key(Topic::HistoryPanel)});
    EXPECT_EQ(pages_about_panel(window->statistics()), QStringList{help_key(Topic::StatisticsPanel)});
    EXPECT_EQ(pages_about_panel(window->layers()), QStringList{help_key(Topic::LayersPanel)});
}

TEST_F(WindowHelpTest, F1OpensThePageAboutTheMap)
{
    open_terrain_file("a.tif");
    EXPECT_EQ(pages_about(*window->view()), QStringList{help_key(Topic::Map)});
    open_terrain_file("b.tif");
    EXPECT_EQ(pages_about(*window->view()), QStringList{help_key(Topic::Map)});
}

TEST_F(WindowHelpTest, F1OpensTheContentsElsewhere)
{
    EXPECT_EQ(pages_about(window->views().start_page()), QStringList{help_key(Topic::Contents)});
    open_terrain_file("a.tif");
    EXPECT_EQ(pages_about(*window->view()), QStringList{help_key(Topic::Map)});
    EXPECT_EQ(pages_about(window->document_box()), QStringList{help_key(Topic::Contents)});
}

TEST_F(WindowHelpTest, F1OpensTheContentsWhenTheMapIsGone)
{
    open_terrain_file("a.tif");
    EXPECT_EQ(HelpManager::instance().currPath(), help_key(Topic::Map));
    window->close_document();
    EXPECT_EQ(HelpManager::instance().currPath(), help_key(Topic::Contents));
}

TEST_F(WindowHelpTest, TheKeysOfTheHelpWorkInFloatingPanels)
{
    open_terrain_file("a.tif");
    tear_off(window->history());
    tear_off(window->quick_help());
    tear_off(window->statistics());
    tear_off(window->layers());
    EXPECT_EQ(pages_about(inside(window->statistics())), QStringList{help_key(Topic::StatisticsPanel)});
    EXPECT_EQ(pages_about(inside(window->layers())), QStringList{help_key(Topic::LayersPanel)});
    EXPECT_EQ(pages_about(inside(window->history())), QStringList{help_key(Topic::HistoryPanel)});
    EXPECT_EQ(pages_about(inside(window->quick_help())), QStringList{help_key(Topic::QuickHelpPanel)});
    EXPECT_EQ(pages_about(*window->view()), QStringList{help_key(Topic::Map)});

    window->quick_help().window()->close(); // which docks it
    window->show_panel(window->home());
    inside(window->history()).setFocus();
    QApplication::setActiveWindow(window->history().window());
    QTest::keyClick(&inside(window->history()), Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_TRUE(window->quick_help().isVisible());
    EXPECT_EQ(take_pages(), QStringList());
}

TEST_F(WindowHelpTest, TheKeysOfTheHelpWorkInAPanelThatIsDockedAgain)
{
    open_terrain_file("a.tif");
    tear_off(window->history());
    window->history().window()->close();
    EXPECT_EQ(pages_about_panel(window->history()), QStringList{help_key(Topic::HistoryPanel)});
}

TEST_F(WindowHelpTest, TheContentsEntryIsAboutWhatHadTheKeyboardBeforeTheMenu)
{
    open_terrain_file("a.tif");
    window->show_panel(window->history());
    inside(window->history()).setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_H, Qt::AltModifier);
    QMenu& help = menu(" &Help");
    ASSERT_TRUE(help.isVisible());
    QTest::keyClick(&help, Qt::Key_C);
    EXPECT_FALSE(help.isVisible());
    EXPECT_EQ(take_pages(), QStringList{help_key(Topic::HistoryPanel)});
}

TEST_F(WindowHelpTest, TheMenuBarItselfIsNoPlace)
{
    open_terrain_file("a.tif");
    window->view()->setFocus();
    window->menuBar()->setFocus();
    EXPECT_EQ(HelpManager::instance().currPath(), help_key(Topic::Map));
}

TEST_F(WindowHelpTest, AnotherProgramInFrontChangesNothingForLong)
{
    open_terrain_file("a.tif");
    QApplication::setActiveWindow(nullptr);
    QApplication::setActiveWindow(window.get());
    EXPECT_EQ(pages_about(*window->view()), QStringList{help_key(Topic::Map)});
}

// --- dialogs

TEST_F(WindowHelpTest, TheDialogOfACommandHasAButtonForThePageAboutIt)
{
    open_terrain_file("a.tif");
    QStringList pages;
    const auto click_and_press = [&pages](QDialog& dialog) {
        EXPECT_EQ(dialog.windowModality(), Qt::WindowModal) << "so that the help can be read";
        dialog.findChild<pkBase::QPKHelpButton*>()->click();
        pages += take_pages();
        QApplication::setActiveWindow(&dialog);
        QTest::keyClick(&dialog, Qt::Key_F1); // clicks the button, a moment later
        EXPECT_TRUE(support::wait_until([&pages] {
            pages += take_pages();
            return pages.size() % 2 == 0;
        }));
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    };
    DialogDriver dialogs;
    CommandsPresentation& tools = CommandsPresentation::instance();
    QStringList expected;
    const std::pair<QAction*, Topic> commands[] = {{tools.smooth_action(), Topic::Smooth},
        {tools.clamp_action(), Topic::Clamp}, {tools.scale_action(), Topic::Scale},
        {tools.crop_action(), Topic::Crop}, {tools.resample_action(), Topic::Resample}};
    for (const auto& [p_action, topic] : commands) {
        dialogs.answer(click_and_press);
        p_action->trigger();
        expected << help_key(topic) << help_key(topic);
    }
    EXPECT_EQ(pages, expected);
    EXPECT_FALSE(runner().is_running());
}

TEST_F(WindowHelpTest, EnterRunsTheCommandAndDoesNotOpenTheHelp)
{
    open_terrain_file("a.tif");
    DialogDriver dialogs;
    dialogs.answer([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    CommandsPresentation::instance().smooth_action()->trigger();
    EXPECT_TRUE(runner().is_running());
    runner().wait();
    EXPECT_EQ(take_pages(), QStringList());
}

// --- the help of the program

TEST_F(WindowTest, ItsHelpAndLogDoNotKeepTheProgramAlive)
{
    entry(" &Help", "&Contents...").trigger();
    entry(" &Help", "Show &Log File...").trigger();
    EXPECT_EQ(QApplication::topLevelWidgets().count(&pkBase::QLogFileViewer::instance()), 1);
    QTimer::singleShot(0, window.get(), [this] { EXPECT_TRUE(window->close()); });
    const int too_long = 10000; // milliseconds
    QTimer::singleShot(too_long, qApp, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0) << "the main loop ends with the main window";
    log.take_all();
}

// --- a host without help

namespace {

class WindowWithoutHelpTest : public WindowHelpTest
{
protected:
    support::EmptyRegistry<housekeeping::gui::HelpLauncherFactory> nothing;

    void SetUp() override
    {
        WindowTest::SetUp();
        log.take_all(); // it says that there is no help
    }
};

} // namespace

TEST_F(WindowWithoutHelpTest, EverythingElseWorks)
{
    open_terrain_file("a.tif");
    QTest::keyClick(window->view(), Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_TRUE(window->quick_help().isVisible());
    EXPECT_EQ(texts(menu(" &Help")).size(), 6);
    window->action(terrain::Deed::Quit).trigger();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowWithoutHelpTest, F1SaysWhichPageIsMissing)
{
    open_terrain_file("a.tif");
    QTest::keyClick(window->view(), Qt::Key_F1);
    EXPECT_TRUE(log.take("\"" + help_key(Topic::Map).toStdString() + "\""));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the program can be used on";
}
