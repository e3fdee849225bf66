// What undo and redo cost in a window: one command more with a short and with a long history behind it, and
// the drop-down list of a long one. No two commands have the same name, so each of them changes what is
// shown.

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

#include <map>
#include <string>

namespace housekeeping = tarqa::housekeeping;

namespace {

using housekeeping::gui::UndoRedoPresentation;

/// How many commands come between two looks at the list.
const int s_burst = 100;

QString name_of(long long number)
{
    return QStringLiteral("Operation %1").arg(number);
}

/// As a running event loop does: what was deleted later goes too, or each turn would take longer than the one
/// before.
void process_events()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Of a name of its own.
class Numbered : public empty_host::NoOp
{
public:
    Numbered(const housekeeping::DocumentId& id, long long number)
        : NoOp(id)
    {
        setName("Operation " + std::to_string(number));
    }
};

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
        process_events();
        return p_presentation;
    }();
    return *s_presentation;
}

/// The current document of the window, with @p count commands; the same one each time.
class Shown
{
public:
    explicit Shown(long long count)
        : m_presentation(shown_presentation())
        , m_document(document_with(count))
        , m_count(count)
        , m_number(count)
    {
        housekeeping::DocumentManager::instance().current_document(m_document.id());
        process_events();
    }

    void insert()
    {
        housekeeping::CommandManager::instance().insert(
            boost::make_shared<Numbered>(m_document.id(), ++m_number), false);
    }
    void take_back() { m_document.document_history().removeLastUndo(); }
    QMenu* list() { return m_presentation.undo_tool_bar_action()->menu(); }

    /// Has the benchmark fail if the history is not as it was.
    void check(benchmark::State& state)
    {
        process_events();
        if (static_cast<long long>(m_document.document_history().undoSize()) != m_count) {
            state.SkipWithError("the history did not keep its size");
        }
    }

private:
    static housekeeping::AbstractDocument& document_with(long long count)
    {
        static std::map<long long, housekeeping::AbstractDocument*> s_documents; // owned by the manager
        housekeeping::AbstractDocument*& p_document = s_documents[count];
        if (!p_document) {
            p_document = &housekeeping::DocumentManager::instance().create_document();
            for (long long number = 1; number <= count; ++number) {
                housekeeping::CommandManager::instance().insert(
                    boost::make_shared<Numbered>(p_document->id(), number), false);
            }
        }
        return *p_document;
    }

    UndoRedoPresentation& m_presentation;
    housekeeping::AbstractDocument& m_document;
    long long m_count;
    long long m_number;
};

/// One command, and one out of the history again, or there would soon be more behind it.
void insert_undrawn(benchmark::State& state)
{
    Shown shown(state.range(0));
    for (auto _ : state) {
        shown.insert();
        shown.take_back();
    }
    shown.check(state);
}
BENCHMARK(insert_undrawn)->Arg(10)->Arg(10000);

void insert_in_a_window(benchmark::State& state)
{
    Shown shown(state.range(0));
    for (auto _ : state) {
        shown.insert();
        process_events();
        shown.take_back();
    }
    shown.check(state);
}
BENCHMARK(insert_in_a_window)->RangeMultiplier(10)->Range(10, 100000);

/// The peer: Qt's undo stack with its list in sight.
void push_in_a_window(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    QUndoStack stack;
    for (int i = 1; i <= count; ++i) {
        stack.push(new QUndoCommand(name_of(i)));
    }
    QUndoView view(&stack);
    view.show();
    process_events();
    for (auto _ : state) {
        stack.push(new QUndoCommand(name_of(stack.count() + 1)));
        process_events();
    }
}
BENCHMARK(push_in_a_window)->RangeMultiplier(10)->Range(10, 10000)->Iterations(20);

/// The list after a burst of commands, as a click on its arrow opens it, until it is drawn.
void open_list(benchmark::State& state)
{
    Shown shown(state.range(0) - s_burst);
    for (auto _ : state) {
        state.PauseTiming();
        for (int i = 0; i < s_burst; ++i) {
            shown.insert();
        }
        process_events();
        state.ResumeTiming();

        shown.list()->popup(QPoint(0, 0));
        process_events();

        state.PauseTiming();
        if (shown.list()->actions().size() != state.range(0) + 2) {
            state.SkipWithError("the list does not hold the history");
        }
        shown.list()->hide();
        for (int i = 0; i < s_burst; ++i) {
            shown.take_back();
        }
        process_events();
        state.ResumeTiming();
    }
    shown.check(state);
}
BENCHMARK(open_list)->Arg(10000)->Iterations(5);

/// The peer: a plain menu with the same entries.
void open_plain_menu(benchmark::State& state)
{
    for (auto _ : state) {
        QMenu menu;
        for (long long number = state.range(0); number > 0; --number) {
            QAction* const p_entry = menu.addAction(name_of(number));
            p_entry->setCheckable(true);
            p_entry->setData(state.range(0) - number + 1);
        }
        menu.addSeparator();
        menu.addAction(QStringLiteral("Undo 0 Actions"));
        menu.popup(QPoint(0, 0));
        process_events();

        state.PauseTiming();
        menu.hide();
        menu.clear();
        state.ResumeTiming();
    }
}
BENCHMARK(open_plain_menu)->Arg(10000)->Iterations(5);

const Ratio s_growth(
    "a command more in a window, 10,000 behind it / 10", "insert_undrawn/10000", "insert_undrawn/10", 1.25);
const Ratio s_long("the same drawn, 10,000 behind it / QUndoStack with its view", "insert_in_a_window/10000",
    "push_in_a_window/10000", 0.005);
const Ratio s_short("the same drawn, 10 behind it / QUndoStack with its view", "insert_in_a_window/10",
    "push_in_a_window/10");
const Ratio s_list("opening the list of 10,000 after 100 commands / a plain menu built and opened",
    "open_list/10000", "open_plain_menu/10000", 1.2);

} // namespace
