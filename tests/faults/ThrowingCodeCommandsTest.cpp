#include "faults/FaultRuns.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/UndoRedoController.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>

// Commands, their documents, sinks, views and subscribers that throw at every step of a run.
//
// The states that a run may leave, by the place that threw:
//
//  - before the history changed (size(), the busy mark of an insertion, stackWith()): everything as before,
//    and the exception goes to the caller;
//  - between the change of the history and the run (its message, the busy mark of undo and redo,
//    set_modified(), the opening of the progress run): the command stands where the change put it, at the top
//    of the undo or redo stack, and has not run; the exception goes to the caller;
//  - remember(), do_command() and the progress that it reports: cancelled and failed runs are rolled back,
//    counted as failed, and the command stays in the undo history; everything else is a fatal error, after
//    which the run counts as done;
//  - undo_command(): a fatal error, whatever it throws; the command stays on the redo stack;
//  - rollback(), finished(), the end of the progress run, the message of the run and the end of the busy
//    mark: the exception goes to the caller, and what was done stays done.
//
// The protocol line is written when everybody has been told, so not for a run that ends before.

using namespace tarqa::housekeeping;
using namespace throwing_code;
using testing::HasSubstr;
using testing::Not;

namespace {

/// The states a run goes through, told by its places.
struct Course
{
    State start;
    /// What has happened when a place is reached; by its name without a number.
    std::map<std::string, std::function<void(State&)>> effects;
    const char* prefix; ///< of the protocol line
    bool undoes;
    bool rolls_back = true; ///< what a cancelled run has done is taken out again
};

bool ends_with(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// Whether a run deals itself with what is thrown there.
bool is_guarded(const std::string& place)
{
    for (const char* const end :
        {".remember", ".do", ".do, done", ".undo", ".undo, done", "(10)", "(100)", "progress.text"}) {
        if (ends_with(place, end)) {
            return true;
        }
    }
    return false;
}

void take_out(Texts& texts, const std::string& name)
{
    const auto last = std::find(texts.rbegin(), texts.rend(), name);
    if (last != texts.rend()) {
        texts.erase(std::next(last).base());
    }
}

void move_last(Texts& from, Texts& to)
{
    to.push_back(from.back());
    from.pop_back();
}

/// What is expected of a run with a fault.
struct Expected
{
    State state;
    bool is_thrown = false;
    bool is_fatal = false;
    int lines = 0; ///< of the protocol
};

Expected follow(const Course& course, const Texts& places, const Fault* p_fault)
{
    Expected expected;
    expected.state = course.start;
    bool skipping = false;
    for (std::size_t index = 0; index < places.size(); ++index) {
        const std::string place = without_number(places[index]);
        skipping = skipping && !ends_with(place, ".finished");
        if (skipping) {
            continue;
        }
        const auto effect = course.effects.find(place);
        if (effect != course.effects.end()) {
            effect->second(expected.state);
        }
        if (p_fault && index == p_fault->index) {
            if (!is_guarded(place)) {
                expected.is_thrown = true;
                return expected;
            }
            const bool is_expected_end
                = !course.undoes && (p_fault->kind == Kind::Cancel || p_fault->kind == Kind::Failed);
            expected.is_fatal = !is_expected_end;
            if (is_expected_end && course.rolls_back) {
                take_out(expected.state.model, expected.state.undo.back());
            }
            skipping = true;
        }
        expected.lines += place == "command message" ? 1 : 0;
    }
    return expected;
}

int count(const std::string& text, const std::string& part)
{
    int number = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++number;
    }
    return number;
}

/// One document, on which something is run.
class RunScenario : public Scenario
{
protected:
    void check_course(const Course& course, const Fault* p_fault, const Outcome& outcome)
    {
        if (!p_fault) {
            EXPECT_FALSE(outcome.thrown);
            EXPECT_EQ(0, outcome.fatal_errors);
            EXPECT_EQ(wanted, state_of(id));
            return;
        }
        const Expected expected = follow(course, p_fault->places, p_fault);
        EXPECT_EQ(expected.state, state_of(id));
        EXPECT_EQ(expected.is_thrown, outcome.thrown.has_value());
        if (expected.is_thrown) {
            EXPECT_EQ(p_fault->kind, outcome.thrown);
        }
        EXPECT_EQ(expected.is_fatal ? 1 : 0, outcome.fatal_errors);
        check_log(course, *p_fault, expected, outcome.log);
    }

    const DocumentId id = add_document();
    State wanted; // of the run without a fault

private:
    static void check_log(
        const Course& course, const Fault& fault, const Expected& expected, const std::string& log)
    {
        if (!expected.is_fatal) { // a fatal error may empty the log of what stood there
            EXPECT_EQ(expected.lines, count('\n' + log, '\n' + std::string(course.prefix)));
        }
        if (expected.is_thrown) {
            return; // whoever catches it logs it
        }
        const bool has_own_line = expected.is_fatal || fault.kind == Kind::Failed;
        if (has_own_line) {
            EXPECT_THAT(
                log, HasSubstr(fault.kind == Kind::Cancel ? trace_of(Kind::Failed) : trace_of(fault.kind)));
        }
        EXPECT_THAT(log, HasSubstr(expected.is_fatal ? " - Succeeded." : " - Failed."));
    }
};

/// "A" is done and "Z" undone; "B" is inserted.
class Insertion : public RunScenario
{
public:
    Insertion()
    {
        done(id, "A");
        done(id, "Z");
        CommandManager::instance().undo(id);
        wanted = {{"A", "B"}, {}, {"A", "B"}};
    }
    void run() override { CommandManager::instance().insert(sp_command, false); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        Course course{{{"A"}, {"Z"}, {"A"}}, {}, "DO>\tB", false};
        course.effects["undo view"] = [](State& state) { // the first to be told about the history
            if (state.undo.back() != "B") {
                state.undo.push_back("B");
                state.redo.clear();
            }
        };
        course.effects["B.do, done"] = [](State& state) { state.model.push_back("B"); };
        check_course(course, p_fault, outcome);
        const auto& types = subscriber->command_types;
        if (!p_fault) {
            EXPECT_EQ(CommandMessage::Done, types.back());
        } else if (!outcome.thrown) {
            EXPECT_EQ(outcome.fatal_errors ? CommandMessage::Done : CommandMessage::Failed, types.back());
        }
    }

protected:
    const boost::shared_ptr<FaultyCommand> sp_command = command(id, "B");
};

/// The command takes "A" for its own kind and is taken in by it: it runs without an entry of its own.
class MergingInsertion : public RunScenario
{
public:
    MergingInsertion()
    {
        done(id, "A")->stack_identical(true);
        sp_command->stack_identical(true);
        wanted = {{"A"}, {}, {"A", "B"}};
    }
    void run() override { CommandManager::instance().insert(sp_command, false); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        Course course{{{"A"}, {}, {"A"}}, {}, "DO>\tB", false, false};
        course.effects["B.do, done"] = [](State& state) { state.model.push_back("B"); };
        course.effects["B.finished"] = [p_fault](State& state) {
            // The rollback of a cancelled or failed run.
            if (p_fault && is_guarded(without_number(p_fault->place()))
                && (p_fault->kind == Kind::Cancel || p_fault->kind == Kind::Failed)) {
                take_out(state.model, "B");
            }
        };
        check_course(course, p_fault, outcome);
    }

private:
    const boost::shared_ptr<FaultyCommand> sp_command = command(id, "B");
};

/// The command runs and never stands in the history.
class UnkeptInsertion : public RunScenario
{
public:
    UnkeptInsertion()
    {
        done(id, "A");
        sp_command->valid_undo(false);
        wanted = {{"A"}, {}, {"A", "B"}};
    }
    void run() override { CommandManager::instance().insert(sp_command, false); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        if (!p_fault) {
            EXPECT_EQ(wanted, state_of(id));
            return;
        }
        const State now = state_of(id);
        EXPECT_EQ(Texts{"A"}, now.undo);
        EXPECT_TRUE(now.redo.empty());
        EXPECT_EQ(!is_guarded(without_number(p_fault->place())), outcome.thrown.has_value());
    }

private:
    const boost::shared_ptr<FaultyCommand> sp_command = command(id, "B");
};

/// "B" cancels itself at its end, so that its rollback() is reached.
class CancelledInsertion : public Insertion
{
public:
    CancelledInsertion()
    {
        sp_command->cancels = true;
        wanted = {{"A", "B"}, {}, {"A"}};
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        if (!p_fault) {
            EXPECT_FALSE(outcome.thrown);
            EXPECT_EQ(wanted, state_of(id));
            EXPECT_EQ(CommandMessage::Failed, subscriber->command_types.back());
            EXPECT_THAT(outcome.log, HasSubstr("DO>\tB - Failed."));
            return;
        }
        const std::string place = without_number(p_fault->place());
        if (place.rfind("B.rollback", 0) == 0) {
            EXPECT_EQ(p_fault->kind, outcome.thrown);
            const bool is_taken_back = place == "B.rollback, done";
            const State expected{{"A", "B"}, {}, is_taken_back ? Texts{"A"} : Texts{"A", "B"}};
            EXPECT_EQ(expected, state_of(id));
            EXPECT_THAT(outcome.log, Not(HasSubstr("DO>\tB")));
        } else if (is_guarded(place)) {
            EXPECT_FALSE(outcome.thrown);
        } else {
            EXPECT_EQ(p_fault->kind, outcome.thrown);
        }
    }
};

/// "A" and "B" are done; @p Steps of them are undone through the controller, or one through the manager.
template <int Steps>
class Undoing : public RunScenario
{
public:
    Undoing()
    {
        done(id, "A");
        done(id, "B");
        wanted = Steps == 2 ? State{{}, {"B", "A"}, {}} : State{{"A"}, {"B"}, {"A"}};
    }
    void run() override
    {
        if (Steps == 1) {
            CommandManager::instance().undo(id);
        } else {
            dynamic_cast<UndoRedoController&>(*ControllerManager::instance().controller("UndoRedoController"))
                .undo(Steps);
        }
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        Course course{{{"A", "B"}, {}, {"A", "B"}}, {}, "UNDO>\t", true};
        // Who is told first: during several steps the controller does not follow the history.
        course.effects[Steps == 1 ? "undo view" : "history message"] = [p_moved = &moved](State& state) {
            if (!*p_moved) {
                move_last(state.undo, state.redo);
            }
            *p_moved = true;
        };
        course.effects["A.undo, done"] = [](State& state) { take_out(state.model, "A"); };
        course.effects["B.undo, done"] = [](State& state) { take_out(state.model, "B"); };
        course.effects["command message"] = [p_moved = &moved](State&) { *p_moved = Steps == 1; };
        check_course(course, p_fault, outcome);
    }

private:
    bool moved = false; // in this step
};

/// "A" and "B" are undone; @p Steps of them are redone, as above.
template <int Steps>
class Redoing : public RunScenario
{
public:
    Redoing()
    {
        done(id, "A");
        done(id, "B");
        CommandManager::instance().undo(id);
        CommandManager::instance().undo(id);
        wanted = Steps == 2 ? State{{"A", "B"}, {}, {"A", "B"}} : State{{"A"}, {"B"}, {"A"}};
    }
    void run() override
    {
        if (Steps == 1) {
            CommandManager::instance().redo(id);
        } else {
            dynamic_cast<UndoRedoController&>(*ControllerManager::instance().controller("UndoRedoController"))
                .redo(Steps);
        }
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        Course course{{{}, {"B", "A"}, {}}, {}, "DO>\t", false};
        course.effects[Steps == 1 ? "undo view" : "history message"] = [p_moved = &moved](State& state) {
            if (!*p_moved) {
                move_last(state.redo, state.undo);
            }
            *p_moved = true;
        };
        course.effects["A.do, done"] = [](State& state) { state.model.push_back("A"); };
        course.effects["B.do, done"] = [](State& state) { state.model.push_back("B"); };
        course.effects["command message"] = [p_moved = &moved](State&) { *p_moved = Steps == 1; };
        check_course(course, p_fault, outcome);
    }

private:
    bool moved = false; // in this step
};

} // namespace

TEST(ThrowingCode, Insertion)
{
    try_every_place<Insertion>("insert");
}

TEST(ThrowingCode, MergingInsertion)
{
    try_every_place<MergingInsertion>("insert that merges");
}

TEST(ThrowingCode, InsertionThatIsNotKept)
{
    try_every_place<UnkeptInsertion>("insert without an entry");
}

TEST(ThrowingCode, CancelledInsertion)
{
    try_every_place<CancelledInsertion>("insert that is cancelled");
}

TEST(ThrowingCode, Undo)
{
    try_every_place<Undoing<1>>("undo");
}

TEST(ThrowingCode, UndoOfSeveral)
{
    try_every_place<Undoing<2>>("undo 2");
}

TEST(ThrowingCode, Redo)
{
    try_every_place<Redoing<1>>("redo");
}

TEST(ThrowingCode, RedoOfSeveral)
{
    try_every_place<Redoing<2>>("redo 2");
}
