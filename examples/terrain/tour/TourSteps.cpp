#include "tour/TourSteps.h"

#include "commands/CommandsController.h"
#include "io/RasterWriter.h"
#include "sample/FractalTerrain.h"
#include "tour/CommandSteps.h"
#include "tour/FileSteps.h"
#include "tour/HelpSteps.h"
#include "tour/HistorySteps.h"
#include "tour/PanelSteps.h"
#include "tour/PreferencesSteps.h"
#include "tour/SceneSteps.h"
#include "tour/ToolSteps.h"
#include "tour/WindowSteps.h"
#include "windows/MainWindow.h"

#include <QtCore/QSet>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

namespace terrain {

namespace {

const int s_sample_size = 512;
const int s_second_sample_size = 256;
const unsigned long long s_sample_seed = 1;
const unsigned long long s_second_sample_seed = 7;
const int s_many_colours = 40;
const unsigned int s_held_up_at = 40; ///< per cent

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
    const auto none = QMessageBox::NoButton;
    static const std::vector<TourStep> s_steps = {
        // Looking.
        {"relief", TourPicture::Window, &open_first, &see_relief},
        {"zoomed-in", TourPicture::Window, &zoom_in, &see_value},
        {"layers", TourPicture::Window, &open_layers, &see_layers},
        {"scene", TourPicture::Window, &show_scene, &see_scene},
        {"turned-scene", TourPicture::Window, &turn_scene, &see_turned_scene},
        {"map-and-scene", TourPicture::Window, &show_both, &see_both},
        {"statistics", TourPicture::Window, &open_statistics, &see_statistics},
        // Documents and panels.
        {"second-document", TourPicture::Window, &open_second, &see_second},
        {"recent-files", TourPicture::AllWindows, &open_recent_menu, &see_recent_menu},
        {"first-document-again", TourPicture::Window, &choose_first, &see_first_again},
        {"quick-help", TourPicture::Window, &show_quick_help, &see_quick_help},
        {"floating-panel", TourPicture::AllWindows, &tear_panel_off, &see_floating_panel},
        {"docked-panel", TourPicture::Window, &close_floating_panel, &see_docked_panel},
        // Commands.
        {"tools-menu", TourPicture::AllWindows, &open_tools_menu, &see_tools_menu},
        {"sinks-filled", TourPicture::Window, &fill_sinks, &see_sinks_filled},
        {"parameters", TourPicture::OwnWindow, &smooth, &see_parameters, none, true, &fill_in_radius},
        {"smoothed", TourPicture::Window, &wait_for_command, &see_smoothed},
        {"clamped", TourPicture::Window, &clamp_heights, &see_clamped, none, false, &fill_in_bounds},
        {"scaled", TourPicture::Window, &scale_heights, &see_scaled, none, false, &fill_in_factor},
        {"raised", TourPicture::Window, &raise_ground, &see_raised},
        {"lowered", TourPicture::Window, &lower_ground, &see_lowered},
        {"polygon", TourPicture::Window, &click_corners, &see_corners},
        {"flattened", TourPicture::Window, &close_polygon, &see_flattened, none, false, &accept_proposal},
        {"triangulated", TourPicture::Window, &triangulate, &see_triangulated, none, false, &accept_proposal},
        {"triangles-in-scene", TourPicture::Window, &show_triangles, &see_triangles},
        {"cell-size", TourPicture::OwnWindow, &resample, &see_cell_size, none, true, &fill_in_cell_size},
        {"resampled", TourPicture::Window, &wait_for_command, &see_resampled},
        {"range", TourPicture::OwnWindow, &crop, &see_range, none, true, &fill_in_range},
        {"cropped", TourPicture::Window, &wait_for_command, &see_cropped},
        {"cleaned-up", TourPicture::Window, &clean_up, &see_cleaned_up},
        // What was done.
        {"history", TourPicture::Window, &show_history, &see_history},
        {"running-command", TourPicture::Window, &begin_long_command, &see_progress},
        {"cancelled", TourPicture::Window, &cancel_command, &see_nothing_changed},
        {"undo-list", TourPicture::AllWindows, &point_into_undo_list, &see_undo_list},
        {"several-undone", TourPicture::Window, &choose_in_undo_list, &see_several_undone},
        {"all-undone", TourPicture::Window, &click_on_first_line, &see_first_cells},
        {"redone", TourPicture::Window, &click_on_triangulation, &see_redone},
        // Files.
        {"save-as", TourPicture::OwnWindow, &save_as, &see_file_dialog, none, true, &name_saved_file},
        {"saved", TourPicture::Window, &wait_for_saving, &see_saved},
        {"exported", TourPicture::Window, &export_files, &see_exported, none, false, &name_exported_file},
        // Preferences.
        {"preferences-general", TourPicture::OwnWindow, &open_general_page, &see_general_page},
        {"preferences-viewer", TourPicture::OwnWindow, &open_viewer_page, &see_viewer_page},
        {"preferences-performance", TourPicture::OwnWindow, &open_performance_page, &see_performance_page},
        {"preferences-animation", TourPicture::OwnWindow, &open_animation_page, &see_animation_page},
        {"another-background", TourPicture::Window, &change_background, &see_changed_background},
        {"first-background", TourPicture::Window, &change_background_back, &see_first_background},
        // Help.
        {"help-contents", TourPicture::OwnWindow, &open_help, &see_contents},
        {"help-about-panel", TourPicture::OwnWindow, &open_help_about_panel, &see_help_about_panel},
        {"shortcuts", TourPicture::OwnWindow, &open_shortcuts, &see_shortcuts},
        {"about", TourPicture::OwnWindow, &open_about_box, &see_about_box, none, true},
        {"log", TourPicture::OwnWindow, &open_log, &see_log},
        // The end.
        {"unsaved-changes", TourPicture::AllWindows, &close_with_changes, &see_question, QMessageBox::Cancel,
            true},
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
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // which nobody but the user can fill in
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
