#include "tour/WindowSteps.h"

#include "help/Bindings.h"
#include "help/TerrainQuickHelp.h"
#include "panels/HistoryModel.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "tour/TourLooks.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/MainWindow.h"
#include "windows/RecentMenu.h"

#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtWidgets/QAction>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabBar>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const int s_notches = 7;
const int s_panels = 5;
const int s_rows_of_the_library = 2; ///< of the quick help, for undo and redo
const QPoint s_place_of_floating_panel(150, 110); ///< in the main window

TourCheck quick_help_is_complete(MainWindow& window, bool with_document)
{
    const int rows = window.quick_help().rows_drawn();
    const int expected = TerrainQuickHelp::rows(with_document) + s_rows_of_the_library;
    return {QObject::tr("the quick help has %1 rows, expected %2").arg(rows).arg(expected), rows == expected};
}

TourCheck tab_count_is(const MainWindow& window, int expected)
{
    const int tabs = window.panel_tabs().count();
    return {QObject::tr("docked panels: %1, expected %2").arg(tabs).arg(expected), tabs == expected};
}

/// Clicks on the tab of a panel.
void choose_panel(MainWindow& window, const QWidget& panel)
{
    QTabBar& tabs = window.panel_tabs();
    for (int tab = 0; tab < tabs.count(); ++tab) {
        if (tabs.tabText(tab) == panel.windowTitle()) {
            click(tabs, tabs.tabRect(tab).center());
        }
    }
}

QMenu& file_menu(const MainWindow& window)
{
    return *window.menuBar()->actions().first()->menu();
}

} // namespace

void open_first(TourStage& stage)
{
    stage.window.open(stage.first_file);
}

Checks see_relief(TourStage& stage)
{
    return {document_count_is(1), title_names(stage.window, stage.first_file), relief_is_drawn(stage.window)};
}

void zoom_in(TourStage& stage)
{
    TerrainView& view = *stage.window.view();
    const QPoint pointer = interesting_point(view);
    stage.first_scale = view.scale();
    stage.first_reading = view.reading_text(pointer);
    move_pointer(view, pointer);
    turn_wheel(view, pointer, s_notches);
    drag(view, pointer, pointer + QPoint(60, 40));
}

Checks see_value(TourStage& stage)
{
    const QString reading = stage.window.reading();
    return {
        {QObject::tr("the map is larger"), stage.window.view()->scale() > stage.first_scale},
        // Neither the wheel nor dragging takes the place away from under the pointer.
        {QObject::tr("the status bar says \"%1\", expected \"%2\"").arg(reading, stage.first_reading),
            !reading.isEmpty() && reading == stage.first_reading},
        relief_is_drawn(stage.window),
    };
}

void show_quick_help(TourStage& stage)
{
    stage.window.action(Deed::QuickHelp).trigger();
}

Checks see_quick_help(TourStage& stage)
{
    return {
        {QObject::tr("the quick help is shown"), stage.window.quick_help().isVisible()},
        quick_help_is_complete(stage.window, true),
        {QObject::tr("its picture is not uniform"), is_varied(stage.window.quick_help().grab().toImage())},
    };
}

void open_second(TourStage& stage)
{
    choose_panel(stage.window, stage.window.home());
    stage.window.open(stage.second_file);
}

Checks see_second(TourStage& stage)
{
    const int listed = stage.window.home().documents().count();
    const int entries = stage.window.history().model().commands();
    return {document_count_is(2), title_names(stage.window, stage.second_file),
        {QObject::tr("the list of documents has %1 entries, expected 2").arg(listed), listed == 2},
        {QObject::tr("its history has %1 entries, expected 0").arg(entries), entries == 0},
        relief_is_drawn(stage.window)};
}

void open_recent_menu(TourStage& stage)
{
    RecentMenu& recent = stage.window.recent_menu();
    stage.window.menuBar()->setActiveAction(stage.window.menuBar()->actions().first());
    file_menu(stage.window).setActiveAction(recent.menuAction());
    recent.setActiveAction(recent.actions().value(0));
}

Checks see_recent_menu(TourStage& stage)
{
    const RecentMenu& recent = stage.window.recent_menu();
    const QStringList expected{
        QFileInfo(stage.second_file).fileName(), QFileInfo(stage.first_file).fileName()};
    QStringList names;
    for (const QAction* const p_action : recent.actions()) {
        names.append(QFileInfo(p_action->statusTip()).fileName());
    }
    return {{QObject::tr("the menus are shown"), recent.isVisible() && file_menu(stage.window).isVisible()},
        {QObject::tr("the recent files are %1, expected %2").arg(names.join(", "), expected.join(", ")),
            names == expected},
        {QObject::tr("they have numbers to press"), recent.actions().value(0)->text().startsWith("&1 ")}};
}

void choose_first(TourStage& stage)
{
    stage.window.recent_menu().hide();
    file_menu(stage.window).hide();
    QListWidget& list = stage.window.home().documents();
    click(*list.viewport(), list.visualItemRect(list.item(0)).center());
}

Checks see_first_again(TourStage& stage)
{
    const QString help = stage.window.quick_help().sheet().title();
    const QString name = QFileInfo(stage.first_file).completeBaseName();
    return {title_names(stage.window, stage.first_file),
        {QObject::tr("the quick help is about \"%1\", expected \"%2\"").arg(help, name), help == name},
        relief_is_drawn(stage.window)};
}

void tear_panel_off(TourStage& stage)
{
    QTabBar& tabs = stage.window.panel_tabs();
    const QPoint tab = tabs.tabRect(1).center();
    drag(tabs, tab, tab + QPoint(80, 200));
    stage.window.quick_help().window()->move(stage.window.pos() + s_place_of_floating_panel);
}

Checks see_floating_panel(TourStage& stage)
{
    QuickHelpPanel& panel = stage.window.quick_help();
    return {tab_count_is(stage.window, s_panels - 1),
        {QObject::tr("the quick help floats"), panel.isVisible() && panel.window() != &stage.window},
        {QObject::tr("its picture is not uniform"), is_varied(panel.grab().toImage())},
        quick_help_is_complete(stage.window, true)};
}

void close_floating_panel(TourStage& stage)
{
    stage.window.quick_help().window()->close();
}

Checks see_docked_panel(TourStage& stage)
{
    QuickHelpPanel& panel = stage.window.quick_help();
    return {tab_count_is(stage.window, s_panels),
        {QObject::tr("the quick help is docked"), panel.isVisible() && panel.window() == &stage.window},
        {QObject::tr("its picture is not uniform"), is_varied(panel.grab().toImage())}};
}

void close_documents(TourStage& stage)
{
    stage.window.action(Deed::Close).trigger();
    stage.window.action(Deed::Close).trigger();
}

Checks see_start_page(TourStage& stage)
{
    const int listed = stage.window.home().documents().count();
    const int entries = stage.window.history().model().commands();
    return {document_count_is(0), {QObject::tr("no map is shown"), !stage.window.view()},
        {QObject::tr("the list of documents has %1 entries, expected 0").arg(listed), listed == 0},
        {QObject::tr("the history has %1 entries, expected 0").arg(entries), entries == 0},
        quick_help_is_complete(stage.window, false)};
}

} // namespace terrain
