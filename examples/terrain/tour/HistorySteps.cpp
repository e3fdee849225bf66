#include "tour/HistorySteps.h"

#include "commands/CommandsController.h"
#include "commands/CropCommand.h"
#include "commands/FillSinksCommand.h"
#include "commands/SmoothCommand.h"
#include "commands/TriangulateCommand.h"
#include "documents/TerrainModel.h"
#include "panels/HistoryModel.h"
#include "panels/HistoryPanel.h"
#include "presentations/ProgressPresentation.h"
#include "tour/TourLooks.h"
#include "tour/UserInput.h"
#include "windows/MainWindow.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QObject>
#include <QtWidgets/QAction>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

#include <boost/make_shared.hpp>

#include <algorithm>

namespace terrain {

namespace {

const int s_undone_at_once = 3; ///< the cancelled one among them
const int s_large_radius = 12; ///< cells
const int s_commands_since_triangulation = 4; ///< the cancelled one among them

CommandRunner& runner()
{
    return CommandsController::instance().runner();
}

housekeeping::gui::UndoRedoPresentation& undo_redo()
{
    return *housekeeping::gui::UndoRedoPresentation::instance();
}

/// Opens the list of what can be undone, below its button.
QMenu* open_undo_list(const MainWindow& window)
{
    QAction* const p_action = undo_redo().undo_tool_bar_action();
    QWidget* const p_button = window.tool_bar().widgetForAction(p_action);
    if (p_action->menu() && p_button) {
        p_action->menu()->popup(p_button->mapToGlobal(QPoint(0, p_button->height())));
    }
    return p_action->menu();
}

/// Clicks on the line of the state in which @p done commands are done.
void click_on_line(const MainWindow& window, int done)
{
    QListView& list = window.history().entries();
    const QModelIndex line = window.history().model().line_of(static_cast<qulonglong>(done));
    list.scrollTo(line);
    click(*list.viewport(), list.visualRect(line).center());
}

/// Whether so many commands are done, and the history shows that.
TourCheck present_is(const MainWindow& window, int done)
{
    const HistoryModel& history = window.history().model();
    return {QObject::tr("the history shows that %1 commands are done").arg(done),
        history.present().isValid() && history.present() == history.line_of(static_cast<qulonglong>(done))};
}

TourCheck redo_names(const QString& command)
{
    return is_text(
        QObject::tr("the redo entry"), undo_redo().redo_action()->text(), undo_word("&Redo") + ' ' + command);
}

} // namespace

void show_history(TourStage& stage)
{
    stage.window.show_panel(stage.window.history());
}

std::vector<TourCheck> see_history(TourStage& stage)
{
    return {{QObject::tr("the history is shown"), stage.window.history().isVisible()},
        entry_count_is(stage.window, stage.commands), present_is(stage.window, stage.commands),
        {QObject::tr("the heights are not those of the file"), current_cells() != stage.first_cells}};
}

// --- cancelling

void begin_long_command(TourStage& stage)
{
    stage.cells = current_cells();
    stage.gate.close();
    const auto document = housekeeping::DocumentManager::const_instance().current_document_id();
    runner().start(boost::make_shared<SmoothCommand>(document, s_large_radius));
    ++stage.commands;
}

std::vector<TourCheck> see_progress(TourStage& stage)
{
    const ProgressPresentation& progress = ProgressPresentation::instance();
    const int percentage = progress.bar()->value();
    return {{QObject::tr("the command is half-way"), stage.gate.holds()},
        {QObject::tr("the progress bar shows %1 %").arg(percentage),
            progress.bar()->isVisible() && percentage > 0},
        {QObject::tr("it can be cancelled"), progress.cancel_button()->isEnabled()}, undo_names()};
}

void cancel_command(TourStage& stage)
{
    QToolButton& button = *ProgressPresentation::instance().cancel_button();
    click(button, button.rect().center());
    stage.gate.open();
    runner().wait();
}

std::vector<TourCheck> see_nothing_changed(TourStage& stage)
{
    return {{QObject::tr("nothing is running"),
                !runner().is_running() && !ProgressPresentation::instance().bar()->isVisible()},
        {QObject::tr("the heights are those of before"), current_cells() == stage.cells},
        entry_count_is(stage.window, stage.commands), undo_names(SmoothCommand::tr("Smooth"))};
}

// --- undo and redo

void point_into_undo_list(TourStage& stage)
{
    if (QMenu* const p_list = open_undo_list(stage.window)) {
        p_list->setActiveAction(p_list->actions().value(s_undone_at_once - 1));
    }
}

std::vector<TourCheck> see_undo_list(TourStage&)
{
    const QMenu* const p_list = undo_redo().undo_tool_bar_action()->menu();
    if (!p_list) {
        return {{QObject::tr("there is a list"), false}};
    }
    const QList<QAction*> entries = p_list->actions();
    const auto checked = std::count_if(
        entries.begin(), entries.end(), [](const QAction* p_entry) { return p_entry->isChecked(); });
    return {{QObject::tr("the list is shown"), p_list->isVisible()},
        {QObject::tr("checked entries: %1, expected %2").arg(checked).arg(s_undone_at_once),
            checked == s_undone_at_once},
        is_text(QObject::tr("the last entry"), entries.last()->text(),
            QString("%1 %2%3").arg(undo_word("Undo")).arg(s_undone_at_once).arg(undo_word(" Actions")))};
}

void choose_in_undo_list(TourStage&)
{
    if (QMenu* const p_list = undo_redo().undo_tool_bar_action()->menu()) {
        QAction* const p_entry = p_list->actions().value(s_undone_at_once - 1);
        click(*p_list, p_list->actionGeometry(p_entry).center());
    }
}

std::vector<TourCheck> see_several_undone(TourStage& stage)
{
    return {present_is(stage.window, stage.commands - s_undone_at_once),
        {QObject::tr("the heights have changed"), current_cells() != stage.cells},
        redo_names(CropCommand::tr("Crop")), entry_count_is(stage.window, stage.commands),
        relief_is_drawn(stage.window)};
}

void click_on_first_line(TourStage& stage)
{
    click_on_line(stage.window, 0);
}

std::vector<TourCheck> see_first_cells(TourStage& stage)
{
    return {{QObject::tr("the heights are those of the file"), current_cells() == stage.first_cells},
        undo_names(), redo_names(FillSinksCommand::tr("Fill sinks")), present_is(stage.window, 0),
        entry_count_is(stage.window, stage.commands), relief_is_drawn(stage.window)};
}

void click_on_triangulation(TourStage& stage)
{
    click_on_line(stage.window, stage.commands - s_commands_since_triangulation);
}

std::vector<TourCheck> see_redone(TourStage& stage)
{
    const auto document = housekeeping::DocumentManager::const_instance().current_document_id();
    return {undo_names(TriangulateCommand::tr("Triangulate")),
        {QObject::tr("the heights are those that were triangulated"),
            current_cells() == stage.triangulated_cells},
        {QObject::tr("the triangles are back"), TerrainModel::of(document).mesh() != nullptr},
        present_is(stage.window, stage.commands - s_commands_since_triangulation),
        entry_count_is(stage.window, stage.commands), relief_is_drawn(stage.window)};
}

} // namespace terrain
