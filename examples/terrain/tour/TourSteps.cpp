#include "tour/TourSteps.h"

#include "commands/CommandsController.h"
#include "documents/Raster.h"
#include "help/Bindings.h"
#include "help/TerrainQuickHelp.h"
#include "io/RasterWriter.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "sample/FractalTerrain.h"
#include "tour/CommandSteps.h"
#include "tour/HelpSteps.h"
#include "tour/PanelSteps.h"
#include "tour/PreferencesSteps.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/DocumentBox.h"
#include "windows/MainWindow.h"
#include "windows/RecentMenu.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtGui/QPainter>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabBar>

#include <algorithm>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const int s_sample_size = 512;
const int s_second_sample_size = 256;
const unsigned long long s_sample_seed = 1;
const unsigned long long s_second_sample_seed = 7;
const int s_notches = 7;
const int s_many_colours = 40;
const int s_sampling = 7; ///< pixels
const unsigned int s_held_up_at = 40; ///< per cent
const int s_panels = 5;
const int s_rows_of_the_library = 2; ///< of the quick help, for undo and redo
const QPoint s_place_of_floating_panel(150, 110); ///< in the main window

unsigned long long documents()
{
    return housekeeping::DocumentManager::const_instance().num_documents();
}

TourCheck document_count_is(unsigned long long expected)
{
    return {QObject::tr("open documents: %1, expected %2").arg(documents()).arg(expected),
        documents() == expected};
}

TourCheck title_names(const MainWindow& window, const QString& file)
{
    const QString name = QFileInfo(file).fileName();
    return {QObject::tr("the title \"%1\" holds \"%2\"").arg(window.windowTitle(), name),
        window.windowTitle().contains(name)};
}

/// Whether there are about as many colours on the map as there are heights.
bool shows_heights(TerrainView& view)
{
    const QImage picture = view.grab().toImage();
    QSet<double> heights;
    QSet<QRgb> colours;
    for (int y = 0; y < view.height(); y += s_sampling) {
        for (int x = 0; x < view.width(); x += s_sampling) {
            const auto reading = view.reading(QPointF(x + 0.5, y + 0.5));
            if (reading && !is_no_data(reading->height)) {
                heights.insert(reading->height);
                colours.insert(picture.pixel(QPoint(x, y) * picture.devicePixelRatio()));
            }
        }
    }
    colours.remove(view.palette().color(QPalette::Base).rgb());
    return !heights.isEmpty() && colours.size() >= std::min(heights.size(), s_many_colours);
}

TourCheck relief_is_drawn(const MainWindow& window)
{
    return {QObject::tr("the relief is drawn"), window.view() && shows_heights(*window.view())};
}

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

/// A point of the map that holds a height, near the middle.
QPoint interesting_point(const TerrainView& view)
{
    const QPoint middle = view.rect().center();
    for (int away = 0; away < middle.x(); away += 5) {
        const QPoint point = middle - QPoint(away, away / 3);
        const auto reading = view.reading(point);
        if (reading && !is_no_data(reading->height)) {
            return point;
        }
    }
    return middle;
}

// --- the window with the relief

void open_first(TourStage& stage)
{
    stage.window.open(stage.first_file);
}

Checks see_relief(TourStage& stage)
{
    return {document_count_is(1), title_names(stage.window, stage.first_file), relief_is_drawn(stage.window)};
}

// --- zoomed in

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

// --- the quick-help panel

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

// --- a second document

void open_second(TourStage& stage)
{
    choose_panel(stage.window, stage.window.home());
    stage.window.open(stage.second_file);
}

Checks see_second(TourStage& stage)
{
    const int listed = stage.window.home().documents().count();
    const int entries = stage.window.history().entries().count();
    return {document_count_is(2), title_names(stage.window, stage.second_file),
        {QObject::tr("the list of documents has %1 entries, expected 2").arg(listed), listed == 2},
        {QObject::tr("its history has %1 entries, expected 0").arg(entries), entries == 0},
        relief_is_drawn(stage.window)};
}

// --- the menu of recent files

QMenu& file_menu(const MainWindow& window)
{
    return *window.menuBar()->actions().first()->menu();
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

// --- back to the first one

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
    const int entries = stage.window.history().entries().count();
    return {title_names(stage.window, stage.first_file),
        {QObject::tr("the quick help is about \"%1\", expected \"%2\"").arg(help, name), help == name},
        {QObject::tr("its history has %1 entries").arg(entries), entries > 0}, relief_is_drawn(stage.window)};
}

// --- a panel in a window of its own

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

// --- and back among the others

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

// --- everything closed

void close_documents(TourStage& stage)
{
    stage.window.action(Deed::Close).trigger();
    stage.window.action(Deed::Close).trigger();
}

Checks see_start_page(TourStage& stage)
{
    const int listed = stage.window.home().documents().count();
    const int entries = stage.window.history().entries().count();
    return {document_count_is(0), {QObject::tr("no map is shown"), !stage.window.view()},
        {QObject::tr("the list of documents has %1 entries, expected 0").arg(listed), listed == 0},
        {QObject::tr("the history has %1 entries, expected 0").arg(entries), entries == 0},
        quick_help_is_complete(stage.window, false)};
}

/// The main window with all other windows over it, as they lie on the screen.
QImage all_windows(const MainWindow& window)
{
    std::vector<QWidget*> others;
    QRect area = window.geometry();
    for (QWidget* const p_widget : QApplication::topLevelWidgets()) {
        if (p_widget->isVisible() && p_widget != &window) {
            others.push_back(p_widget);
            area |= p_widget->geometry();
        }
    }
    QImage picture(area.size(), QImage::Format_RGB32);
    picture.fill(Qt::gray);
    QPainter painter(&picture);
    painter.drawPixmap(window.geometry().topLeft() - area.topLeft(), const_cast<MainWindow&>(window).grab());
    for (QWidget* const p_widget : others) {
        const QRect place = p_widget->geometry().translated(-area.topLeft());
        painter.drawPixmap(place.topLeft(), p_widget->grab());
        painter.drawRect(place.adjusted(-1, -1, 0, 0)); // the frame, which nobody else draws here
    }
    return picture;
}

} // namespace

const std::vector<TourStep>& tour_steps()
{
    static const std::vector<TourStep> s_steps = {
        {"relief", TourPicture::Window, &open_first, &see_relief},
        {"zoomed-in", TourPicture::Window, &zoom_in, &see_value},
        {"quick-help", TourPicture::Window, &show_quick_help, &see_quick_help},
        {"help-contents", TourPicture::OwnWindow, &open_help, &see_contents},
        {"help-about-panel", TourPicture::OwnWindow, &open_help_about_panel, &see_help_about_panel},
        {"shortcuts", TourPicture::OwnWindow, &open_shortcuts, &see_shortcuts},
        {"about", TourPicture::OwnWindow, &open_about_box, &see_about_box, QMessageBox::NoButton, true},
        {"log", TourPicture::OwnWindow, &open_log, &see_log},
        {"preferences-general", TourPicture::OwnWindow, &open_general_page, &see_general_page},
        {"preferences-viewer", TourPicture::OwnWindow, &open_viewer_page, &see_viewer_page},
        {"preferences-performance", TourPicture::OwnWindow, &open_performance_page, &see_performance_page},
        {"preferences-animation", TourPicture::OwnWindow, &open_animation_page, &see_animation_page},
        {"another-background", TourPicture::Window, &change_background, &see_changed_background},
        {"first-background", TourPicture::Window, &change_background_back, &see_first_background},
        {"parameters", TourPicture::OwnWindow, &open_parameters, &see_parameters, QMessageBox::NoButton,
            true},
        {"history", TourPicture::Window, &run_three_commands, &see_history},
        {"undo-list", TourPicture::AllWindows, &point_into_undo_list, &see_undo_list},
        {"running-command", TourPicture::Window, &begin_long_command, &see_progress},
        {"cancelled", TourPicture::Window, &cancel_command, &see_nothing_changed},
        {"all-undone", TourPicture::Window, &undo_all, &see_first_cells},
        {"second-document", TourPicture::Window, &open_second, &see_second},
        {"recent-files", TourPicture::AllWindows, &open_recent_menu, &see_recent_menu},
        {"first-document-again", TourPicture::Window, &choose_first, &see_first_again},
        {"floating-panel", TourPicture::AllWindows, &tear_panel_off, &see_floating_panel},
        {"docked-panel", TourPicture::Window, &close_floating_panel, &see_docked_panel},
        {"statistics", TourPicture::Window, &open_statistics, &see_statistics},
        {"layers", TourPicture::Window, &open_layers, &see_layers},
        {"start-page", TourPicture::Window, &close_documents, &see_start_page, QMessageBox::Discard},
    };
    return s_steps;
}

TourStage::TourStage(MainWindow& main_window, const QString& given)
    : window(main_window)
    , first_file(given.isEmpty() ? samples.filePath("sample.tif") : given)
    , second_file(samples.filePath("another.tif"))
    , gate(s_held_up_at)
{
    if (given.isEmpty()) {
        write_raster(fractal_terrain(s_sample_size, s_sample_seed), first_file.toStdString());
    }
    write_raster(fractal_terrain(s_second_sample_size, s_second_sample_seed), second_file.toStdString());
    CommandsController::instance().runner().report_also_to(&gate);
}

TourStage::~TourStage()
{
    CommandRunner& runner = CommandsController::instance().runner();
    gate.open();
    runner.abandon();
    runner.report_also_to(nullptr);
}

QImage picture_of(TourPicture kind, const TourStage& stage)
{
    switch (kind) {
    case TourPicture::Window:
        return stage.window.grab().toImage();
    case TourPicture::AllWindows:
        return all_windows(stage.window);
    case TourPicture::OwnWindow:
        return stage.own_window ? stage.own_window->grab().toImage() : QImage();
    }
    return {};
}

bool is_varied(const QImage& picture)
{
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            colours.insert(picture.pixel(x, y));
            if (colours.size() > s_many_colours) {
                return true;
            }
        }
    }
    return false;
}

} // namespace terrain
