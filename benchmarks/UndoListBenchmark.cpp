// What undo and redo cost in a window: one command more with a short and with a long history behind it, and
// the drop-down list of a long one.

#include "EmptyHost.h"
#include "RatioReporter.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QUndoCommand>
#include <QtWidgets/QUndoStack>
#include <QtWidgets/QUndoView>

#include <boost/make_shared.hpp>

namespace housekeeping = tarqa::housekeeping;

namespace {

using empty_host::document_with;
using empty_host::NoOp;
using housekeeping::gui::UndoRedoPresentation;

/// A window with the two actions and their lists in a visible tool bar. Leaked: it lives as long as the
/// program.
UndoRedoPresentation& shown_presentation()
{
    static UndoRedoPresentation* const s_presentation = [] {
        housekeeping::gui::PresentationManager::instance().init();
        auto* const p_window = new QMainWindow;
        UndoRedoPresentation* const p_presentation = UndoRedoPresentation::instance().get();
        QToolBar* const p_bar = p_window->addToolBar("Edit");
        p_bar->addAction(p_presentation->undo_tool_bar_action());
        p_bar->addAction(p_presentation->redo_tool_bar_action());
        p_window->show();
        QCoreApplication::processEvents();
        return p_presentation;
    }();
    return *s_presentation;
}

void insert_in_a_window(benchmark::State& state)
{
    shown_presentation();
    const auto count = static_cast<unsigned long long>(state.range(0));
    housekeeping::AbstractDocument& document = document_with(count);
    housekeeping::DocumentManager::instance().current_document(document.id());
    for (auto _ : state) {
        housekeeping::CommandManager::instance().insert(boost::make_shared<NoOp>(document.id()), false);
        QCoreApplication::processEvents();
        document.document_history().removeLastUndo(); // or there would soon be more behind it
    }
    if (document.document_history().undoSize() != count) {
        state.SkipWithError("the history did not keep its size");
    }
}
BENCHMARK(insert_in_a_window)->Arg(10)->Arg(10000);

/// The peer: Qt's undo stack with its list in sight.
void push_in_a_window(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    QUndoStack stack;
    for (int i = 0; i < count; ++i) {
        stack.push(new QUndoCommand(QStringLiteral("No operation")));
    }
    QUndoView view(&stack);
    view.show();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        stack.push(new QUndoCommand(QStringLiteral("No operation")));
        QCoreApplication::processEvents();
    }
}
BENCHMARK(push_in_a_window)->Arg(10)->Arg(10000)->Iterations(20);

/// The list after a change, as a click on its arrow opens it.
void open_list(benchmark::State& state)
{
    UndoRedoPresentation& presentation = shown_presentation();
    const auto count = static_cast<unsigned long long>(state.range(0));
    housekeeping::DocumentManager::instance().current_document(document_with(count).id());
    for (auto _ : state) {
        presentation.enable_edit_actions(true);
        QMenu* const p_list = presentation.undo_tool_bar_action()->menu();
        p_list->popup(QPoint(0, 0));
        p_list->hide();
        if (static_cast<unsigned long long>(p_list->actions().size()) != count + 2) {
            state.SkipWithError("the list does not hold the history");
        }
    }
}
BENCHMARK(open_list)->Arg(10000)->Iterations(5);

/// The peer: a plain menu with the same entries.
void open_plain_menu(benchmark::State& state)
{
    for (auto _ : state) {
        QMenu menu;
        for (int i = 0; i < state.range(0); ++i) {
            QAction* const p_entry = menu.addAction(QStringLiteral("No operation"));
            p_entry->setCheckable(true);
            p_entry->setData(i + 1);
        }
        menu.addSeparator();
        menu.addAction(QStringLiteral("Undo 0 Actions"));
        menu.popup(QPoint(0, 0));
        menu.hide();
    }
}
BENCHMARK(open_plain_menu)->Arg(10000)->Iterations(5);

const Ratio s_growth("one command more in a window, 10,000 behind it / 10", "insert_in_a_window/10000",
    "insert_in_a_window/10");
const Ratio s_long("one command more in a window, 10,000 behind it / QUndoStack with its view",
    "insert_in_a_window/10000", "push_in_a_window/10000/iterations:20");
const Ratio s_short("one command more in a window, 10 behind it / QUndoStack with its view",
    "insert_in_a_window/10", "push_in_a_window/10/iterations:20");
const Ratio s_list("opening the list of 10,000 / a plain menu built and opened",
    "open_list/10000/iterations:5", "open_plain_menu/10000/iterations:5");

} // namespace
