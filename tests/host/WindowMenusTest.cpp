#include "HelpRecorder.h"
#include "WindowFixture.h"
#include "panels/LayersPanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/StatisticsPanel.h"
#include "support/LogCapture.h"
#include "views/TerrainView.h"

#include <pkBaseQt/QLogFileViewer.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolBar>

#include <map>

using namespace host_test;
using terrain::Deed;

namespace {

class WindowMenusTest : public WindowTest
{
protected:
    void SetUp() override
    {
        register_recorded_help();
        WindowTest::SetUp();
    }
    std::string product() const override { return s_recorded_product; }

    /// All actions of the window: those of its widgets and menus, and of menus in them.
    QSet<QAction*> actions() const
    {
        QSet<QAction*> found;
        QList<QWidget*> widgets = window->findChildren<QWidget*>();
        widgets.append(window.get());
        while (!widgets.isEmpty()) {
            for (QAction* const p_action : widgets.takeFirst()->actions()) {
                if (!found.contains(p_action) && p_action->menu()) {
                    widgets.append(p_action->menu());
                }
                found.insert(p_action);
            }
        }
        return found;
    }
};

QString mnemonic(const QString& text)
{
    return QRegularExpression("&([^&])").match(text).captured(1).toLower();
}

} // namespace

TEST_F(WindowMenusTest, AreFilledByWhoeverHasSomethingToOffer)
{
    EXPECT_EQ(texts(*window->menuBar()), (QStringList{"&File", "&Edit", "&View", "&Tools", " &Help"}));
    EXPECT_EQ(texts(menu("&File")),
        (QStringList{"&Open…", "Open &Recent", "-", "&Save", "Save &As…", "-", "&Export…", "-", "&Close", "-",
            "&Preferences…", "-", "Report a Pro&blem…", "-", "Res&tart", "&Quit"}));
    EXPECT_EQ(texts(menu("&Edit")).mid(0, 2), (QStringList{"&Undo", "&Redo"}));
    EXPECT_EQ(texts(menu("&View")),
        (QStringList{"Zoom &In", "Zoom &Out", "&Whole Raster", "-", "Look &Left", "Look &Right", "Look &Up",
            "Look &Down", "-", "&Map", "&3D View", "Both &Views", "-", "Or&bit", "&Fly", "E&xaggerate More",
            "&Exaggerate Less", "-", "&Contour Lines", "Tri&angulation", "Le&gend", "&Scale Bar", "-",
            "&Previous Document", "&Next Document", "-", "Quick &Help", "S&tatistics", "La&yers"}));
    EXPECT_EQ(texts(menu("&Tools")),
        (QStringList{"&Smooth…", "&Fill Sinks", "&Clamp…", "Sc&ale…", "-", "Cro&p…", "&Resample…", "-",
            "&Triangulate…", "-", "Clean &Up", "-", "Mo&ve the Map", "Ra&ise", "&Lower",
            "Flatte&n a Polygon"}));
    EXPECT_EQ(texts(menu(" &Help")),
        (QStringList{"&Contents...", "&Quick Help...", "&Shortcuts...", "Show &Log File...", "-",
            "&About RecordedHelp..."}));
}

TEST_F(WindowMenusTest, TheToolBarHasWhatIsNeededMost)
{
    const auto sp_undo_redo = housekeeping::gui::UndoRedoPresentation::instance();
    const QList<QAction*> tool_bar = window->tool_bar().actions();
    EXPECT_TRUE(tool_bar.contains(sp_undo_redo->undo_tool_bar_action()));
    EXPECT_TRUE(tool_bar.contains(sp_undo_redo->redo_tool_bar_action()));
    EXPECT_FALSE(tool_bar.contains(sp_undo_redo->undo_action())) << "that one is for the menu and the keys";
    EXPECT_TRUE(tool_bar.contains(&window->action(Deed::QuickHelp)));
}

TEST_F(WindowMenusTest, NoTwoActionsShareAKey)
{
    open_terrain_file("a.tif");
    std::map<QKeySequence, QString> keys;
    for (const QAction* const p_action : actions()) {
        for (const QKeySequence& key : p_action->shortcuts()) {
            const auto [iter, is_new] = keys.emplace(key, p_action->text());
            EXPECT_TRUE(is_new) << key.toString().toStdString() << " is that of \""
                                << p_action->text().toStdString() << "\" and \"" << iter->second.toStdString()
                                << "\"";
        }
    }
    EXPECT_EQ(keys.at(Qt::Key_F1), "&Contents...");
    EXPECT_EQ(keys.at(Qt::SHIFT + Qt::Key_F1), "&Quick Help...");
    EXPECT_EQ(keys.at(Qt::CTRL + Qt::Key_Comma), "&Preferences…");
    EXPECT_EQ(keys.at(QKeySequence::Open), "&Open…");
    EXPECT_EQ(keys.at(Qt::CTRL + Qt::Key_Z), "&Undo");
}

TEST_F(WindowMenusTest, NoTwoEntriesOfAMenuShareAMnemonic)
{
    QList<QWidget*> bars{window->menuBar()};
    for (const QAction* const p_action : window->menuBar()->actions()) {
        bars.append(p_action->menu());
    }
    for (const QWidget* const p_bar : bars) {
        QSet<QString> mnemonics;
        for (const QString& text : texts(*p_bar)) {
            const QString letter = mnemonic(text);
            EXPECT_TRUE(text == "-" || !letter.isEmpty()) << text.toStdString();
            EXPECT_FALSE(!letter.isEmpty() && mnemonics.contains(letter)) << text.toStdString();
            mnemonics.insert(letter);
        }
    }
}

TEST_F(WindowMenusTest, EachDeedTellsInTheStatusBarWhatItDoes)
{
    for (const terrain::KeyBinding& binding : terrain::key_bindings()) {
        EXPECT_FALSE(window->action(binding.deed).statusTip().isEmpty()) << binding.text.toStdString();
    }
}

TEST_F(WindowMenusTest, SwitchTheLayersOfTheMapOnTop)
{
    open_terrain_file("a.tif");
    QAction& lines = window->action(Deed::ContourLines);
    EXPECT_FALSE(lines.isChecked());
    EXPECT_TRUE(window->action(Deed::Legend).isChecked());
    EXPECT_TRUE(window->action(Deed::ScaleBar).isChecked());
    QTest::keyClick(window.get(), Qt::Key_C);
    EXPECT_TRUE(window->view()->layers().contours);
    EXPECT_TRUE(lines.isChecked());
    entry("&View", "Le&gend").trigger();
    EXPECT_FALSE(window->view()->layers().legend);
    entry("&View", "&Scale Bar").trigger();
    EXPECT_FALSE(window->view()->layers().scale_bar);
    EXPECT_TRUE(window->view()->layers().contours);
}

TEST_F(WindowMenusTest, TellWhatTheMapOnTopShows)
{
    open_terrain_file("a.tif");
    terrain::MapLayers layers;
    layers.contours = true;
    window->view()->set_layers(layers); // somebody else switches
    EXPECT_TRUE(window->action(Deed::ContourLines).isChecked());
    open_terrain_file("b.tif");
    EXPECT_FALSE(window->action(Deed::ContourLines).isChecked()) << "each map has layers of its own";
    window->action(Deed::PreviousDocument).trigger();
    EXPECT_TRUE(window->action(Deed::ContourLines).isChecked());
    window->close_document();
    window->close_document();
    EXPECT_FALSE(window->action(Deed::ContourLines).isChecked());
    EXPECT_FALSE(window->action(Deed::ContourLines).isEnabled());
}

TEST_F(WindowMenusTest, F1OpensTheHelp)
{
    QTest::keyClick(window.get(), Qt::Key_F1);
    EXPECT_EQ(take_pages(), QStringList{"TARQ_CONTENTS"});
    EXPECT_FALSE(window->quick_help().isVisible()) << "it did so in former versions";
}

TEST_F(WindowMenusTest, ShiftF1ShowsTheQuickHelp)
{
    QTest::keyClick(window.get(), Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_TRUE(window->quick_help().isVisible());
    EXPECT_EQ(take_pages(), QStringList());
}

TEST_F(WindowMenusTest, TheEntriesForPanelsShowThem)
{
    entry("&View", "S&tatistics").trigger();
    EXPECT_TRUE(window->statistics().isVisible());
    entry("&View", "La&yers").trigger();
    EXPECT_TRUE(window->layers().isVisible());
}

TEST_F(WindowMenusTest, TheEntriesForTheQuickHelpShowIt)
{
    entry(" &Help", "&Quick Help...").trigger();
    EXPECT_TRUE(window->quick_help().isVisible());
    window->panel_tabs().setCurrentIndex(0);
    EXPECT_FALSE(window->quick_help().isVisible());
    entry("&View", "Quick &Help").trigger();
    EXPECT_TRUE(window->quick_help().isVisible());
}

TEST_F(WindowMenusTest, TheEntryForTheShortcutsOpensTheirPage)
{
    entry(" &Help", "&Shortcuts...").trigger();
    EXPECT_EQ(take_pages(), QStringList{"TARQ_KEYBOARD_SHORTCUTS"});
}

TEST_F(WindowMenusTest, TheEntryForTheLogShowsIt)
{
    log.take_all();
    entry(" &Help", "Show &Log File...").trigger();
    EXPECT_TRUE(pkBase::QLogFileViewer::instance().isVisible());
    pkBase::QLogFileViewer::instance().close();
}

TEST_F(WindowMenusTest, AProblemIsReportedInTheWebBrowser)
{
    OpenedAddresses opened;
    open_terrain_file("a b.tif");
    entry("&File", "Report a Pro&blem…").trigger();
    ASSERT_EQ(opened.urls.size(), 1u);
    EXPECT_EQ(opened.urls[0].adjusted(QUrl::RemoveQuery), housekeeping::gui::HelpManager::issue_form());
    EXPECT_TRUE(opened.urls[0].query(QUrl::FullyDecoded).contains("a%20b.tif"))
        << "the current document is part of the report";
}

TEST_F(WindowMenusTest, AWindowThatIsMadeAnewHasAHelpMenuToo)
{
    make_window_anew();
    EXPECT_EQ(texts(menu(" &Help")).size(), 6);
    QTest::keyClick(window.get(), Qt::Key_F1);
    EXPECT_EQ(take_pages(), QStringList{"TARQ_CONTENTS"});
    QTest::keyClick(window.get(), Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_TRUE(window->quick_help().isVisible());
}
