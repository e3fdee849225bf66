#include "tour/CommandSteps.h"

#include "commands/ClampCommand.h"
#include "commands/CleanUpCommand.h"
#include "commands/CommandsController.h"
#include "commands/CropCommand.h"
#include "commands/FillSinksCommand.h"
#include "commands/ResampleCommand.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "commands/TriangulateCommand.h"
#include "documents/Mesh.h"
#include "documents/RasterSummary.h"
#include "documents/TerrainModel.h"
#include "help/Bindings.h"
#include "help/HelpTopics.h"
#include "panels/HistoryPanel.h"
#include "presentations/CommandsPresentation.h"
#include "tour/TourLooks.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/MainWindow.h"
#include "windows/ParameterDialog.h"

#include <pkBaseQt/QPKHelpButton.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QObject>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <algorithm>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const int s_radius = 2; ///< cells
const double s_factor = 1.2;
const double s_cell_factor = 2;
const double s_cut_below = 0.15; ///< part of the range of the heights
const double s_cut_above = 0.9;
const int s_cropped_part = 8; ///< of the columns and rows, that goes at each side

CommandRunner& runner()
{
    return CommandsController::instance().runner();
}

const TerrainModel& model()
{
    return TerrainModel::of(housekeeping::DocumentManager::const_instance().current_document_id());
}

/// Chooses an entry of the menu, and waits for its command.
void choose(TourStage& stage, const QAction* p_entry)
{
    expect_command(stage);
    const_cast<QAction*>(p_entry)->trigger();
    runner().wait();
}

void write_number(const QDialog& dialog, int field, double number)
{
    QDoubleSpinBox& box = *dialog.findChildren<QDoubleSpinBox*>().at(field);
    write_over(box, box.locale().toString(number, 'f', box.decimals()));
}

/// Whether the dialog on top is about a command, with its page of the help.
Checks see_dialog(TourStage& stage, Topic topic)
{
    const auto* const p_dialog = qobject_cast<ParameterDialog*>(QApplication::activeModalWidget());
    stage.own_window = QApplication::activeModalWidget();
    if (!p_dialog) {
        return {{QObject::tr("there is a dialog for the parameters"), false}};
    }
    const auto* const p_help = p_dialog->findChild<pkBase::QPKHelpButton*>();
    return {{QObject::tr("the dialog is shown"), p_dialog->isVisible()},
        {QObject::tr("its help button opens the page about the command"),
            p_help && p_help->isVisible() && p_help->helpKey() == help_key(topic)}};
}

/// Whether a number was written as it was to be.
TourCheck parameter_is(int field, double expected)
{
    const auto* const p_dialog = qobject_cast<ParameterDialog*>(QApplication::activeModalWidget());
    const double value = p_dialog ? p_dialog->value(static_cast<std::size_t>(field)) : 0;
    return {
        QObject::tr("the number is %1, expected %2").arg(value).arg(expected), p_dialog && value == expected};
}

QString size_text(const Raster& raster)
{
    return QString("%1 x %2").arg(raster.columns).arg(raster.rows);
}

TourCheck is_smaller(const TourStage& stage)
{
    const Raster& raster = model().raster();
    return {
        QObject::tr("the raster has %1 cells, fewer than %2").arg(size_text(raster)).arg(stage.cell_count),
        raster.cells.size() < stage.cell_count};
}

Checks with(Checks checks, const TourCheck& another)
{
    checks.push_back(another);
    return checks;
}

} // namespace

// --- what they have in common

void expect_command(TourStage& stage)
{
    stage.cells = current_cells();
    stage.cell_count = model().raster().cells.size();
    ++stage.commands;
}

std::vector<TourCheck> see_done(const TourStage& stage, const QString& name)
{
    return {{QObject::tr("nothing is running"), !runner().is_running()},
        entry_count_is(stage.window, stage.commands), undo_names(name),
        {QObject::tr("the title says that there are changes"), stage.window.isWindowModified()},
        relief_is_drawn(stage.window)};
}

TourCheck cells_differ(const TourStage& stage)
{
    return {QObject::tr("the heights have changed"), current_cells() != stage.cells};
}

void wait_for_command(TourStage&)
{
    runner().wait();
}

void accept_proposal(TourStage&, QDialog&) { }

// --- the menu

void open_tools_menu(TourStage& stage)
{
    QMenu& menu = *CommandsPresentation::instance().menu();
    stage.first_cells = current_cells();
    stage.window.action(Deed::ViewMap).trigger();
    stage.window.show_panel(stage.window.history()); // which tells of all the following
    stage.window.menuBar()->setActiveAction(menu.menuAction());
    menu.setActiveAction(CommandsPresentation::instance().fill_sinks_action());
}

std::vector<TourCheck> see_tools_menu(TourStage&)
{
    const QMenu& menu = *CommandsPresentation::instance().menu();
    const QList<QAction*> entries = menu.actions();
    const bool can_be_chosen = std::all_of(entries.begin(), entries.end(),
        [](const QAction* p_entry) { return p_entry->isSeparator() || p_entry->isEnabled(); });
    const bool has_pictures = std::none_of(entries.begin(), entries.end(),
        [](const QAction* p_entry) { return !p_entry->isSeparator() && p_entry->icon().isNull(); });
    return {{QObject::tr("the menu is shown"), menu.isVisible()},
        {QObject::tr("all entries can be chosen"), can_be_chosen},
        {QObject::tr("all entries have pictures"), has_pictures}};
}

// --- commands that give the cells other heights

void fill_sinks(TourStage& stage)
{
    CommandsPresentation::instance().menu()->hide();
    choose(stage, CommandsPresentation::instance().fill_sinks_action());
}

std::vector<TourCheck> see_sinks_filled(TourStage& stage)
{
    return see_done(stage, FillSinksCommand::tr("Fill sinks"));
}

void smooth(TourStage& stage)
{
    choose(stage, CommandsPresentation::instance().smooth_action());
}

void fill_in_radius(TourStage&, QDialog& dialog)
{
    write_number(dialog, 0, s_radius);
}

std::vector<TourCheck> see_parameters(TourStage& stage)
{
    return with(see_dialog(stage, Topic::Smooth), parameter_is(0, s_radius));
}

std::vector<TourCheck> see_smoothed(TourStage& stage)
{
    return with(see_done(stage, SmoothCommand::tr("Smooth")), cells_differ(stage));
}

void clamp_heights(TourStage& stage)
{
    choose(stage, CommandsPresentation::instance().clamp_action());
}

void fill_in_bounds(TourStage&, QDialog& dialog)
{
    const RasterSummary summary(model().raster().cells);
    const double range = summary.maximum - summary.minimum;
    write_number(dialog, 0, summary.minimum + s_cut_below * range);
    write_number(dialog, 1, summary.minimum + s_cut_above * range);
}

std::vector<TourCheck> see_clamped(TourStage& stage)
{
    return with(see_done(stage, ClampCommand::tr("Clamp")), cells_differ(stage));
}

void scale_heights(TourStage& stage)
{
    choose(stage, CommandsPresentation::instance().scale_action());
}

void fill_in_factor(TourStage&, QDialog& dialog)
{
    write_number(dialog, 0, s_factor);
}

std::vector<TourCheck> see_scaled(TourStage& stage)
{
    return with(see_done(stage, ScaleCommand::tr("Scale")), cells_differ(stage));
}

void clean_up(TourStage& stage)
{
    choose(stage, CommandsPresentation::instance().clean_up_action());
}

std::vector<TourCheck> see_cleaned_up(TourStage& stage)
{
    return see_done(stage, CleanUpCommand::tr("Clean up"));
}

// --- the triangulation

void triangulate(TourStage& stage)
{
    stage.triangulated_cells = current_cells();
    choose(stage, CommandsPresentation::instance().triangulate_action());
}

std::vector<TourCheck> see_triangulated(TourStage& stage)
{
    const auto& sp_mesh = model().mesh();
    Checks checks = see_done(stage, TriangulateCommand::tr("Triangulate"));
    checks.push_back({QObject::tr("there are %1 triangles").arg(sp_mesh ? sp_mesh->triangles.size() : 0),
        sp_mesh && !sp_mesh->triangles.empty()});
    checks.push_back({QObject::tr("the heights are those of before"), current_cells() == stage.cells});
    checks.push_back({QObject::tr("the map shows the edges"), stage.window.view()->layers().triangulation});
    return checks;
}

// --- commands that make another raster

void resample(TourStage& stage)
{
    stage.window.action(Deed::ViewMap).trigger();
    choose(stage, CommandsPresentation::instance().resample_action());
}

void fill_in_cell_size(TourStage&, QDialog& dialog)
{
    write_number(dialog, 0, s_cell_factor);
    QComboBox& methods = *dialog.findChild<QComboBox*>();
    methods.setCurrentIndex(methods.count() - 1);
}

std::vector<TourCheck> see_cell_size(TourStage& stage)
{
    return with(see_dialog(stage, Topic::Resample), parameter_is(0, s_cell_factor));
}

std::vector<TourCheck> see_resampled(TourStage& stage)
{
    return with(see_done(stage, ResampleCommand::tr("Resample")), is_smaller(stage));
}

void crop(TourStage& stage)
{
    choose(stage, CommandsPresentation::instance().crop_action());
}

void fill_in_range(TourStage&, QDialog& dialog)
{
    const Raster& raster = model().raster();
    const int columns = std::max(1, raster.columns / s_cropped_part);
    const int rows = std::max(1, raster.rows / s_cropped_part);
    write_number(dialog, 0, columns);
    write_number(dialog, 1, raster.columns - 1 - columns);
    write_number(dialog, 2, rows);
    write_number(dialog, 3, raster.rows - 1 - rows);
}

std::vector<TourCheck> see_range(TourStage& stage)
{
    const int columns = std::max(1, model().raster().columns / s_cropped_part);
    return with(see_dialog(stage, Topic::Crop), parameter_is(0, columns));
}

std::vector<TourCheck> see_cropped(TourStage& stage)
{
    return with(see_done(stage, CropCommand::tr("Crop")), is_smaller(stage));
}

} // namespace terrain
