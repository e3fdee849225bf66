#include "faults/FaultRuns.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CompositeCommand.h>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

// Children of a composite that throw, each of them at each of their steps.
//
// The states that a run of a batch may leave, beside those of any run:
//
//  - a child that is cancelled is rolled back, and the batch goes on;
//  - a child that fails, and is not the last: without a window nobody can be asked, so the batch goes on;
//    what the child has done stays, and so does its flag;
//  - the last child fails: the children that have begun are rolled back, the batch counts as failed;
//  - a child throws anything else: a fatal error, and the batch goes on;
//  - rollback() throws, of a child that is taken back with the batch: the children before it are taken back,
//    those after it are not, and the exception goes to the caller: nobody else could take them back;
//  - undo_command() or finished() of a child throws in an undo: a fatal error; the children that were done
//    before it stay done.

using namespace tarqa::housekeeping;
using namespace throwing_code;
using testing::HasSubstr;
using testing::Not;

namespace {

const Texts s_children = {"C1", "C2", "C3"};

/// The name of the child whose place it is; empty if it is nobody's.
std::string child_of(const std::string& place)
{
    const std::string name = place.substr(0, place.find('.'));
    return std::find(s_children.begin(), s_children.end(), name) == s_children.end() ? std::string() : name;
}

std::string step_of(const std::string& place)
{
    const std::string plain = without_number(place);
    return plain.substr(plain.find('.') + 1);
}

/// A document with "A", done, and a batch of three.
class BatchScenario : public Scenario
{
public:
    Texts model_of(const Texts& commands) const override
    {
        Texts model;
        for (const std::string& name : commands) {
            if (name == "Batch") {
                model.insert(model.end(), s_children.begin(), s_children.end());
            } else {
                model.push_back(name);
            }
        }
        return model;
    }

protected:
    BatchScenario()
    {
        done(id, "A");
        for (const std::string& name : s_children) {
            children.push_back(boost::make_shared<FaultyCommand>(id, name));
            batch->push_back(children.back());
        }
        batch->setProgress(&progress);
    }

    /// Only its own places, and those of the run around it as far as they differ, are looked at here.
    void check_around(const Fault& fault, const Outcome& outcome) const
    {
        if (child_of(fault.place()).empty()) {
            EXPECT_EQ(fault.kind, outcome.thrown);
            EXPECT_EQ(0, outcome.fatal_errors);
        }
    }

    /// What is done when it has run with a fault in a child.
    Texts done_after(const Fault& fault) const
    {
        const std::string child = child_of(fault.place());
        const bool is_last = child == s_children.back();
        if (is_last && fault.kind == Kind::Failed) {
            return {"A"};
        }
        const bool has_done_it = step_of(fault.place()) == "do, done" || step_of(fault.place()) == "finished";
        Texts model = {"A"};
        for (const std::string& name : s_children) {
            if (name != child || (has_done_it && fault.kind != Kind::Cancel)) {
                model.push_back(name);
            }
        }
        return model;
    }

    void check_doing(const Fault* p_fault, const Outcome& outcome, const State& wanted)
    {
        if (!p_fault) {
            EXPECT_FALSE(outcome.thrown);
            EXPECT_EQ(wanted, state_of(id));
            return;
        }
        check_around(*p_fault, outcome);
        const std::string child = child_of(p_fault->place());
        if (child.empty()) {
            return;
        }
        EXPECT_FALSE(outcome.thrown);
        EXPECT_EQ((State{wanted.undo, wanted.redo, done_after(*p_fault)}), state_of(id));
        const bool is_expected_end = p_fault->kind == Kind::Cancel || p_fault->kind == Kind::Failed;
        EXPECT_EQ(is_expected_end ? 0 : 1, outcome.fatal_errors);
        const bool is_given_up = p_fault->kind == Kind::Failed && child == s_children.back();
        EXPECT_THAT(outcome.log, HasSubstr(is_given_up ? "DO>\tBatch - Failed." : "DO>\tBatch - Succeeded."));
        if (p_fault->kind != Kind::Cancel) {
            EXPECT_THAT(outcome.log, HasSubstr(trace_of(p_fault->kind)));
        }
        EXPECT_EQ(
            is_given_up ? CommandMessage::Failed : CommandMessage::Done, subscriber->command_types.back());
        check_flags(child, p_fault->kind, step_of(p_fault->place()));
    }

    const DocumentId id = add_document();
    const boost::shared_ptr<CompositeCommand> batch
        = boost::make_shared<CompositeCommand>(id, "Batch", false);
    std::vector<boost::shared_ptr<FaultyCommand>> children;

private:
    /// A child keeps its flag unless it was cancelled, or threw before it began.
    void check_flags(const std::string& child, Kind kind, const std::string& step)
    {
        for (const auto& entry : batch->commands()) {
            const bool is_the_one = entry.first->name() == child;
            EXPECT_EQ(!is_the_one || (kind != Kind::Cancel && step != "remember"), entry.second)
                << entry.first->name();
        }
    }
};

class BatchInsertion : public BatchScenario
{
public:
    void run() override { CommandManager::instance().insert(batch, false); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        check_doing(p_fault, outcome, {{"A", "Batch"}, {}, {"A", "C1", "C2", "C3"}});
    }
};

class BatchRedo : public BatchScenario
{
public:
    BatchRedo()
    {
        CommandManager::instance().insert(batch, false);
        CommandManager::instance().undo(id);
    }
    void run() override { CommandManager::instance().redo(id); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        check_doing(p_fault, outcome, {{"A", "Batch"}, {}, {"A", "C1", "C2", "C3"}});
    }
};

/// The last child fails by itself, so that all are rolled back.
class BatchRollback : public BatchScenario
{
public:
    BatchRollback() { children.back()->fails = true; }
    void run() override { CommandManager::instance().insert(batch, false); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        if (!p_fault) {
            EXPECT_FALSE(outcome.thrown);
            EXPECT_EQ((State{{"A", "Batch"}, {}, {"A"}}), state_of(id));
            EXPECT_EQ(CommandMessage::Failed, subscriber->command_types.back());
            return;
        }
        check_around(*p_fault, outcome);
        const std::string step = step_of(p_fault->place());
        if (child_of(p_fault->place()).empty() || step.rfind("rollback", 0) != 0) {
            return;
        }
        EXPECT_EQ(p_fault->kind, outcome.thrown);
        EXPECT_THAT(outcome.log, Not(HasSubstr("DO>\tBatch")));
        Texts model = {"A"};
        const auto child = std::find(s_children.begin(), s_children.end(), child_of(p_fault->place()));
        model.insert(model.end(), child + (step == "rollback, done" ? 1 : 0), s_children.end());
        EXPECT_EQ((State{{"A", "Batch"}, {}, model}), state_of(id));
    }
};

/// A child in the middle cancels itself, so that it alone is rolled back.
class BatchWithACancelledChild : public BatchScenario
{
public:
    BatchWithACancelledChild() { children[1]->cancels = true; }
    void run() override { CommandManager::instance().insert(batch, false); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        if (!p_fault) {
            EXPECT_FALSE(outcome.thrown);
            EXPECT_EQ((State{{"A", "Batch"}, {}, {"A", "C1", "C3"}}), state_of(id));
            return;
        }
        const std::string step = step_of(p_fault->place());
        if (step.rfind("rollback", 0) != 0) {
            return;
        }
        // It leaves the batch, which deals with it as any command does with what its do_command() throws.
        EXPECT_FALSE(outcome.thrown);
        const bool is_expected_end = p_fault->kind == Kind::Cancel || p_fault->kind == Kind::Failed;
        EXPECT_EQ(is_expected_end ? 0 : 1, outcome.fatal_errors);
        const bool is_taken_back = step == "rollback, done";
        const Texts model = is_expected_end ? Texts{"A"}
            : is_taken_back                 ? Texts{"A", "C1"}
                                            : Texts{"A", "C1", "C2"};
        EXPECT_EQ((State{{"A", "Batch"}, {}, model}), state_of(id));
    }
};

class BatchUndo : public BatchScenario
{
public:
    BatchUndo() { CommandManager::instance().insert(batch, false); }
    void run() override { CommandManager::instance().undo(id); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        if (!p_fault) {
            EXPECT_FALSE(outcome.thrown);
            EXPECT_EQ((State{{"A"}, {"Batch"}, {"A"}}), state_of(id));
            return;
        }
        check_around(*p_fault, outcome);
        const std::string child = child_of(p_fault->place());
        if (child.empty()) {
            return;
        }
        EXPECT_FALSE(outcome.thrown);
        EXPECT_EQ(1, outcome.fatal_errors);
        EXPECT_THAT(
            outcome.log, HasSubstr(trace_of(p_fault->kind == Kind::Cancel ? Kind::Failed : p_fault->kind)));
        EXPECT_THAT(outcome.log, HasSubstr("UNDO>\tBatch - Succeeded."));
        Texts model = {"A"};
        const auto first = std::find(s_children.begin(), s_children.end(), child);
        model.insert(model.end(), s_children.begin(), first + (step_of(p_fault->place()) == "undo" ? 1 : 0));
        EXPECT_EQ((State{{"A"}, {"Batch"}, model}), state_of(id));
    }
};

/// The older batch is asked to take in the newer one, child by child.
class BatchMerge : public Scenario
{
public:
    BatchMerge()
    {
        CommandManager::instance().insert(older, false);
        add_children(*older);
        add_children(*newer);
    }
    void run() override { CommandManager::instance().insert(newer, false); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        const State now = state_of(id);
        EXPECT_EQ(Texts{"Batch"}, now.undo);
        if (p_fault && step_of(p_fault->place()) == "stackWith") {
            EXPECT_EQ(p_fault->kind, outcome.thrown);
            EXPECT_TRUE(now.model.empty()); // the newer one has not run
        }
        if (!p_fault) {
            EXPECT_EQ(s_children, now.model);
        }
    }

private:
    void add_children(CompositeCommand& batch)
    {
        for (const std::string& name : s_children) {
            batch.push_back(boost::make_shared<FaultyCommand>(id, name));
        }
    }

    const DocumentId id = add_document();
    const boost::shared_ptr<CompositeCommand> older = boost::make_shared<CompositeCommand>(id, "Batch", true);
    const boost::shared_ptr<CompositeCommand> newer = boost::make_shared<CompositeCommand>(id, "Newer", true);
};

} // namespace

TEST(ThrowingCode, InsertionOfAComposite)
{
    try_every_place<BatchInsertion>("composite insert");
}

TEST(ThrowingCode, RedoOfAComposite)
{
    try_every_place<BatchRedo>("composite redo");
}

TEST(ThrowingCode, RollbackOfAComposite)
{
    try_every_place<BatchRollback>("composite insert with rollback");
}

TEST(ThrowingCode, CompositeWithACancelledChild)
{
    try_every_place<BatchWithACancelledChild>("composite insert with a cancelled child");
}

TEST(ThrowingCode, UndoOfAComposite)
{
    try_every_place<BatchUndo>("composite undo");
}

TEST(ThrowingCode, MergeOfComposites)
{
    try_every_place<BatchMerge>("composite insert that merges");
}
