#include "panels/QuickHelpPanel.h"
#include "CommandFixture.h"
#include "documents/TerrainDocument.h"
#include "help/Bindings.h"
#include "help/TerrainQuickHelp.h"
#include "panels/QuickHelpSheet.h"
#include "support/App.h"
#include "support/MessageSpy.h"
#include "tour/TourSteps.h"
#include "windows/Deeds.h"

#include <tarqa/housekeeping/QuickHelpInputModelFilter.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

#include <QtCore/QRegularExpression>
#include <QtQml/QQmlEngine>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QAction>

#include <gtest/gtest.h>

#include <map>

using namespace host_test;
using housekeeping::QuickHelpSection;
using terrain::key_bindings;
using terrain::KeyBinding;
using terrain::QuickHelpPanel;
using terrain::QuickHelpSheet;
using terrain::TerrainQuickHelp;

namespace {

/// The texts of a document's bindings in a section, "command: description".
QStringList inputs(const housekeeping::DocumentId& document, QuickHelpSection section)
{
    housekeeping::QuickHelpInputModelFilter filter(document, nullptr);
    filter.setSourceModel(housekeeping::QuickHelpManager::instance().sectionModel(section));
    QStringList texts;
    for (int row = 0; row < filter.rowCount(); ++row) {
        const QModelIndex index = filter.index(row, 0);
        texts.append(index.data(Qt::DisplayRole).toString() + ": " + index.data(Qt::UserRole).toString());
    }
    return texts;
}

/// Finds rows about the mouse.
QRegularExpression mouse_row()
{
    return QRegularExpression("^([LMR]MB|Wheel): ");
}

class QuickHelpTableTest : public testing::Test
{
protected:
    support::App application;
    terrain::TerrainDocument& document = make_document(make_raster(2, 1, {1, 2}));
    const TerrainQuickHelp general;
    const TerrainQuickHelp help{document};
};

} // namespace

TEST_F(QuickHelpTableTest, EveryShortcutOfAnActionIsInTheQuickHelp)
{
    const terrain::Deeds deeds;
    for (const KeyBinding& binding : key_bindings()) {
        const QAction& action = deeds.action(binding.deed);
        const QString name = binding.description;
        ASSERT_EQ(action.shortcuts().isEmpty(), binding.keys.isEmpty()) << name.toStdString();
        if (binding.keys.isEmpty()) {
            continue; // without a key it is in the menus only
        }
        ASSERT_EQ(action.shortcuts().size(), 1) << name.toStdString();
        const QString expected = action.shortcut().toString(QKeySequence::NativeText) + ": " + name;
        EXPECT_EQ(inputs(document.id(), binding.section).count(expected), 1) << expected.toStdString();
    }
}

TEST_F(QuickHelpTableTest, NoTwoDeedsShareAKey)
{
    std::map<QKeySequence, QString> deeds;
    for (const KeyBinding& binding : key_bindings()) {
        if (!binding.keys.isEmpty()) {
            EXPECT_TRUE(deeds.emplace(binding.keys, binding.text).second) << binding.text.toStdString();
        }
    }
    for (const terrain::HelpBinding& binding : terrain::help_bindings()) {
        EXPECT_TRUE(deeds.emplace(binding.keys, "").second) << binding.description.toStdString();
    }
}

TEST_F(QuickHelpTableTest, TheMouseIsTheCurrentTool)
{
    EXPECT_EQ(inputs(document.id(), QuickHelpSection::CurrentTool).filter(mouse_row()),
        (QStringList{"LMB: Drag to move the map", "LMB: Click for the profile through a cell",
            "Wheel: Zoom at the pointer", "LMB: Raise, Lower: drag to draw a stroke",
            "Wheel: Raise, Lower: with Ctrl, the radius of the brush",
            "LMB: Flatten: click for corners, double-click to close the polygon",
            "RMB: With a tool: drag to move the map", "LMB: 3D view: drag to turn, with Shift to move",
            "MMB: 3D view: drag to move", "LMB: 3D view: double-click to go to a place"}));
}

TEST_F(QuickHelpTableTest, TheKeysOfToolsAreShownBeforeTheMouse)
{
    const QStringList keys{"H: Move the map with the mouse", "R: Raise the terrain with a brush",
        "L: Lower the terrain with a brush", "P: Draw a polygon and give its cells one height",
        "[: Raise, Lower: smaller brush, with ] a larger one", "Return: Flatten: close the polygon",
        "Backspace: Flatten: take the last corner back", "Esc: Give up a stroke or a polygon"};
    const QStringList rows = inputs(document.id(), QuickHelpSection::CurrentTool);
    EXPECT_EQ(rows.mid(0, keys.size()), keys);
    EXPECT_EQ(rows.mid(keys.size()), rows.filter(mouse_row()));
}

TEST_F(QuickHelpTableTest, WithoutADocumentOnlyWhatIsPossibleIsShown)
{
    const auto none = housekeeping::DocumentId::null();
    EXPECT_EQ(inputs(none, QuickHelpSection::View), QStringList());
    EXPECT_EQ(inputs(none, QuickHelpSection::File),
        (QStringList{"Ctrl+O: Open elevation rasters", "Ctrl+,: Change how the program looks and works",
            "Ctrl+Q: Close all and quit"}));
}

TEST_F(QuickHelpTableTest, TheKeysOfTheHelpMenuAreAlwaysShown)
{
    const QStringList expected{"F1: Help about this map or panel", "Shift+F1: Show the Quick Help panel"};
    EXPECT_EQ(inputs(housekeeping::DocumentId::null(), QuickHelpSection::Visibility), expected);
    const QStringList views{"F6: Show the map", "F7: Show the terrain in three dimensions",
        "F8: Show the map and the terrain in three dimensions, side by side"};
    EXPECT_EQ(inputs(document.id(), QuickHelpSection::Visibility), expected + views);
}

TEST_F(QuickHelpTableTest, GoesWithItsObject)
{
    const QStringList rows = inputs(document.id(), QuickHelpSection::CurrentTool);
    ASSERT_FALSE(rows.isEmpty());
    auto another = std::make_unique<TerrainQuickHelp>(document);
    EXPECT_EQ(inputs(document.id(), QuickHelpSection::CurrentTool).size(), 2 * rows.size());
    another.reset();
    EXPECT_EQ(inputs(document.id(), QuickHelpSection::CurrentTool), rows);
}

TEST_F(QuickHelpTableTest, TheDescriptionTellsFactsOfTheRaster)
{
    EXPECT_EQ(housekeeping::QuickHelpManager::instance().description(document.id()), "2 × 1 cells");
}

TEST_F(QuickHelpTableTest, TheSheetHasAllRowsOfOneDocument)
{
    const terrain::TerrainDocument& other = make_document(make_raster(1, 1, {1}));
    const TerrainQuickHelp of_other(other);
    QuickHelpSheet sheet;
    EXPECT_EQ(sheet.rows(), TerrainQuickHelp::rows(false));
    sheet.show_document(document.id());
    EXPECT_EQ(sheet.rows(), TerrainQuickHelp::rows(true));
    EXPECT_EQ(sheet.title(), QString::fromStdString(document.short_title()));
    EXPECT_EQ(sheet.sections().size(), 8);
    EXPECT_EQ(sheet.sections().at(1).toMap().value("name").toString(), "View");
}

TEST_F(QuickHelpTableTest, TheSheetAnnouncesTheTextsOfItsDocumentOnly)
{
    QuickHelpSheet sheet;
    sheet.show_document(document.id());
    const QSignalSpy titles(&sheet, &QuickHelpSheet::titleChanged);
    housekeeping::QuickHelpTitleEntry of_none(nullptr, housekeeping::DocumentId::null(), "none");
    of_none.setAttached(true);
    EXPECT_EQ(titles.count(), 0);
    housekeeping::QuickHelpTitleEntry entry(nullptr, document.id(), "new");
    entry.setAttached(true);
    EXPECT_EQ(titles.count(), 1);
    EXPECT_EQ(sheet.title(), "new");
}

TEST_F(QuickHelpTableTest, ThePanelDrawsARowForEachBinding)
{
    QuickHelpPanel panel;
    panel.sheet().show_document(document.id());
    panel.resize(320, 600);
    panel.show();
    EXPECT_TRUE(support::wait_until([&panel] { return terrain::is_varied(panel.grab().toImage()); }));
    EXPECT_EQ(panel.rows_drawn(), TerrainQuickHelp::rows(true));
    panel.sheet().show_document(housekeeping::DocumentId::null());
    EXPECT_EQ(panel.rows_drawn(), TerrainQuickHelp::rows(false));
}

TEST_F(QuickHelpTableTest, ThePanelIsCompleteWhenItIsSeenFirst)
{
    QWidget window;
    auto* const p_panel = new QuickHelpPanel(&window);
    p_panel->sheet().show_document(document.id());
    p_panel->resize(320, 600);
    p_panel->hide();
    window.resize(320, 600);
    window.show();
    ASSERT_FALSE(p_panel->isVisible());
    p_panel->show();
    EXPECT_TRUE(terrain::is_varied(p_panel->grab().toImage())) << "no event has been handled";
}

TEST_F(QuickHelpTableTest, ThePanelHasAnEngineOfQmlWhenItIsShownAndKeepsIt)
{
    QuickHelpPanel panel;
    panel.sheet().show_document(document.id());
    EXPECT_EQ(panel.findChildren<QQmlEngine*>().size(), 0);
    panel.show();
    const QList<QQmlEngine*> engines = panel.findChildren<QQmlEngine*>();
    EXPECT_EQ(engines.size(), 1);
    panel.hide();
    panel.show();
    EXPECT_EQ(panel.findChildren<QQmlEngine*>(), engines);
}

TEST_F(QuickHelpTableTest, ThePanelFollowsEntriesThatComeAndGo)
{
    QuickHelpPanel panel;
    panel.sheet().show_document(document.id());
    auto more = std::make_unique<TerrainQuickHelp>(document);
    EXPECT_GT(panel.rows_drawn(), TerrainQuickHelp::rows(true));
    more.reset();
    EXPECT_EQ(panel.rows_drawn(), TerrainQuickHelp::rows(true));
}
