// What a composite of many small commands costs apart from the log.

#include "EmptyHost.h"
#include "RatioReporter.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CompositeCommand.h>

#include <QtWidgets/QUndoCommand>
#include <QtWidgets/QUndoStack>

#include <boost/make_shared.hpp>

#include <atomic>
#include <vector>

namespace housekeeping = tarqa::housekeeping;

namespace {

using empty_host::document_with;
using empty_host::NoOp;

constexpr int s_children = 100;
constexpr unsigned long long s_count
    = 1; // of commands in the document's history, kept out of the others' way

void insert_composite(const housekeeping::DocumentId& id)
{
    const auto sp_composite = boost::make_shared<housekeeping::CompositeCommand>(id, "Many", false);
    for (int child = 0; child < s_children; ++child) {
        sp_composite->push_back(boost::make_shared<NoOp>(id));
    }
    housekeeping::CommandManager::instance().insert(sp_composite, false);
}

void push_macro(QUndoStack& stack)
{
    stack.beginMacro(QStringLiteral("Many"));
    for (int child = 0; child < s_children; ++child) {
        stack.push(new QUndoCommand(QStringLiteral("No operation")));
    }
    stack.endMacro();
}

void composite(benchmark::State& state)
{
    housekeeping::AbstractDocument& document = document_with(s_count);
    for (auto _ : state) {
        insert_composite(document.id());
        document.document_history().removeLastUndo();
    }
    if (document.document_history().undoSize() != s_count) {
        state.SkipWithError("the history did not keep its size");
    }
}
BENCHMARK(composite);

/// The peer; at its limit, the stack deletes a macro for each new one.
void macro(benchmark::State& state)
{
    QUndoStack stack;
    stack.setUndoLimit(s_count);
    for (auto _ : state) {
        push_macro(stack);
    }
    if (stack.count() != s_count) {
        state.SkipWithError("the stack did not keep its size");
    }
}
BENCHMARK(macro);

void undo_and_redo_composite(benchmark::State& state)
{
    housekeeping::AbstractDocument& document = document_with(s_count);
    housekeeping::CommandManager& manager = housekeeping::CommandManager::instance();
    insert_composite(document.id());
    for (auto _ : state) {
        manager.undo(document.id());
        manager.redo(document.id());
    }
    document.document_history().removeLastUndo();
}
BENCHMARK(undo_and_redo_composite);

void undo_and_redo_macro(benchmark::State& state)
{
    QUndoStack stack;
    push_macro(stack);
    for (auto _ : state) {
        stack.undo();
        stack.redo();
    }
}
BENCHMARK(undo_and_redo_macro);

/// As large as a command, shared and numbered like one, and nothing else.
class SharedObject
{
public:
    SharedObject()
        : m_id(++s_last_id)
    { }
    virtual ~SharedObject() = default;
    SharedObject(const SharedObject&) = delete;
    SharedObject& operator=(const SharedObject&) = delete;
    virtual void remember() { benchmark::DoNotOptimize(m_id); }
    virtual void act() { benchmark::DoNotOptimize(m_id); }
    virtual void end() { benchmark::DoNotOptimize(m_id); }

private:
    static std::atomic<unsigned long long> s_last_id;

    unsigned long long m_id;
    [[maybe_unused]] char m_rest[sizeof(NoOp) - sizeof(void*) - sizeof(unsigned long long)];
};
std::atomic<unsigned long long> SharedObject::s_last_id{0};

/// What a composite cannot do without: hosts share its children, and tell them by their ids.
void shared_objects(benchmark::State& state)
{
    for (auto _ : state) {
        std::vector<boost::shared_ptr<SharedObject>> objects;
        for (int child = 0; child < s_children; ++child) {
            objects.push_back(boost::make_shared<SharedObject>());
        }
        for (const auto& sp_object : objects) {
            sp_object->remember();
            sp_object->act();
            sp_object->end();
        }
    }
}
BENCHMARK(shared_objects);

const Ratio s_insert(
    "a composite of 100 commands, log apart / a macro of 100 in a QUndoStack", "composite", "macro", 1.2);
const Ratio s_shared(
    "100 shared, numbered objects / a macro of 100 in a QUndoStack", "shared_objects", "macro");
// No reach: the macro keeps no account of its children, and says nothing of them to anybody.
const Ratio s_undo(
    "undo and redo of it, log apart / the macro's", "undo_and_redo_composite", "undo_and_redo_macro");

} // namespace
