#include "HelpRecorder.h"
#include "WindowFixture.h"
#include "help/HelpTopics.h"
#include "preferences/ColourButton.h"
#include "support/EmptyRegistry.h"
#include "support/MessageSpy.h"
#include "views/TerrainView.h"

#include <pkBaseQt/QPKHelpButton.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>

using namespace host_test;
using housekeeping::ApplicationManager;
using housekeeping::gui::PreferencesDialog;
using terrain::Deed;

namespace {

class WindowPreferencesTest : public WindowTest
{
protected:
    void SetUp() override
    {
        register_recorded_help();
        WindowTest::SetUp();
    }
    std::string product() const override { return s_recorded_product; }

    PreferencesDialog& open()
    {
        window->action(Deed::Preferences).trigger();
        return *window->preferences();
    }

    terrain::ColourButton& background() const
    {
        return *window->preferences()->findChild<terrain::ColourButton*>("background_color");
    }

    void apply_background(const QColor& colour)
    {
        auto& tabs = *window->preferences()->findChild<QTabWidget*>("m_tab");
        for (int i = 0; i < tabs.count(); ++i) {
            if (tabs.widget(i)->isAncestorOf(&background())) {
                tabs.setCurrentIndex(i);
            }
        }
        background().set_colour(colour);
        window->preferences()->findChild<QPushButton*>("m_okButton")->click();
    }

    QColor corner_of_map() const { return window->view()->grab().toImage().pixelColor(3, 3); }
};

const QColor s_other(90, 20, 160);

} // namespace

TEST_F(WindowPreferencesTest, AreMadeWhenTheyAreFirstShown)
{
    EXPECT_EQ(window->preferences(), nullptr);
    PreferencesDialog& dialog = open();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.isModal());
    EXPECT_EQ(dialog.parentWidget(), window.get());
}

TEST_F(WindowPreferencesTest, AreShownByTheirKey)
{
    QTest::keyClick(window.get(), Qt::Key_Comma, Qt::ControlModifier);
    ASSERT_NE(window->preferences(), nullptr);
    EXPECT_TRUE(window->preferences()->isVisible());
}

TEST_F(WindowPreferencesTest, AreThereOnce)
{
    PreferencesDialog* const p_first = &open();
    EXPECT_EQ(&open(), p_first);
    p_first->close();
    EXPECT_EQ(&open(), p_first);
    EXPECT_EQ(window->findChildren<PreferencesDialog*>().size(), 1);
}

TEST_F(WindowPreferencesTest, ComeToTheFrontWithWhatWasEntered)
{
    open();
    QApplication::setActiveWindow(window.get());
    background().set_colour(s_other);
    PreferencesDialog& dialog = open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(background().colour(), s_other) << "they were open, so nothing was to be read again";
}

TEST_F(WindowPreferencesTest, ShowTheValuesAsTheyAreNowEachTimeTheyAreOpened)
{
    open();
    background().set_colour(s_other); // and not applied
    window->preferences()->close();
    ApplicationManager::instance().setViewBackgroundColour(Qt::darkGreen);
    open();
    EXPECT_EQ(background().colour().rgb(), QColor(Qt::darkGreen).rgb());
}

TEST_F(WindowPreferencesTest, TheMapFollows)
{
    open_terrain_file("a.tif");
    open();
    apply_background(s_other);
    EXPECT_TRUE(support::wait_until([this] { return corner_of_map().rgb() == s_other.rgb(); }));
    EXPECT_TRUE(window->preferences()->isVisible());
}

TEST_F(WindowPreferencesTest, HaveAPageOfTheHelp)
{
    PreferencesDialog& dialog = open();
    dialog.findChild<pkBase::QPKHelpButton*>("helpButton")->click();
    QApplication::setActiveWindow(&dialog);
    QTest::keyClick(&dialog, Qt::Key_F1);
    const QString key = terrain::help_key(terrain::Topic::Preferences);
    EXPECT_EQ(take_pages(), (QStringList{key, key}));
}

TEST_F(WindowPreferencesTest, GoWithTheWindow)
{
    open();
    EXPECT_TRUE(window->close());
    make_window_anew();
    EXPECT_EQ(window->preferences(), nullptr);
    EXPECT_TRUE(open().isVisible());
}

TEST_F(WindowPreferencesTest, DoNotKeepTheProgramAlive)
{
    open();
    QTimer::singleShot(0, window.get(), [this] { EXPECT_TRUE(window->close()); });
    const int too_long = 10000; // milliseconds
    QTimer::singleShot(too_long, qApp, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0) << "the main loop ends with the main window";
}

TEST_F(WindowPreferencesTest, AHostWithoutPagesShowsNone)
{
    const support::EmptyRegistry<housekeeping::gui::AbstractPreferencesFactory> nothing;
    PreferencesDialog& dialog = open();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.findChild<QTabWidget*>("m_tab")->count(), 0);
    dialog.findChild<QPushButton*>("m_okButton")->click();
    dialog.findChild<QPushButton*>("m_cancelButton")->click();
    EXPECT_FALSE(dialog.isVisible());
    window->action(Deed::Quit).trigger();
    EXPECT_FALSE(window->isVisible());
}
