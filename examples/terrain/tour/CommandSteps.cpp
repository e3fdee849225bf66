#include "tour/CommandSteps.h"

#include "commands/CommandsController.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "documents/RasterSummary.h"
#include "documents/TerrainModel.h"
#include "help/HelpTopics.h"
#include "panels/HistoryPanel.h"
#include "presentations/CommandsPresentation.h"
#include "presentations/ProgressPresentation.h"
#include "tour/UserInput.h"
#include "windows/MainWindow.h"
#include "windows/ParameterDialog.h"

#include <pkBaseQt/QPKHelpButton.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QObject>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

#include <boost/make_shared.hpp>

#include <algorithm>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const int s_commands = 3; ///< that are run to their end
const int s_radius = 2; ///< cells
const int s_large_radius = 12; ///< cells
const double s_factor = 1.2;

CommandRunner& runner()
{
    return CommandsController::instance().runner();
}

housekeeping::gui::UndoRedoPresentation& undo_redo()
{
    return *housekeeping::gui::UndoRedoPresentation::instance();
}

housekeeping::DocumentId current()
{
    return housekeeping::DocumentManager::const_instance().current_document_id();
}

std::string current_cells()
{
    return checksum(TerrainModel::of(current()).raster());
}

template <class Command, class Argument>
void run(Argument argument)
{
    runner().start(boost::make_shared<Command>(current(), argument));
    runner().wait();
}

TourCheck is_text(const QString& what, const QString& text, const QString& expected)
{
    return {QObject::tr("%1 reads \"%2\", expected \"%3\"").arg(what, text, expected), text == expected};
}

TourCheck undo_reads(const QString& expected)
{
    return is_text(QObject::tr("the undo entry"), undo_redo().undo_action()->text(), expected);
}

TourCheck entry_count_is(const MainWindow& window, int expected)
{
    const int entries = window.history().entries().count();
    return {QObject::tr("the history has %1 entries, expected %2").arg(entries).arg(expected),
        entries == expected};
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

} // namespace

void open_parameters(TourStage&)
{
    CommandsPresentation::instance().smooth_action()->trigger();
}

std::vector<TourCheck> see_parameters(TourStage& stage)
{
    const auto* const p_dialog = qobject_cast<ParameterDialog*>(QApplication::activeModalWidget());
    stage.own_window = QApplication::activeModalWidget();
    if (!p_dialog) {
        return {{QObject::tr("there is a dialog for the parameters"), false}};
    }
    const auto* const p_help = p_dialog->findChild<pkBase::QPKHelpButton*>();
    return {{QObject::tr("the dialog is shown"), p_dialog->isVisible()},
        {QObject::tr("its help button opens the page about the command"),
            p_help && p_help->isVisible() && p_help->helpKey() == help_key(Topic::Smooth)},
        {QObject::tr("it proposes a number"), p_dialog->value(0) >= 1}};
}

void run_three_commands(TourStage& stage)
{
    stage.first_cells = current_cells();
    stage.window.show_panel(stage.window.history());
    CommandsPresentation::instance().fill_sinks_action()->trigger();
    runner().wait();
    run<SmoothCommand>(s_radius);
    run<ScaleCommand>(s_factor);
}

std::vector<TourCheck> see_history(TourStage& stage)
{
    return {entry_count_is(stage.window, s_commands), undo_reads(QObject::tr("&Undo Scale")),
        {QObject::tr("the heights have changed"), current_cells() != stage.first_cells},
        {QObject::tr("the title says that there are changes"), stage.window.isWindowModified()}};
}

void point_into_undo_list(TourStage& stage)
{
    if (QMenu* const p_list = open_undo_list(stage.window)) {
        p_list->setActiveAction(p_list->actions().value(s_commands - 1));
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
        {QObject::tr("checked entries: %1, expected %2").arg(checked).arg(s_commands), checked == s_commands},
        is_text(QObject::tr("the last entry"), entries.last()->text(), QObject::tr("Undo 3 Actions"))};
}

void begin_long_command(TourStage& stage)
{
    if (QMenu* const p_list = undo_redo().undo_tool_bar_action()->menu()) {
        p_list->hide();
    }
    stage.cells = current_cells();
    stage.gate.close();
    runner().start(boost::make_shared<SmoothCommand>(current(), s_large_radius));
}

std::vector<TourCheck> see_progress(TourStage& stage)
{
    const ProgressPresentation& progress = ProgressPresentation::instance();
    const int percentage = progress.bar()->value();
    return {{QObject::tr("the command is half-way"), stage.gate.holds()},
        {QObject::tr("the progress bar shows %1 %").arg(percentage),
            progress.bar()->isVisible() && percentage > 0},
        {QObject::tr("it can be cancelled"), progress.cancel_button()->isEnabled()},
        undo_reads(QObject::tr("&Undo"))};
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
        entry_count_is(stage.window, s_commands + 1), undo_reads(QObject::tr("&Undo Smooth"))};
}

void undo_all(TourStage& stage)
{
    if (QMenu* const p_list = open_undo_list(stage.window)) {
        QAction* const p_entry = p_list->actions().value(s_commands); // the cancelled one is in the list too
        click(*p_list, p_list->actionGeometry(p_entry).center());
    }
}

std::vector<TourCheck> see_first_cells(TourStage& stage)
{
    return {{QObject::tr("the heights are those of the file"), current_cells() == stage.first_cells},
        undo_reads(QObject::tr("&Undo")),
        is_text(QObject::tr("the redo entry"), undo_redo().redo_action()->text(),
            QObject::tr("&Redo Fill sinks")),
        entry_count_is(stage.window, s_commands + 1)};
}

} // namespace terrain
