#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CompositeCommand.h>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tarqa::housekeeping;
using support::FakeCommand;
using support::journal;
using support::JournalingReceiver;
using support::make_command;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const DocumentId s_document = DocumentId::build(5);

typedef boost::shared_ptr<FakeCommand> Child;

/// A composite named "Batch" of these children.
boost::shared_ptr<CompositeCommand> batch(const std::vector<Child>& children, bool stack_identical = false)
{
    const auto composite = boost::make_shared<CompositeCommand>(s_document, "Batch", stack_identical);
    for (const Child& child : children) {
        composite->push_back(child);
    }
    return composite;
}

Child child(const std::string& name)
{
    return make_command(s_document, name);
}

/// A child that absorbs the commands called @p name.
Child absorbing(const std::string& own_name, const std::string& name)
{
    const Child made = child(own_name);
    made->absorbs = [name](const AbstractCommand& newer) { return newer.name() == name; };
    return made;
}

std::vector<bool> flags(const CompositeCommand& composite)
{
    std::vector<bool> result;
    for (const auto& entry : composite.commands()) {
        result.push_back(entry.second);
    }
    return result;
}

void execute(CompositeCommand& composite, bool redo = false)
{
    AbstractCommand::Execute(&composite).run(redo);
}

void unexecute(CompositeCommand& composite)
{
    AbstractCommand::UnExecute(&composite).run(false);
}

} // namespace

TEST(CompositeCommand, StartsWithoutChildren)
{
    const CompositeCommand composite(s_document, "Batch", false);
    EXPECT_EQ("Batch", composite.name());
    EXPECT_EQ(s_document, composite.document_id());
    EXPECT_EQ(0u, composite.size());
    EXPECT_TRUE(composite.empty());
    EXPECT_TRUE(composite.validUndo());
    EXPECT_TRUE(composite.set_document_busy());
    EXPECT_FALSE(composite.stackIndenticalCommand());
    EXPECT_FALSE(composite.shouldClearRedoWhenUndoing());
    EXPECT_TRUE(CompositeCommand(s_document, "Batch", true).stackIndenticalCommand());
}

TEST(CompositeCommand, CountsAndForgetsItsChildren)
{
    const Child a = child("A");
    const Child b = child("B");
    CompositeCommand composite(s_document, "Batch", false);
    composite.push_back(a);
    composite.push_back(b);
    EXPECT_EQ(2u, composite.size());
    EXPECT_FALSE(composite.empty());
    ASSERT_EQ(2u, composite.commands().size());
    EXPECT_EQ(a, composite.commands()[0].first);
    EXPECT_EQ(b, composite.commands()[1].first);
    EXPECT_THAT(flags(composite), ElementsAre(false, false));
    composite.clear();
    EXPECT_TRUE(composite.empty());
    EXPECT_THAT(composite.commands(), IsEmpty());
}

TEST(CompositeCommand, NullChildIsLoggedAndIgnored)
{
    const auto composite = batch({child("A")});
    support::LogCapture log;
    composite->push_back(nullptr);
    EXPECT_TRUE(log.took_assert("utilities::valid_pointer(command)", "CompositeCommand::push_back",
        "housekeeping/src/CompositeCommand"));
    EXPECT_EQ(1u, composite->size());
}

TEST(CompositeCommand, NullChildrenCountAndAreSkipped)
{
    const auto composite = batch({child("A")}, true);
    TestAccess::push_back_null(*composite);
    composite->push_back(child("B"));
    EXPECT_EQ(3u, composite->size());
    support::LogCapture log;
    execute(*composite);
    unexecute(*composite);
    composite->rollback();
    EXPECT_FALSE(composite->stackWith(child("C")));
    EXPECT_EQ("DO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B - Succeeded.\n"
              "UNDO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B - Succeeded.\n",
        log.text());
}

// Runs

TEST(CompositeCommand, ChildrenRunInOrderEachRememberingJustBefore)
{
    const auto composite = batch({child("A"), child("B")});
    const JournalingReceiver receiver;
    execute(*composite);
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "A.finished(true)", "B.remember", "B.do", "B.finished(true)",
            "CommandMessage(Batch, 0)")); // one message for all
    EXPECT_THAT(flags(*composite), ElementsAre(true, true));
}

TEST(CompositeCommand, FlagIsSetBeforeTheChildRuns)
{
    const Child a = child("A");
    const auto composite = batch({a});
    std::vector<bool> seen;
    a->on_remember = [&] { seen.push_back(composite->commands()[0].second); };
    a->on_do = [&] { seen.push_back(composite->commands()[0].second); };
    execute(*composite);
    EXPECT_THAT(seen, ElementsAre(false, true));
}

TEST(CompositeCommand, ProtocolHasALinePerChild)
{
    const Child b = child("B");
    b->on_do = [&b] { b->setDescription("2 faults"); };
    const auto composite = batch({child("A"), b});
    composite->setDescription("all");
    support::LogCapture log;
    execute(*composite);
    EXPECT_EQ("DO>\tBatch: all - Succeeded.\n\t* A - Succeeded.\n\t* B: 2 faults - Succeeded.\n", log.text());
}

TEST(CompositeCommand, ProtocolOfUndoHasALinePerChildToo)
{
    const auto composite = batch({child("A"), child("B")});
    execute(*composite);
    support::LogCapture log;
    unexecute(*composite);
    EXPECT_EQ("UNDO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B - Succeeded.\n", log.text());
}

TEST(CompositeCommand, ProtocolOfAnyMomentHasALinePerChild)
{
    const auto composite = batch({child("A")});
    composite->setDescription("all");
    EXPECT_EQ("DO>\tBatch: all - Failed.\n\t* A - Failed.\n", composite->protocol("DO>", false));
    execute(*composite);
    EXPECT_EQ("UNDO>\tBatch: all - Succeeded.\n\t* A - Succeeded.\n", composite->protocol("UNDO>", true));
}

TEST(CompositeCommand, ProtocolHasRoomForManyLinesOfAnyLength)
{
    std::vector<Child> children;
    std::string done = "UNDO>\tBatch - Succeeded.\n";
    std::string not_done = "DO>\tBatch - Failed.\n";
    for (std::size_t length = 0; length < 200; ++length) {
        const std::string name(length, 'n');
        const std::string description(length % 3 * 50, 'd');
        children.push_back(child(name));
        children.back()->setDescription(description);
        const std::string line = "\t* " + name + (description.empty() ? "" : ": ") + description;
        done += line + " - Succeeded.\n";
        not_done += line + " - Failed.\n";
    }
    const auto composite = batch(children);
    EXPECT_EQ(not_done, composite->protocol("DO>", false));
    const support::LogCapture log;
    execute(*composite);
    EXPECT_EQ(done, composite->protocol("UNDO>", true));
}

TEST(CompositeCommand, RunWithoutChildrenSucceeds)
{
    CompositeCommand composite(s_document, "Batch", false);
    const JournalingReceiver receiver;
    support::LogCapture log;
    execute(composite);
    EXPECT_EQ("DO>\tBatch - Succeeded.\n", log.text());
    EXPECT_THAT(journal().entries(), ElementsAre("CommandMessage(Batch, 0)"));
}

TEST(CompositeCommand, OnlyChildGivesItsDescription)
{
    const Child a = child("A");
    a->setDescription("3 faults");
    const auto composite = batch({a});
    support::LogCapture log;
    execute(*composite);
    EXPECT_EQ("3 faults", composite->details().description());
    EXPECT_EQ("DO>\tBatch: 3 faults - Succeeded.\n\t* A: 3 faults - Succeeded.\n", log.text());
}

TEST(CompositeCommand, OnlyChildThatIsNullGivesNoDescription)
{
    const auto composite = batch({});
    TestAccess::push_back_null(*composite);
    support::LogCapture log;
    execute(*composite);
    EXPECT_EQ("DO>\tBatch - Succeeded.\n", log.text());
}

TEST(CompositeCommand, OwnDescriptionIsKept)
{
    const Child a = child("A");
    a->setDescription("3 faults");
    const auto composite = batch({a});
    composite->setDescription("own");
    execute(*composite);
    EXPECT_EQ("own", composite->details().description());
}

TEST(CompositeCommand, OneOfSeveralChildrenGivesNoDescription)
{
    const Child a = child("A");
    a->setDescription("3 faults");
    const auto composite = batch({a, child("B")});
    execute(*composite);
    EXPECT_EQ("", composite->details().description());
}

TEST(CompositeCommand, UndoRunsTheNewestChildFirst)
{
    const auto composite = batch({child("A"), child("B"), child("C")});
    execute(*composite);
    const JournalingReceiver receiver;
    journal().clear();
    unexecute(*composite);
    EXPECT_THAT(journal().entries(),
        ElementsAre("C.undo", "C.finished(true)", "B.undo", "B.finished(true)", "A.undo", "A.finished(true)",
            "CommandMessage(Batch, 1)"));
    EXPECT_THAT(flags(*composite), ElementsAre(true, true, true)); // deliberately kept
}

TEST(CompositeCommand, UndoLeavesChildrenAloneThatAreNotDone)
{
    const Child b = child("B");
    b->on_do = support::throws_cancel();
    const auto composite = batch({child("A"), b, child("C")});
    execute(*composite);
    journal().clear();
    unexecute(*composite);
    EXPECT_THAT(journal().entries(), ElementsAre("C.undo", "C.finished(true)", "A.undo", "A.finished(true)"));
}

TEST(CompositeCommand, RollbackTakesTheDoneChildrenInTheirOrder)
{
    const Child b = child("B");
    b->on_do = support::throws_cancel();
    const auto composite = batch({child("A"), b, child("C")});
    composite->rollback();
    EXPECT_THAT(journal().entries(), IsEmpty()); // nothing is done yet
    execute(*composite);
    journal().clear();
    composite->rollback();
    EXPECT_THAT(journal().entries(), ElementsAre("A.rollback", "C.rollback"));
    EXPECT_THAT(flags(*composite), ElementsAre(true, false, true)); // deliberately kept
}

TEST(CompositeCommand, RedoRunsAllChildrenAgain)
{
    const auto composite = batch({child("A"), child("B")});
    execute(*composite);
    unexecute(*composite);
    const JournalingReceiver receiver;
    journal().clear();
    execute(*composite, true);
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "A.finished(true)", "B.remember", "B.do", "B.finished(true)",
            "CommandMessage(Batch, 0, redo)"));
}

TEST(CompositeCommand, NestedCompositeIsOneChild)
{
    const auto inner = batch({child("A"), child("B")});
    inner->setName("Inner");
    CompositeCommand outer(s_document, "Outer", false);
    outer.push_back(inner);
    outer.push_back(child("C"));
    const JournalingReceiver receiver;
    support::LogCapture log;
    execute(outer);
    EXPECT_EQ("DO>\tOuter - Succeeded.\n\t* Inner - Succeeded.\n\t* C - Succeeded.\n", log.text());
    EXPECT_EQ(1, journal().count("CommandMessage"));
    journal().clear();
    unexecute(outer);
    EXPECT_THAT(journal().entries(),
        ElementsAre("C.undo", "C.finished(true)", "B.undo", "B.finished(true)", "A.undo", "A.finished(true)",
            "CommandMessage(Outer, 1)"));
}

TEST(CompositeCommand, CopySharesTheChildrenAndKeepsTheId)
{
    const auto composite = batch({child("A")});
    execute(*composite);
    const CompositeCommand copy(*composite);
    EXPECT_EQ(composite->id(), copy.id());
    EXPECT_EQ(composite->commands(), copy.commands());
    EXPECT_EQ(composite->protocol("DO>", true), copy.protocol("DO>", true));
    CompositeCommand assigned(s_document, "Other", false);
    assigned = *composite;
    EXPECT_EQ(composite->id(), assigned.id());
    EXPECT_EQ(composite->commands(), assigned.commands());
    EXPECT_EQ("DO>\tBatch - Succeeded.\n\t* A - Succeeded.\n", assigned.protocol("DO>", true));
}

// Merging

TEST(CompositeCommand, DoesNotMergeUnlessBuiltForIt)
{
    const auto older = batch({absorbing("A", "B")}, false);
    EXPECT_FALSE(older->stackWith(child("B")));
    EXPECT_FALSE(older->stackWith(batch({child("B")}, true)));
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST(CompositeCommand, OffersEveryPairOfChildren)
{
    const auto older = batch({absorbing("A1", "B1"), child("A2")}, true);
    const auto newer = batch({child("B1"), child("B2")}, true);
    EXPECT_TRUE(older->stackWith(newer));
    EXPECT_THAT(journal().entries(),
        ElementsAre("A1.stackWith(B1)", "A1.stackWith(B2)", "A2.stackWith(B1)", "A2.stackWith(B2)"));
}

TEST(CompositeCommand, DoesNotMergeWhenNoChildAbsorbs)
{
    const auto older = batch({child("A1"), child("A2")}, true);
    EXPECT_FALSE(older->stackWith(batch({child("B1")}, true)));
    EXPECT_FALSE(older->stackWith(child("B2")));
    EXPECT_THAT(journal().entries(),
        ElementsAre("A1.stackWith(B1)", "A2.stackWith(B1)", "A1.stackWith(B2)", "A2.stackWith(B2)"));
}

TEST(CompositeCommand, NewerCompositeNeedNotBeBuiltForMerging)
{
    const auto older = batch({absorbing("A", "B")}, true);
    EXPECT_TRUE(older->stackWith(batch({child("B")}, false))); // the history asks for both flags, not this
}

TEST(CompositeCommand, OffersASingleCommandToEveryChild)
{
    const auto older = batch({absorbing("A1", "B"), absorbing("A2", "B"), child("A3")}, true);
    EXPECT_TRUE(older->stackWith(child("B")));
    EXPECT_THAT(journal().entries(), ElementsAre("A1.stackWith(B)", "A2.stackWith(B)", "A3.stackWith(B)"));
}

TEST(CompositeCommand, MergingDoesNotAskForOutcomes)
{
    const auto older = batch({absorbing("A", "B")}, true);
    EXPECT_THAT(flags(*older), ElementsAre(false));
    EXPECT_TRUE(older->stackWith(child("B")));
}

TEST(CompositeCommand, DoesNotMergeWithNothing)
{
    EXPECT_FALSE(batch({absorbing("A", "B")}, true)->stackWith(nullptr));
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST(CompositeCommand, CompositesWithoutChildrenDoNotMerge)
{
    EXPECT_FALSE(batch({}, true)->stackWith(batch({child("B")}, true)));
    EXPECT_FALSE(batch({absorbing("A", "B")}, true)->stackWith(batch({}, true)));
}
