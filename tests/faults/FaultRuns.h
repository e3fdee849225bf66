#pragma once

#include "faults/FaultPoints.h"
#include "faults/FaultyHost.h"

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace throwing_code {

typedef std::vector<std::string> Texts;

/// What the history of a document holds, oldest first, and what is done in its model.
struct State
{
    Texts undo;
    Texts redo;
    Texts model;

    bool operator==(const State& other) const
    {
        return undo == other.undo && redo == other.redo && model == other.model;
    }
};

std::ostream& operator<<(std::ostream& stream, const State& state);
State state_of(const housekeeping::DocumentId& id);

/// One planted fault.
struct Fault
{
    std::size_t index = 0; ///< of the place, in places
    Kind kind = Kind::Standard;
    Mode mode = Mode::Once;
    Texts places; ///< of the run without a fault

    const std::string& place() const { return places.at(index); }
};

/// "Busy" for "Busy #2".
std::string without_number(const std::string& place);

/// What came of a run.
struct Outcome
{
    std::optional<Kind> thrown; ///< what left it
    int fatal_errors = 0;
    std::string log; ///< what was written since it began
};

/**
 * Something that the framework is asked to do, in a fresh state: new singletons, a controller, a view of the
 * undo/redo controller, a subscriber of everything. Main thread.
 */
class Scenario
{
public:
    Scenario();
    virtual ~Scenario();
    Scenario(const Scenario&) = delete;
    Scenario& operator=(const Scenario&) = delete;

    virtual void run() = 0;
    /// @param p_fault null for the run without one
    virtual void check(const Fault* p_fault, const Outcome& outcome) = 0;

    /// Whether it is about a mark that stays.
    virtual bool leaves_a_mark() const { return false; }
    /// The flag that a fault may leave on a document; checked otherwise.
    virtual bool may_leave_a_flag(const Fault& fault) const;

    /// What is done when these commands are, for those that do more than themselves.
    virtual Texts model_of(const Texts& commands) const { return commands; }

protected:
    housekeeping::DocumentId add_document();
    /// A new command, with a progress sink of its own.
    boost::shared_ptr<FaultyCommand> command(const housekeeping::DocumentId& id, const std::string& name);
    /// The same, done.
    boost::shared_ptr<FaultyCommand> done(const housekeeping::DocumentId& id, const std::string& name);

    FaultyProgress progress;
    std::unique_ptr<FaultySubscriber> subscriber;
    std::unique_ptr<FaultyView> view; // of the undo/redo controller: "undo view"
    std::unique_ptr<FaultyView> other_view; // of the faulty controller: "view"
};

/// Drops the singletons that hold documents, commands, controllers, presentations and messages.
void drop_everything();

/**
 * What holds after every fault: no mark, no flag, no lock, nobody in destruction, the queue delivers, other
 * threads' runs come through, and each document's history can be gone through to both ends.
 */
void expect_nothing_stays_behind(const Scenario& scenario, const Fault* p_fault);

/// Makes and runs a scenario without a fault, then once for each place, kind and mode, and prints how many.
void try_every_place(const std::string& name, const std::function<std::unique_ptr<Scenario>()>& make,
    const std::vector<Kind>& kinds = all_kinds);

template <class S>
void try_every_place(const std::string& name, const std::vector<Kind>& kinds = all_kinds)
{
    try_every_place(
        name, [] { return std::make_unique<S>(); }, kinds);
}

} // namespace throwing_code
