#include "support/App.h"
#include "support/Fakes.h"

#include <tarqa/housekeeping/AbstractDocumentHistory.h>
#include <tarqa/housekeeping/CompositeCommand.h>

#include <QtGui/QIcon>
#include <QtGui/QPixmap>

#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>
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

boost::shared_ptr<FakeCommand> command(const std::string& name)
{
    return make_command(s_document, name);
}

boost::shared_ptr<FakeCommand> identical(const std::string& name, bool absorbs)
{
    const auto made = command(name);
    made->stack_identical(true);
    made->absorbs = [absorbs](const AbstractCommand&) { return absorbs; };
    return made;
}

std::vector<std::string> names(const std::vector<CommandDetails>& details)
{
    std::vector<std::string> result;
    for (const CommandDetails& one : details) {
        result.push_back(one.name());
    }
    return result;
}

/// The undo stack, most recent first.
std::vector<std::string> undo_names(const AbstractDocumentHistory& history)
{
    return names(history.getUndoCommandDetails(1000));
}

std::vector<std::string> redo_names(const AbstractDocumentHistory& history)
{
    return names(history.getRedoCommandDetails(1000));
}

} // namespace

TEST(AbstractDocumentHistory, StartsEmpty)
{
    AbstractDocumentHistory history;
    const JournalingReceiver receiver;
    EXPECT_TRUE(history.empty());
    EXPECT_EQ(0u, history.undoSize());
    EXPECT_EQ(0u, history.redoSize());
    EXPECT_THAT(history.getUndoCommandDetails(10), IsEmpty());
    EXPECT_THAT(history.getRedoCommandDetails(10), IsEmpty());
    EXPECT_FALSE(history.transferUndoCommand());
    EXPECT_FALSE(history.transferRedoCommand());
    history.removeLastUndo();
    EXPECT_THAT(journal().entries(), IsEmpty()); // nothing changed, nothing is said
}

TEST(AbstractDocumentHistory, KeepsInsertedCommandsAndTellsEach)
{
    AbstractDocumentHistory history;
    const JournalingReceiver receiver;
    history.insertUndoCommand(command("A"));
    history.insertUndoCommand(command("B"));
    EXPECT_THAT(undo_names(history), ElementsAre("B", "A"));
    EXPECT_EQ(2u, history.undoSize());
    EXPECT_EQ(0u, history.redoSize());
    EXPECT_FALSE(history.empty());
    EXPECT_THAT(journal().entries(), ElementsAre("DocumentHistoryMsg", "DocumentHistoryMsg"));
}

TEST(AbstractDocumentHistory, ChangeIsMadeBeforeItIsTold)
{
    AbstractDocumentHistory history;
    JournalingReceiver receiver;
    std::vector<std::pair<unsigned long long, unsigned long long>> sizes;
    receiver.on_history
        = [&](DocumentHistoryMsg&) { sizes.emplace_back(history.undoSize(), history.redoSize()); };
    history.insertUndoCommand(command("A"));
    history.transferUndoCommand();
    history.transferRedoCommand();
    using Sizes = std::pair<unsigned long long, unsigned long long>;
    EXPECT_THAT(sizes, ElementsAre(Sizes(1, 0), Sizes(0, 1), Sizes(1, 0)));
}

TEST(AbstractDocumentHistory, CommandWithoutUndoIsOnlyTold)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(command("A"));
    history.insertUndoCommand(command("B"));
    history.transferUndoCommand();
    const auto invalid = identical("C", true);
    invalid->valid_undo(false);
    const JournalingReceiver receiver;
    journal().clear();
    history.insertUndoCommand(invalid);
    EXPECT_THAT(undo_names(history), ElementsAre("A"));
    EXPECT_THAT(redo_names(history), ElementsAre("B"));
    EXPECT_THAT(journal().entries(), ElementsAre("DocumentHistoryMsg"));
}

TEST(AbstractDocumentHistory, NullCommandIsNotKeptButTold)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(command("A"));
    history.insertUndoCommand(command("B"));
    history.transferUndoCommand();
    const JournalingReceiver receiver;
    history.insertUndoCommand(nullptr);
    EXPECT_THAT(undo_names(history), ElementsAre("A"));
    EXPECT_EQ(0u, history.redoSize());
    EXPECT_THAT(journal().entries(), ElementsAre("DocumentHistoryMsg"));
}

// Merging

TEST(AbstractDocumentHistory, OlderCommandAbsorbsTheNewer)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(identical("A", true));
    const JournalingReceiver receiver;
    history.insertUndoCommand(identical("B", false));
    EXPECT_THAT(undo_names(history), ElementsAre("A"));
    EXPECT_EQ(0u, history.redoSize());
    EXPECT_THAT(journal().entries(), ElementsAre("A.stackWith(B)", "DocumentHistoryMsg"));
}

TEST(AbstractDocumentHistory, OlderCommandThatDoesNotAbsorbLeavesBoth)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(identical("A", false));
    history.insertUndoCommand(identical("B", true));
    EXPECT_THAT(undo_names(history), ElementsAre("B", "A"));
    EXPECT_EQ(1, journal().count("A.stackWith(B)"));
}

TEST(AbstractDocumentHistory, BothCommandsMustAgreeToMerge)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(identical("A", true));
    history.insertUndoCommand(command("B")); // does not want it
    const auto absorbing = command("C"); // would, but does not say so
    absorbing->absorbs = [](const AbstractCommand&) { return true; };
    history.insertUndoCommand(absorbing);
    history.insertUndoCommand(identical("D", true));
    EXPECT_THAT(undo_names(history), ElementsAre("D", "C", "B", "A"));
    EXPECT_EQ(0, journal().count("A.stackWith"));
    EXPECT_EQ(0, journal().count("C.stackWith"));
}

TEST(AbstractDocumentHistory, OnlyTheLastCommandIsAskedToMerge)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(identical("A", true));
    history.insertUndoCommand(command("B"));
    history.insertUndoCommand(identical("C", true));
    EXPECT_THAT(undo_names(history), ElementsAre("C", "B", "A"));
    EXPECT_EQ(0, journal().count("A.stackWith"));
}

TEST(AbstractDocumentHistory, MergeClearsTheRedoStack)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(identical("A", true));
    history.insertUndoCommand(command("B"));
    history.transferUndoCommand();
    EXPECT_EQ(1u, history.redoSize());
    history.insertUndoCommand(identical("C", true));
    EXPECT_THAT(undo_names(history), ElementsAre("A"));
    EXPECT_EQ(0u, history.redoSize());
}

TEST(AbstractDocumentHistory, MergedCompositeIsDroppedWithTheChildrenNobodyAbsorbed)
{
    const auto older = boost::make_shared<CompositeCommand>(s_document, "Older", true);
    const auto absorbing = command("A");
    absorbing->absorbs = [](const AbstractCommand& newer) { return newer.name() == "B1"; };
    older->push_back(absorbing);
    const auto newer = boost::make_shared<CompositeCommand>(s_document, "Newer", true);
    newer->push_back(command("B1"));
    newer->push_back(command("B2"));
    AbstractDocumentHistory history;
    history.insertUndoCommand(older);
    history.insertUndoCommand(newer);
    EXPECT_THAT(undo_names(history), ElementsAre("Older"));
    EXPECT_EQ(1u, older->size());
    EXPECT_EQ(1, newer.use_count());
}

// Undo and redo

TEST(AbstractDocumentHistory, UndoMovesTheLastCommandToTheRedoStack)
{
    AbstractDocumentHistory history;
    const auto b = command("B");
    history.insertUndoCommand(command("A"));
    history.insertUndoCommand(b);
    const JournalingReceiver receiver;
    EXPECT_EQ(b, history.transferUndoCommand());
    EXPECT_THAT(undo_names(history), ElementsAre("A"));
    EXPECT_THAT(redo_names(history), ElementsAre("B"));
    EXPECT_THAT(journal().entries(), ElementsAre("DocumentHistoryMsg"));
    EXPECT_FALSE(history.empty());
    history.transferUndoCommand();
    EXPECT_THAT(redo_names(history), ElementsAre("A", "B"));
    EXPECT_FALSE(history.empty());
}

TEST(AbstractDocumentHistory, RedoMovesTheLastUndoneCommandBack)
{
    AbstractDocumentHistory history;
    const auto a = command("A");
    history.insertUndoCommand(a);
    history.insertUndoCommand(command("B"));
    history.transferUndoCommand();
    history.transferUndoCommand();
    const JournalingReceiver receiver;
    EXPECT_EQ(a, history.transferRedoCommand());
    EXPECT_THAT(undo_names(history), ElementsAre("A"));
    EXPECT_THAT(redo_names(history), ElementsAre("B"));
    EXPECT_THAT(journal().entries(), ElementsAre("DocumentHistoryMsg"));
}

TEST(AbstractDocumentHistory, RedoNeitherMergesNorTestsValidity)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(identical("A", true));
    const auto b = command("B");
    history.insertUndoCommand(b);
    history.transferUndoCommand();
    b->stack_identical(true);
    b->valid_undo(false);
    EXPECT_EQ(b, history.transferRedoCommand());
    EXPECT_THAT(undo_names(history), ElementsAre("B", "A"));
    EXPECT_EQ(0, journal().count("A.stackWith"));
}

TEST(AbstractDocumentHistory, UndoThenInsertClearsTheRedoStack)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(command("A"));
    history.transferUndoCommand();
    history.insertUndoCommand(command("B"));
    EXPECT_EQ(0u, history.redoSize());
    EXPECT_FALSE(history.transferRedoCommand());
    EXPECT_THAT(undo_names(history), ElementsAre("B"));
}

TEST(AbstractDocumentHistory, CommandThatClearsRedoCannotBeRedone)
{
    AbstractDocumentHistory history;
    const auto clearing = command("A");
    clearing->clears_redo_when_undoing(true);
    history.insertUndoCommand(clearing);
    history.insertUndoCommand(command("B"));
    history.transferUndoCommand();
    EXPECT_EQ(1u, history.redoSize());
    const JournalingReceiver receiver;
    EXPECT_EQ(clearing, history.transferUndoCommand());
    EXPECT_EQ(0u, history.redoSize());
    EXPECT_TRUE(history.empty());
    EXPECT_FALSE(history.transferRedoCommand());
    EXPECT_THAT(journal().entries(), ElementsAre("DocumentHistoryMsg"));
}

TEST(AbstractDocumentHistory, LastUndoIsRemovedSilently)
{
    AbstractDocumentHistory history;
    history.insertUndoCommand(command("A"));
    history.insertUndoCommand(command("B"));
    history.insertUndoCommand(command("C"));
    history.transferUndoCommand();
    const JournalingReceiver receiver;
    history.removeLastUndo();
    EXPECT_THAT(undo_names(history), ElementsAre("A"));
    EXPECT_THAT(redo_names(history), ElementsAre("C")); // stays
    EXPECT_THAT(journal().entries(), IsEmpty());
}

// Lists

TEST(AbstractDocumentHistory, DetailsComeMostRecentFirst)
{
    AbstractDocumentHistory history;
    for (const char* name : {"A", "B", "C"}) {
        history.insertUndoCommand(command(name));
    }
    EXPECT_THAT(names(history.getUndoCommandDetails(0)), IsEmpty());
    EXPECT_THAT(names(history.getUndoCommandDetails(2)), ElementsAre("C", "B"));
    EXPECT_THAT(names(history.getUndoCommandDetails(3)), ElementsAre("C", "B", "A"));
    EXPECT_THAT(names(history.getUndoCommandDetails(4)), ElementsAre("C", "B", "A"));
    EXPECT_THAT(names(history.getUndoCommandDetails(~0ull)), ElementsAre("C", "B", "A"));
    history.transferUndoCommand();
    history.transferUndoCommand();
    EXPECT_THAT(names(history.getRedoCommandDetails(0)), IsEmpty());
    EXPECT_THAT(names(history.getRedoCommandDetails(1)), ElementsAre("B"));
    EXPECT_THAT(names(history.getRedoCommandDetails(9)), ElementsAre("B", "C"));
}

TEST(AbstractDocumentHistory, DetailsAreCopies)
{
    AbstractDocumentHistory history;
    const auto a = command("A");
    a->setDescription("3 faults");
    history.insertUndoCommand(a);
    const std::vector<CommandDetails> details = history.getUndoCommandDetails(1);
    a->setName("changed");
    ASSERT_EQ(1u, details.size());
    EXPECT_EQ("A", details[0].name());
    EXPECT_EQ("3 faults", details[0].description());
    EXPECT_THAT(undo_names(history), ElementsAre("changed"));
}

TEST(AbstractDocumentHistory, DetailsHaveTheIcon)
{
    const support::App app;
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    const QIcon icon(pixmap);
    AbstractDocumentHistory history;
    const auto a = command("A");
    a->setIcon(icon);
    history.insertUndoCommand(a);
    EXPECT_EQ(icon.cacheKey(), history.getUndoCommandDetails(1).at(0).icon().cacheKey());
    history.transferUndoCommand();
    EXPECT_EQ(icon.cacheKey(), history.getRedoCommandDetails(1).at(0).icon().cacheKey());
}

TEST(AbstractDocumentHistory, CopySharesTheCommands)
{
    AbstractDocumentHistory history;
    const auto a = command("A");
    history.insertUndoCommand(a);
    history.insertUndoCommand(command("B"));
    history.transferUndoCommand();
    AbstractDocumentHistory copy(history);
    AbstractDocumentHistory assigned;
    assigned = history;
    history.transferUndoCommand();
    for (AbstractDocumentHistory* other : {&copy, &assigned}) {
        EXPECT_THAT(undo_names(*other), ElementsAre("A"));
        EXPECT_THAT(redo_names(*other), ElementsAre("B"));
    }
    EXPECT_EQ(a, copy.transferUndoCommand());
}

TEST(AbstractDocumentHistory, CommandsLiveAsLongAsAStackHoldsThem)
{
    AbstractDocumentHistory history;
    boost::shared_ptr<FakeCommand> a = command("A");
    const boost::weak_ptr<FakeCommand> watched = a;
    history.insertUndoCommand(a);
    a.reset();
    history.transferUndoCommand();
    EXPECT_FALSE(watched.expired());
    history.insertUndoCommand(command("B"));
    EXPECT_TRUE(watched.expired());
}

// What runs inside the history's operations may read it.

TEST(AbstractDocumentHistory, DyingCommandMayReadTheHistory)
{
    AbstractDocumentHistory history;
    std::vector<unsigned long long> sizes;
    const auto reading = [&](const std::string& name, bool clears_redo) {
        const boost::shared_ptr<FakeCommand> made(
            new FakeCommand(s_document, name), [&](FakeCommand* p_dying) {
                sizes.push_back(history.undoSize() * 10 + history.redoSize());
                delete p_dying;
            });
        made->clears_redo_when_undoing(clears_redo);
        return made;
    };
    history.insertUndoCommand(reading("A", false));
    history.insertUndoCommand(reading("B", true));
    history.insertUndoCommand(reading("C", false));
    history.transferUndoCommand();
    EXPECT_TRUE(sizes.empty());
    history.transferUndoCommand(); // clears C; B is the caller's last
    EXPECT_THAT(sizes, ElementsAre(10, 10));

    sizes.clear();
    history.transferUndoCommand();
    history.insertUndoCommand(command("D")); // clears A
    EXPECT_THAT(sizes, ElementsAre(10));

    sizes.clear();
    history.insertUndoCommand(reading("E", false));
    history.removeLastUndo();
    EXPECT_THAT(sizes, ElementsAre(10));

    sizes.clear();
    history.insertUndoCommand(reading("F", false));
    history = AbstractDocumentHistory();
    EXPECT_THAT(sizes, ElementsAre(0));
}

TEST(AbstractDocumentHistory, MergingCommandMayReadTheHistory)
{
    AbstractDocumentHistory history;
    const auto older = identical("A", true);
    unsigned long long size = 0;
    older->absorbs = [&](const AbstractCommand&) {
        size = history.undoSize();
        return true;
    };
    history.insertUndoCommand(older);
    history.insertUndoCommand(identical("B", false));
    EXPECT_EQ(1u, size);
}

TEST(AbstractDocumentHistory, HasNoLimit)
{
    AbstractDocumentHistory history;
    const int count = 100000;
    for (int i = 0; i < count; ++i) {
        history.insertUndoCommand(command(std::to_string(i)));
    }
    EXPECT_EQ(100000u, history.undoSize());
    EXPECT_THAT(names(history.getUndoCommandDetails(2)), ElementsAre("99999", "99998"));
    for (int i = 0; i < count; ++i) {
        history.transferUndoCommand();
    }
    EXPECT_EQ(100000u, history.redoSize());
    EXPECT_EQ("0", history.transferRedoCommand()->name());
}
